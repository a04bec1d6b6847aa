// Repeats particles, meshes and sticks over cells of the periodic box.
#pragma once

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class FilterCopyData_cls final : public FilterData_cls {
public:
    FilterCopyData_cls();

    ConfItemINT_cls mCMin[3]; ///< first cell along each cell vector
    ConfItemINT_cls mCMax[3]; ///< one past the last cell
};

class FilterCopy_cls final : public FilterOf_cls<FilterCopyData_cls, FILTER_COPY> {};
