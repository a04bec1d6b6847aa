// Colour curves as pictures and swatches.
#include "COLORCURVE/clsColorCurve.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <wx/colour.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

namespace {

constexpr float kShade[2] = {0.8f, 0.5f}; // the checkerboard's greys

unsigned char ToByte(float value) {
    // A NaN is black.
    return static_cast<unsigned char>(value > 0.0f ? std::lround(std::min(value, 1.0f) * 255.0f) : 0L);
}

/// RGBA, 0..1, in the middle of each column.
std::vector<float> Columns(const ColorCurve_cls& curve, int width, bool bCurve) {
    std::vector<float> colors(size_t(width) * 4);
    for (int x = 0; x < width; ++x) {
        float* pColor = &colors[size_t(x) * 4];
        const float place = (static_cast<float>(x) + 0.5f) / static_cast<float>(width);
        bCurve ? curve.GetCurveColor(pColor, place) : curve.GetColor4fNormal(pColor, place);
        for (int c = 0; c < 4; ++c)
            pColor[c] = pColor[c] > 0.0f ? std::min(pColor[c], 1.0f) : 0.0f;
    }
    return colors;
}

void DrawColumns(wxDC& dc, const std::vector<float>& colors, const wxRect& rect, int square) {
    wxImage image(rect.width, rect.height, false);
    unsigned char* pRgb = image.GetData();
    square = std::max(square, 1);
    for (int y = 0; y < rect.height; ++y) {
        for (int x = 0; x < rect.width; ++x) {
            const float* pColor = &colors[size_t(x) * 4];
            const float back = kShade[(x / square + y / square) % 2];
            for (int c = 0; c < 3; ++c)
                *pRgb++ = ToByte(back + (pColor[c] - back) * pColor[3]);
        }
    }
    dc.DrawBitmap(wxBitmap(image), rect.x, rect.y);
}

} // namespace

wxImage ColorCurve_cls::GetColorImage(int width, int height, bool bOpaque) const {
    width = std::max(width, 1);
    height = std::max(height, 1);
    wxImage image(width, height, false);
    if (!bOpaque) image.SetAlpha();
    const std::vector<float> colors = Columns(*this, width, false);
    unsigned char* pRgb = image.GetData();
    unsigned char* pAlpha = bOpaque ? nullptr : image.GetAlpha();
    for (int y = 0; y < height; ++y) {
        for (size_t x = 0; x < size_t(width); ++x) {
            for (size_t c = 0; c < 3; ++c)
                *pRgb++ = ToByte(colors[x * 4 + c]);
            if (pAlpha) *pAlpha++ = ToByte(colors[x * 4 + 3]);
        }
    }
    return image;
}

void ColorCurve_cls::DrawOnDC(wxDC& dc, const wxRect& rect, int square) const {
    if (rect.width > 0 && rect.height > 0) DrawColumns(dc, Columns(*this, rect.width, false), rect, square);
}

void ColorCurve_cls::DrawCurveOnDC(wxDC& dc, const wxRect& rect, int square) const {
    if (rect.width > 0 && rect.height > 0) DrawColumns(dc, Columns(*this, rect.width, true), rect, square);
}
