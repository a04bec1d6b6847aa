#include "SCENE/clsMoveItem.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>
#include <wx/defs.h>
#include <wx/intl.h>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/BASE/clsTextureBase.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsSceneObj.h"

SceneObj_cls* MoveItem_cls::mspCSelectedObject = nullptr;
double MoveItem_cls::msSelectedItemPos[3] = {0, 0, 0};
double MoveItem_cls::msSelectedItemPosOrg[3] = {0, 0, 0};
double MoveItem_cls::msSelectedItemDRot[3] = {0, 0, 0};
double MoveItem_cls::msSelectedItemScale[3] = {1, 1, 1};

namespace {

constexpr int kFree = SceneObj_cls::kNoDrag;
constexpr double kSnapCells = 0.1;
constexpr double kSnapDegrees = 5.0;
constexpr double kSnapFactor = 0.1;
constexpr double kLeastFactor = 1e-3; // from nothing no factor leads back
constexpr double kOnItem = 0.005;     // half windows: a press that near has no direction
constexpr size_t kMostTyped = 16;

// Where the hand is, before it snaps.
double sFreePos[3], sFreeDRot[3], sFreeScale[3];
double sFactor = 1.0; // of the last scale
// How the hand moved last; keys that change the drag keep to it.
double sGridUnit = 1.0;
bool sbSnap = false;
wxString sTyped; // of a number; empty: the mouse tells

double RoundTo(double value, double step) { return std::round(value / step) * step; }

bool AreFinite(const double* p) { return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]); }

/// The group's values at the present time, into its fields as well.
void GetNow(ParamGroup_cls* pGroup, double out[3]) {
    for (size_t i = 0; i < 3; ++i) {
        const double value = pGroup->mVParams[i].GetInterpolatedValue(SceneObj_cls::kCurrent);
        out[i] = std::isfinite(value) ? value : 0.0;
    }
}

void SetFields(ParamGroup_cls* pGroup, const double values[3]) {
    for (size_t i = 0; i < 3; ++i)
        if (std::isfinite(values[i])) pGroup->mVParams[i].mCurrentValue = values[i];
}

void SetFactor(double value, int axis, double out[3]) {
    if (std::fabs(value) < kLeastFactor) value = std::copysign(kLeastFactor, value);
    for (int i = 0; i < 3; ++i)
        out[i] = axis == kFree || axis == i ? value : 1.0;
}

} // namespace

void MoveItem_cls::SetSelection(SceneObj_cls* pObject) {
    if (pObject == mspCSelectedObject) return;
    CancelDrag();
    if (mspCSelectedObject) mspCSelectedObject->mDragMode = kFree;
    mspCSelectedObject = pObject && pObject->mpCTranslate ? pObject : nullptr;
}

bool MoveItem_cls::IsDragging() { return mspCSelectedObject && mspCSelectedObject->mbDragging; }

bool MoveItem_cls::IsSnapping() { return IsDragging() && sbSnap; }

void MoveItem_cls::InitializeMoveItem() {
    if (!mspCSelectedObject) return;
    GetNow(mspCSelectedObject->mpCTranslate, msSelectedItemPos);
    std::copy_n(msSelectedItemPos, 3, msSelectedItemPosOrg);
    sTyped.clear();
    sbSnap = false;
    Restart();
    mspCSelectedObject->mbDragging = true;
}

void MoveItem_cls::Restart() {
    std::copy_n(msSelectedItemPosOrg, 3, msSelectedItemPos);
    std::copy_n(msSelectedItemPosOrg, 3, sFreePos);
    std::fill_n(msSelectedItemDRot, 3, 0.0);
    std::fill_n(sFreeDRot, 3, 0.0);
    std::fill_n(msSelectedItemScale, 3, 1.0);
    std::fill_n(sFreeScale, 3, 1.0);
    sFactor = 1.0;
}

