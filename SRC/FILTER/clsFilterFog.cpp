#include "FILTER/clsFilterFog.h"

#include "COLORCURVE/clsColorCurve.h"

namespace {
const wxString kSuffixes[2] = {"deinsity", "alpha"}; // as files have them
} // namespace

FilterFogData_cls::FilterFogData_cls()
    : FilterData_cls(false, true), mpCFogParam(MakeGroup("Filter Parameter", 2, kSuffixes)) {
    mCConfItemList.Add(&mCFogType, "FogType=", "0");
    mCConfItemList.Add(&mCFogStart, "FogStart=", "0");
    mCConfItemList.Add(&mCFogEnd, "FogEnd=", "1");
    AddColorCurve("FogColor", "0.5 0.5 0.5 1");
    const DirectEdit_cls direct;
    const double values[2] = {0.0, 1.0};
    mpCFogParam->SetKeyFrame(values, true, kCurrent);
}

FilterFogData_cls::~FilterFogData_cls() = default;

void FilterFogData_cls::UpdateCurrentObj(double time) {
    FilterData_cls::UpdateCurrentObj(time);
    double values[2];
    mpCFogParam->GetInterpolatedValue(values, time, kCurrent);
}
