#include "APP/UnaskedEnd.h"

#include <X11/Xlib.h>
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <utility>

#include <wx/evtloop.h>
#include <wx/evtloopsrc.h>

namespace {

std::function<void()> sLastWords;
int sPipe[2] = {-1, -1};

/// In a signal's context: no more than a byte into the pipe.
void OnSignal(int signal) {
    const auto byte = static_cast<unsigned char>(signal);
    const ssize_t ignored = write(sPipe[1], &byte, 1);
    (void)ignored;
}

/// On the main thread, from whatever loop runs.
class SignalSource_cls : public wxEventLoopSourceHandler {
public:
    void OnReadWaiting() override {
        unsigned char byte = 0;
        if (read(sPipe[0], &byte, 1) != 1) return;
        SayLastWords();
        // End as the sender expects.
        std::signal(byte, SIG_DFL);
        std::raise(byte);
    }
    void OnWriteWaiting() override {}
    void OnExceptionWaiting() override {}
};

int OnLostDisplay(Display*) {
    SayLastWords();
    _exit(1); // nothing that would talk to the display runs any more
}

void WatchSignals() {
    if (sPipe[0] >= 0 || pipe2(sPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
    static SignalSource_cls sSource;
    wxEventLoopBase::AddSourceForFD(sPipe[0], &sSource, wxEVENT_SOURCE_INPUT);
    struct sigaction action {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        struct sigaction old {};
        // Who starts us with a signal ignored (nohup) means it.
        if (sigaction(signal, nullptr, &old) == 0 && old.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

} // namespace

void WatchUnaskedEnds(std::function<void()> lastWords) {
    const bool bFirst = !sLastWords;
    sLastWords = std::move(lastWords);
    if (!bFirst) return;
    WatchSignals();
    XSetIOErrorHandler(OnLostDisplay);
    static const bool sbRegistered = std::atexit(SayLastWords) == 0;
    (void)sbRegistered;
}

void ForgetUnaskedEnds() { sLastWords = nullptr; }

void SayLastWords() {
    const std::function<void()> words = std::exchange(sLastWords, nullptr);
    if (words) words();
}
