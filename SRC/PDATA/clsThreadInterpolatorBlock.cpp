#include "PDATA/clsThreadInterpolatorBlock.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "COMMON/DataLoops.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsIDIndex.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPeriodicBoundary.h"

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
                                                PeriodicType periodicType, PeriodicEffect periodicEffect,
                                                const float boundary[3], int begin, int end, float dt) {
    mVariableNumber = NUMBER_CONSTANT;
    if (block.mpID && next.mpID) mVariableNumber = block.mVariableNumber;
    mPeriodicType = periodicType;
    mPeriodicEffect = periodicEffect;
    std::copy_n(boundary, 3, mBoundary);
    mOwn = block;
    mNext = next;
    mNumberNext = std::max(next.mParticleNumber, 0);
    mBegin = begin;
    mEnd = end;
    mDT = dt;
}

void ThreadInterpolatorBlock_cls::Entry() {
    if (mBegin >= mEnd) return;
    if (mVariableNumber == NUMBER_VARIABLE)
        WithCore([this](auto core) { InterpolateDataLinearSearchingID(core); });
    else if (mVariableNumber == NUMBER_SORTED)
        WithCore([this](auto core) { InterpolateDataLinearSearchingIDSorted(core); });
    else if (mPeriodicType == PERIODIC_NONE)
        InterpolateDataLinear();
    else
        InterpolateDataLinearPeriodic();
}

void ThreadInterpolatorBlock_cls::InterpolateScalars() {
    Slopes(mOwn.mpDRadius, mOwn.mpRadius, mNext.mpRadius, mDT, mBegin, mEnd);
    Slopes(mOwn.mpDValue1, mOwn.mpValue1, mNext.mpValue1, mDT, mBegin, mEnd);
}

void ThreadInterpolatorBlock_cls::InterpolateDataLinear() {
    Slopes(mOwn.mpVel[0], mOwn.mpPos[0], mNext.mpPos[0], mDT, 3LL * mBegin, 3LL * mEnd);
    InterpolateScalars();
}

void ThreadInterpolatorBlock_cls::InterpolateDataLinearPeriodic() {
    // An axis that doesn't wrap has its limit where no difference gets.
    float half[kLanes];
    float length[kLanes];
    for (int k = 0; k < kLanes; ++k) {
        const bool bWraps = mPeriodicType != PERIODIC_XY || k % 3 < 2;
        length[k] = mBoundary[k % 3];
        half[k] = bWraps ? 0.5f * length[k] : std::numeric_limits<float>::infinity();
    }
    const auto slopes = mPeriodicEffect == PERIODIC_GUESS_VELOCITY ? SlopesGuess : SlopesForce;
    slopes(mOwn.mpVel[mBegin], mOwn.mpPos[mBegin], mNext.mpPos[mBegin], mDT, 3LL * (mEnd - mBegin), half,
           length);
    InterpolateScalars();
}

// WRAP: 0 no axis, 2 x and y, 3 all. Boxes that wrap in all three directions take the next radius and value
// from the particle's own place, not from where its ID was found.
template <int WRAP, bool FORCE>
void ThreadInterpolatorBlock_cls::Core(int i, int j) {
    for (int c = 0; c < 3; ++c) {
        float d = mNext.mpPos[j][c] - mOwn.mpPos[i][c];
        if (c < WRAP) d = Wrap<FORCE>(d, 0.5f * mBoundary[c], mBoundary[c]);
        mOwn.mpVel[i][c] = d / mDT;
    }
    const int scalar = WRAP == 3 ? i : j;
    mOwn.mpDRadius[i] = (mNext.mpRadius[scalar] - mOwn.mpRadius[i]) / mDT;
    mOwn.mpDValue1[i] = (mNext.mpValue1[scalar] - mOwn.mpValue1[i]) / mDT;
}