void MoveItem_cls::ChangeAxis(int mode) {
    if (!IsDragging()) return;
    const int axis = mspCSelectedObject->mDragMode;
    for (int i = 0; i < 3; ++i)
        if (axis != kFree && axis != i) {
            sFreePos[i] = msSelectedItemPosOrg[i];
            sFreeDRot[i] = 0.0;
        }
    if (mode == GLGuides_cls::SCALE) MoveItemScale(sFactor, axis);
    Snap(mode, axis);
    if (!mspCSelectedObject->TakesMode(mode)) sTyped.clear();
    if (!sTyped.empty()) TakeTyped(mode);
}

bool MoveItem_cls::IsAxisFlipped(const PositionAndDirection_cls& camera) {
    if (!mspCSelectedObject || mspCSelectedObject->mDragMode == kFree) return false;
    double axes[3][3];
    mspCSelectedObject->GetGuideAxes(GLGuides_cls::ROTATE, axes);
    return MyVector::GetScalarProduct<double>(axes[mspCSelectedObject->mDragMode], camera.mFront) < 0.0;
}

bool MoveItem_cls::MoveItem(const View_st& view, const MouseNormalized_cls& mouse, int mode, bool bInvert) {
    if (!mspCSelectedObject || !mspCSelectedObject->TakesMode(mode)) return false;
    if (!mspCSelectedObject->mbDragging) InitializeMoveItem();
    sGridUnit = view.mGridUnit;
    sbSnap = view.mbSnap;
    const int axis = mspCSelectedObject->mDragMode;
    // As ways in a picture that fills the window.
    const double wide = 1.0 / view.mPart[0], high = 1.0 / view.mPart[1];
    const double dx = wide * (double(mouse.mCurX) - double(mouse.mPrevX));
    const double dy = high * (double(mouse.mCurY) - double(mouse.mPrevY));
    if (mode == GLGuides_cls::TRANSLATE) {
        MoveItemTranslate(view, dx, dy, axis);
    } else {
        double place[3], item[2];
        std::copy_n(msSelectedItemPos, 3, place);
        mspCSelectedObject->ToScene(place);
        if (!view.mProject || !view.mProject(place, item)) return false;
        const double rx = wide * (double(mouse.mCurX) - item[0]);
        const double ry = high * (double(mouse.mCurY) - item[1]);
        const double way = rx * rx + ry * ry;
        const double start =
            std::hypot(wide * (double(mouse.mPressX) - item[0]), high * (double(mouse.mPressY) - item[1]));
        if (mode == GLGuides_cls::SCALE)
            MoveItemScale(start < kOnItem ? 1.0 : std::sqrt(way) / start, axis);
        else if (way > 0.0)
            MoveItemRotate((bInvert ? -1.0 : 1.0) * (dx * ry - dy * rx) / way, axis);
    }
    if (!sTyped.empty()) return false; // the number counts as long as there is one
    Snap(mode, axis);
    return true;
}

void MoveItem_cls::MoveItemTranslate(const View_st& view, double dx, double dy, int axis) {
    double place[3];
    std::copy_n(sFreePos, 3, place);
    mspCSelectedObject->ToScene(place);
    PositionAndDirection_cls hand = view.mCamera;
    hand.SetSensitivity(-MouseSpeed::kItem * view.mCamera.GetProjectedDistance(place));
    hand.SetAspectRatio(view.mAspect);
    hand.Set(place);
    hand.Translate(dx, dy, 4, nullptr);
    std::copy_n(hand.mPos, 3, place);
    mspCSelectedObject->FromScene(place);
    if (!AreFinite(place)) return;
    for (int i = 0; i < 3; ++i)
        sFreePos[i] = axis == kFree || axis == i ? place[i] : msSelectedItemPosOrg[i];
}

void MoveItem_cls::MoveItemRotate(double value, int axis) {
    if (axis < 0 || axis > 2 || !std::isfinite(value)) return;
    sFreeDRot[axis] += value * MouseSpeed::kItemTurn;
}

void MoveItem_cls::MoveItemScale(double value, int axis) {
    if (!std::isfinite(value)) return;
    sFactor = value;
    SetFactor(value, axis, sFreeScale);
}

