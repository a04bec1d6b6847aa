#include "WIDGET/clsMyArtProvider.h"

#include <wx/bmpbndl.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/log.h>

#include "COMMON/RuntimeFiles.h"

void MyArtProvider::Install() { wxArtProvider::Push(new MyArtProvider); }

wxBitmapBundle MyArtProvider::GetIcon(const wxString& name, int size) {
    const wxString path = FindRuntimeFile("ICONS/" + name + ".png");
    const wxLogNull quiet; // what can't be read counts as missing
    wxImage image;
    if (!wxFileName::FileExists(path) || !image.LoadFile(path, wxBITMAP_TYPE_PNG)) return wxBitmapBundle();
    wxVector<wxBitmap> bitmaps;
    for (int scale = 1; scale <= 3; ++scale) {
        const int pixels = size * scale;
        if (scale > 1 && pixels > 2 * image.GetWidth()) break;
        bitmaps.push_back(wxBitmap(image.Scale(pixels, pixels, wxIMAGE_QUALITY_HIGH)));
    }
    return wxBitmapBundle::FromBitmaps(bitmaps);
}

wxBitmapBundle MyArtProvider::CreateBitmapBundle(const wxArtID& id, const wxArtClient&, const wxSize& size) {
    if (id.StartsWith("wx")) return wxBitmapBundle(); // the toolkit's own
    return GetIcon(id, size.x > 0 ? size.x : 16);
}
