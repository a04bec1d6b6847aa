#include "APP/AppSetup.h"

#include <clocale>
#include <csignal>

#include <wx/image.h>
#include <wx/intl.h>

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

} // namespace

void SetUpApp(wxLocale* pLocale) {
    // A write that meets a limit or a closed pipe fails; it doesn't end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    pLocale->Init(wxLANGUAGE_DEFAULT, wxLOCALE_LOAD_DEFAULT);
    wxLocale::AddCatalogLookupPathPrefix(".");
    wxLocale::AddCatalogLookupPathPrefix("./locale");
    wxLocale::AddCatalogLookupPathPrefix(FindRuntimeFile("locale"));
    pLocale->AddCatalog("Morentis2");
    // Numbers in files never follow the user's locale.
    std::setlocale(LC_NUMERIC, "C");

    wxImage::CleanUpHandlers(); // the toolkit brings one along; ours come in our order
    AddHandler<wxBMPHandler>("Windows bitmap file", "bmp", "image/x-bmp", wxBITMAP_TYPE_BMP);
    AddHandler<wxPNGHandler>("PNG file", "png", "image/png", wxBITMAP_TYPE_PNG);
    AddHandler<wxJPEGHandler>("JPEG file", "jpg", "image/jpeg", wxBITMAP_TYPE_JPEG);
    wxImage::AddHandler(new wxTIFFHandler);
}
