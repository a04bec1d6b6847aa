// The mouse over a view, and its popup menu.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <algorithm>

#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/numdlg.h>

#include "APP/clsFrameMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"

void MainGLCanvas_cls::BindMouse() {
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_LEFT_DCLICK, wxEVT_MIDDLE_DOWN,
                             wxEVT_MIDDLE_UP, wxEVT_MIDDLE_DCLICK, wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP,
                             wxEVT_RIGHT_DCLICK, wxEVT_MOTION, wxEVT_MOUSEWHEEL})
        Bind(type, &MainGLCanvas_cls::OnMouse, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &MainGLCanvas_cls::OnCaptureLost, this);
    Bind(wxEVT_MENU, &MainGLCanvas_cls::OnMenu, this, ID_CANVAS_MOVE_TO_CAM, ID_CANVAS_VIEW_ANGLE);
}

void MainGLCanvas_cls::OnMouse(wxMouseEvent& event) {
    mCMouse.SetMouseInformation(event, GetContentScaleFactor(), GetPixelSize());
    if (mCMouse.IsShowMenu()) {
        ShowMenu();
        return;
    }
    // A press on a button of the orientation gizmo locks dragging here.
    bool bChanged = false;
    if (mCMouse.IsButtonUp()) {
        if (HasCapture()) ReleaseMouse();
        mbLockDragging = false;
    }
    if (mCMouse.IsMouseDragging() && !mbLockDragging) bChanged = ProcViewOrItemDragging();
    if (mCMouse.IsButtonDown()) OnButtonDown();
    // The end of an item's drag sets its keys here.
    if (mCMouse.IsWheel()) bChanged = OnWheel();
    if (bChanged) OnChangedByMouse();
}

void MainGLCanvas_cls::OnCaptureLost(wxMouseCaptureLostEvent&) {
    mbLockDragging = true; // until the next press
}

void MainGLCanvas_cls::OnButtonDown() {
    SetFocus();
    mbLockDragging = false;
    if (!HasCapture()) {
        if (wxWindow* pOther = wxWindow::GetCapture()) pOther->ReleaseMouse();
        CaptureMouse();
        SetThisToBeActiveGL();
    }
    mCMouse.SetPreviousPosition();
    mCMouse.SetGyrationMode(GetPixelSize());
}

bool MainGLCanvas_cls::OnWheel() {
    if (!GetScreenRect().Contains(wxGetMousePosition())) {
        SetOtherCanvasToBeActiveGL();
        return false;
    }
    UpdateAnc();
    mCDolly.SetParameter(MouseSpeed::kDrag, nullptr, GetPixelSize(), mDisplayMode.mValue);
    const bool bChanged =
        mCDolly.ZoomWheel(GetPCCameraPosition(), mCMouse.mWheelSteps, &mGLOrthoScale.mValue);
    mCMouse.SetPreviousPosition();
    SetThisToBeActiveGL();
    return bChanged;
}

bool MainGLCanvas_cls::ProcViewOrItemDragging() {
    const wxSize size = GetPixelSize();
    MouseNormalized_cls mouse(mCMouse, size);
    mouse.LimitMove();
    UpdateAnc();
    mCDolly.SetParameter(MouseSpeed::kDrag, &mouse, size, mDisplayMode.mValue);
    PositionAndDirection_cls* pCamera = GetPCCameraPosition();
    bool bChanged = false;
    if (mCMouse.IsGyration() && !IsAlongAxis())
        bChanged = mCDolly.Gyration(pCamera);
    else if (mCMouse.IsZoom())
        bChanged = mCDolly.Zoom(pCamera, &mGLOrthoScale.mValue);
    else if (mCMouse.IsMoveCenter() || mCMouse.IsGyration())
        bChanged = MoveCenter(pCamera);
    // The selected item is moved here.
    mCMouse.SetPreviousPosition();
    return bChanged;
}

// The anchor is shared: other views go with it.
bool MainGLCanvas_cls::MoveCenter(PositionAndDirection_cls* pCamera) {
    double* pAnchor = GetPCAnchorPosition();
    Position_cls anchor(pAnchor[0], pAnchor[1], pAnchor[2]);
    if (!mCDolly.MoveCenter(pCamera, &anchor)) return false;
    std::copy_n(anchor.mPos, 3, pAnchor);
    if (IsAlongAxis())
        RefreshOtherOrthoCanvas();
    else
        RefreshOtherFreeCanvas();
    return true;
}

void MainGLCanvas_cls::OnChangedByMouse() {
    if (GpCurrentGLPanel != this) {
        SetThisToBeActiveGL();
        SetFocus();
    }
    RefreshEX();
}

void MainGLCanvas_cls::SetThisToBeActiveGL() {
    if (GpCurrentGLPanel == this) return;
    GpCurrentGLPanel = this;
    mpCFrame->ReconnectCameraPathGUI();
}

