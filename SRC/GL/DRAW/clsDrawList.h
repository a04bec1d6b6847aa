// Which particles are drawn, and in which order.
#pragma once

#include "GL/DRAW/clsArrayAndIndex.h"

class DrawListFilter_cls;

/// How a draw list is made: "SortOrder=" of the draw options, and where the eye is in data coordinates.
struct DrawListOrder {
    unsigned sortOrder = 0; ///< a SortOrder (clsDrawOption.h)
    bool planeDepth = true; ///< with far first: depth along the view, else distance from the eye
    double cameraPos[3] = {0, 0, 0};
    double cameraDir[3] = {0, 0, -1};
    /// Of 4 by 4 numbers, column by column: distances are those of places that this has moved, from a camera
    /// that it hasn't; the direction has been turned into data coordinates all the same. Null: nothing moves.
    const double* pPlace = nullptr;
};

/// Does a list in this order (a SortOrder) leave out what the list filter does?
bool IsListThinned(unsigned sortOrder);

/// How many of `count` particles are in a list of every `step`-th, before any filter.
long long GetListLength(long long count, long long step, unsigned sortOrder);

/// Every `step`-th of `count` particles; far first leaves out a last one that has no full step behind
/// it. Keys that are no numbers come last. `pFilter` thins the list before it is sorted, but not with near
/// first; at double index `time`, null: nothing does.
void MakeDrawList(DrawList_t& list, int count, int step, const float (*pPos)[3], const DrawListOrder& order,
                  DrawListFilter_cls* pFilter = nullptr, double time = 0.0);
