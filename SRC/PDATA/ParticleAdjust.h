// What the loader does to the numbers of a file: shift, scale, logarithm.
#pragma once

#include <cstddef>

struct ParticleArrays_st;

struct ParticleAdjust_st {
    float mTranslate[3] = {0, 0, 0}; ///< added to positions, first of all
    float mScale = 1;                ///< then of positions, velocities and radii; 0 leaves them alone
    float mScaleValue = 1;           ///< of Value1; 0 leaves it alone
    bool mbLogarithm = false;        ///< then Value1 becomes its log10, or 0 where it isn't positive

    /// Nothing would change.
    bool IsNothing() const;
    /// Adjust the particles first to last - 1.
    void Apply(const ParticleArrays_st& arrays, size_t first, size_t last) const;
};
