#include "APP/clsMyApp.h"

#include <exception>
#include <new>

#include <wx/filename.h>

#include "APP/AppSetup.h"
#include "APP/UnaskedEnd.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/MsgBox.h"
#include "WIDGET/Realize.h"

wxIMPLEMENT_APP_NO_MAIN(MyApp);

int RunMorentis(int argc, char** argv) { return wxEntry(argc, argv); }

bool MyApp::OnInit() {
    SetAppName("morentis");
    SetUpApp(&mLocale);
    mpCMain = new Main_cls;
    SetFirstSize(mpCMain->mpCFrameMain);
    mpCMain->mpCFrameMain->Show(true);
    SetTopWindow(mpCMain->mpCFrameMain);
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
