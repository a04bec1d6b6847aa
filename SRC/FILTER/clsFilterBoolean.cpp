#include "FILTER/clsFilterBoolean.h"

#include "FILTER/FilterFrame.h"

FilterBooleanData_cls::FilterBooleanData_cls() : FilterData_cls(true, true) {
    mCConfItemList.Add(&mCOperatorType, "OperatorType=", "0");
    mCConfItemList.Add(&mCRegionType, "RegionType=", "0");
    mCConfItemList.Add(&mCBorderFactor, "BorderFactor=", "0.01");
}

void FilterBoolean_cls::Weigh(const WeighedList_st&, float*, double) {}

void FilterBoolean_cls::GLDraw(double time) const { DrawFilterFrame(*GetPCData(), time); }
