#include "COMMON/ChildWork.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <new>
#include <thread>

namespace {

constexpr std::chrono::microseconds kShortestNap(100), kLongestNap(5000);
constexpr int kNoMemory = 1; // the child's status

[[noreturn]] void Become(const std::function<void()>& work, unsigned long seconds) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    const rlimit time = {seconds, seconds};
    setrlimit(RLIMIT_CPU, &time);
    // Its end is no end of the program: nothing is rescued, and the C library's words stay unheard.
    for (const int fault : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGTERM, SIGINT, SIGHUP})
        std::signal(fault, SIG_DFL);
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    try {
        work();
    } catch (const std::bad_alloc&) {
        _exit(kNoMemory);
    } catch (...) {
        std::raise(SIGKILL);
    }
    _exit(0);
}

} // namespace

SharedFile_cls::SharedFile_cls() : mFile(memfd_create("morentis", MFD_CLOEXEC)) {}

SharedFile_cls::~SharedFile_cls() {
    if (IsOpen()) close(mFile);
}

bool SharedFile_cls::Write(const void* pBytes, size_t length) {
    const auto* p = static_cast<const char*>(pBytes);
    while (length > 0) {
        const ssize_t written = write(mFile, p, length);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        p += written;
        length -= size_t(written);
    }
    return true;
}

bool SharedFile_cls::Read(void* pBytes, size_t length) {
    auto* p = static_cast<char*>(pBytes);
    while (length > 0) {
        const ssize_t count = pread(mFile, p, length, mRead);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        p += count;
        mRead += count;
        length -= size_t(count);
    }
    return true;
}

size_t SharedFile_cls::GetLeft() const {
    struct stat facts {};
    return fstat(mFile, &facts) == 0 ? size_t(std::max<long long>(facts.st_size - mRead, 0)) : 0;
}

ChildEnd RunInChild(const std::function<void()>& work, unsigned long seconds,
                    const std::atomic<bool>* pStop) {
    const pid_t child = fork();
    if (child < 0) return ChildEnd::NoChild;
    if (child == 0) Become(work, seconds);
    bool bStopped = false;
    auto nap = kShortestNap;
    int status = 0;
    for (;;) {
        const pid_t ended = waitpid(child, &status, bStopped ? 0 : WNOHANG);
        if (ended == child) break;
        if (ended < 0 && errno != EINTR) return ChildEnd::Fault;
        if (!bStopped && pStop && *pStop) {
            bStopped = true;
            kill(child, SIGKILL);
        } else if (!bStopped) {
            std::this_thread::sleep_for(nap);
            nap = std::min(2 * nap, kLongestNap);
        }
    }
    if (bStopped) return ChildEnd::Stopped;
    if (!WIFEXITED(status)) return ChildEnd::Fault;
    return WEXITSTATUS(status) == kNoMemory ? ChildEnd::NoMemory : ChildEnd::Done;
}