// Places and angles to round ones of their own, so that items meet; factors are of the drag.
void MoveItem_cls::Snap(int mode, int axis) {
    std::copy_n(sFreePos, 3, msSelectedItemPos);
    std::copy_n(sFreeDRot, 3, msSelectedItemDRot);
    std::copy_n(sFreeScale, 3, msSelectedItemScale);
    if (!sbSnap) return;
    if (mode == GLGuides_cls::TRANSLATE) {
        const double step = kSnapCells * sGridUnit;
        for (int i = 0; i < 3; ++i)
            if (sFreePos[i] != msSelectedItemPosOrg[i]) msSelectedItemPos[i] = RoundTo(sFreePos[i], step);
    } else if (mode == GLGuides_cls::ROTATE && axis >= 0) {
        double angles[3];
        GetNow(mspCSelectedObject->mpCRotate, angles);
        msSelectedItemDRot[axis] = RoundTo(angles[axis] + sFreeDRot[axis], kSnapDegrees) - angles[axis];
    } else if (mode == GLGuides_cls::SCALE) {
        for (double& factor : msSelectedItemScale)
            factor = factor == 1.0 ? 1.0 : std::max(RoundTo(factor, kSnapFactor), kSnapFactor);
    }
}

bool MoveItem_cls::TypeKey(int keycode, int mode) {
    if (!IsDragging() || !mspCSelectedObject->TakesMode(mode)) return false;
    if (keycode >= WXK_NUMPAD0 && keycode <= WXK_NUMPAD9) keycode += '0' - WXK_NUMPAD0;
    if (keycode == WXK_NUMPAD_DECIMAL || keycode == ',') keycode = '.';
    if (keycode == WXK_NUMPAD_SUBTRACT) keycode = '-';
    if (keycode == WXK_BACK) {
        if (sTyped.empty()) return true;
        sTyped.RemoveLast();
    } else if (keycode == '-') { // at any time
        if (!sTyped.StartsWith("-", &sTyped)) sTyped = "-" + sTyped;
    } else if ((keycode >= '0' && keycode <= '9') || (keycode == '.' && !sTyped.Contains("."))) {
        if (sTyped.length() < kMostTyped) sTyped += wxUniChar(keycode);
    } else {
        return keycode == '.';
    }
    TakeTyped(mode);
    return true;
}

// What the hand has done meanwhile stays, for when the number is taken back.
void MoveItem_cls::TakeTyped(int mode) {
    const int axis = mspCSelectedObject->mDragMode;
    if (sTyped.empty()) return Snap(mode, axis);
    std::copy_n(msSelectedItemPosOrg, 3, msSelectedItemPos);
    std::fill_n(msSelectedItemDRot, 3, 0.0);
    std::fill_n(msSelectedItemScale, 3, 1.0);
    double value = 0.0;
    if (!sTyped.ToCDouble(&value) || !std::isfinite(value)) return; // as long as it is none yet
    if (mode == GLGuides_cls::SCALE && value == 0.0) return;
    if (mode == GLGuides_cls::TRANSLATE)
        msSelectedItemPos[std::max(axis, 0)] += value;
    else if (mode == GLGuides_cls::ROTATE)
        msSelectedItemDRot[axis == kFree ? 2 : axis] = value;
    else
        SetFactor(value, axis, msSelectedItemScale);
}

wxString MoveItem_cls::GetDragText(int mode) {
    if (!IsDragging() || !mspCSelectedObject->TakesMode(mode)) return wxString();
    const int axis = mspCSelectedObject->mDragMode;
    wxString text;
    const auto add = [&text, axis](const wxString& label, const double* values, const wxString& unit) {
        static const char kAxes[] = "XYZ";
        text = label;
        for (int i = 0; i < 3; ++i)
            if (axis == kFree || axis == i)
                text += wxString::Format("  %c %.6g%s", kAxes[i], values[i], unit);
    };
    if (mode == GLGuides_cls::TRANSLATE)
        add(_("Move to"), msSelectedItemPos, wxString());
    else if (mode == GLGuides_cls::ROTATE)
        add(_("Turn by"), msSelectedItemDRot, wxString::FromUTF8("°"));
    else
        add(_("Scale by"), msSelectedItemScale, wxString());
    if (!sTyped.empty()) text += "  [" + sTyped + "]";
    return text;
}

