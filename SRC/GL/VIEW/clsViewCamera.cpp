#include "GL/VIEW/clsViewCamera.h"

#include <algorithm>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewSettings.h"
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

ViewCamera_cls::ViewCamera_cls(ViewSettings_cls& settings, SharedView_cls& shared, const ViewHost_cls& host)
    : mSettings(settings), mShared(shared), mHost(host) {
    SetCameraToDefaultPos();
}

void ViewCamera_cls::LinkageConnect() {
    mSettings.LinkPaths();
    EvaluatePaths(mHost.GetPCTimeCtrl()->GetDoubleIndex());
    mCCamLinked = mSettings.GetPLinkedCameraPath()->mCCurrent;
    mCCamLinked.UpdateYPR(false);
}

void ViewCamera_cls::SetCameraToDefaultPos() {
    const double away[3] = {-1.12, -0.8, 0.56};
    const double front[3] = {-away[0], -away[1], -away[2]};
    const double up[3] = {0, 0, 1};
    mCCamFree.Set(away[0] * 3.5, away[1] * 3.5, away[2] * 3.5);
    mCCamFree.Setv(front, up);
    mCCamFree.SetAncPos(mShared.msCAnchorPos);
    mCCamLinked = mCCamFree;
}

PositionAndDirection_cls* ViewCamera_cls::GetPCCameraPosition() {
    if (mSettings.IsAlongAxis()) return &mCCamOrtho;
    return mSettings.IsCameraLinked() ? &mCCamLinked : &mCCamFree;
}

double* ViewCamera_cls::GetPCAnchorPosition() {
    return mSettings.IsAlongAxis() ? mShared.msCAnchorPosOrtho : mShared.msCAnchorPos;
}

// The picture of a linked view depends on the paths alone; the hand turns it around the common anchor.
void ViewCamera_cls::UpdateAnc() {
    mCCamPos.SetAncPos(mSettings.IsCameraLinked() ? mSettings.GetPLinkedAnchorPath()->mCCurrent.mPos
                                                  : GetPCAnchorPosition());
    GetPCCameraPosition()->SetAncPos(GetPCAnchorPosition());
}

void ViewCamera_cls::ModifyOrthoCamera() {
    const int mode = mSettings.mDisplayMode.mValue;
    mCCamOrtho.Set(mShared.msCAnchorPosOrtho);
    const double sign = mode % 2 == 1 ? -1.0 : 1.0;
    mCCamOrtho.mPos[(mode - 1) / 2] += sign * static_cast<double>(mSettings.mGLOrthoScale.mValue);
    mCCamOrtho.SetAncPos(mShared.msCAnchorPosOrtho);
    mCCamOrtho.SetDirection(mode);
}

void ViewCamera_cls::EvaluatePaths(double doubleIndex) {
    CameraPath_cls* pCamera = mSettings.GetPLinkedCameraPath();
    AnchorPath_cls* pAnchor = mSettings.GetPLinkedAnchorPath();
    pCamera->UpdateCurrentObj(doubleIndex);
    pAnchor->UpdateCurrentObj(doubleIndex);
    if (pCamera->mCLookAnchor.mValue) pCamera->mCCurrent.PointAt(pAnchor->mCCurrent.mPos);
}

