#include "POVRAY/clsPovAdvanced.h"

#include <algorithm>

PovAdvanced_cls::PovAdvanced_cls() { PovAdvanced_cls::SetToDefault(); }

void PovAdvanced_cls::SetToDefault() {
    mConfList.Clear();
    mConfList.Add(&mMaxTraceLevel, "PovMaxTraceLevel=", "12");
}

void PovAdvanced_cls::Repair() {
    mMaxTraceLevel.mValue = std::clamp(mMaxTraceLevel.mValue, 1, kMaxTraceLevel);
}

wxString PovAdvanced_cls::GetStrPovGlobal() const {
    return wxString::Format("\tmax_trace_level %d\n", mMaxTraceLevel.mValue);
}
