// The scalars of particles that colours may depend on.
#pragma once

#include <vector>

class PDataBlock_cls;

/// Where the particles' arrays lie. An array that isn't there counts as zeros.
struct ParticleScalars_st {
    static constexpr unsigned kFirstComputed = 2; ///< scalars from here on are worked out of other arrays
    static constexpr int kAllClasses = -1;

    /// As they were read, velocities as the interpolator left them.
    static ParticleScalars_st Of(const PDataBlock_cls& block);

    /// Scalar `depend` (ColorCurve_cls::mDependType) of the particles begin to end (exclusive) into pOut.
    void Fill(float* pOut, unsigned depend, long long begin, long long end) const;
    /// Extremes of the finite values among the particles of a class (0 to 3; types past 3 belong to class
    /// 0); false when there are none.
    bool GetRange(unsigned depend, int classIndex, float* pLow, float* pHigh) const;
    /// Count those values into `binCount` equal parts from `low` to `high`, the outer ones taking what lies
    /// beyond; of many particles, every n-th.
    std::vector<float> Count(unsigned depend, int classIndex, float low, float high, int binCount) const;

    const float (*mpPos)[3] = nullptr;
    const float (*mpVel)[3] = nullptr;
    const float* mpRadius = nullptr;
    const float* mpValue1 = nullptr;
    const int* mpID = nullptr;
    const unsigned char* mpType = nullptr;
    long long mNumber = 0;
    int mStep = 1; ///< only multiples of it are filled

private:
    template <class VISIT>
    void ForEach(unsigned depend, int classIndex, long long stride, VISIT visit) const;
};
