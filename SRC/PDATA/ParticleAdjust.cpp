#include "PDATA/ParticleAdjust.h"

#include <cmath>

#include "PDATA/ParticleArrays.h"

namespace {

// Factors of 0 mean "leave alone"; 1 changes nothing and needs no pass over the memory.
bool Counts(float factor) { return factor != 0.0f && factor != 1.0f; }

bool Shifts(const float* v) { return v[0] != 0.0f || v[1] != 0.0f || v[2] != 0.0f; }

void Multiply(float* array, size_t first, size_t last, float factor) {
    for (size_t i = first; i < last; ++i)
        array[i] *= factor;
}

} // namespace

bool ParticleAdjust_st::IsNothing() const {
    return !Shifts(mTranslate) && !Counts(mScale) && !Counts(mScaleValue) && !mbLogarithm;
}

void ParticleAdjust_st::Apply(const ParticleArrays_st& arrays, size_t first, size_t last) const {
    if (Shifts(mTranslate))
        for (size_t i = first; i < last; ++i)
            for (int k = 0; k < 3; ++k)
                arrays.mpPos[i][k] += mTranslate[k];
    if (Counts(mScale)) {
        Multiply(&arrays.mpPos[0][0], 3 * first, 3 * last, mScale);
        Multiply(&arrays.mpVel[0][0], 3 * first, 3 * last, mScale);
        Multiply(arrays.mpRadius, first, last, mScale);
    }
    if (Counts(mScaleValue)) Multiply(arrays.mpValue1, first, last, mScaleValue);
    if (mbLogarithm)
        for (size_t i = first; i < last; ++i)
            arrays.mpValue1[i] = arrays.mpValue1[i] > 0.0f ? std::log10(arrays.mpValue1[i]) : 0.0f;
}
