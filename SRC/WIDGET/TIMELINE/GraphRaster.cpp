#include "WIDGET/TIMELINE/GraphRaster.h"

#include <algorithm>
#include <cmath>

#include "COMMON/DataLoops.h"
#include "WIDGET/TIMELINE/GraphModel.h"

namespace {

/// `opacity` 0 to 256.
inline uint32_t Blend(uint32_t under, uint32_t over, uint32_t opacity) {
    const uint32_t rest = 256 - opacity;
    const uint32_t redBlue = ((under & 0xFF00FFu) * rest + (over & 0xFF00FFu) * opacity) >> 8 & 0xFF00FFu;
    const uint32_t green = ((under & 0xFF00u) * rest + (over & 0xFF00u) * opacity) >> 8 & 0xFF00u;
    return redBlue | green;
}

inline uint32_t ToOpacity(float share) {
    return static_cast<uint32_t>(static_cast<int>(std::min(std::max(share, 0.0f), 1.0f) * 256.0f));
}

/// Rows [begin, end) of the column at `pPixel` that a straight line of this slope crosses at row `centre`.
inline void LineInColumn(uint32_t* pPixel, size_t pitch, int begin, int end, float centre, float shrink,
                         float reach, uint32_t colour) {
    pPixel += size_t(begin) * pitch;
    float away = (static_cast<float>(begin) + 0.5f - centre) * shrink;
    for (int y = begin; y < end; ++y, pPixel += pitch, away += shrink)
        *pPixel = Blend(*pPixel, colour, ToOpacity(reach - std::fabs(away)));
}

/// A bar from row `top` to row `bottom`, cut to the pixels' shares.
void BarInColumn(uint32_t* pPixel, size_t pitch, int height, float top, float bottom, uint32_t colour) {
    const int begin = std::clamp(int(std::floor(top)), 0, height);
    const int end = std::clamp(int(std::ceil(bottom)), 0, height);
    pPixel += size_t(begin) * pitch;
    for (int y = begin; y < end; ++y, pPixel += pitch) {
        const float row = static_cast<float>(y);
        const float share = std::min(row + 1.0f, bottom) - std::max(row, top);
        *pPixel = Blend(*pPixel, colour, ToOpacity(share));
    }
}

/// Rows of values, cut to what need not be true any more.
MORENTIS_DATA_LOOP
void ToRows(const double* pValues, size_t count, double top, double perPixel, double least, double most,
            float* pOut) {
    for (size_t i = 0; i < count; ++i) {
        const double row = (top - pValues[i]) / perPixel;
        pOut[i] = static_cast<float>(row > least ? (row < most ? row : most) : least);
    }
}

MORENTIS_DATA_LOOP
void BlendRow(uint32_t* pPixels, int count, uint32_t colour, uint32_t opacity) {
    for (int x = 0; x < count; ++x)
        pPixels[x] = Blend(pPixels[x], colour, opacity);
}

MORENTIS_DATA_LOOP
void ToBytes(const uint32_t* pPixels, size_t count, unsigned char* pOut) {
    for (size_t i = 0; i < count; ++i) {
        pOut[3 * i] = static_cast<unsigned char>(pPixels[i] >> 16);
        pOut[3 * i + 1] = static_cast<unsigned char>(pPixels[i] >> 8);
        pOut[3 * i + 2] = static_cast<unsigned char>(pPixels[i]);
    }
}

} // namespace

void GraphRaster_cls::Resize(int width, int height) {
    mWidth = std::max(width, 0);
    mHeight = std::max(height, 0);
    mVPixels.resize(size_t(mWidth) * size_t(mHeight));
}

void GraphRaster_cls::Fill(uint32_t colour) { std::fill(mVPixels.begin(), mVPixels.end(), colour); }

void GraphRaster_cls::Rectangle(int x, int y, int width, int height, uint32_t colour, float opacity) {
    const int left = std::max(x, 0);
    const int right = std::min(x + width, mWidth);
    const int top = std::max(y, 0);
    const int bottom = std::min(y + height, mHeight);
    const uint32_t share = ToOpacity(opacity);
    for (int row = top; row < bottom && left < right; ++row)
        BlendRow(Row(row) + left, right - left, colour, share);
}

