#include "SCENE/clsSceneObj.h"

#include <algorithm>
#include <cmath>

#include "COMMON/UpdateBits.h"
#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsGLGuides.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsMoveItem.h"

namespace {

constexpr long long kUpdateMask = UPDATE_FILTER_REFRESH | UPDATE_TL | UPDATE_GL;
constexpr double kRadians = MyVector::PI / 180.0; // of a degree

/// CommandSetValue_cls for a bool.
class CommandSetFlag_cls final : public CommandItem_cls {
public:
    CommandSetFlag_cls(bool* pTarget, bool value, int updateBit)
        : CommandItem_cls(updateBit), mpTarget(pTarget), mbValue(value) {}
    void Execute(bool) override {
        *mpTarget = mbValue;
        UpdateBit();
    }

private:
    bool* mpTarget;
    bool mbValue;
};

template <class COMMAND, class T>
void SetByCommand(T* pTarget, T value) {
    if (!Parameters_cls::msbUndoCommandMake) {
        *pTarget = value;
        return;
    }
    GCUndoList.PushNewCommand(new COMMAND(pTarget, value, int(kUpdateMask)),
                              new COMMAND(pTarget, *pTarget, int(kUpdateMask)));
    GCUndoList.ExecCurrent();
}

void Evaluate(ParamGroup_cls* pGroup, double time, double out[3]) {
    pGroup->GetInterpolatedValue(out, time, Parameters_cls::kCurrent);
}

} // namespace

const SceneObj_cls* SceneObj_cls::mspCHovered = nullptr;

SceneObj_cls::SceneObj_cls(const wxString& name, bool bShowOnTimeLine, bool bWithParams) {
    if (!bWithParams) return;
    static const wxString kSuffixes[3] = {"x", "y", "z"};
    mpCObjectGroup = new ParamGroup_cls(name, 0, nullptr, kUpdateMask, false);
    mpCTranslate = new ParamGroup_cls(name + " Translate", 3, kSuffixes, kUpdateMask, false);
    mpCRotate = new ParamGroup_cls(name + " Rotation", 3, kSuffixes, kUpdateMask, false);
    mpCScale = new ParamGroup_cls(name + " Scale", 3, kSuffixes, kUpdateMask, false);
    for (ParamGroup_cls* group : {mpCObjectGroup, mpCTranslate, mpCRotate, mpCScale})
        group->mpCSceneObj = this;
    if (name == "Camera") // may turn round and round, but not over its head
        mpCRotate->mVParams[0].mPeriodic.mValue = mpCRotate->mVParams[2].mPeriodic.mValue = 360;
    if (bShowOnTimeLine) mpCObjectGroup->mVpCChilds = {mpCTranslate, mpCRotate, mpCScale};
}

SceneObj_cls::~SceneObj_cls() {
    if (MoveItem_cls::mspCSelectedObject == this) MoveItem_cls::SetSelection(nullptr);
    if (mspCHovered == this) mspCHovered = nullptr;
    DeleteObjectGroup();
    delete mpCTranslate;
    delete mpCRotate;
    delete mpCScale;
}

void SceneObj_cls::DeleteObjectGroup() {
    delete mpCObjectGroup;
    mpCObjectGroup = nullptr;
}

void SceneObj_cls::AssignSceneObjParam() {
    if (!mpCObjectGroup) return;
    for (ParamGroup_cls* group : mpCObjectGroup->mVpCChilds)
        group->SetKeyFrameIfChanged(kCurrent);
}

void SceneObj_cls::UpdateCurrentObj(double time) {
    if (!mpCTranslate) return;
    static const double kFront[3] = {1, 0, 0}, kUp[3] = {0, 0, 1};
    double place[3], angles[3];
    GetTranslation(time, place);
    GetRotation(time, angles);
    GetScaling(time, mCScaleCurrent);
    mCCurrent.Set(place);
    mCCurrent.Setv(kFront, kUp);
    mCCurrent.RotateYPR(angles[2], angles[1], angles[0]);
    mCCurrent.UpdateYPR(true);
}

