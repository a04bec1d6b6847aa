#include "APP/clsFilmApp.h"

#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>

#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include "APP/AppSetup.h"
#include "APP/FilmGuard.h"
#include "APP/FilmHelp.h"
#include "APP/FilmProgress.h"
#include "APP/FilmStop.h"
#include "APP/WindowArgs.h"
#include "APP/clsFilmMaker.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsVirtualDisplay.h"
#include "COMMON/FreeMemory.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"
#include "IMAGE/clsImageIO.h"
#include "PDATA/clsPDataSeqCtrl.h"

namespace {

void Complain(const std::string& text) { std::fprintf(stderr, "morentis-film: %s\n", text.c_str()); }

/// The program's own words go nowhere; ours go where they did.
std::FILE* TakeStandardOutput() {
    std::FILE* out = fdopen(dup(STDOUT_FILENO), "w");
    if (!std::freopen("/dev/null", "w", stdout)) std::fclose(stdout);
    return out;
}

/// Nobody is asked and nothing is shown: what a window would tell goes to stderr, questions are answered
/// "no", and nothing is saved.
bool TellOnStderr(FilmProgress_cls* pProgress, MessageKind kind, const wxString& text) {
    wxString line = text;
    line.Replace("\n", " ");
    pProgress->ClearBar();
    Complain(line.utf8_string());
    return kind != MessageKind::Question && kind != MessageKind::Save;
}

/// For temporary files where there is no other place.
std::string FolderOfOutput(const FilmArgs_st& args) {
    const std::string path = NarrowPath(args.mOutput.empty() ? args.mProject : args.mOutput);
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

void SetQuietToolkit() {
    setenv("GDK_BACKEND", "x11", 1); // the OpenGL canvas speaks GLX
    setenv("NO_AT_BRIDGE", "1", 0);
    setenv("GSETTINGS_BACKEND", "memory", 0);
}

} // namespace

bool FilmApp_cls::OnInit() {
    SetAppName("morentis");
    delete wxLog::SetActiveTarget(new wxLogStderr);
    SetUpApp(&mLocale, false); // schedulers and scripts read what it says
    UseAnyFileName();          // the toolkit has set its own way meanwhile
    SetMessageHandler([this](MessageKind kind, const wxString& text, const wxString&) {
        return TellOnStderr(mpCProgress, kind, text);
    });
    // A film is the same on every machine: the window's configure file has no part in it.
    mpCMain = new Main_cls(mArgs.mView);
    if (mArgs.mMemoryMB > 0) mpCMain->mpCPDataSeqCtrl->mLimitMB = mArgs.mMemoryMB;
    SetDrawWay(mArgs.mDraw);
    if (mArgs.mThreads > 0) GThreadNumberReadAscii.store(mArgs.mThreads);
    return true;
}

int FilmApp_cls::OnRun() {
    FilmMaker_cls maker(mpCMain, mArgs, mpCProgress);
    FilmStatus status = FilmStatus::SomeFailed;
    try {
        status = maker.Run();
    } catch (const std::exception& error) {
        mpCProgress->ClearBar();
        Complain(error.what());
    }
    GCImgIO.Finish();
    if (mArgs.mbTiming) Complain(maker.GetTiming());
    return int(status);
}

int FilmApp_cls::OnExit() {
    mpCMain->WaitThreadFinish();
    delete mpCMain->mpCFrameMain;
    delete mpCMain;
    mpCMain = nullptr;
    return wxApp::OnExit();
}

// A box would wait for ever.
void FilmApp_cls::OnAssertFailure(const wxChar* file, int line, const wxChar* function,
                                  const wxChar* condition, const wxChar* text) {
    Complain(wxString::Format("%s:%d %s: %s %s", file, line, function, condition, text ? text : L"")
                 .utf8_string());
}

namespace {

/// Toolkit, OpenGL and its compiler end the process where they get less.
constexpr size_t kBytesToBegin = size_t(768) << 20;

/// In the guarded process; it ends here.
int MakeFilm(const FilmArgs_st& args, char** argv) {
    WatchFilmStop();
    SetQuietToolkit();
    VirtualDisplay_cls display;
    if (!VirtualDisplay_cls::IsThereOne()) {
        const std::string missing = display.Start(FolderOfOutput(args));
        EndAsStopped(); // what lacks then is of no interest
        if (!missing.empty()) {
            Complain("there is no display, and no virtual one can be started: " + missing);
            TellGuard(GuardWord::Ended);
            return int(FilmStatus::NotOpened);
        }
    }
    if (!IsMemoryFree(kBytesToBegin)) {
        Complain("memory is too short to begin: toolkit and OpenGL take about " +
                 std::to_string(kBytesToBegin >> 20) + " MB besides the data; raise the limit (ulimit -v)");
        display.Stop();
        TellGuard(GuardWord::Ended);
        return int(FilmStatus::NotOpened);
    }
    std::FILE* out = TakeStandardOutput();
    FilmProgress_cls progress(args.mbQuiet ? nullptr : out, out && isatty(fileno(out)));
    // Windows without a size complain.
    wxApp::GTKAllowDiagnosticsControl();
    wxApp::GTKSuppressDiagnostics();
    wxApp::SetInstance(new FilmApp_cls(args, &progress));
    int one = 1;
    int status = wxEntry(one, argv);                     // the toolkit takes no options
    if (status < 0) status = int(FilmStatus::NotOpened); // it can't begin, and has said why
    display.Stop();
    if (out) std::fclose(out);
    EndAsStopped();
    // The toolkit would say goodbye to a display that is gone.
    std::fflush(nullptr);
    TellGuard(GuardWord::Ended);
    std::_Exit(status);
}

} // namespace

int RunMorentisFilm(int argc, char** argv) {
    std::setlocale(LC_CTYPE, "");
    UseAnyFileName();
    std::vector<wxString> words;
    for (int i = 1; i < argc; ++i)
        words.push_back(FromCommandLine(argv[i]));
    FilmArgs_st args;
    const wxString error = ParseFilmArgs(words, &args);
    if (!error.empty()) {
        Complain(error.utf8_string() + " (--help tells all options)");
        return int(FilmStatus::WrongArguments);
    }
    if (args.mbHelp || args.mbVersion) {
        if (args.mbHelp)
            std::fputs(GetFilmHelp().utf8_str(), stdout);
        else
            std::printf("morentis-film %s\n", GetVersion());
        return 0;
    }
    return RunGuarded([&args, argv] { return MakeFilm(args, argv); });
}
