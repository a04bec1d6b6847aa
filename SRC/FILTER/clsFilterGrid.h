// A frame of reference in the scene: flat grids, a lattice, circles or a sphere.
#pragma once

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class ColorCurve_cls;

class FilterGridData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { FLAT_XY = 0, FLAT_YZ = 1, FLAT_XZ = 2, CUBIC = 3, CIRCLE = 4, SPHERICAL = 5 };

    FilterGridData_cls();

    ConfItemUINT_cls mCGridType;
    ConfItemFLOAT_cls mCGridMin;
    ConfItemFLOAT_cls mCGridMax;
    ConfItemINT_cls mCGridLineNum; ///< divisions
    ConfItemBOOL_cls mCGridCoord;  ///< labels
    ColorCurve_cls* const mpCColor;
};

class FilterGrid_cls final : public FilterOf_cls<FilterGridData_cls, FILTER_GRID> {};
