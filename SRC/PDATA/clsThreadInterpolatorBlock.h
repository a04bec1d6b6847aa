// One share of the interpolator's work: slopes towards the next snapshot for a contiguous range of particles.
#pragma once

#include "PDATA/ParticleArrays.h"

class IDIndex_cls;
class PDataBlock_cls;
enum PeriodicEffect : unsigned;
enum PeriodicType : unsigned;

class ThreadInterpolatorBlock_cls {
public:
    /// Slopes of `block`'s particles begin to end (exclusive) towards `next`, which is `dt` later. `boundary`
    /// holds the lengths of the periodic box.
    void SetParameters(const PDataBlock_cls& block, const PDataBlock_cls& next, PeriodicType periodicType,
                       PeriodicEffect periodicEffect, const float boundary[3], int begin, int end, float dt);
    /// Search with the next snapshot's index instead of by scanning; the answers are the same. It must
    /// outlive the work.
    void SetIDIndex(const IDIndex_cls* pIndex) { mpIDIndex = pIndex; }
    /// The work itself, on whatever thread calls it.
    void Entry();

private:
    template <int WRAP, bool FORCE>
    void Core(int i, int j);
    void InterpolateDataLinear();
    void InterpolateDataLinearPeriodic();
    template <class CORE>
    void InterpolateDataLinearSearchingID(CORE core);
    template <class CORE>
    void InterpolateDataLinearSearchingIDSorted(CORE core);
    template <class VISIT>
    void WithCore(VISIT visit);
    void InterpolateScalars();
    void StandStill(int i);
    int SearchID(int i) const;
    int SearchIDNear(int i, int width) const;
    int SearchIDFull(int id) const;
    int SearchIDBetween(int id, int begin, int end) const;
    bool SearchIDFrom(int* pCursor, int id) const;

    int mVariableNumber = 0; ///< a VariableNumber
    PeriodicType mPeriodicType{};
    PeriodicEffect mPeriodicEffect{};
    float mBoundary[3] = {0, 0, 0};
    ParticleArrays_st mOwn;  ///< the slopes are written
    ParticleArrays_st mNext; ///< only read
    const IDIndex_cls* mpIDIndex = nullptr;
    int mBegin = 0;
    int mEnd = 0;
    int mNumberNext = 0;
    float mDT = 1.0f;
};
