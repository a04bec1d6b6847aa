#include "GL/VIEW/clsViewMouse.h"

#include <algorithm>

#include "COMMON/Globals.h"
#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewMenu.h"

ViewMouse_cls::ViewMouse_cls(MainGLCanvas_cls& canvas, ViewMenu_cls& menu, ViewHost_cls& host,
                             Preference_cls* pPreference)
    : mCanvas(canvas), mMenu(menu), mHost(host), mCDolly(pPreference), mCMouse(pPreference) {
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_LEFT_DCLICK, wxEVT_MIDDLE_DOWN,
                             wxEVT_MIDDLE_UP, wxEVT_MIDDLE_DCLICK, wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP,
                             wxEVT_RIGHT_DCLICK, wxEVT_MOTION, wxEVT_MOUSEWHEEL})
        mCanvas.Bind(type, &ViewMouse_cls::OnMouse, this);
    mCanvas.Bind(wxEVT_MOUSE_CAPTURE_LOST, &ViewMouse_cls::OnCaptureLost, this);
}

void ViewMouse_cls::OnMouse(wxMouseEvent& event) {
    mCMouse.SetMouseInformation(event, mCanvas.GetContentScaleFactor(), mCanvas.GetPixelSize());
    if (mCMouse.IsShowMenu()) {
        mMenu.Show();
        return;
    }
    // A press on a button of the orientation gizmo locks dragging here.
    bool bChanged = false;
    if (mCMouse.IsButtonUp()) {
        if (mCanvas.HasCapture()) mCanvas.ReleaseMouse();
        mbLockDragging = false;
    }
    if (mCMouse.IsMouseDragging() && !mbLockDragging) bChanged = ProcViewOrItemDragging();
    if (mCMouse.IsButtonDown()) OnButtonDown();
    // The end of an item's drag sets its keys here.
    if (mCMouse.IsWheel()) bChanged = OnWheel();
    if (bChanged) OnChangedByMouse();
}

void ViewMouse_cls::OnCaptureLost(wxMouseCaptureLostEvent&) {
    mbLockDragging = true; // until the next press
}

void ViewMouse_cls::OnButtonDown() {
    mCanvas.SetFocus();
    mbLockDragging = false;
    if (!mCanvas.HasCapture()) {
        if (wxWindow* pOther = wxWindow::GetCapture()) pOther->ReleaseMouse();
        mCanvas.CaptureMouse();
        mCanvas.SetThisToBeActiveGL();
    }
    mCMouse.SetPreviousPosition();
    mCMouse.SetGyrationMode(mCanvas.GetPixelSize());
}

bool ViewMouse_cls::OnWheel() {
    if (!mCanvas.GetScreenRect().Contains(wxGetMousePosition())) {
        SetOtherCanvasToBeActiveGL();
        return false;
    }
    mCanvas.mCamera.UpdateAnc();
    mCDolly.SetParameter(MouseSpeed::kDrag, nullptr, mCanvas.GetPixelSize(), mCanvas.mDisplayMode.mValue);
    const bool bChanged = mCDolly.ZoomWheel(mCanvas.mCamera.GetPCCameraPosition(), mCMouse.mWheelSteps,
                                            &mCanvas.mGLOrthoScale.mValue);
    mCMouse.SetPreviousPosition();
    mCanvas.SetThisToBeActiveGL();
    return bChanged;
}

bool ViewMouse_cls::ProcViewOrItemDragging() {
    const wxSize size = mCanvas.GetPixelSize();
    MouseNormalized_cls mouse(mCMouse, size);
    mouse.LimitMove();
    mCanvas.mCamera.UpdateAnc();
    mCDolly.SetParameter(MouseSpeed::kDrag, &mouse, size, mCanvas.mDisplayMode.mValue);
    PositionAndDirection_cls* pCamera = mCanvas.mCamera.GetPCCameraPosition();
    bool bChanged = false;
    if (mCMouse.IsGyration() && !mCanvas.IsAlongAxis())
        bChanged = mCDolly.Gyration(pCamera);
    else if (mCMouse.IsZoom())
        bChanged = mCDolly.Zoom(pCamera, &mCanvas.mGLOrthoScale.mValue);
    else if (mCMouse.IsMoveCenter() || mCMouse.IsGyration())
        bChanged = MoveCenter(pCamera);
    // The selected item is moved here.
    mCMouse.SetPreviousPosition();
    return bChanged;
}

// The anchor is shared: other views go with it.
bool ViewMouse_cls::MoveCenter(PositionAndDirection_cls* pCamera) {
    double* pAnchor = mCanvas.mCamera.GetPCAnchorPosition();
    Position_cls anchor(pAnchor[0], pAnchor[1], pAnchor[2]);
    if (!mCDolly.MoveCenter(pCamera, &anchor)) return false;
    std::copy_n(anchor.mPos, 3, pAnchor);
    RefreshOthers(mCanvas.IsAlongAxis());
    return true;
}

void ViewMouse_cls::OnChangedByMouse() {
    if (GpCurrentGLPanel != &mCanvas) {
        mCanvas.SetThisToBeActiveGL();
        mCanvas.SetFocus();
    }
    mCanvas.RefreshEX();
}

void ViewMouse_cls::SetOtherCanvasToBeActiveGL() {
    const wxPoint pointer = wxGetMousePosition();
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* pOther = mHost.GetPCGLCanvas(view);
        if (!pOther || pOther == &mCanvas || !pOther->IsShownOnScreen()) continue;
        if (!pOther->GetScreenRect().Contains(pointer)) continue;
        pOther->SetThisToBeActiveGL();
        pOther->SetFocus();
        return;
    }
}

void ViewMouse_cls::RefreshOthers(bool bAlongAxis) {
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* pOther = mHost.GetPCGLCanvas(view);
        if (pOther && pOther != &mCanvas && pOther->IsAlongAxis() == bAlongAxis && pOther->IsShownOnScreen())
            pOther->RefreshEX();
    }
}
