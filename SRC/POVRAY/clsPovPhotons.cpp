#include "POVRAY/clsPovPhotons.h"

#include <algorithm>

PovPhotons_cls::PovPhotons_cls() { PovPhotons_cls::SetToDefault(); }

void PovPhotons_cls::SetToDefault() {
    mConfList.Clear();
    mConfList.Add(&mType, "PovPhotonsType=", "0");
    mConfList.Add(&mCount, "PovPhotonsCount=", "20");
    mConfList.Add(&mMaxTrace, "PovPhotonsMaxTrace=", "5");
}

void PovPhotons_cls::Repair() {
    mType.mValue = std::min(mType.mValue, 1u);
    mCount.mValue = std::clamp(mCount.mValue, 1, 1000000);
    mMaxTrace.mValue = std::clamp(mMaxTrace.mValue, 1, 256);
}

wxString PovPhotons_cls::GetStrPovGlobal() const {
    if (mType.mValue != 1) return wxString();
    return wxString::Format(
        "\tphotons {\n\t\tcount %d\n\t\tautostop %d\n\t\tjitter %g\n\t\tmax_trace_level %d\n\t}\n",
        mCount.mValue * 1000, 0, 0.4, mMaxTrace.mValue);
}
