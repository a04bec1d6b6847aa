#include "APP/clsMyApp.h"

#include <clocale>
#include <csignal>
#include <exception>
#include <new>

#include <wx/filename.h>
#include <wx/image.h>

#include "APP/UnaskedEnd.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"

wxIMPLEMENT_APP_NO_MAIN(MyApp);

int RunMorentis(int argc, char** argv) { return wxEntry(argc, argv); }

namespace {

template <class HANDLER>
void AddHandler(const char* name, const char* extension, const char* mime, wxBitmapType type) {
    auto* handler = new HANDLER;
    handler->SetName(name);
    handler->SetExtension(extension);
    handler->SetMimeType(mime);
    handler->SetType(type);
    wxImage::AddHandler(handler);
}

} // namespace

bool MyApp::OnInit() {
    SetAppName("morentis");
    // A write that meets a limit or a closed pipe fails; it doesn't end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    mLocale.Init(wxLANGUAGE_DEFAULT, wxLOCALE_LOAD_DEFAULT);
    wxLocale::AddCatalogLookupPathPrefix(".");
    wxLocale::AddCatalogLookupPathPrefix("./locale");
    wxLocale::AddCatalogLookupPathPrefix(FindRuntimeFile("locale"));
    mLocale.AddCatalog("Morentis2");
    // Numbers in files never follow the user's locale.
    std::setlocale(LC_NUMERIC, "C");

    wxImage::CleanUpHandlers(); // the toolkit brings one along; ours come in our order
    AddHandler<wxBMPHandler>("Windows bitmap file", "bmp", "image/x-bmp", wxBITMAP_TYPE_BMP);
    AddHandler<wxPNGHandler>("PNG file", "png", "image/png", wxBITMAP_TYPE_PNG);
    AddHandler<wxJPEGHandler>("JPEG file", "jpg", "image/jpeg", wxBITMAP_TYPE_JPEG);
    wxImage::AddHandler(new wxTIFFHandler);

    mpCMain = new Main_cls;
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
