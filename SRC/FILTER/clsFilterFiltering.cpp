#include "FILTER/clsFilterFiltering.h"

FilterFilteringData_cls::FilterFilteringData_cls() : FilterData_cls(false, true) {
    mCConfItemList.Add(&mCFilteringType, "FilteringType=", "0");
    mCConfItemList.Add(&mCIndexType, "IndexType=", "0");
    mCConfItemList.Add(&mCFilteringString, "FilteringString=", "0");
}

void FilterFiltering_cls::Weigh(const WeighedList_st&, float*, double) {}