// The paths must have been evaluated for the current time.
bool ViewCamera_cls::HasPathMoved() {
    const TimeCtrl_cls& time = *mHost.GetPCTimeCtrl();
    const PositionAndDirection_cls& path = mSettings.GetPLinkedCameraPath()->mCCurrent;
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
void ViewCamera_cls::FollowPath() {
    const CameraPath_cls& camera = *mSettings.GetPLinkedCameraPath();
    const double* anchor = mSettings.GetPLinkedAnchorPath()->mCCurrent.mPos;
    if (camera.mCLookAnchor.mValue) std::copy_n(anchor, 3, mShared.msCAnchorPos);
    if (HasPathMoved() || mbForceUpdateCameraPos) mCCamLinked = camera.mCCurrent;
    mCCamLinked.SetAncPos(mShared.msCAnchorPos);
    if (!LooksAlike(mCCamLinked, camera.mCCurrent)) mCCamLinked.PointAt(mShared.msCAnchorPos);
    mCCamPos = mCCamLinked;
    mCCamPos.SetAncPos(anchor);
}

void ViewCamera_cls::KeepFilmStart() {
    const bool bBefore = mbFilm;
    mbFilm = mSettings.mPivotMode.mValue && (mShared.mbFilm || mHost.GetPCTimeCtrl()->mbOutputRun);
    if (!mbFilm) return;
    if (bBefore)
        static_cast<Direction_cls&>(mCCamFree) = mFilmStart;
    else
        mFilmStart = mCCamFree;
}

void ViewCamera_cls::UpdateCameraPos() {
    if (mSettings.mPivotMode.mValue)
        std::copy_n(mSettings.GetPLinkedAnchorPath()->mCCurrent.mPos, 3, mShared.msCAnchorPos);
    const int mode = mSettings.mDisplayMode.mValue;
    if (mSettings.IsAlongAxis()) {
        ModifyOrthoCamera();
        mCCamPos = mCCamOrtho;
    } else if (mSettings.IsCameraLinked()) {
        FollowPath();
    } else if (mode == DISPLAY_FREE) {
        KeepFilmStart();
        mCCamFree.SetAncPos(mShared.msCAnchorPos);
        mCCamFree.PointAt(mShared.msCAnchorPos);
        mCCamPos = mCCamFree;
    }
    if (mode != DISPLAY_COPY) GetPCCameraPosition()->UpdateYPR(true);
    mCCamPos.UpdateYPR(true);
    mbForceUpdateCameraPos = false;
}

double ViewCamera_cls::GetDistanceToAnchor() const {
    return mSettings.IsCameraLinked() ? MyVector::GetNormRelative<double>(mCCamPos.mPos, mShared.msCAnchorPos)
                                      : mCCamPos.GetDistanceToAnc();
}

wxString ViewCamera_cls::SetAngleIfLinked(GLPerspective_cls* pPerspective) const {
    int geometry = mSettings.mGLGeometry.mValue;
    pPerspective->mAngle = static_cast<double>(mSettings.mGLPersAngle.mValue);
    if (mSettings.IsCameraLinked()) {
        const CameraPath_cls& camera = *mSettings.GetPLinkedCameraPath();
        geometry = camera.mCGeometry.mValue;
        pPerspective->mAngle = camera.mCVAngle.mValue;
        pPerspective->mbPerspective = geometry != ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC;
    }
    const double limit = 120.0;
    const bool bWide = mSettings.GetMultiPanelMode() != 0;
    if (pPerspective->mAngle < limit || geometry == ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC || bWide)
        return wxString();
    pPerspective->mAngle = limit;
    if (geometry != ViewSettings_cls::GEOMETRY_PERSPECTIVE) return wxString();
    return "View angle is limited to 120 deg in perspective view.\n";
}

// In a copy of another view that view's camera counts.
const PositionAndDirection_cls& ViewCamera_cls::GetModeCamera() {
    if (mSettings.mDisplayMode.mValue == DISPLAY_COPY) return mCCamPos;
    PositionAndDirection_cls* pCamera = GetPCCameraPosition();
    pCamera->UpdateYPR(true); // it may have moved since the last paint
    return *pCamera;
}

void ViewCamera_cls::SetKeyPos(double time) {
    const UndoBlock_cls block;
    SceneObj_cls::SetKeyAt(mSettings.GetPLinkedCameraPath()->mpCTranslate, GetModeCamera().mPos, time);
}

void ViewCamera_cls::SetKeyPosRot(double time) {
    const UndoBlock_cls block;
    const PositionAndDirection_cls& camera = GetModeCamera();
    const double angles[3] = {camera.mRoll, camera.mPitch, camera.mYaw};
    SceneObj_cls::SetKeyAt(mSettings.GetPLinkedCameraPath()->mpCTranslate, camera.mPos, time);
    SceneObj_cls::SetKeyAt(mSettings.GetPLinkedCameraPath()->mpCRotate, angles, time);
}

void ViewCamera_cls::SetKeyAnc(double time) {
    const UndoBlock_cls block;
    SceneObj_cls::SetKeyAt(mSettings.GetPLinkedAnchorPath()->mpCTranslate, mShared.msCAnchorPos, time);
}