void MoveItem_cls::FinishDragging() {
    if (!IsDragging()) return;
    SceneObj_cls& item = *mspCSelectedObject;
    item.mbDragging = false;
    double place[3], angles[3], scale[3];
    GetNow(item.mpCTranslate, place);
    GetNow(item.mpCRotate, angles);
    GetNow(item.mpCScale, scale);
    for (int i = 0; i < 3; ++i) {
        angles[i] += msSelectedItemDRot[i];
        scale[i] *= msSelectedItemScale[i];
    }
    // A part that the hand left alone keeps even what is no number.
    const auto isMoved = [](const double* values, double still) {
        return std::any_of(values, values + 3, [still](double v) { return v != still; });
    };
    if (!std::equal(msSelectedItemPos, msSelectedItemPos + 3, msSelectedItemPosOrg))
        SetFields(item.mpCTranslate, msSelectedItemPos);
    if (isMoved(msSelectedItemDRot, 0.0)) SetFields(item.mpCRotate, angles);
    if (isMoved(msSelectedItemScale, 1.0)) SetFields(item.mpCScale, scale);
    std::fill_n(msSelectedItemDRot, 3, 0.0);
    std::fill_n(msSelectedItemScale, 3, 1.0);
}

void MoveItem_cls::EndDrag() {
    if (!IsDragging()) return;
    SceneObj_cls& item = *mspCSelectedObject;
    const bool bAim =
        !std::equal(msSelectedItemPos, msSelectedItemPos + 3, msSelectedItemPosOrg) ||
        std::any_of(msSelectedItemDRot, msSelectedItemDRot + 3, [](double a) { return a != 0.0; });
    const UndoBlock_cls block;
    FinishDragging();
    for (ParamGroup_cls* group : {item.mpCTranslate, item.mpCRotate, item.mpCScale})
        for (Parameters_cls& param : group->mVParams)
            if (std::isfinite(param.mCurrentValue) && param.IsValueChanged(SceneObj_cls::kCurrent))
                param.SetChangedValueKey(SceneObj_cls::kCurrent, 0.0, 0.0, SceneObj_cls::kCurrent);
    if (!bAim) return;
    item.UpdateCurrentObj(SceneObj_cls::kCurrent);
    item.Targetting();
}

void MoveItem_cls::CancelDrag() {
    if (!IsDragging()) return;
    Restart();
    mspCSelectedObject->mbDragging = false;
}

void MoveItem_cls::DrawMouseGuide(const View_st& view, double toX, double toY, int mode, int w, int h) {
    constexpr GLushort kDashes = 61680;
    static const float kColors[4][3] = {
        {0.8f, 0.8f, 0.8f}, {1, 0.3f, 0.3f}, {0.2f, 1, 0.2f}, {0.2f, 0.2f, 1}};
    if (!IsDragging() || mode == GLGuides_cls::TRANSLATE) return;
    const int axis = mspCSelectedObject->mDragMode;
    if (mode == GLGuides_cls::ROTATE && axis == kFree) return;
    double place[3], item[2];
    std::copy_n(msSelectedItemPosOrg, 3, place);
    mspCSelectedObject->ToScene(place);
    if (!view.mProject || !view.mProject(place, item)) return;
    const GLfloat ends[2][2] = {{GLfloat((item[0] + 1.0) * w / 2.0), GLfloat((item[1] + 1.0) * h / 2.0)},
                                {GLfloat((toX + 1.0) * w / 2.0), GLfloat((toY + 1.0) * h / 2.0)}};
    const GLAttribScope_cls attributes;
    const GLClientScope_cls client;
    TextureBase_cls::Push2DMatrix(w, h);
    const float* color = kColors[std::clamp(axis, -1, 2) + 1];
    glColor4f(color[0], color[1], color[2], 1.0f);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_LINE_STIPPLE);
    glLineStipple(1, kDashes);
    glLineWidth(1.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, ends);
    glDrawArrays(GL_LINES, 0, 2);
    TextureBase_cls::Pop2DMatrix();
}
