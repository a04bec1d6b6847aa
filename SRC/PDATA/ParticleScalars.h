// The scalars of particles that colours may depend on.
//
// kParticleScalars in ParticleScalars.cpp is the table of them: a new scalar is a line there, and all else
// (choices, ranges, histograms, drawing) follows.
#pragma once

#include <vector>

#include <wx/string.h>

#include "PDATA/ParticleArrays.h"

class PDataBlock_cls;

/// One scalar. Its place in the table is the value that files and ColorCurve_cls::mDependType hold.
struct ParticleScalar_st {
    const char* mLabel; ///< of the choice "Depend on", to be translated
    /// The array that holds it, which moves with time; null: worked out of the block's arrays by mFill.
    float* ParticleArrays_st::*mpArray;
    bool mbSlopes; ///< reads velocities, which interpolation turns into slopes
    /// The scalar of the particles begin to end (exclusive); false when arrays are missing.
    bool (*mFill)(float* pOut, const ParticleArrays_st& arrays, long long begin, long long end);
};

/// Where the particles' arrays lie. An array that isn't there counts as zeros.
struct ParticleScalars_st {
    static constexpr int kAllClasses = -1;

    /// Their labels, translated, in the order of the table.
    static std::vector<wxString> GetLabels();
    /// Null for a value that files may hold but no scalar has: it counts as computed and is 0.
    static const ParticleScalar_st* Find(unsigned depend);
    /// Is it worked out of other arrays, and so shared by all curves of a draw-time snapshot?
    static bool IsComputed(unsigned depend);
    /// Does it read velocities?
    static bool NeedsSlopes(unsigned depend);

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

    ParticleArrays_st mArrays; ///< only read
    long long mNumber = 0;
    int mStep = 1; ///< only multiples of it are filled

private:
    template <class VISIT>
    void ForEach(unsigned depend, int classIndex, long long stride, VISIT visit) const;
};
