#include "APP/AppSetup.h"

#include <clocale>
#include <csignal>
#include <cstdlib>

#include <wx/image.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/translation.h>

#include "APP/Language.h"
#include "COMMON/RuntimeFiles.h"

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

constexpr const char* kCatalogue = "Morentis2";

std::string GetVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// A language needs no locale of the system by its name, and a locale that isn't installed is no fault of
/// ours.
void SetUpLanguage(wxLocale* pLocale, bool bTranslated) {
    const wxLogNull quiet;
    pLocale->Init(wxLANGUAGE_DEFAULT, wxLOCALE_DONT_LOAD_DEFAULT);
    wxTranslations* translations = wxTranslations::Get();
    if (!bTranslated || !translations) return;
    wxLocale::AddCatalogLookupPathPrefix(".");
    wxLocale::AddCatalogLookupPathPrefix("./locale");
    wxLocale::AddCatalogLookupPathPrefix(FindRuntimeFile("locale"));
    std::vector<std::string> available;
    for (const wxString& language : translations->GetAvailableTranslations(kCatalogue))
        available.push_back(language.ToStdString());
    translations->SetLanguage(ChooseLanguage(available, GetVariable));
    translations->AddStdCatalog();
    translations->AddCatalog(kCatalogue);
}

} // namespace

void SetUpApp(wxLocale* pLocale, bool bTranslated) {
    // A write that meets a limit or a closed pipe fails; it doesn't end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    SetUpLanguage(pLocale, bTranslated);
    // Numbers in files never follow the user's locale.
    std::setlocale(LC_NUMERIC, "C");

    wxImage::CleanUpHandlers(); // the toolkit brings one along; ours come in our order
    AddHandler<wxBMPHandler>("Windows bitmap file", "bmp", "image/x-bmp", wxBITMAP_TYPE_BMP);
    AddHandler<wxPNGHandler>("PNG file", "png", "image/png", wxBITMAP_TYPE_PNG);
    AddHandler<wxJPEGHandler>("JPEG file", "jpg", "image/jpeg", wxBITMAP_TYPE_JPEG);
    wxImage::AddHandler(new wxTIFFHandler);
}