void SceneObj_cls::GetTranslation(double time, double out[3]) const {
    Evaluate(mpCTranslate, time, out);
    if (mbSelected && mbDragging) std::copy_n(MoveItem_cls::msSelectedItemPos, 3, out);
}

void SceneObj_cls::GetRotation(double time, double out[3]) const {
    Evaluate(mpCRotate, time, out);
    if (!mbSelected || !mbDragging) return;
    if (mCTarget.mValue == TARGET_ORIGIN) { // as the end of the drag will turn it
        static const double kOrigin[3] = {0, 0, 0};
        PositionAndDirection_cls aimed = mCCurrent;
        aimed.Set(MoveItem_cls::msSelectedItemPos);
        aimed.PointAt(kOrigin);
        aimed.UpdateYPR(true);
        out[0] = aimed.mRoll;
        out[1] = aimed.mPitch;
        out[2] = aimed.mYaw;
        return;
    }
    for (int i = 0; i < 3; ++i)
        out[i] += MoveItem_cls::msSelectedItemDRot[i];
}

void SceneObj_cls::GetScaling(double time, double out[3]) const {
    Evaluate(mpCScale, time, out);
    if (!mbSelected || !mbDragging) return;
    for (int i = 0; i < 3; ++i)
        out[i] *= MoveItem_cls::msSelectedItemScale[i];
}

void SceneObj_cls::ToScene(double*) const {}

void SceneObj_cls::FromScene(double*) const {}

bool SceneObj_cls::TakesMode(int mode) const { return mode != GLGuides_cls::SCALE; }

// Each turn happens about an axis that those before it have turned: z first, then y, then x.
void SceneObj_cls::GetGuideAxes(int mode, double out[3][3]) const {
    for (int axis = 0; axis < 3; ++axis)
        for (int i = 0; i < 3; ++i)
            out[axis][i] = axis == i ? 1.0 : 0.0;
    if (mode != GLGuides_cls::ROTATE || !mpCRotate) return;
    double angles[3];
    GetRotation(kCurrent, angles);
    MyVector::Rotate(out[0], angles[1], 1);
    MyVector::Rotate(out[0], angles[2], 2);
    MyVector::Rotate(out[1], angles[2], 2);
}

void SceneObj_cls::SetInitValue(ParamGroup_cls* pGroup, double x, double y, double z) {
    const double values[3] = {x, y, z};
    if (pGroup) pGroup->SetKeyFrame(values, true, kCurrent);
}

void SceneObj_cls::SetConstant(ParamGroup_cls& group, const double* values, unsigned kind) {
    const DirectEdit_cls direct;
    group.SetTimeDependent(false);
    for (Parameters_cls& param : group.mVParams) {
        param.ExecCommandInitSet(*values);
        KeyFrame_cls key = param.GetKeys()[0];
        key.mInterpType = kind;
        param.RestoreKey(0, key);
        param.mCurrentValue = *values++;
    }
}

void SceneObj_cls::SetKeyAt(ParamGroup_cls* pGroup, const double* pValues, double time) {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls& param : pGroup->mVParams) {
        if (param.mbTimeDepend.mValue) continue;
        param.GetInterpolatedValue(0.0); // what the curve keeps elsewhere
        param.SetTimeDependent(true);
    }
    pGroup->SetKeyFrame(pValues, true, time);
}

void SceneObj_cls::CopyFromP_SceneObj(SceneObj_cls* pSrc) {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    SetByCommand<CommandSetValue_cls>(&mObjectType, pSrc->mObjectType);
    SetByCommand<CommandSetValue_cls>(&mCTarget.mValue, pSrc->mCTarget.mValue);
    SetByCommand<CommandSetFlag_cls>(&mCVisible.mValue, pSrc->mCVisible.mValue);
    if (!mpCTranslate || !pSrc->mpCTranslate) return;
    mpCTranslate->CopyFromP(pSrc->mpCTranslate);
    mpCRotate->CopyFromP(pSrc->mpCRotate);
    mpCScale->CopyFromP(pSrc->mpCScale);
}

