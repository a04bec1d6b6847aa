#include "IMPORT/StopSignal.h"

#include <csignal>

namespace {

volatile std::sig_atomic_t sSignal = 0;

void Ask(int signal) { sSignal = signal; }

} // namespace

void CatchStopSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = Ask;
        action.sa_flags = int(SA_RESETHAND) | SA_RESTART;
        sigaction(signal, &action, nullptr);
    }
}

int GetStopSignal() { return sSignal; }

void ThrowIfStopped() {
    if (sSignal != 0) throw ImportStop_cls();
}
