#include "POVRAY/clsPovRender.h"

#include <algorithm>

PovRender_cls::PovRender_cls() { PovRender_cls::SetToDefault(); }

void PovRender_cls::SetToDefault() {
    mConfList.Clear();
    mConfList.Add(&mRegion, "PovRenderRegion=", "0");
    mConfList.Add(&mCustomMin, "PovRegionCustomMin=", "0");
    mConfList.Add(&mCustomMax, "PovRegionCustomMax=", "100");
}

void PovRender_cls::Repair() {
    if (mRegion.mValue > REGION_CUSTOM) mRegion.mValue = REGION_WORK_AREA;
    mCustomMin.mValue = std::max(mCustomMin.mValue, 0);
    mCustomMax.mValue = std::max(mCustomMax.mValue, 0);
}
