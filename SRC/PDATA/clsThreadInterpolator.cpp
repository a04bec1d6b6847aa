#include "PDATA/clsThreadInterpolator.h"

#include <algorithm>
#include <system_error>
#include <vector>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/OnThreads.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsIDIndex.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "PDATA/clsThreadInterpolatorBlock.h"

namespace {

constexpr int kIndexFrom = 2000; // lost places from which sorting the IDs is cheaper than scanning for each

/// Fill the index when so many particles changed their place that it pays.
void MakeIDIndex(const PDataBlock_cls& block, const PDataBlock_cls& next, int number, IDIndex_cls* pIndex) {
    if (block.mVariableNumber != NUMBER_VARIABLE || !block.mpID || !next.mpID) return;
    int moved = 0;
    for (int i = 0; i < number; ++i)
        moved += block.mpID[i] != next.mpID[i] ? 1 : 0;
    // When memory is short the index stays empty, and the search goes by scanning.
    if (moved >= kIndexFrom) pIndex->Make(next.mpID, next.mParticleNumber);
}

} // namespace

ThreadInterpolator_cls::Box ThreadInterpolator_cls::CopyBox(const PeriodicBoundary_cls* pPeriodic) {
    Box box;
    if (!pPeriodic) return box;
    box.mType = static_cast<PeriodicType>(pPeriodic->mCPeriodicType.mValue);
    box.mEffect = static_cast<PeriodicEffect>(pPeriodic->mCPeriodicEffect.mValue);
    for (int k = 0; k < 3; ++k) {
        float vector[3];
        pPeriodic->GetBoundaryVector(vector, k);
        box.mLength[k] = vector[k]; // a slanted box counts as its diagonal lengths
    }
    return box;
}

void ThreadInterpolator_cls::SetParameters(std::atomic<bool>* pFinished,
                                           const PeriodicBoundary_cls* pPeriodic, const PDataBlock_cls& block,
                                           const PDataBlock_cls& next, float dt) {
    mpbFinished = pFinished;
    mpCBlock = &block;
    mpCNext = &next;
    mBox = CopyBox(pPeriodic);
    mDT = dt;
}

ThreadInterpolator_cls::~ThreadInterpolator_cls() {
    if (mThread.joinable()) mThread.join();
}

void ThreadInterpolator_cls::Run() {
    try {
        mThread = std::thread(&ThreadInterpolator_cls::Entry, this);
    } catch (const std::system_error&) {
        Entry(); // a system that gives no more threads waits
    }
}

int ThreadInterpolator_cls::GetThreadCount(int number) {
    if (number < 100001) return 1;
    if (number < 300001) return 2;
    if (number < 1000001) return 3;
    if (number <= 3000000) return 4;
    return number <= 10000000 ? 5 : 6;
}

void ThreadInterpolator_cls::Entry() {
    Interpolate();
    mpbFinished->store(true, std::memory_order_release);
    PostMenuEvent(ID_REFRESH_TL);
    GbThreadInterpolateFinished.store(true, std::memory_order_release);
    // Whoever saw the flag may have started a successor by now: clear only what is ours.
    ThreadInterpolator_cls* pSelf = this;
    GpCThreadInterpolate.compare_exchange_strong(pSelf, nullptr);
}

// Only linear interpolation has slopes to compute: else the file's velocity serves, and radius and value keep
// the zeros that they have from the reader.
void ThreadInterpolator_cls::Interpolate() const {
    const PDataBlock_cls& block = *mpCBlock;
    const PDataBlock_cls& next = *mpCNext;
    if (block.mInterpolateType != INTERPOLATE_LINEAR || !block.mbAllocated || !next.mbAllocated) return;
    const int number = std::min(block.mParticleNumber, next.mParticleNumber);
    const int count = GetThreadCount(block.mParticleNumber);
    const int share = number / count;
    IDIndex_cls index;
    MakeIDIndex(block, next, number, &index);
    std::vector<ThreadInterpolatorBlock_cls> workers(static_cast<size_t>(count));
    for (int k = 0; k < count; ++k) {
        const int end = k + 1 < count ? (k + 1) * share : number;
        workers[static_cast<size_t>(k)].SetParameters(block, next, mBox.mType, mBox.mEffect, mBox.mLength,
                                                      k * share, end, mDT);
    }
    for (ThreadInterpolatorBlock_cls& worker : workers)
        worker.SetIDIndex(index.IsEmpty() ? nullptr : &index);
    OnThreads(count, [&](int k) { workers[static_cast<size_t>(k)].Entry(); });
}
