// Cameras of a view: where the eye is at a paint, and what the projection is.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <algorithm>

#include <wx/intl.h>

#include "APP/clsFrameMain.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

namespace {

// Place and basis; anchors, sensitivities and counted turns don't show.
bool LooksAlike(const PositionAndDirection_cls& a, const PositionAndDirection_cls& b) {
    return a.Position_cls::operator==(b) && a.Direction_cls::operator==(b);
}

} // namespace

bool MainGLCanvas_cls::IsAlongAxis() const { return GoesAlong(mDisplayMode.mValue); }

int MainGLCanvas_cls::GetEffectiveGeometry() const {
    const bool bPath = mDisplayMode.mValue == 7 || (mDisplayMode.mValue == 8 && mGLGeometry.mValue < 2);
    return bPath ? GetPLinkedCameraPath()->mCGeometry.mValue : mGLGeometry.mValue;
}

bool MainGLCanvas_cls::IsOrthographic() const { return GetEffectiveGeometry() == 1; }

bool MainGLCanvas_cls::IsFishEye() const { return !IsAlongAxis() && GetEffectiveGeometry() == 2; }

bool MainGLCanvas_cls::IsCylinder() const { return !IsAlongAxis() && GetEffectiveGeometry() == 3; }

int MainGLCanvas_cls::GetMultiPanelMode() const { return IsFishEye() ? 1 : IsCylinder() ? 2 : 0; }

void MainGLCanvas_cls::SetDisplayMode(int mode) {
    mDisplayMode.mValue = std::clamp(mode, 0, mPanelIndex == kExtraPanel ? 8 : 7);
    if (mGLGeometry.mValue < 2) mGLGeometry.mValue = IsAlongAxis() ? 1 : 0;
    mpCLinkedCameraPath = nullptr;
    mpCLinkedAnchorPath = nullptr;
    MarkStale();
}

void MainGLCanvas_cls::SetGeometry(int geometry) {
    mGLGeometry.mValue = std::clamp(geometry, 0, 3);
    MarkStale();
}

void MainGLCanvas_cls::ChooseDisplayMode(int mode) {
    mpCCtrl->ChangeBy([this, mode] { SetDisplayMode(mode); });
    mpCCtrl->UpdateWindow();
    RefreshEX();
}

void MainGLCanvas_cls::TogglePerspective() {
    mpCCtrl->ChangeBy([this] { SetGeometry(mGLGeometry.mValue == 0 ? 1 : 0); });
    mpCCtrl->UpdateWindow();
    RefreshEX();
}

void MainGLCanvas_cls::LinkageConnect() {
    SetDisplayMode(7);
    mpCLinkedCameraPath = mpCFrame->GetPCCameraPath();
    mpCLinkedAnchorPath = mpCFrame->GetPCAnchorPath();
    EvaluatePaths(mpCFrame->GetPCTimeCtrl()->GetDoubleIndex());
    mCCamLinked = mpCLinkedCameraPath->mCCurrent;
    mCCamLinked.UpdateYPR(false);
}

CameraPath_cls* MainGLCanvas_cls::GetPLinkedCameraPath() const {
    return mpCLinkedCameraPath ? mpCLinkedCameraPath : mpCFrame->GetPCCameraPath();
}

AnchorPath_cls* MainGLCanvas_cls::GetPLinkedAnchorPath() const {
    return mpCLinkedAnchorPath ? mpCLinkedAnchorPath : mpCFrame->GetPCAnchorPath();
}

void MainGLCanvas_cls::SetCameraToDefaultPos() {
    const double away[3] = {-1.12, -0.8, 0.56};
    const double front[3] = {-away[0], -away[1], -away[2]};
    const double up[3] = {0, 0, 1};
    mCCamFree.Set(away[0] * 3.5, away[1] * 3.5, away[2] * 3.5);
    mCCamFree.Setv(front, up);
    mCCamFree.SetAncPos(msCAnchorPos);
    mCCamLinked = mCCamFree;
}

PositionAndDirection_cls* MainGLCanvas_cls::GetPCCameraPosition() {
    if (IsAlongAxis()) return &mCCamOrtho;
    return IsCameraLinked() ? &mCCamLinked : &mCCamFree;
}

double* MainGLCanvas_cls::GetPCAnchorPosition() { return IsAlongAxis() ? msCAnchorPosOrtho : msCAnchorPos; }

// The picture of a linked view depends on the paths alone; the hand turns it around the common anchor.
void MainGLCanvas_cls::UpdateAnc() {
    mCCamPos.SetAncPos(IsCameraLinked() ? GetPLinkedAnchorPath()->mCCurrent.mPos : GetPCAnchorPosition());
    GetPCCameraPosition()->SetAncPos(GetPCAnchorPosition());
}

void MainGLCanvas_cls::ModifyOrthoCamera() {
    const int mode = mDisplayMode.mValue;
    mCCamOrtho.Set(msCAnchorPosOrtho);
    const double sign = mode % 2 == 1 ? -1.0 : 1.0;
    mCCamOrtho.mPos[(mode - 1) / 2] += sign * static_cast<double>(mGLOrthoScale.mValue);
    mCCamOrtho.SetAncPos(msCAnchorPosOrtho);
    mCCamOrtho.SetDirection(mode);
}

