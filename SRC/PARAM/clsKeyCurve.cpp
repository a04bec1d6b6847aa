#include "PARAM/clsKeyCurve.h"

#include <algorithm>
#include <cmath>

KeyCurve_cls::KeyCurve_cls(bool bTimeDepend) : mVKeys(1) {
    mbTimeDepend.SetItem("timeDepend=", bTimeDepend ? "1" : "0");
    mPeriodic.SetItem("periodic=", "0");
}

const KeyFrame_cls& KeyCurve_cls::KeyAt(int i) const {
    static const KeyFrame_cls sNone;
    return IsIndex(i) ? mVKeys[size_t(i)] : sNone;
}

bool KeyCurve_cls::IsKeyFrame(double doubleIndex, double resolution) const {
    return !mbTimeDepend.mValue || GetKeyFrameIndexFromDouble(doubleIndex, resolution, false) >= 0;
}

int KeyCurve_cls::CheckOverWrite(double doubleIndex, double resolution) const {
    const double t = Time(doubleIndex);
    const double half = Resolution(resolution) / 2;
    for (int i = GetKeyNumber() - 1; i >= 0; --i)
        if (std::fabs(KeyAt(i).mDoubleIndex - t) < half) return i;
    return -1;
}

int KeyCurve_cls::GetKeyFrameIndexFromDouble(double doubleIndex, double resolution, bool bNearest) const {
    const double t = Time(doubleIndex);
    const double half = Resolution(resolution) / 2;
    for (int i = 0; i < GetKeyNumber(); ++i)
        if (KeyAt(i).mDoubleIndex < t + half && KeyAt(i).mDoubleIndex >= t - half) return i;
    if (!bNearest || mVKeys.empty()) return -1;
    return std::max(GetKeyFrameIndexToInsert(doubleIndex, resolution) - 1, 0);
}

int KeyCurve_cls::GetKeyFrameIndexToInsert(double doubleIndex, double resolution) const {
    const double limit = Time(doubleIndex) + Resolution(resolution) / 2;
    const auto beyond = std::find_if(mVKeys.begin(), mVKeys.end(),
                                     [limit](const KeyFrame_cls& key) { return key.mDoubleIndex > limit; });
    return int(beyond - mVKeys.begin());
}

int KeyCurve_cls::GetAdjacentKey(double doubleIndex, int dir) const {
    if (mVKeys.empty()) return -1;
    const double t = Time(doubleIndex);
    const int last = GetKeyNumber() - 1;
    const int here = GetKeyFrameIndexFromDouble(t, kCurrent, false);
    if (here >= 0) return std::clamp(here + dir, 0, last);
    int i = dir < 0 ? last : 0;
    if (dir < 0)
        while (i > 0 && KeyAt(i).mDoubleIndex >= t)
            --i;
    else
        while (i < last && KeyAt(i).mDoubleIndex <= t)
            ++i;
    return i;
}

bool KeyCurve_cls::IsValueChanged(double doubleIndex) const {
    const double t = mbTimeDepend.mValue ? Time(doubleIndex) : 0.0;
    return mCurrentValue != Evaluate(t, msResolution);
}

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
