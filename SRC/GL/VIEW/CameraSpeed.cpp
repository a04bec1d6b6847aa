#include "GL/VIEW/CameraSpeed.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "COMMON/clsMyVector.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

namespace {

/// Between two cameras, around whatever axis; degrees.
double GetTurn(const Direction_cls& a, const Direction_cls& b) {
    const double trace = MyVector::GetScalarProduct(a.mFront, b.mFront) +
                         MyVector::GetScalarProduct(a.mUp, b.mUp) +
                         MyVector::GetScalarProduct(a.mRight, b.mRight);
    return MyVector::ToDegrees(std::acos(std::clamp((trace - 1.0) / 2.0, -1.0, 1.0)));
}

} // namespace

CameraTurn_st FindFastestTurn(CameraPath_cls& camera, AnchorPath_cls& anchor, const TimeCtrl_cls& time,
                              double rate) {
    const PositionAndDirection_cls before = camera.mCCurrent;
    const PositionAndDirection_cls anchorBefore = anchor.mCCurrent;
    const int steps = std::max(time.GetAnimInterp(), 1);
    CameraTurn_st fastest;
    Direction_cls last;
    bool bFirst = true;
    for (int frame = time.GetWAMin(); frame <= time.GetWAMax(); ++frame)
        for (int step = 0; step < (frame < time.GetWAMax() ? steps : 1); ++step) {
            const double index = time.GetDoubleIndex(frame, step);
            camera.UpdateCurrentObj(index);
            if (camera.mCLookAnchor.mValue) {
                anchor.UpdateCurrentObj(index);
                camera.mCCurrent.PointAt(anchor.mCCurrent.mPos);
            }
            const double turn = bFirst ? 0.0 : GetTurn(last, camera.mCCurrent) * rate;
            if (turn > fastest.mDegrees) fastest = {turn, frame};
            last = camera.mCCurrent;
            bFirst = false;
        }
    camera.mCCurrent = before;
    anchor.mCCurrent = anchorBefore;
    return fastest;
}

bool EaseWholePath(CameraPath_cls& camera, AnchorPath_cls& anchor) {
    bool bChanged = false;
    const UndoBlock_cls block;
    for (ParamGroup_cls* group : {camera.mpCTranslate, camera.mpCRotate, anchor.mpCTranslate})
        for (Parameters_cls& param : group->mVParams) {
            if (!param.mbTimeDepend.mValue) continue;
            const std::vector<KeyFrame_cls> keys = param.GetKeys();
            for (KeyFrame_cls key : keys) {
                if (key.mInterpType == INTERP_HERMITE_AUTO) continue;
                key.mInterpType = INTERP_HERMITE_AUTO;
                bChanged = true;
                param.SetKey(key, Parameters_cls::kCurrent);
            }
        }
    return bChanged;
}
