// Colour legends on top of a view: one bar an attribute, with the values of its ends and between.
#pragma once

#include <vector>

#include <wx/string.h>

#include "GL/VIEW/clsOverlayBase.h"

class ColorCurve_cls;

class DrawClrLegend_cls : public OverlayBase_cls {
public:
    static constexpr int kLegends = 4;
    static constexpr int kBarWidth = 240;
    static constexpr int kBarHeight = 20;
    static constexpr int kTicsHeight = 14;

    explicit DrawClrLegend_cls(const Overlay_cls* pOverlay) : OverlayBase_cls(pOverlay) {}
    ~DrawClrLegend_cls();

    /// Draw into the present target, w by h pixels of it. One curve an attribute; null is passed over.
    void DrawClrLegend(const ColorCurve_cls* const pCurves[kLegends], int w, int h, Target target);

    /// The bar of a curve: RGBA, one row of kBarWidth pixels.
    static std::vector<unsigned char> GetClrCurveOnBitmap(const ColorCurve_cls& curve, bool bIgnoreAlpha);

private:
    void MakeClrCurveTexture(const ColorCurve_cls& curve, int which);
    wxImage GetTicsOnBitmap(const ColorCurve_cls& curve) const;

    GLuint mLegendTexture[kLegends] = {};
    wxString mStrMade[kLegends]; ///< the curve and settings of each texture
};
