// A colour curve compiled for one pass over many particles: single precision, no search structure, nothing
// shared. Agrees with the curve to the last bits of a float.
#pragma once

#include <vector>

class ColorCurve_cls;

class ColorSegments_cls {
public:
    /// RGBA from mBegin on to the next segment, a cubic in the distance from mBegin.
    struct alignas(16) Segment_st {
        float mColor[4] = {0, 0, 0, 0};
        float mSlope[4] = {0, 0, 0, 0};
        float mSquare[4] = {0, 0, 0, 0};
        float mCube[4] = {0, 0, 0, 0};
        float mBegin = 0.0f;
    };

    /// Transparent black.
    ColorSegments_cls() = default;
    /// Takes the curve's keys and its scale as of the last PreCalcScaleFactor; alphas are multiplied.
    explicit ColorSegments_cls(const ColorCurve_cls& curve, float alphaScale = 1.0f);

    bool IsConstant() const { return mSegments.size() == 1; }
    /// False where no segment bends: GetAt<false> is enough.
    bool IsCubic() const { return mbCubic; }
    /// RGBA at x on the user's scale.
    void Get(float* pOut, float x) const {
        float t;
        int segment;
        Locate(&x, 1, &t, &segment);
        GetAt<true>(pOut, mSegments.data(), segment, t);
    }
    /// The same in two steps, for many values at once: scaled positions and segments, then colours.
    void Locate(const float* pX, long long count, float* pT, int* pSegment) const;
    template <bool CUBIC>
    static void GetAt(float* pOut, const Segment_st* pSegments, int index, float t) {
        const Segment_st& segment = pSegments[index];
        const float along = t - segment.mBegin;
        for (int c = 0; c < 4; ++c) {
            float slope = segment.mSlope[c];
            if (CUBIC) slope += along * (segment.mSquare[c] + along * segment.mCube[c]);
            pOut[c] = segment.mColor[c] + along * slope;
        }
    }
    const Segment_st* GetSegments() const { return mSegments.data(); }

private:
    float mOffset = 0.0f;
    float mRange = 1.0f;
    float mFirst = 0.0f; ///< positions of the first and the last key
    float mLast = 0.0f;
    bool mbCubic = false;
    std::vector<Segment_st> mSegments = std::vector<Segment_st>(1);
};
