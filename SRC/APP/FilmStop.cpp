#include "APP/FilmStop.h"

#include <atomic>
#include <csignal>
#include <ctime>

#include "COMMON/Globals.h"

namespace {

// One that reaches the whole group comes twice: by itself, and from the process that watches.
constexpr long long kAgainMillis = 500;

std::atomic<int> sSignal{0};
std::atomic<long long> sMillis{0}; ///< when it came
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<long long>::is_always_lock_free,
              "written in a signal's context");

void OnSignal(int signal) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const long long millis = now.tv_sec * 1000LL + now.tv_nsec / 1000000;
    if (sSignal.load() == 0) {
        sMillis.store(millis);
        sSignal.store(signal);
        GbAbort.store(true); // a long drawing loop is left
    } else if (millis - sMillis.load() > kAgainMillis) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
}

} // namespace

void WatchFilmStop() {
    struct sigaction action {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
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