void MainGLCanvas_cls::EvaluatePaths(double doubleIndex) {
    CameraPath_cls* pCamera = GetPLinkedCameraPath();
    AnchorPath_cls* pAnchor = GetPLinkedAnchorPath();
    pCamera->UpdateCurrentObj(doubleIndex);
    pAnchor->UpdateCurrentObj(doubleIndex);
    if (pCamera->mCLookAnchor.mValue) pCamera->mCCurrent.PointAt(pAnchor->mCCurrent.mPos);
}

// The paths must have been evaluated for the current time.
bool MainGLCanvas_cls::HasPathMoved() {
    const TimeCtrl_cls& time = *mpCFrame->GetPCTimeCtrl();
    const PositionAndDirection_cls& path = GetPLinkedCameraPath()->mCCurrent;
    const int frame = time.GetFrame(), step = time.GetInterpStep();
    const double blur = time.mCMotionBlur.GetFactor();
    const bool bMoved =
        frame != mPathFrame || step != mPathStep || blur != mPathBlurFactor || !LooksAlike(path, mCCamPath);
    mPathFrame = frame;
    mPathStep = step;
    mPathBlurFactor = blur;
    mCCamPath = path;
    return bMoved;
}

// The linked camera is the path's until a user moves it, and again as soon as time or the path moves.
void MainGLCanvas_cls::FollowPath() {
    const CameraPath_cls& camera = *GetPLinkedCameraPath();
    const double* anchor = GetPLinkedAnchorPath()->mCCurrent.mPos;
    if (camera.mCLookAnchor.mValue) std::copy_n(anchor, 3, msCAnchorPos);
    if (HasPathMoved() || mbForceUpdateCameraPos) mCCamLinked = camera.mCCurrent;
    mCCamLinked.SetAncPos(msCAnchorPos);
    if (!LooksAlike(mCCamLinked, camera.mCCurrent)) mCCamLinked.PointAt(msCAnchorPos);
    mCCamPos = mCCamLinked;
    mCCamPos.SetAncPos(anchor);
}

void MainGLCanvas_cls::UpdateCameraPos() {
    if (mPivotMode.mValue) std::copy_n(GetPLinkedAnchorPath()->mCCurrent.mPos, 3, msCAnchorPos);
    const int mode = mDisplayMode.mValue;
    if (IsAlongAxis()) {
        ModifyOrthoCamera();
        mCCamPos = mCCamOrtho;
    } else if (IsCameraLinked()) {
        FollowPath();
    } else if (mode == 0) {
        mCCamFree.SetAncPos(msCAnchorPos);
        mCCamFree.PointAt(msCAnchorPos);
        mCCamPos = mCCamFree;
    }
    if (mode != 8) GetPCCameraPosition()->UpdateYPR(true);
    mCCamPos.UpdateYPR(true);
    mbForceUpdateCameraPos = false;
}

void MainGLCanvas_cls::SetPerspective() {
    // An image has a shape of its own; dome and panorama pictures are cut from a square.
    const wxSize size = mbImageRequest && GetMultiPanelMode() == 0 ? GetImageSize() : GetPixelSize();
    mCGLPerspective.mbPerspective = mGLGeometry.mValue != 1;
    mCGLPerspective.SetClipSize(size.x, size.y);
}

void MainGLCanvas_cls::SetAngleIfLinked() {
    int geometry = mGLGeometry.mValue;
    mCGLPerspective.mAngle = static_cast<double>(mGLPersAngle.mValue);
    if (IsCameraLinked()) {
        const CameraPath_cls& camera = *GetPLinkedCameraPath();
        geometry = camera.mCGeometry.mValue;
        mCGLPerspective.mAngle = camera.mCVAngle.mValue;
        mCGLPerspective.mbPerspective = geometry != 1;
    }
    const double limit = 120.0;
    if (mCGLPerspective.mAngle < limit || geometry == 1 || GetMultiPanelMode() != 0) return;
    mCGLPerspective.mAngle = limit;
    if (geometry == 0)
        mWXStrMessage += _("View angle is limited to 120 deg in perspective view.") + wxString("\n");
}

// In a copy of another view that view's camera counts.
const PositionAndDirection_cls& MainGLCanvas_cls::GetModeCamera() {
    if (mDisplayMode.mValue == 8) return mCCamPos;
    PositionAndDirection_cls* pCamera = GetPCCameraPosition();
    pCamera->UpdateYPR(true); // it may have moved since the last paint
    return *pCamera;
}

void MainGLCanvas_cls::SetKeyPos(double time) {
    const UndoBlock_cls block;
    SceneObj_cls::SetKeyAt(GetPLinkedCameraPath()->mpCTranslate, GetModeCamera().mPos, time);
}

void MainGLCanvas_cls::SetKeyPosRot(double time) {
    const UndoBlock_cls block;
    const PositionAndDirection_cls& camera = GetModeCamera();
    const double angles[3] = {camera.mRoll, camera.mPitch, camera.mYaw};
    SceneObj_cls::SetKeyAt(GetPLinkedCameraPath()->mpCTranslate, camera.mPos, time);
    SceneObj_cls::SetKeyAt(GetPLinkedCameraPath()->mpCRotate, angles, time);
}

void MainGLCanvas_cls::SetKeyAnc(double time) {
    const UndoBlock_cls block;
    SceneObj_cls::SetKeyAt(GetPLinkedAnchorPath()->mpCTranslate, msCAnchorPos, time);
}
