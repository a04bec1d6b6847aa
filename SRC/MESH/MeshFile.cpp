#include "MESH/MeshFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <thread>

#include <wx/intl.h>

#include "COMMON/FreeMemory.h"
#include "COMMON/OnThreads.h"
#include "COMMON/clsSplitPath.h"

namespace {

constexpr size_t kPiece = size_t(4) << 20;   // bytes of one call, between which the reader may be stopped
constexpr size_t kAThread = size_t(1) << 20; // less is not worth another one
constexpr unsigned kMostThreads = 8;

enum Fault : int { FAULT_FOLDER = -1, FAULT_NO_FILE = -2, FAULT_EMPTY = -3, FAULT_CHANGED = -4 };

} // namespace

void EndMeshText(char* pEnd) {
    pEnd[0] = pEnd[1] = '\n';
    std::memset(pEnd + 2, 0, kMeshPad - 2);
}

int GetMeshThreads(size_t bytes) {
    const unsigned cores = std::clamp(std::thread::hardware_concurrency(), 1u, kMostThreads);
    return static_cast<int>(std::clamp(bytes / kAThread, size_t(1), size_t(cores)));
}

MeshSource_cls::MeshSource_cls(const MeshText_st& text) : mpText(text.Begin()), mLength(text.mLength) {}

// Without O_NONBLOCK a pipe would hold us until somebody writes.
MeshSource_cls::MeshSource_cls(const wxString& path)
    : mFile(open(NarrowPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
    struct stat facts {};
    if (mFile < 0 || fstat(mFile, &facts) != 0)
        mError = errno;
    else if (!S_ISREG(facts.st_mode))
        mError = S_ISDIR(facts.st_mode) ? FAULT_FOLDER : FAULT_NO_FILE;
    else if (facts.st_size == 0)
        mError = FAULT_EMPTY;
    else
        mLength = static_cast<size_t>(facts.st_size);
}

MeshSource_cls::~MeshSource_cls() {
    if (mFile >= 0) close(mFile);
}

bool MeshSource_cls::Read(size_t from, size_t to, char* pTo) {
    if (mpText) {
        std::copy(mpText + from, mpText + to, pTo);
        return true;
    }
    while (from < to) {
        const ssize_t count = pread(mFile, pTo, to - from, static_cast<off_t>(from));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            mError = count < 0 ? errno : int(FAULT_CHANGED);
            return false;
        }
        from += static_cast<size_t>(count);
        pTo += count;
    }
    return true;
}

wxString MeshSource_cls::GetReason() const {
    switch (mError) {
    case 0:
        return wxString();
    case FAULT_FOLDER:
        return _("it is a folder");
    case FAULT_NO_FILE:
        return _("it is no file that can be read");
    case FAULT_EMPTY:
        return _("it is empty");
    case FAULT_CHANGED:
        return _("it was changed while it was read");
    default:
        return wxString::FromUTF8(std::strerror(mError));
    }
}

wxString ReadMeshText(const wxString& path, MeshText_st* pText, const std::atomic<bool>* pStop) {
    *pText = MeshText_st();
    MeshSource_cls source(path);
    const size_t length = source.GetLength();
    if (length == 0) return source.GetReason();
    if (!IsMemoryFree(length)) return _("there is not enough memory for it");
    pText->mBytes.resize(length + kMeshPad);
    const int threads = GetMeshThreads(length);
    std::atomic<size_t> next{0};
    OnThreads(threads, [&](int) {
        for (size_t from = kPiece * next++; from < length && !(pStop && *pStop); from = kPiece * next++)
            if (!source.Read(from, std::min(from + kPiece, length), pText->mBytes.data() + from)) return;
    });
    pText->mLength = length;
    EndMeshText(pText->mBytes.data() + length);
    return source.GetReason();
}

bool ReadMeshText(MeshSource_cls& source, MeshText_st* pText) {
    pText->mLength = source.GetLength();
    pText->mBytes.resize(pText->mLength + kMeshPad);
    if (!source.Read(0, pText->mLength, pText->mBytes.data())) return false;
    EndMeshText(pText->mBytes.data() + pText->mLength);
    return true;
}

MeshText_st MakeMeshText(const std::string& bytes) {
    MeshText_st text;
    text.mBytes.resize(bytes.size() + kMeshPad);
    text.mLength = bytes.size();
    std::copy(bytes.begin(), bytes.end(), text.mBytes.begin());
    EndMeshText(text.mBytes.data() + text.mLength);
    return text;
}

FileStamp_st GetFileStamp(const wxString& path) {
    FileStamp_st stamp;
    struct stat facts {};
    if (stat(NarrowPath(path).c_str(), &facts) != 0) return stamp;
    stamp.mSize = facts.st_size;
    stamp.mSeconds = facts.st_mtim.tv_sec;
    stamp.mNanoseconds = facts.st_mtim.tv_nsec;
    stamp.mNode = facts.st_ino;
    return stamp;
}
