// Cuts the particles with a region of space, hard or with a soft border.
#pragma once

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class FilterBooleanData_cls final : public FilterData_cls {
public:
    enum Operator : unsigned { INTERSECT = 0, DIFFERENCE = 1, ADD = 2 };
    /// A plane is a box that its scale makes thin.
    enum Region : unsigned { BOX = 0, PLANE = 1, SPHERE = 2 };

    FilterBooleanData_cls();

    ConfItemUINT_cls mCOperatorType;
    ConfItemUINT_cls mCRegionType;
    /// Width of a box's soft border outside of it, in parts of each half edge; 0 is hard. Spheres are hard.
    ConfItemFLOAT_cls mCBorderFactor;
};

/// The region's centre is the place, its whole edges are the scale. It stands along the axes: the rotation
/// turns its frame in the view, not the cut.
class FilterBoolean_cls final : public FilterOf_cls<FilterBooleanData_cls, FILTER_BOOLEAN> {
public:
    void BeginWeigh(double time, long long particles) override;
    void Weigh(const WeighedList_st& list, float* pWeight) const override;
    void GLDraw(MarkPainter_cls& painter, double time) const override;

private:
    float mPosition[3] = {0, 0, 0}; ///< at the time of BeginWeigh
    float mScale[3] = {0, 0, 0};
};
