// A colour curve compiled for one pass over many particles: single precision, no search structure, nothing
// shared. Agrees with the curve to the last bits of a float.
#pragma once

#include <algorithm>
#include <vector>

class ColorCurve_cls;

class ColorSegments_cls {
public:
    /// Takes the curve's keys and its scale as of the last PreCalcScaleFactor. An empty one is black.
    ColorSegments_cls() = default;
    explicit ColorSegments_cls(const ColorCurve_cls& curve);

    bool IsConstant() const { return mFirst == mLast; }
    /// RGBA at x on the user's scale.
    void Get(float* pOut, float x) const {
        // Outside the keys the end colours hold; what is no number gets the last one.
        const float t = std::min(mLast, std::max((x - mOffset) / mRange, mFirst));
        const Segment* pSegment = mSegments.data();
        // Curves have a handful of keys: walking on beats any cleverness.
        for (const Segment* pEnd = pSegment + mSegments.size() - 1;
             pSegment != pEnd && t >= pSegment[1].mBegin;)
            ++pSegment;
        const float along = t - pSegment->mBegin;
        for (int c = 0; c < 4; ++c)
            pOut[c] = pSegment->mColor[c] + pSegment->mSlope[c] * along;
    }

private:
    struct Segment {
        float mBegin = 0.0f;
        float mColor[4] = {0, 0, 0, 0}; ///< at mBegin
        float mSlope[4] = {0, 0, 0, 0};
    };
    float mOffset = 0.0f;
    float mRange = 1.0f;
    float mFirst = 0.0f; ///< positions of the first and the last key
    float mLast = 0.0f;
    std::vector<Segment> mSegments = std::vector<Segment>(1);
};
