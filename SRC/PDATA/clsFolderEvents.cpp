#include "PDATA/clsFolderEvents.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

// Magic numbers (statfs(2)) of file systems on which other machines or programs write unseen.
constexpr unsigned long kUnseen[] = {
    0x6969,     // NFS
    0x517b,     // SMB
    0xff534d42, // CIFS
    0xfe534d42, // SMB2
    0x65735546, // FUSE
    0x01021997, // 9P
    0x5346414f, // AFS
    0x73757245, // Coda
    0x00c36400, // Ceph
    0x0bd00bd0, // Lustre
    0x47504653, // GPFS
    0x01161970, // GFS2
    0x7461636f, // OCFS2
    0x19830326, // BeeGFS
    0xaad7aaea, // PanFS
};

constexpr uint32_t kMask =
    IN_CLOSE_WRITE | IN_MOVED_TO | IN_CREATE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr size_t kMostNames = 20000; // of a folder where much else is written

} // namespace

FolderEvents_cls::~FolderEvents_cls() { Close(); }

void FolderEvents_cls::Close() {
    if (mFile >= 0) close(mFile);
    mFile = -1;
}

bool FolderEvents_cls::Open(const std::string& folder) {
    Close();
    struct statfs facts {};
    if (statfs(folder.c_str(), &facts) != 0) return false;
    const auto type = static_cast<unsigned long>(facts.f_type) & 0xfffffffful;
    if (std::find(std::begin(kUnseen), std::end(kUnseen), type) != std::end(kUnseen)) return false;
    mFile = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (mFile >= 0 && inotify_add_watch(mFile, folder.c_str(), kMask) < 0) Close();
    return IsOpen();
}

bool FolderEvents_cls::Read(std::set<std::string>* pFinished) {
    bool bAny = false;
    bool bGone = false;
    alignas(inotify_event) std::array<char, 65536> buffer;
    ssize_t got = 0;
    while (IsOpen() && (got = read(mFile, buffer.data(), buffer.size())) > 0) {
        bAny = true;
        for (size_t pos = 0; pos < static_cast<size_t>(got);) {
            inotify_event event;
            std::memcpy(&event, &buffer[pos], sizeof event);
            const char* pName = &buffer[pos] + sizeof event;
            const bool bFinished = (event.mask & (IN_CLOSE_WRITE | IN_MOVED_TO)) != 0;
            if (bFinished && event.len > 0 && pFinished->size() < kMostNames) pFinished->insert(pName);
            bGone = bGone || (event.mask & (IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT)) != 0;
            pos += sizeof event + event.len;
        }
    }
    if (bGone) Close();
    return bAny;
}
