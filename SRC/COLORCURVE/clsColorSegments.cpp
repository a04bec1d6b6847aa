#include "COLORCURVE/clsColorSegments.h"

#include <algorithm>
#include <limits>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/DataLoops.h"

namespace {

// Branches on data that nobody can foretell would cost more than looking at every key.
MORENTIS_DATA_LOOP
void ScaleAll(const float* pX, long long count, float* pT, int* pSegment, const float* pScale) {
    const float offset = pScale[0];
    const float range = pScale[1];
    const float first = pScale[2];
    const float last = pScale[3];
    for (long long i = 0; i < count; ++i) {
        // Outside the keys the end colours hold; what is no number gets the last one.
        const float t = (pX[i] - offset) / range;
        const float low = t < first ? first : t;
        pT[i] = low < last ? low : last;
        pSegment[i] = 0;
    }
}

constexpr size_t kTogether = 4; // keys looked at in one walk over the particles

MORENTIS_DATA_LOOP
void CountBegun(const float* pT, long long count, int* pSegment, const float* pBegin) {
    const float a = pBegin[0];
    const float b = pBegin[1];
    const float c = pBegin[2];
    const float d = pBegin[3];
    for (long long i = 0; i < count; ++i)
        pSegment[i] +=
            (pT[i] >= a ? 1 : 0) + (pT[i] >= b ? 1 : 0) + (pT[i] >= c ? 1 : 0) + (pT[i] >= d ? 1 : 0);
}

} // namespace

void ColorSegments_cls::Locate(const float* pX, long long count, float* pT, int* pSegment) const {
    const float scale[4] = {mOffset, mRange, mFirst, mLast};
    ScaleAll(pX, count, pT, pSegment, scale);
    for (size_t k = 1; k < mSegments.size(); k += kTogether) {
        float begin[kTogether];
        for (size_t n = 0; n < kTogether; ++n)
            begin[n] =
                k + n < mSegments.size() ? mSegments[k + n].mBegin : std::numeric_limits<float>::infinity();
        CountBegun(pT, count, pSegment, begin);
    }
}

ColorSegments_cls::ColorSegments_cls(const ColorCurve_cls& curve, float alphaScale)
    : mOffset(curve.GetScaleOffset()), mRange(curve.GetScaleRange()) {
    const auto& keys = curve.GetKeys();
    const auto at = [](const ColorCurve_cls::Key& key) {
        Segment_st segment;
        segment.mBegin = static_cast<float>(key[0]);
        for (size_t c = 0; c < 4; ++c)
            segment.mColor[c] = static_cast<float>(key[c + 1]);
        return segment;
    };
    mSegments.clear();
    if (curve.IsConstant()) {
        mSegments.resize(1);
        std::copy_n(curve.mConstantColor.mValue, 4, mSegments[0].mColor);
        mSegments[0].mColor[3] *= alphaScale;
        return;
    }
    mFirst = static_cast<float>(keys.front()[0]);
    mLast = static_cast<float>(keys.back()[0]);
    // Every key opens a segment; the last one has no slope.
    for (size_t k = 0; k < keys.size(); ++k) {
        Segment_st segment = at(keys[k]);
        const double width = k + 1 < keys.size() ? keys[k + 1][0] - keys[k][0] : 0.0;
        for (size_t c = 0; width > 0.0 && c < 4; ++c)
            segment.mSlope[c] = static_cast<float>((keys[k + 1][c + 1] - keys[k][c + 1]) / width);
        segment.mColor[3] *= alphaScale;
        segment.mSlope[3] *= alphaScale;
        mSegments.push_back(segment);
    }
}
