// One entry of the draw list.
#pragma once

struct ArrayAndIndex_cls {
    int mIndex;   ///< particle in the snapshot's arrays
    float mKey;   ///< depth key; the list is drawn by ascending key
    float mAlpha; ///< factor on the particle's alpha, 1 unless a filter fades it
};
