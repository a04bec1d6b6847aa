#include "COLORCURVE/clsColorSegments.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/DataLoops.h"
#include "PARAM/clsParamGroup.h"

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

float ToFloat(double value) {
    constexpr double kMost = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -kMost, kMost));
}

/// The smallest float that isn't below a key's position: the same scalars lie behind both.
float BeginOf(double position) {
    const float begin = ToFloat(position);
    return static_cast<double>(begin) < position
               ? std::nextafter(begin, std::numeric_limits<float>::infinity())
               : begin;
}

/// Where any of the curves has a key, ascending.
std::vector<float> CollectBegins(const std::vector<Parameters_cls>& params) {
    std::vector<float> begins;
    for (const Parameters_cls& param : params)
        for (const KeyFrame_cls& key : param.GetKeys())
            begins.push_back(BeginOf(key.mDoubleIndex));
    if (begins.empty()) begins.push_back(0.0f);
    std::sort(begins.begin(), begins.end());
    begins.erase(std::unique(begins.begin(), begins.end()), begins.end());
    return begins;
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
    if (curve.IsConstant()) {
        std::copy_n(curve.mConstantColor.mValue, 4, mSegments[0].mColor);
        mSegments[0].mColor[3] *= alphaScale;
        return;
    }
    const std::vector<Parameters_cls>& params = curve.mpCParamGroup->mVParams;
    const std::vector<float> begins = CollectBegins(params);
    mFirst = begins.front();
    mLast = begins.back();
    mSegments.clear();
    for (const float begin : begins) {
        Segment_st& segment = mSegments.emplace_back();
        segment.mBegin = begin;
        for (size_t c = 0; c < 4; ++c) {
            double terms[4];
            params[c].GetPolynomial(static_cast<double>(begin), terms);
            const double scale = c == 3 ? static_cast<double>(alphaScale) : 1.0;
            segment.mColor[c] = ToFloat(terms[0] * scale);
            segment.mSlope[c] = ToFloat(terms[1] * scale);
            segment.mSquare[c] = ToFloat(terms[2] * scale);
            segment.mCube[c] = ToFloat(terms[3] * scale);
            mbCubic = mbCubic || terms[2] != 0.0 || terms[3] != 0.0;
        }
    }
}
