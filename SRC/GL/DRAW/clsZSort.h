// Depth sorting of the draw list, fast enough to be done for every changed view and on all cores.
#pragma once

#include "GL/DRAW/clsArrayAndIndex.h"

class ZSort_cls {
public:
    /// Depth keys: 0 along the view, 1 by distance from the eye. Ascending, both begin with the farthest.
    enum Mode { PLANE_DEPTH = 0, EYE_DISTANCE = 1 };

    /// Fill `pList` with every `step`-th of `count` particles and its key; leaves out a last one that has no
    /// full step behind it. Camera in data coordinates; with `pPlace` see DrawListOrder. Returns the number
    /// of entries, count / step.
    static int ZSortPrepare(ArrayAndIndex_cls* pList, int count, int step, const float (*pPos)[3],
                            const double* cameraPos, const double* cameraDir, int mode,
                            const double* pPlace = nullptr);

    /// Ascending by key; equal keys keep their order, keys that are no numbers come last. A preference for
    /// an approximate order is met by the exact one: it costs nothing more.
    static void ZSortParallel(DrawList_t& list);
};
