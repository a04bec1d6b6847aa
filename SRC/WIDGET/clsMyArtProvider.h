// Our icons for wxArtProvider: an id such as "Camera" stands for ICONS/Camera.png.
#pragma once

#include <wx/artprov.h>

class MyArtProvider : public wxArtProvider {
public:
    /// Install once, after the image handlers.
    static void Install();
    /// The icon in logical pixels, sharp on displays of any scale; empty when the file is missing.
    static wxBitmapBundle GetIcon(const wxString& name, int size = 16);

protected:
    wxBitmapBundle CreateBitmapBundle(const wxArtID& id, const wxArtClient& client,
                                      const wxSize& size) override;
};
