#include "APP/clsRecovery.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include <wx/intl.h>

#include "COMMON/Confined.h"
#include "COMMON/MsgBox.h"
#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "PARAM/clsUndoManager.h"

namespace {

namespace fs = std::filesystem;

const char* const kPrefix = "Morentis3Recovery-";
const char* const kEnding = ".mrp";
constexpr int kMostNames = 100; // of one process number: several machines may share the folder

std::string LockOf(const std::string& project) {
    return project.substr(0, project.size() - std::string(kEnding).size()) + ".lock";
}

/// Names in a folder that begin and end so.
std::vector<std::string> ListFiles(const std::string& folder, const std::string& ending) {
    std::vector<std::string> paths;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const bool bOurs = name.rfind(kPrefix, 0) == 0 && name.size() > ending.size() &&
                           name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
        if (bOurs && entry->is_regular_file(error)) paths.push_back(entry->path().string());
    }
    return paths;
}

time_t TimeOf(const std::string& path) {
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 ? facts.st_mtime : 0;
}

bool Exists(const std::string& path) {
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0;
}

wxString ToText(const std::string& path) { return wxString(path.c_str(), *wxConvFileName); }

} // namespace

OwnerLock_cls& OwnerLock_cls::operator=(OwnerLock_cls&& other) noexcept {
    if (this == &other) return *this;
    Release();
    mPath = std::move(other.mPath);
    mFile = std::exchange(other.mFile, -1);
    return *this;
}

bool OwnerLock_cls::Take(const std::string& path) {
    Release();
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0) return false;
    struct stat here {};
    struct stat there {};
    // Its last owner removes it while it still holds the lock.
    const bool bOurs = flock(file, LOCK_EX | LOCK_NB) == 0 && fstat(file, &here) == 0 &&
                       stat(path.c_str(), &there) == 0 && here.st_ino == there.st_ino;
    if (!bOurs) {
        close(file);
        return false;
    }
    mPath = path;
    mFile = file;
    return true;
}

void OwnerLock_cls::Release() {
    if (mFile < 0) return;
    unlink(mPath.c_str());
    close(mFile);
    mFile = -1;
}

Recovery_cls::Recovery_cls(const wxString& folder, std::function<std::string()> makeText)
    : mStrFolder(folder), mMakeText(std::move(makeText)), mSavedState(GCUndoList.GetStateId()) {}

// What is left unsaved stays for the next start: only Discard takes it away.
Recovery_cls::~Recovery_cls() = default;

void Recovery_cls::MarkSaved() {
    mSavedState = GCUndoList.GetStateId();
    Discard();
}

bool Recovery_cls::IsModified() const { return GCUndoList.GetStateId() != mSavedState; }

void Recovery_cls::Tick(bool bMayWrite) {
    mbLate = false;
    if (!IsModified()) {
        Discard();
        return;
    }
    if (IsConfined()) return;
    const auto now = std::chrono::steady_clock::now();
    if (mbEverWritten && now - mLastWrite < mGap) return;
    mbLate = !bMayWrite;
    if (mbLate || Write(false)) return;
    Notice("recovery",
           wxString::Format(_("No recovery project could be written in %s: save your project often."),
                            mStrFolder));
}

bool Recovery_cls::WriteNow() { return !IsModified() || Write(true); }

bool Recovery_cls::Write(bool bAnyway) {
    mLastWrite = std::chrono::steady_clock::now();
    mbEverWritten = true;
    std::string text = mMakeText();
    if (!bAnyway && !mStrPath.empty() && text == mLastText) return true;
    if (mStrPath.empty() && !MakeOwn()) return false;
    if (!WriteFileSafely(mStrPath, text).empty()) return false;
    mLastText = std::move(text);
    return true;
}

bool Recovery_cls::MakeOwn() {
    for (int n = 0; n < kMostNames; ++n) {
        const wxString number = n == 0 ? wxString() : wxString::Format("-%d", n);
        const wxString path =
            wxString::Format("%s/%s%ld%s%s", mStrFolder, kPrefix, long(getpid()), number, kEnding);
        const std::string narrow = NarrowPath(path);
        // One that an earlier program with our number left waits to be asked about.
        if (Exists(narrow) || !mLock.Take(LockOf(narrow))) continue;
        mStrPath = path;
        return true;
    }
    return false;
}

void Recovery_cls::Discard() {
    if (mStrPath.empty()) return;
    unlink(NarrowPath(mStrPath).c_str());
    mLock.Release();
    mStrPath.clear();
    mLastText.clear();
}

bool Recovery_cls::FindOrphan(Found_st* pFound) {
    const std::string folder = NarrowPath(mStrFolder);
    std::vector<std::string> paths = ListFiles(folder, kEnding);
    std::sort(paths.begin(), paths.end(),
              [](const std::string& a, const std::string& b) { return TimeOf(a) > TimeOf(b); });
    for (const std::string& path : paths) {
        if (ToText(path) == mStrPath) continue;
        OwnerLock_cls lock;
        if (!lock.Take(LockOf(path))) continue;
        if (!Exists(path)) continue; // another program was faster
        mOrphanLock = std::move(lock);
        mStrOrphan = ToText(path);
        pFound->mStrPath = mStrOrphan;
        pFound->mWhen = wxDateTime(TimeOf(path));
        return true;
    }
    // Locks without a project are what a kill left.
    for (const std::string& path : ListFiles(folder, ".lock")) {
        const std::string project = path.substr(0, path.size() - 5) + kEnding;
        OwnerLock_cls lock;
        if (!Exists(project)) lock.Take(path);
    }
    return false;
}

void Recovery_cls::AdoptOrphan() {
    if (mStrOrphan.empty()) return;
    Discard();
    mStrPath = std::exchange(mStrOrphan, wxString());
    mLock = std::move(mOrphanLock);
    MarkUnsaved();
}

void Recovery_cls::DropOrphan() {
    if (mStrOrphan.empty()) return;
    unlink(NarrowPath(mStrOrphan).c_str());
    mOrphanLock.Release();
    mStrOrphan.clear();
}
