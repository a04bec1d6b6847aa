#include "PDATA/clsThreadInterpolatorBlock.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "COMMON/DataLoops.h"
#include "PDATA/clsIDIndex.h"
#include "PDATA/clsPDataBlock.h"

namespace {

constexpr int kLanes = 24; // eight particles: whole vectors for every width that processors have

constexpr int kWindows[] = {10, 100, 1000, 10000}; // half widths of the search around the own place

bool IsNear(int i, int j, int width) { return j >= i - width && j < i + width; }

// What an axis does to a difference d: past its limit it goes round the box, or the particle stays.
template <bool FORCE>
inline float Wrap(float d, float half, float length) {
    // Choices instead of branches, so that the loops have no data to guess about.
    if (FORCE) {
        const float above = d > half ? 0.0f : d;
        return d < -half ? 0.0f : above;
    }
    const float below = d < -half ? -length : 0.0f;
    return d - (d > half ? length : below);
}

MORENTIS_DATA_LOOP
void Slopes(float* pSlope, const float* pFrom, const float* pTo, float dt, long long begin, long long end) {
    for (long long k = begin; k < end; ++k)
        pSlope[k] = (pTo[k] - pFrom[k]) / dt;
}

template <bool FORCE>
inline void SlopesWrapped(float* pSlope, const float* pFrom, const float* pTo, float dt, long long count,
                          const float* pHalf, const float* pLength) {
    const long long whole = count / kLanes * kLanes;
    for (long long start = 0; start < whole; start += kLanes)
        for (int k = 0; k < kLanes; ++k)
            pSlope[start + k] = Wrap<FORCE>(pTo[start + k] - pFrom[start + k], pHalf[k], pLength[k]) / dt;
    for (long long k = whole; k < count; ++k)
        pSlope[k] = Wrap<FORCE>(pTo[k] - pFrom[k], pHalf[k - whole], pLength[k - whole]) / dt;
}

MORENTIS_DATA_LOOP
void SlopesGuess(float* pSlope, const float* pFrom, const float* pTo, float dt, long long count,
                 const float* pHalf, const float* pLength) {
    SlopesWrapped<false>(pSlope, pFrom, pTo, dt, count, pHalf, pLength);
}

MORENTIS_DATA_LOOP
void SlopesForce(float* pSlope, const float* pFrom, const float* pTo, float dt, long long count,
                 const float* pHalf, const float* pLength) {
    SlopesWrapped<true>(pSlope, pFrom, pTo, dt, count, pHalf, pLength);
}

} // namespace

void ThreadInterpolatorBlock_cls::SetParameters(const PDataBlock_cls& block, const PDataBlock_cls& next,
                                                int periodicType, int periodicEffect, const float boundary[3],
                                                int begin, int end, float dt) {
    mVariableNumber = block.mpID && next.mpID ? block.mVariableNumber : 0;
    mPeriodicType = periodicType;
    mPeriodicEffect = periodicEffect;
    std::copy_n(boundary, 3, mBoundary);
    mpPos = block.mpPos;
    mpVel = block.mpVel;
    mpRadius = block.mpRadius;
    mpDRadius = block.mpDRadius;
    mpValue1 = block.mpValue1;
    mpDValue1 = block.mpDValue1;
    mpID = block.mpID;
    mpPosNext = next.mpPos;
    mpRadiusNext = next.mpRadius;
    mpValue1Next = next.mpValue1;
    mpIDNext = next.mpID;
    mNumberNext = std::max(next.mParticleNumber, 0);
    mBegin = begin;
    mEnd = end;
    mDT = dt;
}

void ThreadInterpolatorBlock_cls::Entry() {
    if (mBegin >= mEnd) return;
    if (mVariableNumber == 1)
        WithCore([this](auto core) { InterpolateDataLinearSearchingID(core); });
    else if (mVariableNumber == 2)
        WithCore([this](auto core) { InterpolateDataLinearSearchingIDSorted(core); });
    else if (mPeriodicType == 0)
        InterpolateDataLinear();
    else
        InterpolateDataLinearPeriodic();
}

void ThreadInterpolatorBlock_cls::InterpolateScalars() {
    Slopes(mpDRadius, mpRadius, mpRadiusNext, mDT, mBegin, mEnd);
    Slopes(mpDValue1, mpValue1, mpValue1Next, mDT, mBegin, mEnd);
}

void ThreadInterpolatorBlock_cls::InterpolateDataLinear() {
    Slopes(mpVel[0], mpPos[0], mpPosNext[0], mDT, 3LL * mBegin, 3LL * mEnd);
    InterpolateScalars();
}

void ThreadInterpolatorBlock_cls::InterpolateDataLinearPeriodic() {
    // An axis that doesn't wrap has its limit where no difference gets.
    float half[kLanes];
    float length[kLanes];
    for (int k = 0; k < kLanes; ++k) {
        const bool bWraps = mPeriodicType != 1 || k % 3 < 2;
        length[k] = mBoundary[k % 3];
        half[k] = bWraps ? 0.5f * length[k] : std::numeric_limits<float>::infinity();
    }
    const auto slopes = mPeriodicEffect == 0 ? SlopesGuess : SlopesForce;
    slopes(mpVel[mBegin], mpPos[mBegin], mpPosNext[mBegin], mDT, 3LL * (mEnd - mBegin), half, length);
    InterpolateScalars();
}

