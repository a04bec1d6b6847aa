#include "PDATA/ParticleScalars.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <wx/intl.h>

#include "COMMON/DataLoops.h"
#include "PDATA/clsPDataBlock.h"

namespace {

constexpr long long kPiece = 2048;          // particles looked at together
constexpr long long kMostCounted = 1000000; // a histogram of more looks no different

MORENTIS_DATA_LOOP
void Lengths(float* pOut, const float (*pV)[3], long long count) {
    for (long long i = 0; i < count; ++i)
        pOut[i] = std::sqrt(pV[i][0] * pV[i][0] + pV[i][1] * pV[i][1] + pV[i][2] * pV[i][2]);
}

MORENTIS_DATA_LOOP
void Components(float* pOut, const float* pV, long long count) {
    for (long long i = 0; i < count; ++i)
        pOut[i] = pV[3 * i];
}

MORENTIS_DATA_LOOP
void Numbers(float* pOut, const int* pID, long long count) {
    for (long long i = 0; i < count; ++i)
        pOut[i] = static_cast<float>(pID[i]);
}

using Vectors = float (*ParticleArrays_st::*)[3];

template <Vectors VECTORS>
bool FillLength(float* pOut, const ParticleArrays_st& arrays, long long begin, long long end) {
    if (!(arrays.*VECTORS)) return false;
    Lengths(pOut, arrays.*VECTORS + begin, end - begin);
    return true;
}

template <Vectors VECTORS, int AXIS>
bool FillComponent(float* pOut, const ParticleArrays_st& arrays, long long begin, long long end) {
    if (!(arrays.*VECTORS)) return false;
    Components(pOut, (arrays.*VECTORS)[begin] + AXIS, end - begin);
    return true;
}

bool FillID(float* pOut, const ParticleArrays_st& arrays, long long begin, long long end) {
    if (!arrays.mpID) return false;
    Numbers(pOut, arrays.mpID + begin, end - begin);
    return true;
}

constexpr Vectors kPos = &ParticleArrays_st::mpPos;
constexpr Vectors kVel = &ParticleArrays_st::mpVel;

// The label, the array it lies in, whether it needs slopes, how to fill it.
const std::vector<ParticleScalar_st> kParticleScalars = {
    {wxTRANSLATE("VALUE1"), &ParticleArrays_st::mpValue1, false, nullptr},
    {wxTRANSLATE("Radius"), &ParticleArrays_st::mpRadius, false, nullptr},
    {wxTRANSLATE("Position"), nullptr, false, FillLength<kPos>},
    {wxTRANSLATE("Position(X)"), nullptr, false, FillComponent<kPos, 0>},
    {wxTRANSLATE("Position(Y)"), nullptr, false, FillComponent<kPos, 1>},
    {wxTRANSLATE("Position(Z)"), nullptr, false, FillComponent<kPos, 2>},
    {wxTRANSLATE("Velocity"), nullptr, true, FillLength<kVel>},
    {wxTRANSLATE("Velocity(X)"), nullptr, true, FillComponent<kVel, 0>},
    {wxTRANSLATE("Velocity(Y)"), nullptr, true, FillComponent<kVel, 1>},
    {wxTRANSLATE("Velocity(Z)"), nullptr, true, FillComponent<kVel, 2>},
    {wxTRANSLATE("ID"), nullptr, false, FillID},
};

} // namespace

std::vector<wxString> ParticleScalars_st::GetLabels() {
    std::vector<wxString> labels;
    for (const ParticleScalar_st& scalar : kParticleScalars)
        labels.push_back(wxGetTranslation(scalar.mLabel));
    return labels;
}

const ParticleScalar_st* ParticleScalars_st::Find(unsigned depend) {
    return depend < kParticleScalars.size() ? &kParticleScalars[depend] : nullptr;
}

bool ParticleScalars_st::IsComputed(unsigned depend) {
    const ParticleScalar_st* pScalar = Find(depend);
    return !pScalar || !pScalar->mpArray;
}

bool ParticleScalars_st::NeedsSlopes(unsigned depend) {
    const ParticleScalar_st* pScalar = Find(depend);
    return pScalar && pScalar->mbSlopes;
}

ParticleScalars_st ParticleScalars_st::Of(const PDataBlock_cls& block) {
    ParticleScalars_st scalars;
    if (!block.mbAllocated) return scalars;
    scalars.mArrays = block;
    scalars.mNumber = std::max(block.mParticleNumber, 0);
    return scalars;
}

void ParticleScalars_st::Fill(float* pOut, unsigned depend, long long begin, long long end) const {
    const ParticleScalar_st* pScalar = Find(depend);
    const float* pArray = pScalar && pScalar->mpArray ? mArrays.*pScalar->mpArray : nullptr;
    if (pArray)
        std::copy(pArray + begin, pArray + end, pOut);
    else if (!pScalar || !pScalar->mFill || !pScalar->mFill(pOut, mArrays, begin, end))
        std::fill_n(pOut, end - begin, 0.0f);
}

template <class VISIT>
void ParticleScalars_st::ForEach(unsigned depend, int classIndex, long long stride, VISIT visit) const {
    float values[kPiece];
    stride *= std::max(mStep, 1);
    for (long long begin = 0; begin < mNumber; begin += kPiece) {
        const long long end = std::min(begin + kPiece, mNumber);
        Fill(values, depend, begin, end);
        for (long long i = (begin + stride - 1) / stride * stride; i < end; i += stride) {
            const int type = mArrays.mpType ? GetParticleClass(mArrays.mpType[i]) : 0;
            if (classIndex != kAllClasses && type != classIndex) continue;
            if (std::isfinite(values[i - begin])) visit(values[i - begin]);
        }
    }
}

bool ParticleScalars_st::GetRange(unsigned depend, int classIndex, float* pLow, float* pHigh) const {
    float low = std::numeric_limits<float>::infinity();
    float high = -low;
    ForEach(depend, classIndex, 1, [&](float value) {
        low = std::min(low, value);
        high = std::max(high, value);
    });
    if (low > high) return false;
    *pLow = low;
    *pHigh = high;
    return true;
}

std::vector<float> ParticleScalars_st::Count(unsigned depend, int classIndex, float low, float high,
                                             int binCount) const {
    std::vector<float> bins(static_cast<size_t>(std::max(binCount, 1)), 0.0f);
    const double scale =
        static_cast<double>(bins.size()) / (static_cast<double>(high) - static_cast<double>(low));
    const double last = static_cast<double>(bins.size()) - 1.0;
    if (!std::isfinite(scale)) return bins;
    ForEach(depend, classIndex, mNumber / kMostCounted + 1, [&](float value) {
        const double place = (static_cast<double>(value) - static_cast<double>(low)) * scale;
        bins[static_cast<size_t>(std::clamp(place, 0.0, last))] += 1.0f;
    });
    return bins;
}
