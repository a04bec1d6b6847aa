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

class OpenFile_cls {
public:
    // Without O_NONBLOCK a pipe would hold us until somebody writes.
    explicit OpenFile_cls(const wxString& path)
        : mFile(open(NarrowPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {}
    ~OpenFile_cls() {
        if (mFile >= 0) close(mFile);
    }
    OpenFile_cls(const OpenFile_cls&) = delete;
    OpenFile_cls& operator=(const OpenFile_cls&) = delete;
    const int mFile;
};

/// Bytes [from, to) to their place; 0, or errno, or -1 where the file ends too early.
int ReadRange(int file, size_t from, size_t to, char* pTo, const std::atomic<bool>* pStop) {
    while (from < to && !(pStop && *pStop)) {
        const ssize_t count = pread(file, pTo + from, std::min(to - from, kPiece), static_cast<off_t>(from));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count < 0 ? errno : -1;
        from += static_cast<size_t>(count);
    }
    return 0;
}

void EndText(MeshText_st* pText) {
    char* p = pText->mBytes.data() + pText->mLength;
    *p = '\n';
    std::memset(p + 1, 0, kMeshPad);
}

} // namespace

int GetMeshThreads(size_t bytes) {
    const unsigned cores = std::clamp(std::thread::hardware_concurrency(), 1u, kMostThreads);
    return static_cast<int>(std::clamp(bytes / kAThread, size_t(1), size_t(cores)));
}

wxString ReadMeshText(const wxString& path, MeshText_st* pText, const std::atomic<bool>* pStop) {
    *pText = MeshText_st();
    const OpenFile_cls file(path);
    struct stat facts {};
    if (file.mFile < 0 || fstat(file.mFile, &facts) != 0) return wxString::FromUTF8(std::strerror(errno));
    if (S_ISDIR(facts.st_mode)) return _("it is a folder");
    if (!S_ISREG(facts.st_mode)) return _("it is no file that can be read");
    const size_t length = static_cast<size_t>(facts.st_size);
    if (length == 0) return _("it is empty");
    if (!IsMemoryFree(length)) return _("there is not enough memory for it");
    pText->mBytes.resize(length + 1 + kMeshPad);
    const int threads = GetMeshThreads(length);
    std::atomic<int> error{0};
    OnThreads(threads, [&](int k) {
        const auto at = [&](int part) {
            return length / static_cast<size_t>(threads) * static_cast<size_t>(part);
        };
        const int failed =
            ReadRange(file.mFile, at(k), k + 1 == threads ? length : at(k + 1), pText->mBytes.data(), pStop);
        if (failed != 0) error = failed;
    });
    if (error == -1) return _("it was changed while it was read");
    if (error != 0) return wxString::FromUTF8(std::strerror(error));
    pText->mLength = length;
    EndText(pText);
    return wxString();
}

MeshText_st MakeMeshText(const std::string& bytes) {
    MeshText_st text;
    text.mBytes.resize(bytes.size() + 1 + kMeshPad);
    text.mLength = bytes.size();
    std::copy(bytes.begin(), bytes.end(), text.mBytes.begin());
    EndText(&text);
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
