#include "COMMON/SafeFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "COMMON/Confined.h"
#include "COMMON/clsSplitPath.h"

std::function<bool(const char* step)> GSafeFileStep;

namespace {

constexpr int kMostLinks = 40; // as the kernel

bool MayDo(const char* step) {
    if (!GSafeFileStep || GSafeFileStep(step)) return true;
    errno = EIO;
    return false;
}

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The name behind a chain of links, whether a file stands there or not. Empty for a circle.
std::string FollowLinks(std::string path) {
    for (int i = 0; i < kMostLinks; ++i) {
        char target[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length < 0) return path;
        const std::string to(target, size_t(length));
        path = !to.empty() && to[0] == '/' ? to : FolderOf(path) + "/" + to;
    }
    errno = ELOOP;
    return std::string();
}

} // namespace

/// The file beside the real one, ours alone while it is open. It bears one name a file, so that what a kill
/// leaves is taken up by the next save.
class FileBeside_cls {
public:
    explicit FileBeside_cls(const std::string& path) {
        const size_t slash = path.rfind('/');
        const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
        std::string name = path.substr(folder.size());
        // Room for dot and ending within the longest name that a folder takes.
        name = name.substr(0, 200);
        mPath = folder + "." + name + ".saving";
        if (MayDo("open") && !OpenOwned()) {
            if (errno != EWOULDBLOCK && errno != ENOLCK && errno != EOPNOTSUPP) return;
            // Another program saves the same file just now, or there are no locks here.
            mPath += ".XXXXXX";
            mFile = mkostemp(mPath.data(), O_CLOEXEC);
            if (mFile >= 0) fchmod(mFile, 0666 & ~Mask());
        }
    }
    ~FileBeside_cls() {
        if (mFile < 0) return;
        if (!mbDone) unlink(mPath.c_str());
        close(mFile);
    }
    FileBeside_cls(const FileBeside_cls&) = delete;
    FileBeside_cls& operator=(const FileBeside_cls&) = delete;

    bool IsOpen() const { return mFile >= 0; }

    bool Write(const char* pBytes, size_t length) {
        if (!MayDo("write")) return false;
        for (size_t done = 0; done < length;) {
            const ssize_t count = write(mFile, pBytes + done, length - done);
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return false;
            done += size_t(count);
        }
        return true;
    }

    void TakeAfter(const struct stat& old) {
        // Who may not give files away keeps them; then the group is worth a try of its own.
        if (fchown(mFile, old.st_uid, old.st_gid) != 0 && fchown(mFile, uid_t(-1), old.st_gid) != 0)
            errno = 0;
        fchmod(mFile, old.st_mode & 07777);
    }

    bool Commit(const std::string& path, bool bSync) {
        if (bSync && (!MayDo("sync") || fsync(mFile) != 0)) return false;
        if (!bSync && !FlushToServer()) return false;
        if (!MayDo("rename") || rename(mPath.c_str(), path.c_str()) != 0) return false;
        mbDone = true;
        if (!bSync) return true;
        // The new name outlives a power failure too.
        const int folder = open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder >= 0) {
            fsync(folder);
            close(folder);
        }
        return true;
    }

private:
    /// File systems that write late, such as network ones, tell at a close that the space is short.
    bool FlushToServer() const {
        const int copy = dup(mFile);
        return copy >= 0 && close(copy) == 0;
    }

    static mode_t Mask() {
        const mode_t mask = umask(0);
        umask(mask);
        return mask;
    }

    bool OpenOwned() {
        while (true) {
            mFile = open(mPath.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
            if (mFile < 0) return false;
            struct stat here {};
            struct stat there {};
            const bool bLocked = flock(mFile, LOCK_EX | LOCK_NB) == 0;
            const int error = errno;
            // Between our open and our lock its owner may have renamed it: then it is somebody's project.
            if (bLocked && fstat(mFile, &here) == 0 && stat(mPath.c_str(), &there) == 0 &&
                here.st_ino == there.st_ino && here.st_dev == there.st_dev && here.st_nlink == 1) {
                if (S_ISREG(here.st_mode) && ftruncate(mFile, 0) == 0) {
                    fchmod(mFile, 0666 & ~Mask());
                    return true;
                }
                close(mFile);
                mFile = -1;
                errno = EEXIST;
                return false;
            }
            close(mFile);
            mFile = -1;
            if (bLocked) continue;
            errno = error;
            return false;
        }
    }

    std::string mPath;
    int mFile = -1;
    bool mbDone = false;
};

SafeFile_cls::SafeFile_cls(const wxString& path) : mTarget(FollowLinks(NarrowPath(path))) {
    if (mTarget.empty()) {
        Fail();
        return;
    }
    if (!MayWriteFile(mTarget)) {
        errno = EPERM;
        Fail();
        return;
    }
    struct stat old {};
    const bool bThere = stat(mTarget.c_str(), &old) == 0;
    if (bThere && !S_ISREG(old.st_mode)) errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
    // The folder's rights would be enough, but who protects a file means it.
    if (bThere && (!S_ISREG(old.st_mode) || access(mTarget.c_str(), W_OK) != 0)) {
        Fail();
        return;
    }
    mpBeside = std::make_unique<FileBeside_cls>(mTarget);
    if (!mpBeside->IsOpen())
        Fail();
    else if (bThere)
        mpBeside->TakeAfter(old);
}

SafeFile_cls::~SafeFile_cls() = default;

bool SafeFile_cls::Write(const char* pBytes, size_t length) {
    return mpBeside && (mpBeside->Write(pBytes, length) || Fail());
}

bool SafeFile_cls::Commit(ToDisk disk) {
    if (!mpBeside || (!mpBeside->Commit(mTarget, disk == ToDisk::Force) && !Fail())) return false;
    mpBeside.reset();
    return true;
}

bool SafeFile_cls::Fail() {
    mStrReason = wxString::FromUTF8(std::strerror(errno));
    mpBeside.reset();
    return false;
}

wxString WriteFileSafely(const wxString& path, const std::string& bytes, ToDisk disk) {
    SafeFile_cls file(path);
    const bool bDone = file.Write(bytes.data(), bytes.size()) && file.Commit(disk);
    return bDone ? wxString() : file.GetReason();
}

ReadFileResult ReadWholeFile(const wxString& path, size_t limit, std::string* pBytes) {
    // Without O_NONBLOCK a pipe would hold us until somebody writes.
    const int file = open(NarrowPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) return ReadFileResult::NotOpened;
    struct stat facts {};
    ReadFileResult result = ReadFileResult::Ok;
    if (fstat(file, &facts) != 0 || !S_ISREG(facts.st_mode))
        result = ReadFileResult::NotOpened;
    else if (facts.st_size > 0 && size_t(facts.st_size) > limit)
        result = ReadFileResult::TooLarge;
    pBytes->clear();
    // The length is a hint alone: a file may grow, and those of /proc tell none.
    char piece[65536];
    while (result == ReadFileResult::Ok) {
        const ssize_t count = read(file, piece, sizeof piece);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) result = ReadFileResult::NotOpened;
        if (count <= 0) break;
        if (pBytes->size() + size_t(count) > limit) result = ReadFileResult::TooLarge;
        pBytes->append(piece, size_t(count));
    }
    close(file);
    return result;
}