void GraphRaster_cls::Curve(const CurveColumns& curve, const GraphScale& scale, uint32_t colour,
                            float lineWidth) {
    const int columns = std::min(mWidth, int(curve.mVEdge.size()) - 1);
    if (columns <= 0 || mHeight <= 0) return;
    // Far outside is far enough; the slopes there need not be true.
    const double least = -2.0 * mHeight - 100.0;
    const double most = 3.0 * mHeight + 100.0;
    mVRows.resize(curve.mVEdge.size());
    ToRows(curve.mVEdge.data(), curve.mVEdge.size(), scale.mValueTop, scale.mValuePerPixel, least, most,
           mVRows.data());
    mVIsHard.assign(size_t(columns) + 2, 0); // with a neighbour at each end
    const float half = lineWidth / 2;
    const auto row = [&](double value) {
        return static_cast<float>(std::clamp(scale.ToY(value), least, most));
    };
    for (const CurveColumns::Hard_st& hard : curve.mVHard) {
        if (hard.mColumn >= columns) break;
        mVIsHard[size_t(hard.mColumn) + 1] = 1;
        if (std::isnan(hard.mLow)) continue;
        BarInColumn(Row(0) + hard.mColumn, size_t(mWidth), mHeight, row(hard.mHigh) - half,
                    row(hard.mLow) + half, colour);
    }
    mVIsHard.front() = mVIsHard.back() = 1;
    for (int x = 0; x < columns; ++x)
        if (!mVIsHard[size_t(x) + 1] && !std::isnan(curve.mVEdge[size_t(x)] + curve.mVEdge[size_t(x) + 1]))
            SoftColumn(x, half + 0.5f, colour);
}

void GraphRaster_cls::SoftColumn(int x, float reach, uint32_t colour) {
    const float* rows = mVRows.data() + x;
    float top = std::min(rows[0], rows[1]);
    float bottom = std::max(rows[0], rows[1]);
    // A steep line shows in the neighbouring columns too, as far as it goes on there.
    if (!mVIsHard[size_t(x)]) {
        top = std::min(top, rows[-1]);
        bottom = std::max(bottom, rows[-1]);
    }
    if (!mVIsHard[size_t(x) + 2]) {
        top = std::min(top, rows[2]);
        bottom = std::max(bottom, rows[2]);
    }
    if (bottom + reach <= 0.0f || top - reach >= static_cast<float>(mHeight)) return;
    const float slope = rows[1] - rows[0];
    const float tall = std::sqrt(1.0f + slope * slope);
    const float centre = (rows[0] + rows[1]) / 2;
    top = std::max(top - reach, centre - reach * tall);
    bottom = std::min(bottom + reach, centre + reach * tall);
    const int begin = int(std::max(top, 0.0f));
    const int end = std::min(int(std::max(bottom, 0.0f)) + 1, mHeight);
    LineInColumn(Row(0) + x, size_t(mWidth), begin, end, centre, 1.0f / tall, reach, colour);
}

void GraphRaster_cls::Diamond(float x, float y, float radius, uint32_t colour) {
    constexpr float kDiagonal = 0.70710678f;
    if (!(std::fabs(x) < 1e5f && std::fabs(y) < 1e5f)) return;
    const int left = std::max(int(std::floor(x - radius - 1)), 0);
    const int right = std::min(int(std::ceil(x + radius + 1)), mWidth);
    const int top = std::clamp(int(std::floor(y - radius - 1)), 0, mHeight);
    const int bottom = std::clamp(int(std::ceil(y + radius + 1)), 0, mHeight);
    for (int row = top; row < bottom; ++row) {
        const float rest = radius - std::fabs(static_cast<float>(row) + 0.5f - y);
        uint32_t* pixels = Row(row);
        for (int column = left; column < right; ++column) {
            const float inside = rest - std::fabs(static_cast<float>(column) + 0.5f - x);
            pixels[column] = Blend(pixels[column], colour, ToOpacity(inside * kDiagonal + 0.5f));
        }
    }
}

void GraphRaster_cls::CopyRGB(unsigned char* pOut) const { ToBytes(mVPixels.data(), mVPixels.size(), pOut); }
