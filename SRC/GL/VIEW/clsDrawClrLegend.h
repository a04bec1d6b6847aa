// Colour legends on top of a view: one bar an attribute, with the values of its ends and between.
#pragma once

#include <wx/string.h>

#include "GL/VIEW/clsOverlayBase.h"

class ColorCurve_cls;

class DrawClrLegend_cls : public OverlayBase_cls {
public:
    static constexpr int kLegends = 4;
    static constexpr int kBarWidth = 240;
    static constexpr int kBarHeight = 20;
    static constexpr int kTicsHeight = 14; ///< of the values under it

    explicit DrawClrLegend_cls(const Overlay_cls* pOverlay) : OverlayBase_cls(pOverlay) {}
    ~DrawClrLegend_cls();

    bool IsShown() const;
    /// Draw into the present target, w by h pixels of it. One curve an attribute; null is passed over.
    void DrawClrLegend(const ColorCurve_cls* const pCurves[kLegends], int w, int h, Target target);

private:
    void MakeClrCurveTexture(const ColorCurve_cls& curve, int which);
    void InsertClrCurve(const ColorCurve_cls& curve);
    wxImage GetTicsOnBitmap(const ColorCurve_cls& curve) const;

    GLuint mLegendTexture[kLegends] = {};
    wxString mStrMade[kLegends]; ///< the curve and settings of each texture
};
