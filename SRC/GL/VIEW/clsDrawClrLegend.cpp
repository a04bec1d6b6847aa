#include "GL/VIEW/clsDrawClrLegend.h"

#include <algorithm>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

#include "COLORCURVE/clsColorCurve.h"
#include "GL/BASE/clsGLState.h"
#include "GL/VIEW/LegendTics.h"
#include "GL/VIEW/clsOverlay.h"

namespace {

constexpr int kTicLength = 3;
constexpr int kMostTics = 6;
constexpr int kLetterPixels = 11;

unsigned char ToByte(float value) {
    return value > 0.0f ? static_cast<unsigned char>(std::min(value, 1.0f) * 255.0f) : 0; // nothing for a NaN
}

void Insert(const std::vector<unsigned char>& row, int top, std::vector<unsigned char>* pBuffer) {
    for (int y = 0; y < DrawClrLegend_cls::kBarHeight; ++y)
        std::copy(row.begin(), row.end(), pBuffer->begin() + std::ptrdiff_t(row.size()) * (top + y));
}

} // namespace

DrawClrLegend_cls::~DrawClrLegend_cls() {
    if (IsGLContextCurrent()) glDeleteTextures(kLegends, mLegendTexture);
}

std::vector<unsigned char> DrawClrLegend_cls::GetClrCurveOnBitmap(const ColorCurve_cls& curve,
                                                                  bool bIgnoreAlpha) {
    std::vector<unsigned char> row(size_t(kBarWidth) * 4);
    for (size_t x = 0; x < size_t(kBarWidth); ++x) {
        float color[4];
        curve.GetColor4fNormal(color, (float(x) + 0.5f) / float(kBarWidth));
        if (bIgnoreAlpha) color[3] = 1.0f;
        std::transform(color, color + 4, row.begin() + std::ptrdiff_t(4 * x), ToByte);
    }
    return row;
}

wxImage DrawClrLegend_cls::GetTicsOnBitmap(const ColorCurve_cls& curve) const {
    wxBitmap bitmap(kBarWidth, kTicsHeight, 24);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxBLACK_BRUSH);
    dc.Clear();
    dc.SetFont(wxFont(wxFontInfo(wxSize(0, kLetterPixels)).Family(wxFONTFAMILY_SWISS)));
    dc.SetTextForeground(*wxWHITE);
    dc.SetPen(wxPen(wxColour(192, 192, 192)));
    const double low = double(curve.mScalingMin.mValue);
    const double high = double(curve.mScalingMax.mValue);
    int free = -1; // the first column that no label covers
    std::vector<LegendTic_st> tics = MakeLegendTics(low, high, kMostTics);
    std::sort(tics.begin(), tics.end(),
              [](const LegendTic_st& a, const LegendTic_st& b) { return a.mPlace < b.mPlace; });
    for (const LegendTic_st& tic : tics) {
        const int x = std::min(int(tic.mPlace * kBarWidth), kBarWidth - 1);
        dc.DrawLine(x, 0, x, kTicLength);
        const int width = dc.GetTextExtent(tic.mLabel).x;
        const int left = std::clamp(x - width / 2, 0, std::max(kBarWidth - width, 0));
        if (left <= free) continue;
        dc.DrawText(tic.mLabel, left, kTicsHeight - dc.GetCharHeight());
        free = left + width + kTicLength;
    }
    dc.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
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
    Insert(GetClrCurveOnBitmap(curve, bIgnoreAlpha), kHeight - kBarHeight, &mVBuffer);
    Upload(&mLegendTexture[which]);
    DeleteBufferRGBA();
}

void DrawClrLegend_cls::DrawClrLegend(const ColorCurve_cls* const pCurves[kLegends], int w, int h,
                                      Target target) {
    const int pos = mpCOverlay->mLegendPos.mValue;
    if (pos < Overlay_cls::TOP_LEFT || pos > Overlay_cls::BTM_RIGHT) return;
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
