// The snapshot's time on top of a view.
#pragma once

#include <wx/string.h>

#include "GL/VIEW/clsOverlayBase.h"

class DrawTimeIndex_cls : public OverlayBase_cls {
public:
    static constexpr int kBitmapHeight = 40; ///< at least, as kWidth: large letters take more

    using OverlayBase_cls::OverlayBase_cls;

    bool IsShown() const;
    /// Draw into the present target, w by h pixels of it; nothing when the time isn't wanted.
    void DrawTimeInfo(double time, int w, int h, Target target);
    /// The tag and the number; "Not Defined" for the time of a snapshot that has none.
    wxString GetTimeText(double time) const;

private:
    void MakeTimeTexture(const wxString& text);
    wxImage GetTimeOnBitmap(const wxString& text) const;

    wxString mStrMade; ///< text and font of the texture
};
