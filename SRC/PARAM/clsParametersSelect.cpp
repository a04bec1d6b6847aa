// Selecting keys, and the operations that a linked group takes part in.
#include "PARAM/clsParameters.h"

#include <algorithm>
#include <cmath>

#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

namespace {

bool IsLinked(const ParamGroup_cls* pGroup) { return pGroup && pGroup->mbLinked; }

bool IsAt(const KeyFrame_cls& key, double t, double value, double dT, double dV) {
    return std::fabs(key.mDoubleIndex - t) < dT && std::fabs(key.mValue - value) < dV;
}

} // namespace

bool Parameters_cls::SelectKeyFrame(double doubleIndex, double tolerance, bool bQuery, bool bToggle) {
    int hit = -1;
    for (int i = 0; i < GetKeyNumber() && hit < 0; ++i) {
        KeyFrame_cls& key = mVKeys[size_t(i)];
        const bool bHit = bToggle && !bQuery ? key.Toggle(Time(doubleIndex), Resolution(tolerance))
                                             : key.Select(Time(doubleIndex), Resolution(tolerance), bQuery);
        if (bHit) hit = i;
    }
    if (mpCParamTL && GParamHooks.mStripHit) GParamHooks.mStripHit(mpCParamTL, hit);
    return hit >= 0;
}

bool Parameters_cls::SelectKeyFrameRegion(double t0, double t1, double v0, double v1, bool bToggle) {
    bool bAny = false;
    for (KeyFrame_cls& key : mVKeys) {
        if (key.mDoubleIndex < std::min(t0, t1) || key.mDoubleIndex > std::max(t0, t1)) continue;
        if (v0 != v1 && (key.mValue < std::min(v0, v1) || key.mValue > std::max(v0, v1))) continue;
        key.mbSelected = !(bToggle && key.mbSelected);
        bAny = true;
    }
    return bAny;
}

bool Parameters_cls::SelectKeyByXY(double doubleIndex, double value, double dT, double dV, bool bFirstOnly) {
    bool bAny = false;
    for (KeyFrame_cls& key : mVKeys) {
        if (!IsAt(key, Time(doubleIndex), value, dT, dV)) continue;
        key.mbSelected = true;
        bAny = true;
        if (bFirstOnly) break;
    }
    return bAny;
}

bool Parameters_cls::SelectSelectedKeyByXY(double doubleIndex, double value, double dT, double dV) const {
    for (const KeyFrame_cls& key : mVKeys)
        if (key.mbSelected && IsAt(key, Time(doubleIndex), value, dT, dV)) return true;
    return false;
}

int Parameters_cls::OnWhichKeyFrame(double doubleIndex, double tolerance) const {
    for (int i = 0; i < GetKeyNumber(); ++i)
        if (std::fabs(KeyAt(i).mDoubleIndex - Time(doubleIndex)) < Resolution(tolerance)) return i;
    return -1;
}

void Parameters_cls::SelectKey(int i, bool bSelected) {
    if (IsIndex(i)) mVKeys[size_t(i)].mbSelected = bSelected;
}

void Parameters_cls::DeselectAll() {
    for (KeyFrame_cls& key : mVKeys)
        key.mbSelected = false;
}

int Parameters_cls::GetSelectedKeyNum() const {
    int count = 0;
    for (const KeyFrame_cls& key : mVKeys)
        count += key.mbSelected;
    return count;
}

int Parameters_cls::GetSelectedKeyIndex() const {
    for (int i = 0; i < GetKeyNumber(); ++i)
        if (KeyAt(i).mbSelected) return i;
    return -1;
}

void Parameters_cls::InsertKeyQueue(double doubleIndex) {
    if (IsLinked(mpCParamGroup))
        mpCParamGroup->InsertKey(-1, doubleIndex, ParamGroup_cls::kNoValue);
    else
        InsertKey(doubleIndex, 0.0, 0.0, 0.0);
}

bool Parameters_cls::DeleteKeyQueue(double doubleIndex) {
    if (!IsLinked(mpCParamGroup)) return DeleteKey(doubleIndex, kCurrent);
    const UndoBlock_cls block(msbUndoCommandMake);
    bool bAny = false;
    for (Parameters_cls& param : mpCParamGroup->mVParams)
        bAny |= param.DeleteKey(doubleIndex, kCurrent);
    return bAny;
}

bool Parameters_cls::SelectKeyFrameQueue(double doubleIndex, double tolerance, bool bQuery, bool bToggle) {
    if (!IsLinked(mpCParamGroup)) return SelectKeyFrame(doubleIndex, tolerance, bQuery, bToggle);
    bool bAny = false;
    for (Parameters_cls& param : mpCParamGroup->mVParams)
        bAny |= param.SelectKeyFrame(doubleIndex, tolerance, bQuery, bToggle);
    return bAny;
}

bool Parameters_cls::SelectKeyFrameRegionQueue(double t0, double t1, double v0, double v1, bool bToggle) {
    if (!IsLinked(mpCParamGroup)) return SelectKeyFrameRegion(t0, t1, v0, v1, bToggle);
    bool bAny = false;
    for (Parameters_cls& param : mpCParamGroup->mVParams)
        bAny |= param.SelectKeyFrameRegion(t0, t1, v0, v1, bToggle);
    return bAny;
}

bool Parameters_cls::MoveSelectedKeyByXYQueue(double dT, double dV, double resolution, double tMin,
                                              double tMax, double vMin, double vMax) {
    if (!IsLinked(mpCParamGroup)) return MoveSelectedKeyByXY(dT, dV, resolution, tMin, tMax, vMin, vMax);
    return mpCParamGroup->MoveSelectedKeyByXY(dT, dV, resolution, tMin, tMax, vMin, vMax);
}

void Parameters_cls::Drag(int step, int x, int y) {
    if (!GParamHooks.mStripDrag) return;
    const auto drag = [&](const Parameters_cls& param) {
        if (param.mpCParamTL) GParamHooks.mStripDrag(param.mpCParamTL, StripDrag(step), x, y);
    };
    if (!IsLinked(mpCParamGroup)) return drag(*this);
    for (const Parameters_cls& param : mpCParamGroup->mVParams)
        drag(param);
}

void Parameters_cls::ProcStartDraggingQueue(int x, int y) { Drag(int(StripDrag::START), x, y); }

void Parameters_cls::ProcDraggingQueue(int x, int y) { Drag(int(StripDrag::DRAG), x, y); }

void Parameters_cls::SetRegionOriginQueue(int x, int y) { Drag(int(StripDrag::REGION_ORIGIN), x, y); }

void Parameters_cls::TurnOffDraggingQueue() { Drag(int(StripDrag::END), 0, 0); }
