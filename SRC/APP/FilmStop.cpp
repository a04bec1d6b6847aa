#include "APP/FilmStop.h"

#include <atomic>
#include <csignal>

#include "COMMON/Globals.h"

namespace {

std::atomic<int> sSignal{0};
static_assert(std::atomic<int>::is_always_lock_free, "written in a signal's context");

void OnSignal(int signal) {
    sSignal.store(signal);
    GbAbort.store(true); // a long drawing loop is left
}

} // namespace

void WatchFilmStop() {
    struct sigaction action {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART | int(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction old {};
        // Who starts us with a signal ignored (nohup) means it.
        if (sigaction(signal, nullptr, &old) == 0 && old.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

bool IsFilmStopped() { return sSignal.load() != 0; }

void EndAsStopped() {
    const int signal = sSignal.load();
    if (signal == 0) return;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}
