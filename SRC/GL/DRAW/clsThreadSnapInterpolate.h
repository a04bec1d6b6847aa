// The draw-time worker: evaluates block + slope * dt for a range of particles and colours them.
#pragma once

#include "COLORCURVE/clsColorSegments.h"

/// How the particles of one class get their colour.
struct SnapColorSource_st {
    ColorSegments_cls mCurve;
    const float* mpValue = nullptr; ///< drives the curve; one entry a particle
};

class ThreadSnapInterpolate_cls {
public:
    static constexpr int kClassNumber = 4;

    /// Threads for `number` particles, 1 to 4.
    static int GetThreadCount(long long number);
    /// Fill the particles begin to end (exclusive) that are multiples of mStep. Ranges of one object may be
    /// filled by several threads at once.
    void InterpolateDataLinear(long long begin, long long end) const;

    // Sources. Without slopes (null) the sources are copied.
    const float (*mpPos)[3] = nullptr;
    const float (*mpVel)[3] = nullptr;
    const float* mpRadius = nullptr;
    const float* mpDRadius = nullptr;
    const float* mpValue1 = nullptr;
    const float* mpDValue1 = nullptr;
    const unsigned char* mpType = nullptr;
    // Targets.
    float (*mpPosOut)[3] = nullptr;
    float* mpRadiusOut = nullptr;
    float* mpValue1Out = nullptr;
    float (*mpColorOut)[4] = nullptr; ///< aligned to 16 bytes

    SnapColorSource_st mSource[kClassNumber]; ///< types past the last class take the first one's
    float mDT = 0.0f;
    long long mStep = 1;

private:
    void EvaluateAll(long long begin, long long end, bool bStream) const;
    void EvaluateStepped(long long begin, long long end) const;
    void ColorAll(long long begin, long long end) const;
    void ColorConstant(long long begin, long long end) const;
    bool IsConstant() const;
};
