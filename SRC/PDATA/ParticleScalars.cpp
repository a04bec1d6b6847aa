#include "PDATA/ParticleScalars.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

} // namespace

ParticleScalars_st ParticleScalars_st::Of(const PDataBlock_cls& block) {
    ParticleScalars_st scalars;
    if (!block.mbAllocated) return scalars;
    scalars.mpPos = block.mpPos;
    scalars.mpVel = block.mpVel;
    scalars.mpRadius = block.mpRadius;
    scalars.mpValue1 = block.mpValue1;
    scalars.mpID = block.mpID;
    scalars.mpType = block.mpType;
    scalars.mNumber = std::max(block.mParticleNumber, 0);
    return scalars;
}

void ParticleScalars_st::Fill(float* pOut, unsigned depend, long long begin, long long end) const {
    const long long count = end - begin;
    const float(*pVector)[3] = depend < 6 ? mpPos : mpVel;
    const float* pPlain = depend == 1 ? mpRadius : mpValue1;
    if (depend < kFirstComputed && pPlain)
        std::copy(pPlain + begin, pPlain + end, pOut);
    else if ((depend == 2 || depend == 6) && pVector)
        Lengths(pOut, pVector + begin, count);
    else if (depend >= 3 && depend <= 9 && pVector)
        Components(pOut, pVector[begin] + (depend + 1) % 4, count);
    else if (depend == 10 && mpID)
        Numbers(pOut, mpID + begin, count);
    else
        std::fill_n(pOut, count, 0.0f);
}

template <class VISIT>
void ParticleScalars_st::ForEach(unsigned depend, int classIndex, long long stride, VISIT visit) const {
    float values[kPiece];
    stride *= std::max(mStep, 1);
    for (long long begin = 0; begin < mNumber; begin += kPiece) {
        const long long end = std::min(begin + kPiece, mNumber);
        Fill(values, depend, begin, end);
        for (long long i = (begin + stride - 1) / stride * stride; i < end; i += stride) {
            const int type = mpType ? (mpType[i] > 3 ? 0 : mpType[i]) : 0;
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
