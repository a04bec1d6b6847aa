// What thins the draw list. The list of Boolean filters does; drawing knows no more of it than this.
#pragma once

#include "GL/DRAW/clsArrayAndIndex.h"

class DrawListFilter_cls {
public:
    virtual ~DrawListFilter_cls() = default;

    /// False: Thin would leave the list as it is.
    virtual bool IsThinning() const = 0;
    /// Takes entries whose weight is 0 out of the list, keeping the order, and gives the others theirs as
    /// mAlpha. Positions are those of the snapshot's `particles`, at double index `time`.
    virtual void Thin(DrawList_t& list, long long particles, const float (*pPos)[3], double time) = 0;
    /// Some weights may lie between 0 and 1: then each particle has an alpha of its own.
    virtual bool IsBooleanChangeConstantColor() const = 0;
};