template <class VISIT>
void ThreadInterpolatorBlock_cls::WithCore(VISIT visit) {
    const bool bForce = mPeriodicEffect != PERIODIC_GUESS_VELOCITY;
    if (mPeriodicType == PERIODIC_NONE)
        visit([this](int i, int j) { Core<0, false>(i, j); });
    else if (mPeriodicType == PERIODIC_XY && !bForce)
        visit([this](int i, int j) { Core<2, false>(i, j); });
    else if (mPeriodicType == PERIODIC_XY)
        visit([this](int i, int j) { Core<2, true>(i, j); });
    else if (!bForce)
        visit([this](int i, int j) { Core<3, false>(i, j); });
    else
        visit([this](int i, int j) { Core<3, true>(i, j); });
}

void ThreadInterpolatorBlock_cls::StandStill(int i) {
    std::fill_n(mOwn.mpVel[i], 3, 0.0f);
    mOwn.mpDRadius[i] = 0.0f;
    mOwn.mpDValue1[i] = 0.0f;
}

template <class CORE>
void ThreadInterpolatorBlock_cls::InterpolateDataLinearSearchingID(CORE core) {
    for (int i = mBegin; i < mEnd; ++i) {
        const int j = i < mNumberNext && mNext.mpID[i] == mOwn.mpID[i] ? i : SearchID(i);
        if (j >= 0)
            core(i, j);
        else
            StandStill(i);
    }
}

int ThreadInterpolatorBlock_cls::SearchID(int i) const {
    if (mpIDIndex) {
        // An ID that stands once is found wherever the widest of the windows would have met it.
        const int j = mpIDIndex->FindOnly(mOwn.mpID[i]);
        if (j != IDIndex_cls::kSeveral)
            return j >= 0 && (IsNear(i, j, kWindows[std::size(kWindows) - 1]) || j < mNumberNext / 10) ? j
                                                                                                       : -1;
    }
    for (const int width : kWindows) {
        const int j = SearchIDNear(i, width);
        if (j >= 0) return j;
    }
    return SearchIDFull(mOwn.mpID[i]);
}

int ThreadInterpolatorBlock_cls::SearchIDNear(int i, int width) const {
    const int begin = std::max(i - width, 0);
    const int end = i < mNumberNext - width ? i + width : mNumberNext;
    return SearchIDBetween(mOwn.mpID[i], begin, end);
}

// With millions of particles a scan of everything for each lost one would never end: what isn't in the first
// tenth is taken as gone.
int ThreadInterpolatorBlock_cls::SearchIDFull(int id) const {
    return SearchIDBetween(id, 0, mNumberNext / 10);
}

int ThreadInterpolatorBlock_cls::SearchIDBetween(int id, int begin, int end) const {
    if (begin >= end) return -1;
    if (mpIDIndex) return mpIDIndex->FindBetween(id, begin, end);
    const int* pFound = std::find(mNext.mpID + begin, mNext.mpID + end, id);
    return pFound == mNext.mpID + end ? -1 : static_cast<int>(pFound - mNext.mpID);
}

template <class CORE>
void ThreadInterpolatorBlock_cls::InterpolateDataLinearSearchingIDSorted(CORE core) {
    // Where a walk from the start would come to as well.
    int cursor = static_cast<int>(std::lower_bound(mNext.mpID, mNext.mpID + mNumberNext, mOwn.mpID[mBegin]) -
                                  mNext.mpID);
    for (int i = mBegin; i < mEnd; ++i) {
        if (SearchIDFrom(&cursor, mOwn.mpID[i]))
            core(i, cursor++);
        else
            StandStill(i);
    }
}

bool ThreadInterpolatorBlock_cls::SearchIDFrom(int* pCursor, int id) const {
    int p = *pCursor;
    while (p < mNumberNext && mNext.mpID[p] < id)
        ++p;
    const bool bFound = p < mNumberNext && mNext.mpID[p] == id;
    // Not found: stay on the last smaller entry, in case the next wanted ID goes down again.
    *pCursor = bFound || p == *pCursor ? p : p - 1;
    return bFound;
}
