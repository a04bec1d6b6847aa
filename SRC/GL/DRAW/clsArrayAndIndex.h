// The draw list: which particles are drawn, in which order.
#pragma once

#include <vector>

#include "COMMON/BigAllocator.h"

struct ArrayAndIndex_cls {
    int mIndex;   ///< particle in the snapshot's arrays
    float mKey;   ///< depth key; the list is drawn by ascending key
    float mAlpha; ///< factor on the particle's alpha, 1 unless a filter fades it
};

using DrawList_t = std::vector<ArrayAndIndex_cls, BigAllocator_cls<ArrayAndIndex_cls>>;