ParamGroup_cls* SceneObj_cls::GetPCParamGroupFromTag(const wxString& id) const {
    for (ParamGroup_cls* group : {mpCTranslate, mpCRotate, mpCScale, mpCObjectGroup})
        if (group && group->mID == id) return group;
    return nullptr;
}

void SceneObj_cls::CalcRelativeVector(float* p, double time) {
    if (!mpCRotate) return;
    double angles[3];
    GetRotation(time, angles);
    double c[3], s[3];
    for (int i = 0; i < 3; ++i) {
        c[i] = std::cos(angles[i] * kRadians);
        s[i] = std::sin(angles[i] * kRadians);
    }
    const double x = double(p[0]), y = double(p[1]), z = double(p[2]);
    const double t = x * c[2] + y * s[2];
    const double y1 = y * c[2] - x * s[2];
    const double z1 = z * c[1] + t * s[1];
    p[0] = float(t * c[1] - z * s[1]);
    p[1] = float(y1 * c[0] + z1 * s[0]);
    p[2] = float(z1 * c[0] - y1 * s[0]);
}

void SceneObj_cls::CalcRelativePosition(float* p, double time, ParamGroup_cls* pCAnchor) {
    if (!mpCTranslate) return;
    double place[3], scale[3], anchor[3] = {0, 0, 0};
    GetTranslation(time, place);
    GetScaling(time, scale);
    if (pCAnchor) Evaluate(pCAnchor, time, anchor);
    for (int i = 0; i < 3; ++i)
        p[i] = float(double(p[i]) + anchor[i]);
    CalcRelativeVector(p, time);
    for (int i = 0; i < 3; ++i)
        p[i] = float((double(p[i]) - anchor[i]) / scale[i] - place[i]);
}

std::array<double, 3> SceneObj_cls::GetVDirectionVector(double time) {
    if (!mpCRotate) return {0.0, 0.0, 0.0};
    double angles[3];
    GetRotation(time, angles);
    const double a = MyVector::PI * angles[1] / 180.0;
    const double b = (angles[2] / 180.0 + 1.0) * MyVector::PI; // half a turn: objects point along -x
    return {std::cos(a) * std::cos(b), std::cos(a) * std::sin(b), std::sin(a)};
}

std::string SceneObj_cls::GetStrPovModelview(double time, const std::string& indent, int decimals) const {
    if (!mpCTranslate) return std::string();
    double place[3], angles[3], scale[3];
    GetTranslation(time, place);
    GetRotation(time, angles);
    GetScaling(time, scale);
    const auto areAll = [](const double* p, double value) {
        return p[0] == value && p[1] == value && p[2] == value;
    };
    std::string text;
    if (!areAll(scale, 1.0)) text += PovOutScale(indent + "\tscale", scale, decimals) + "\n";
    if (!areAll(place, 0.0)) text += PovOut3d(indent + "\ttranslate", place, decimals) + "\n";
    for (int axis = 0; axis < 3; ++axis) {
        double turn[3] = {0, 0, 0};
        turn[axis] = angles[axis];
        if (!areAll(turn, 0.0)) text += PovOut3d(indent + "\trotate", turn, 4) + "\n";
    }
    return text;
}

void SceneObj_cls::Targetting() {
    if (mCTarget.mValue != TARGET_ORIGIN || !mpCRotate) return;
    static const double kOrigin[3] = {0, 0, 0};
    mCCurrent.PointAt(kOrigin);
    mCCurrent.UpdateYPR(true);
    mpCRotate->mVParams[0].mCurrentValue = mCCurrent.mRoll;
    mpCRotate->mVParams[1].mCurrentValue = mCCurrent.mPitch;
    mpCRotate->mVParams[2].mCurrentValue = mCCurrent.mYaw;
    mpCRotate->SetKeyFrameIfChanged(kCurrent);
}

void SceneObj_cls::Select(bool bSelected) {
    mbSelected = bSelected;
    if (mpCObjectGroup && mpCObjectGroup->mpCParamGUICtrl && GParamHooks.mGroupRefresh)
        GParamHooks.mGroupRefresh(mpCObjectGroup);
}
