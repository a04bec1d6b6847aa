#include "GL/VIEW/clsDrawClrLegend.h"

#include <algorithm>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

#include "COLORCURVE/EDITOR/clsTics.h"
#include "COLORCURVE/clsColorCurve.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/VIEW/clsOverlay.h"

namespace {

constexpr int kLetterPixels = 11;

} // namespace

DrawClrLegend_cls::~DrawClrLegend_cls() {
    if (IsGLContextCurrent()) glDeleteTextures(kLegends, mLegendTexture);
}

wxImage DrawClrLegend_cls::GetTicsOnBitmap(const ColorCurve_cls& curve) const {
    wxBitmap bitmap(kBarWidth, kTicsHeight, 24);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxBLACK_BRUSH);
    dc.Clear();
    dc.SetFont(wxFont(wxFontInfo(wxSize(0, kLetterPixels)).Family(wxFONTFAMILY_SWISS)));
    const Tics_cls tics(kBarWidth, kTicsHeight, double(curve.mScalingMin.mValue),
                        double(curve.mScalingMax.mValue));
    tics.DrawOnDC(dc, 0, 0, wxColour(192, 192, 192), *wxWHITE);
    dc.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
}

// The bar is above, with its own alpha.
void DrawClrLegend_cls::InsertClrCurve(const ColorCurve_cls& curve) {
    const wxImage bar = curve.GetColorImage(kBarWidth, kBarHeight, mpCOverlay->mLegendIgnoreAlpha.mValue);
    const std::vector<unsigned char> pixels = ::GenerateBufferRGBA(bar); // all rows alike
    std::copy(pixels.begin(), pixels.end(), mVBuffer.end() - std::ptrdiff_t(pixels.size()));
}

void DrawClrLegend_cls::MakeClrCurveTexture(const ColorCurve_cls& curve, int which) {
    const bool bIgnoreAlpha = mpCOverlay->mLegendIgnoreAlpha.mValue;
    // Only a curve has values to tell.
    const bool bTics = !mpCOverlay->mLegendIgnoreTics.mValue && !curve.IsConstant();
    const wxString made = curve.Serialize() + wxString::Format("%d %d", bIgnoreAlpha, bTics);
    if (made == mStrMade[which] && mLegendTexture[which] != 0) return;
    mStrMade[which] = made;
    wxImage image(kBarWidth, kHeight); // black
    if (bTics) image.Paste(GetTicsOnBitmap(curve), 0, kHeight - kTicsHeight);
    GenerateBufferRGBA(image);
    InsertClrCurve(curve);
    Upload(&mLegendTexture[which]);
    DeleteBufferRGBA();
}

bool DrawClrLegend_cls::IsShown() const {
    const int pos = mpCOverlay->mLegendPos.mValue;
    const bool* pShown = mpCOverlay->mShowLegend.mValue;
    return pos >= Overlay_cls::TOP_LEFT && pos <= Overlay_cls::BTM_RIGHT &&
           std::find(pShown, pShown + kLegends, true) != pShown + kLegends;
}

void DrawClrLegend_cls::DrawClrLegend(const ColorCurve_cls* const pCurves[kLegends], int w, int h,
                                      Target target) {
    const int pos = mpCOverlay->mLegendPos.mValue;
    if (!IsShown()) return;
    int row = 0;
    for (int which = 0; which < kLegends; ++which) {
        if (!mpCOverlay->mShowLegend.mValue[which] || !pCurves[which]) continue;
        mBufferW = kBarWidth;
        mBufferH = kHeight;
        MakeClrCurveTexture(*pCurves[which], which);
        SetOffsetPos(pos, row++, w, h);
        DrawTexture(mLegendTexture[which], w, h, GL_ONE_MINUS_SRC_ALPHA, target);
    }
}
