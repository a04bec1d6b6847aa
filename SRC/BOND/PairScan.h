// Who of the particles gathered near a place is near enough: the innermost loop of the search for pairs.
#pragma once

#include <cstddef>

#include "BOND/clsPairGrid.h"

/// What is looked for around a place.
struct PairScan_st {
    float mFrom[3];   ///< the place
    float mOffset[3]; ///< added to the particles' places
    float mLimit;     ///< of squared distances, beyond which nothing counts
    int mAbove;       ///< indices that count are greater
};

constexpr size_t kPairScanRoom = 8; ///< elements that are written behind the last one

/// Put indices and squared distances of those near enough one behind the other, in the order in which they
/// were gathered. The arrays have room for all of them and kPairScanRoom more. `bWide` (HasWideRegisters)
/// chooses the way, not what comes out. \return their number.
size_t ScanNear(const PairScan_st& scan, const PairGrid_cls::Near_st& near, bool bWide, int* pIndex,
                float* pSquare);
/// Sort by index, all of which differ: indices and what belongs to them (null: nothing). What is sorted has
/// room for kPairScanRoom more, which are written over.
void SortHits(int* pIndex, const float* pValue, size_t number, bool bWide, unsigned* pIndexOut,
              float* pValueOut);
