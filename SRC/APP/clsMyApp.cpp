#include "APP/clsMyApp.h"

#include <clocale>
#include <cstdio>
#include <exception>
#include <new>

#include "APP/AppSetup.h"
#include "APP/UnaskedEnd.h"
#include "APP/WindowArgs.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"
#include "WIDGET/Realize.h"

wxIMPLEMENT_APP_NO_MAIN(MyApp);

namespace {
constexpr int kWrongArguments = 2;
std::vector<wxString> sVFirstFiles; ///< of the command line
} // namespace

int RunMorentis(int argc, char** argv) {
    std::setlocale(LC_CTYPE, "");
    UseAnyFileName();
    std::vector<wxString> words;
    for (int i = 1; i < argc; ++i)
        words.push_back(FromCommandLine(argv[i]));
    WindowArgs_st args;
    const wxString error = ParseWindowArgs(words, &args);
    if (!error.empty()) {
        std::fprintf(stderr, "morentis: %s (--help tells all options)\n", error.utf8_string().c_str());
        return kWrongArguments;
    }
    if (args.mbHelp || args.mbVersion) {
        std::printf("%s", args.mbHelp ? GetWindowHelp().utf8_string().c_str() : "morentis ");
        if (!args.mbHelp) std::printf("%s\n", GetVersion());
        return 0;
    }
    sVFirstFiles = args.mVFiles;
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
    mpCMain->mpCFrameMain->GetPCFileMenu()->SetFirstFiles(sVFirstFiles);
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
