// Starts the program as its main does, but runs the tests in place of the user.
#include <execinfo.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/filefn.h>
#include <wx/filename.h>

#include "APP/clsMyApp.h"
#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/DrawWay.h"
#include "GtkWords.h"

namespace {

/// A box would hold the tests for ever.
void FailOnAssert(const wxString& file, int line, const wxString& function, const wxString& condition,
                  const wxString& text) {
    ADD_FAILURE() << file << ":" << line << " " << function << ": " << condition << " " << text;
}

/// Tests end without a goodbye; nobody would answer the question of the next start.
void RemoveRecoveryProjects() {
    wxString path = wxFindFirstFile(wxFileName(GetConfigureFilePath()).GetPath() + "/Morentis3Recovery-*");
    for (; !path.empty(); path = wxFindNextFile())
        wxRemoveFile(path);
}

/// Where a test crashed; addr2line -Cfe reads the offsets.
void PrintStack(int signal) {
    void* frames[60];
    backtrace_symbols_fd(frames, backtrace(frames, int(std::size(frames))), STDERR_FILENO);
    raise(signal); // has its default meaning again
}

void PrintStackOfCrashes() {
    void* frame;
    backtrace(&frame, 1); // loads what it needs: not amid a crash
    struct sigaction action = {};
    action.sa_handler = PrintStack;
    action.sa_flags = SA_RESETHAND | SA_NODEFER;
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE})
        sigaction(signal, &action, nullptr);
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    setenv("GDK_BACKEND", "x11", 1);
    if (!std::getenv("DISPLAY")) {
        std::puts("These tests need an X display; ./test brings one up by itself.");
        return 1;
    }
    WatchGtkWords();
    if (!wxEntryStart(argc, argv)) return 1;
    // No settings of an earlier run.
    if (wxFileExists(GetConfigureFilePath())) wxRemoveFile(GetConfigureFilePath());
    RemoveRecoveryProjects();
    if (!wxTheApp->CallOnInit()) return 1;
    wxSetAssertHandler(FailOnAssert);
    DrawWay way;
    if (const char* draw = std::getenv("MORENTIS_TEST_DRAW"); draw && ReadDrawWay(draw, way)) SetDrawWay(way);
    PrintStackOfCrashes(); // behind the program's own words for a user
    int result = 1;
    {
        wxEventLoop loop;
        const wxEventLoopActivator active(&loop);
        result = RUN_ALL_TESTS();
    }
    RemoveRecoveryProjects();
    std::fflush(stdout);
    // The hub's own way down is what the Quit suite tests; here the process just ends.
    std::_Exit(result);
}