void MainGLCanvas_cls::SetOtherCanvasToBeActiveGL() {
    const wxPoint pointer = wxGetMousePosition();
    for (int view = 0; view < kViewNumber; ++view) {
        MainGLCanvas_cls* pOther = GetOther(view);
        if (!pOther || pOther == this || !pOther->IsShownOnScreen()) continue;
        if (!pOther->GetScreenRect().Contains(pointer)) continue;
        pOther->SetThisToBeActiveGL();
        pOther->SetFocus();
        return;
    }
}

void MainGLCanvas_cls::RefreshOthers(bool bAlongAxis) {
    for (int view = 0; view < kViewNumber; ++view) {
        MainGLCanvas_cls* pOther = GetOther(view);
        if (pOther && pOther != this && pOther->IsAlongAxis() == bAlongAxis && pOther->IsShownOnScreen())
            pOther->RefreshEX();
    }
}

void MainGLCanvas_cls::ShowMenu() {
    wxMenu menu;
    menu.Append(ID_CANVAS_MOVE_TO_CAM, _("Move to Cam Pos"));
    menu.Append(ID_CANVAS_SET_KEY_POS, wxString::Format("%s %s", _("Sey Key Cam Pos"), _("(Pos)")));
    menu.Append(ID_CANVAS_SET_KEY_POS_ROT, wxString::Format("%s %s", _("Sey Key Cam Pos"), _("(Pos+Rot)")));
    menu.Append(ID_CANVAS_SET_KEY_ANC, _("Sey Key Anc Pos"));
    menu.Append(ID_CANVAS_TOGGLE_LINK, _("Link/Unlink to Cam"));
    menu.AppendSeparator();
    menu.Append(ID_CANVAS_TOGGLE_PERSPECTIVE, _("Toggle Perspective"));
    if (!mpCCtrl->IsPanelShown()) menu.Append(ID_CANVAS_SHOW_CONTROLS, _("Show Controls")); // the way back
    menu.Enable(ID_CANVAS_TOGGLE_PERSPECTIVE, !IsCameraLinked()); // the path's geometry counts there
    if (IsFishEye()) {
        menu.AppendCheckItem(ID_CANVAS_DISTORTION, _("Distortion"))->Check(mDistortion.mValue);
        menu.AppendCheckItem(ID_CANVAS_FISHEYE_GRID, _("Fisheye Grid"))->Check(mFisheyeGrid.mValue);
    }
    // The path brings its own angle.
    if (!IsCameraLinked() && GetMultiPanelMode() != 0) menu.Append(ID_CANVAS_VIEW_ANGLE, _("View Angle..."));
    SetFocus();
    SetThisToBeActiveGL();
    PopupMenu(&menu);
}

void MainGLCanvas_cls::OnMenu(wxCommandEvent& event) {
    switch (event.GetId()) {
    case ID_CANVAS_MOVE_TO_CAM:
        OnMenuMoveToCamPos();
        break;
    case ID_CANVAS_SET_KEY_POS:
    case ID_CANVAS_SET_KEY_POS_ROT:
    case ID_CANVAS_SET_KEY_ANC:
        SetThisToBeActiveGL();
        PostMenuEvent(event.GetId() - ID_CANVAS_SET_KEY_POS + ID_SET_KEY_POS);
        break;
    case ID_CANVAS_TOGGLE_LINK:
        OnMenuToggleLink();
        break;
    case ID_CANVAS_SHOW_CONTROLS:
        mpCCtrl->ShowPanel();
        break;
    case ID_CANVAS_TOGGLE_PERSPECTIVE:
        TogglePerspective();
        break;
    case ID_CANVAS_DISTORTION:
        mpCCtrl->ChangeBy([this] { mDistortion.mValue = !mDistortion.mValue; });
        break;
    case ID_CANVAS_FISHEYE_GRID:
        mpCCtrl->ChangeBy([this] { mFisheyeGrid.mValue = !mFisheyeGrid.mValue; });
        break;
    case ID_CANVAS_VIEW_ANGLE:
        OnMenuViewAngle();
        break;
    default:
        event.Skip();
        break;
    }
}

void MainGLCanvas_cls::OnMenuViewAngle() {
    const long angle = wxGetNumberFromUser(
        _("Degrees: of a fisheye from rim to rim, of a panorama half of what its width shows"), _("Angle"),
        _("View Angle"), long(mGLPersAngle.mValue), 1, 360, this);
    if (angle > 0) mpCCtrl->ChangeBy([this, angle] { mGLPersAngle.mValue = float(angle); });
}

void MainGLCanvas_cls::OnMenuMoveToCamPos() {
    mpCCtrl->ChangeBy([this] { LinkageConnect(); });
    mpCCtrl->UpdateWindow();
    ForceUpdateCameraPos();
    RefreshEX();
}

void MainGLCanvas_cls::OnMenuToggleLink() {
    if (mDisplayMode.mValue < 7)
        OnMenuMoveToCamPos();
    else
        ChooseDisplayMode(0);
}
