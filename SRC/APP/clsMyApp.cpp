#include "APP/clsMyApp.h"

#include <clocale>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <new>
#include <system_error>

#include "APP/AppSetup.h"
#include "APP/UnaskedEnd.h"
#include "APP/WindowArgs.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecorder.h"
#include "APP/clsReplay.h"
#include "COMMON/ActLine.h"
#include "COMMON/Confined.h"
#include "COMMON/MsgBox.h"
#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "WIDGET/Realize.h"

wxIMPLEMENT_APP_NO_MAIN(MyApp);

namespace {
constexpr int kWrongArguments = 2;
WindowArgs_st sArgs;  ///< of the command line
ActFile_st sReplayed; ///< of --replay

/// What a replay needs before anything else is made; the answer says what is wrong.
wxString PrepareReplay() {
    std::string bytes;
    if (ReadWholeFile(sArgs.mStrReplay, kLargestRecord, &bytes) != ReadFileResult::Ok)
        return sArgs.mStrReplay + " can't be read";
    sReplayed = ReadActFile(bytes);
    if (!sReplayed.mStrReason.empty()) return sArgs.mStrReplay + " is no record: " + sReplayed.mStrReason;
    wxString& folder = sArgs.mStrReplayFolder;
    const bool bNamed = !folder.empty();
    if (!bNamed) folder = Replay_cls::MakeFolderName(sArgs.mStrReplay);
    std::error_code error;
    const std::filesystem::path path = NarrowPath(folder);
    std::filesystem::create_directory(path, error);
    if (!std::filesystem::is_directory(path)) return folder + " can't be made";
    if (bNamed && !std::filesystem::is_empty(path, error)) return folder + " isn't empty";
    ConfineTo(folder);
    return wxString();
}

} // namespace

MyApp::MyApp() = default;
MyApp::~MyApp() = default;

int RunMorentis(int argc, char** argv) {
    std::setlocale(LC_CTYPE, "");
    UseAnyFileName();
    std::vector<wxString> words;
    for (int i = 1; i < argc; ++i)
        words.push_back(FromCommandLine(argv[i]));
    wxString error = ParseWindowArgs(words, &sArgs);
    const bool bTell = sArgs.mbHelp || sArgs.mbVersion;
    if (!error.empty()) {
        std::fprintf(stderr, "morentis: %s (--help tells all options)\n", error.utf8_string().c_str());
        return kWrongArguments;
    }
    if (bTell) {
        std::printf("%s", sArgs.mbHelp ? GetWindowHelp().utf8_string().c_str() : "morentis ");
        if (!sArgs.mbHelp) std::printf("%s\n", GetVersion());
        return 0;
    }
    if (!sArgs.mStrReplay.empty()) error = PrepareReplay();
    if (!error.empty()) {
        std::fprintf(stderr, "morentis: %s\n", error.utf8_string().c_str());
        return kWrongArguments;
    }
    int one = 1; // the toolkit takes no options
    return wxEntry(one, argv);
}

bool MyApp::OnInit() {
    SetAppName("morentis");
    SetUpApp(&mLocale, true);
    mpCMain = new Main_cls;
    SetFirstSize(mpCMain->mpCFrameMain);
    mpCMain->mpCFrameMain->Show(true);
    SetTopWindow(mpCMain->mpCFrameMain);
    mpCMain->mpCFrameMain->GetPCFileMenu()->SetFirstFiles(sArgs.mVFiles);
    if (!sArgs.mStrRecord.empty()) {
        const wxString reason = mpCMain->mpCRecorder->BeginFile(sArgs.mStrRecord);
        if (!reason.empty())
            MsgBox(wxString::Format(_("%s could not be written: %s"), sArgs.mStrRecord, reason),
                   _("Warning"));
    }
    if (!sArgs.mStrReplay.empty()) {
        mpCReplay =
            std::make_unique<Replay_cls>(*mpCMain, sReplayed, sArgs.mStrReplay, sArgs.mStrReplayFolder);
        mpCMain->mpCFrameMain->GetPCFileMenu()->SetReplay(mpCReplay.get());
    }
    WatchUnaskedEnds([this] { mpCMain->LastWords(); });
    Bind(wxEVT_QUERY_END_SESSION, &MyApp::OnEndSession, this);
    Bind(wxEVT_END_SESSION, &MyApp::OnEndSession, this);
    return true;
}

// No question: who ends the session asked already, and may not wait for an answer.
void MyApp::OnEndSession(wxCloseEvent&) { mpCMain->LastWords(); }

void MyApp::OnUnhandledException() {
    SayLastWords();
    wxApp::OnUnhandledException();
}

int MyApp::OnExit() {
    mpCReplay.reset();
    delete mpCMain;
    mpCMain = nullptr;
    return wxApp::OnExit();
}

bool MyApp::OnExceptionInMainLoop() {
    // Memory that is short somewhere off the main road must not take the user's work with it.
    mpCMain->LastWords();
    try {
        throw;
    } catch (const std::exception& error) {
        MsgBox(wxString::Format(_("Something went wrong (%s). Save your project under a new name and go on."),
                                wxString::FromUTF8(error.what())),
               _("Warning"));
    }
    return true;
}
