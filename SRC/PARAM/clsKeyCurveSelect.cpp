// Selecting keys.
#include "PARAM/clsKeyCurve.h"

#include <algorithm>
#include <cmath>

namespace {

bool IsAt(const KeyFrame_cls& key, double t, double value, double dT, double dV) {
    return std::fabs(key.mDoubleIndex - t) < dT && std::fabs(key.mValue - value) < dV;
}

} // namespace

bool KeyCurve_cls::SelectKeyFrameRegion(double t0, double t1, double v0, double v1, bool bToggle) {
    bool bAny = false;
    for (KeyFrame_cls& key : mVKeys) {
        if (key.mDoubleIndex < std::min(t0, t1) || key.mDoubleIndex > std::max(t0, t1)) continue;
        if (v0 != v1 && (key.mValue < std::min(v0, v1) || key.mValue > std::max(v0, v1))) continue;
        key.mbSelected = !(bToggle && key.mbSelected);
        bAny = true;
    }
    return bAny;
}

bool KeyCurve_cls::SelectKeyByXY(double doubleIndex, double value, double dT, double dV, bool bFirstOnly) {
    bool bAny = false;
    for (KeyFrame_cls& key : mVKeys) {
        if (!IsAt(key, Time(doubleIndex), value, dT, dV)) continue;
        key.mbSelected = true;
        bAny = true;
        if (bFirstOnly) break;
    }
    return bAny;
}

bool KeyCurve_cls::SelectSelectedKeyByXY(double doubleIndex, double value, double dT, double dV) const {
    for (const KeyFrame_cls& key : mVKeys)
        if (key.mbSelected && IsAt(key, Time(doubleIndex), value, dT, dV)) return true;
    return false;
}

int KeyCurve_cls::OnWhichKeyFrame(double doubleIndex, double tolerance) const {
    for (int i = 0; i < GetKeyNumber(); ++i)
        if (std::fabs(KeyAt(i).mDoubleIndex - Time(doubleIndex)) < Resolution(tolerance)) return i;
    return -1;
}

void KeyCurve_cls::SelectKey(int i, bool bSelected) {
    if (IsIndex(i)) mVKeys[size_t(i)].mbSelected = bSelected;
}

void KeyCurve_cls::DeselectAll() {
    for (KeyFrame_cls& key : mVKeys)
        key.mbSelected = false;
}

int KeyCurve_cls::GetSelectedKeyNum() const {
    int count = 0;
    for (const KeyFrame_cls& key : mVKeys)
        count += key.mbSelected;
    return count;
}

int KeyCurve_cls::GetSelectedKeyIndex() const {
    for (int i = 0; i < GetKeyNumber(); ++i)
        if (KeyAt(i).mbSelected) return i;
    return -1;
}
