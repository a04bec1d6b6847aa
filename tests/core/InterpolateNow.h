// For tests and benchmarks: the program's interpolator, waited for.
#pragma once

#include <atomic>

#include "PDATA/clsThreadInterpolator.h"

/// The slopes of `block` towards `next`, `dt` later, are there on return.
inline void InterpolateNow(const PDataBlock_cls& block, const PDataBlock_cls& next,
                           const PeriodicBoundary_cls* pPeriodic, float dt) {
    std::atomic<bool> bFinished{false};
    ThreadInterpolator_cls interpolator;
    interpolator.SetParameters(&bFinished, pPeriodic, block, next, dt);
    interpolator.Run();
}
