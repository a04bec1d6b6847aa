// The operations that a strip or a linked group takes part in.
#include "PARAM/clsParameters.h"

#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

namespace {

bool IsLinked(const ParamGroup_cls* pGroup) { return pGroup && pGroup->mbLinked; }

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
