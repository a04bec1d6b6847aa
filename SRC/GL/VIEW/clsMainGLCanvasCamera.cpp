// Cameras of a view: where the eye is at a paint, and what the projection is.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <algorithm>

#include <wx/intl.h>

#include "GL/VIEW/clsGLCanvasCtrl.h"

bool MainGLCanvas_cls::IsAlongAxis() const { return GoesAlong(mDisplayMode.mValue); }

// A camera path has a geometry of its own, which counts here in the modes 7 and 8.
bool MainGLCanvas_cls::IsOrthographic() const { return mGLGeometry.mValue == 1; }

bool MainGLCanvas_cls::IsFishEye() const { return !IsAlongAxis() && mGLGeometry.mValue == 2; }

bool MainGLCanvas_cls::IsCylinder() const { return !IsAlongAxis() && mGLGeometry.mValue == 3; }

int MainGLCanvas_cls::GetMultiPanelMode() const { return IsFishEye() ? 1 : IsCylinder() ? 2 : 0; }

void MainGLCanvas_cls::SetDisplayMode(int mode) {
    mDisplayMode.mValue = std::clamp(mode, 0, mPanelIndex == kExtraPanel ? 8 : 7);
    if (mGLGeometry.mValue < 2) mGLGeometry.mValue = IsAlongAxis() ? 1 : 0;
    MarkStale();
}

void MainGLCanvas_cls::SetGeometry(int geometry) {
    mGLGeometry.mValue = std::clamp(geometry, 0, 3);
    MarkStale();
}

void MainGLCanvas_cls::TogglePerspective() {
    SetGeometry(mGLGeometry.mValue == 0 ? 1 : 0);
    mpCCtrl->UpdateWindow();
    RefreshEX();
}

void MainGLCanvas_cls::LinkageConnect() {
    mCCamLinked = mCCamFree; // the path's camera, once there are paths
    mCCamLinked.UpdateYPR(false);
    SetDisplayMode(7);
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

void MainGLCanvas_cls::UpdateAnc() {
    mCCamPos.SetAncPos(GetPCAnchorPosition());
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

void MainGLCanvas_cls::UpdateCameraPos() {
    // With "PivotMode=" the anchor path moves msCAnchorPos here.
    const int mode = mDisplayMode.mValue;
    if (IsAlongAxis()) {
        ModifyOrthoCamera();
        mCCamPos = mCCamOrtho;
    } else if (IsCameraLinked()) {
        // The path's camera comes in here when frame, step or blur factor changed since the last paint.
        mCCamLinked.SetAncPos(msCAnchorPos);
        mCCamLinked.PointAt(msCAnchorPos);
        mCCamPos = mCCamLinked;
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
    const wxSize size = GetPixelSize();
    mCGLPerspective.mbPerspective = !IsOrthographic();
    // While an image sequence is written, its size is the clip size of flat views.
    mCGLPerspective.SetClipSize(size.x, size.y);
}

void MainGLCanvas_cls::SetAngleIfLinked() {
    // In display mode 7 a camera path brings its own angle.
    mCGLPerspective.mAngle = static_cast<double>(mGLPersAngle.mValue);
    const double limit = 120.0;
    if (mCGLPerspective.mAngle < limit || IsOrthographic()) return;
    mCGLPerspective.mAngle = limit;
    if (mGLGeometry.mValue == 0)
        mWXStrMessage += _("View angle is limited to 120 deg in perspective view.") + wxString("\n");
}
