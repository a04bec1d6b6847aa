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

/// Past the values that curves keep, which panels and handles show.
void Evaluate(const ParamGroup_cls& group, double index, double out[3]) {
    for (size_t i = 0; i < 3; ++i)
        out[i] = group.mVParams[i].Evaluate(index, Parameters_cls::msResolution);
}

/// False: what the anchor follows isn't known there.
bool PlaceAt(const CameraPath_cls& camera, const AnchorPath_cls& anchor, double index,
             PositionAndDirection_cls& out) {
    static const double kFront[3] = {1, 0, 0}, kUp[3] = {0, 0, 1};
    double place[3], angles[3];
    Evaluate(*camera.mpCTranslate, index, place);
    Evaluate(*camera.mpCRotate, index, angles);
    out.Set(place);
    out.Setv(kFront, kUp);
    out.RotateYPR(angles[2], angles[1], angles[0]);
    out.UpdateYPR(true);
    if (!camera.mCLookAnchor.mValue) return true;
    const AnchorPath_cls::Followed followed =
        anchor.mFollow ? anchor.mFollow(index, place) : AnchorPath_cls::NOTHING;
    if (followed == AnchorPath_cls::LATE) return false;
    if (followed == AnchorPath_cls::NOTHING) Evaluate(*anchor.mpCTranslate, index, place);
    out.PointAt(place);
    return true;
}

constexpr long long kMostPictures = 20000; // of a film looked at step by step

} // namespace

CameraTurn_st FindFastestTurn(const CameraPath_cls& camera, const AnchorPath_cls& anchor,
                              const TimeCtrl_cls& time, double rate) {
    const int stepping = std::max(time.GetAnimStep(), 1); // pictures of the frames between aren't made
    const long long frames = (static_cast<long long>(time.GetWAMax()) - time.GetWAMin()) / stepping;
    const int interp = std::max(time.GetAnimInterp(), 1);
    const int steps = frames * interp > kMostPictures ? 1 : interp;
    const double perTurn = rate * steps / interp;
    CameraTurn_st fastest;
    PositionAndDirection_cls last;
    bool bFirst = true;
    for (long long k = 0; k <= frames; ++k)
        for (int step = 0; step < (k < frames ? steps : 1); ++step) {
            const int frame = time.GetWAMin() + static_cast<int>(k * stepping);
            PositionAndDirection_cls now;
            if (!PlaceAt(camera, anchor, time.GetDoubleIndex(frame, step), now)) return {};
            const double turn = bFirst ? 0.0 : GetTurn(last, now) * perTurn;
            if (turn > fastest.mDegrees) fastest = {turn, frame};
            last = now;
            bFirst = false;
        }
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