// WRAP: 0 no axis, 2 x and y, 3 all. Boxes that wrap in all three directions take the next radius and value
// from the particle's own place, not from where its ID was found.
template <int WRAP, bool FORCE>
void ThreadInterpolatorBlock_cls::Core(int i, int j) {
    for (int c = 0; c < 3; ++c) {
        float d = mpPosNext[j][c] - mpPos[i][c];
        if (c < WRAP) d = Wrap<FORCE>(d, 0.5f * mBoundary[c], mBoundary[c]);
        mpVel[i][c] = d / mDT;
    }
    const int scalar = WRAP == 3 ? i : j;
    mpDRadius[i] = (mpRadiusNext[scalar] - mpRadius[i]) / mDT;
    mpDValue1[i] = (mpValue1Next[scalar] - mpValue1[i]) / mDT;
}

template <class VISIT>
void ThreadInterpolatorBlock_cls::WithCore(VISIT visit) {
    const bool bForce = mPeriodicEffect != 0;
    if (mPeriodicType == 0)
        visit([this](int i, int j) { Core<0, false>(i, j); });
    else if (mPeriodicType == 1 && !bForce)
        visit([this](int i, int j) { Core<2, false>(i, j); });
    else if (mPeriodicType == 1)
        visit([this](int i, int j) { Core<2, true>(i, j); });
    else if (!bForce)
        visit([this](int i, int j) { Core<3, false>(i, j); });
    else
        visit([this](int i, int j) { Core<3, true>(i, j); });
}

void ThreadInterpolatorBlock_cls::StandStill(int i) {
    std::fill_n(mpVel[i], 3, 0.0f);
    mpDRadius[i] = 0.0f;
    mpDValue1[i] = 0.0f;
}

template <class CORE>
void ThreadInterpolatorBlock_cls::InterpolateDataLinearSearchingID(CORE core) {
    for (int i = mBegin; i < mEnd; ++i) {
        const int j = i < mNumberNext && mpIDNext[i] == mpID[i] ? i : SearchID(i);
        if (j >= 0)
            core(i, j);
        else
            StandStill(i);
    }
}

int ThreadInterpolatorBlock_cls::SearchID(int i) const {
    if (mpIDIndex) {
        // An ID that stands once is found wherever the widest of the windows would have met it.
        const int j = mpIDIndex->FindOnly(mpID[i]);
        if (j != IDIndex_cls::kSeveral)
            return j >= 0 && (IsNear(i, j, kWindows[std::size(kWindows) - 1]) || j < mNumberNext / 10) ? j
                                                                                                       : -1;
    }
    for (const int width : kWindows) {
        const int j = SearchIDNear(i, width);
        if (j >= 0) return j;
    }
    return SearchIDFull(mpID[i]);
}

int ThreadInterpolatorBlock_cls::SearchIDNear(int i, int width) const {
    const int begin = std::max(i - width, 0);
    const int end = i < mNumberNext - width ? i + width : mNumberNext;
    return SearchIDBetween(mpID[i], begin, end);
}

// With millions of particles a scan of everything for each lost one would never end: what isn't in the first
// tenth is taken as gone.
int ThreadInterpolatorBlock_cls::SearchIDFull(int id) const {
    return SearchIDBetween(id, 0, mNumberNext / 10);
}

int ThreadInterpolatorBlock_cls::SearchIDBetween(int id, int begin, int end) const {
    if (begin >= end) return -1;
    if (mpIDIndex) return mpIDIndex->FindBetween(id, begin, end);
    const int* pFound = std::find(mpIDNext + begin, mpIDNext + end, id);
    return pFound == mpIDNext + end ? -1 : static_cast<int>(pFound - mpIDNext);
}

template <class CORE>
void ThreadInterpolatorBlock_cls::InterpolateDataLinearSearchingIDSorted(CORE core) {
    // Where a walk from the start would come to as well.
    int cursor =
        static_cast<int>(std::lower_bound(mpIDNext, mpIDNext + mNumberNext, mpID[mBegin]) - mpIDNext);
    for (int i = mBegin; i < mEnd; ++i) {
        if (SearchIDFrom(&cursor, mpID[i]))
            core(i, cursor++);
        else
            StandStill(i);
    }
}

bool ThreadInterpolatorBlock_cls::SearchIDFrom(int* pCursor, int id) const {
    int p = *pCursor;
    while (p < mNumberNext && mpIDNext[p] < id)
        ++p;
    const bool bFound = p < mNumberNext && mpIDNext[p] == id;
    // Not found: stay on the last smaller entry, in case the next wanted ID goes down again.
    *pCursor = bFound || p == *pCursor ? p : p - 1;
    return bFound;
}
