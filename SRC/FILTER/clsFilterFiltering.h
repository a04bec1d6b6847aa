// Shows, hides or forces on particles by their numbers.
#pragma once

#include <vector>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class FilterFilteringData_cls final : public FilterData_cls {
public:
    enum Operation : unsigned { SHOW = 0, HIDE = 1, FORCE = 2 };

    FilterFilteringData_cls();

    ConfItemUINT_cls mCFilteringType;
    ConfItemUINT_cls mCIndexType;      ///< 0 index, 1 ID: kept and shown, the check goes by the index
    ConfItemSTR_cls mCFilteringString; ///< such as "0-99,200"
};

class FilterFiltering_cls final : public FilterOf_cls<FilterFilteringData_cls, FILTER_FILTERING> {
public:
    void Weigh(const WeighedList_st& list, float* pWeight, double time) override;
};
