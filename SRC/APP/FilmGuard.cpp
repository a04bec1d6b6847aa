#include "APP/FilmGuard.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <map>
#include <set>

#include "APP/FilmArgs.h"
#include "APP/FilmFrames.h"

namespace {

int sToGuard = -1;
int sLedger = -1; ///< file in memory that both processes have: an entry a frame of the film
volatile pid_t sChild = -1;
const int kEndSignals[] = {SIGINT, SIGTERM, SIGHUP};

struct LedgerEntry_st {
    int mFrame; ///< kSettled: nothing is to be said of it
    int mStep;
};
constexpr int kSettled = -1;

/// What a terminal sends reaches the child by itself.
void PassOn(int signal, siginfo_t* pInfo, void*) {
    if (pInfo->si_code <= 0 && sChild > 0) kill(sChild, signal);
}

void PassSignalsOn() {
    struct sigaction action {};
    action.sa_sigaction = PassOn;
    action.sa_flags = SA_RESTART | SA_SIGINFO;
    for (const int signal : kEndSignals) {
        struct sigaction old {};
        // Who starts us with a signal ignored (nohup) means it.
        if (sigaction(signal, nullptr, &old) == 0 && old.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

/// Until the film has its own, a signal ends it.
void DropSignals() {
    for (const int signal : kEndSignals) {
        struct sigaction old {};
        if (sigaction(signal, nullptr, &old) == 0 && old.sa_sigaction == PassOn) std::signal(signal, SIG_DFL);
    }
}

/// Signals that end us wait as long as this lives: none may come while nobody knows whom it is for.
class SignalsWait_cls {
public:
    SignalsWait_cls() {
        sigset_t ends;
        sigemptyset(&ends);
        for (const int signal : kEndSignals)
            sigaddset(&ends, signal);
        sigprocmask(SIG_BLOCK, &ends, &mBefore);
    }
    ~SignalsWait_cls() { sigprocmask(SIG_SETMASK, &mBefore, nullptr); }
    SignalsWait_cls(const SignalsWait_cls&) = delete;
    SignalsWait_cls& operator=(const SignalsWait_cls&) = delete;

private:
    sigset_t mBefore;
};

pid_t Fork() {
    const SignalsWait_cls wait;
    PassSignalsOn();
    const pid_t child = fork();
    if (child > 0) sChild = child;
    if (child == 0) DropSignals();
    return child;
}

/// All that the child has said, once it is gone.
bool HasSaid(int pipe, GuardWord word, bool* pbBegun) {
    bool bSaid = false;
    char byte = 0;
    while (read(pipe, &byte, 1) == 1) {
        bSaid = bSaid || byte == char(word);
        *pbBegun = *pbBegun || byte == char(GuardWord::Begun);
    }
    return bSaid;
}

void EndBySignalOf(int status) {
    if (!WIFSIGNALED(status)) return;
    for (const int signal : kEndSignals)
        if (WTERMSIG(status) == signal) {
            std::signal(signal, SIG_DFL);
            std::raise(signal);
        }
}

void NameUnsettled() {
    std::set<int> frames;
    std::map<int, int> begins;
    LedgerEntry_st entry;
    for (off_t at = 0; pread(sLedger, &entry, sizeof entry, at) == sizeof entry; at += sizeof entry) {
        if (entry.mFrame == kSettled) continue;
        // They come in their order: the first step of a frame that is missing is its least.
        if (frames.insert(entry.mFrame).second && entry.mStep > 0) begins[entry.mFrame] = entry.mStep;
    }
    if (frames.empty()) return;
    std::fprintf(stderr, "morentis-film: not made: %s; --resume makes what is missing\n",
                 static_cast<const char*>(ListFrames(frames, begins).utf8_str()));
}

int Watch(pid_t child, int pipe) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    EndBySignalOf(status);
    bool bBegun = false;
    if (HasSaid(pipe, GuardWord::Ended, &bBegun) && WIFEXITED(status)) return WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        std::fprintf(
            stderr, "morentis-film: the film ended early: its process was ended by signal %d (%s)%s\n",
            WTERMSIG(status), strsignal(WTERMSIG(status)),
            WTERMSIG(status) == SIGKILL ? "; where nobody did that, memory was too short"
                                        : "; a library gave up, perhaps for a lack of memory or threads");
    else
        std::fprintf(stderr,
                     "morentis-film: the film ended early: its process left with status %d; the display may "
                     "be gone, or memory or threads too short\n",
                     WEXITSTATUS(status));
    if (bBegun) NameUnsettled();
    return int(bBegun ? FilmStatus::SomeFailed : FilmStatus::NotOpened);
}

} // namespace

void TellGuard(GuardWord word) {
    const char byte = char(word);
    const ssize_t ignored = sToGuard >= 0 ? write(sToGuard, &byte, 1) : 0;
    (void)ignored;
}

void TellGuardFilm(const std::vector<FilmFrame_st>& film) {
    LedgerEntry_st entries[1024]; // memory may be short
    for (size_t i = 0; i < film.size(); i += std::size(entries)) {
        const size_t count = std::min(std::size(entries), film.size() - i);
        for (size_t k = 0; k < count; ++k)
            entries[k] = {film[i + k].mFrame, film[i + k].mStep};
        const ssize_t ignored =
            pwrite(sLedger, entries, count * sizeof entries[0], off_t(i * sizeof entries[0]));
        (void)ignored;
    }
}

void TellGuardSettled(size_t i) {
    const LedgerEntry_st entry = {kSettled, 0};
    const ssize_t ignored = pwrite(sLedger, &entry, sizeof entry, off_t(i * sizeof entry));
    (void)ignored;
}

int RunGuarded(const std::function<int()>& film) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return film();
    sLedger = memfd_create("film", MFD_CLOEXEC);
    const pid_t parent = getpid();
    const pid_t child = Fork();
    if (child != 0) {
        close(ends[1]);
        if (child < 0) return film();
        return Watch(child, ends[0]);
    }
    close(ends[0]);
    sToGuard = ends[1];
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    return getppid() == parent ? film() : int(FilmStatus::NotOpened);
}
