#include "GL/VIEW/clsViewMenu.h"

#include <wx/intl.h>
#include <wx/menu.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "WIDGET/AskNumber.h"
#include "WIDGET/PopUp.h"

ViewMenu_cls::ViewMenu_cls(MainGLCanvas_cls& canvas, GLCanvasCtrl_cls& ctrl) : mCanvas(canvas), mCtrl(ctrl) {
    mCanvas.Bind(wxEVT_MENU, &ViewMenu_cls::OnMenu, this, ID_CANVAS_MOVE_TO_CAM, ID_CANVAS_FIT_VIEW);
}

std::vector<ViewMenu_cls::Entry_st> ViewMenu_cls::MakeEntries(const ViewSettings_cls& view,
                                                              bool bControlsShown) {
    const bool bLinked = view.IsCameraLinked();
    std::vector<Entry_st> entries = {
        {ID_CANVAS_MOVE_TO_CAM, _("Move to Cam Pos")},
        {ID_CANVAS_SET_KEY_POS, wxString::Format("%s %s", _("Sey Key Cam Pos"), _("(Pos)"))},
        {ID_CANVAS_SET_KEY_POS_ROT, wxString::Format("%s %s", _("Sey Key Cam Pos"), _("(Pos+Rot)"))},
        {ID_CANVAS_SET_KEY_ANC, _("Sey Key Anc Pos")},
        {ID_CANVAS_TOGGLE_LINK, _("Link/Unlink to Cam")},
        {kSeparator, wxString()},
        {ID_CANVAS_TOGGLE_PERSPECTIVE, _("Toggle Perspective"), !bLinked}, // the path's geometry counts there
    };
    if (!bControlsShown) entries.push_back({ID_CANVAS_SHOW_CONTROLS, _("Show Controls")}); // the way back
    if (view.IsFishEye()) {
        entries.push_back({ID_CANVAS_DISTORTION, _("Distortion"), true, view.mDistortion.mValue});
        entries.push_back({ID_CANVAS_FISHEYE_GRID, _("Fisheye Grid"), true, view.mFisheyeGrid.mValue});
    }
    // The path brings its own angle.
    if (!bLinked && view.GetMultiPanelMode() != 0)
        entries.push_back({ID_CANVAS_VIEW_ANGLE, _("View Angle...")});
    entries.push_back({ID_CANVAS_FIT_VIEW, _("Fit View"), view.HasOwnCamera()});
    return entries;
}

void ViewMenu_cls::Show() {
    wxMenu menu;
    for (const Entry_st& entry : MakeEntries(mCanvas, mCtrl.IsPanelShown())) {
        if (entry.mId == kSeparator)
            menu.AppendSeparator();
        else if (entry.mChecked)
            menu.AppendCheckItem(entry.mId, entry.mLabel)->Check(*entry.mChecked);
        else
            menu.Append(entry.mId, entry.mLabel)->Enable(entry.mbEnabled);
    }
    mCanvas.SetFocus();
    mCanvas.SetThisToBeActiveGL();
    PopUpMenu(&mCanvas, menu);
}

void ViewMenu_cls::OnMenu(wxCommandEvent& event) {
    switch (event.GetId()) {
    case ID_CANVAS_MOVE_TO_CAM:
        OnMenuMoveToCamPos();
        break;
    case ID_CANVAS_SET_KEY_POS:
    case ID_CANVAS_SET_KEY_POS_ROT:
    case ID_CANVAS_SET_KEY_ANC:
        mCanvas.SetThisToBeActiveGL();
        PostMenuEvent(event.GetId() - ID_CANVAS_SET_KEY_POS + ID_SET_KEY_POS);
        break;
    case ID_CANVAS_TOGGLE_LINK:
        OnMenuToggleLink();
        break;
    case ID_CANVAS_SHOW_CONTROLS:
        mCtrl.ShowPanel();
        break;
    case ID_CANVAS_TOGGLE_PERSPECTIVE:
        mCanvas.TogglePerspective();
        break;
    case ID_CANVAS_DISTORTION:
        mCtrl.ChangeBy([this] { mCanvas.mDistortion.mValue = !mCanvas.mDistortion.mValue; });
        break;
    case ID_CANVAS_FISHEYE_GRID:
        mCtrl.ChangeBy([this] { mCanvas.mFisheyeGrid.mValue = !mCanvas.mFisheyeGrid.mValue; });
        break;
    case ID_CANVAS_VIEW_ANGLE:
        OnMenuViewAngle();
        break;
    case ID_CANVAS_FIT_VIEW:
        mCanvas.SetThisToBeActiveGL();
        PostMenuEvent(ID_FIT_VIEW);
        break;
    default:
        event.Skip();
        break;
    }
}

void ViewMenu_cls::OnMenuViewAngle() {
    const long angle = AskNumber(
        &mCanvas, _("Degrees: of a fisheye from rim to rim, of a panorama half of what its width shows"),
        _("Angle"), _("View Angle"), long(mCanvas.mGLPersAngle.mValue), 1, 360);
    if (angle > 0) mCtrl.ChangeBy([this, angle] { mCanvas.mGLPersAngle.mValue = float(angle); });
}

void ViewMenu_cls::OnMenuMoveToCamPos() {
    mCtrl.ChangeBy([this] { mCanvas.LinkageConnect(); });
    mCtrl.UpdateWindow();
    mCanvas.mCamera.ForceUpdateCameraPos();
    mCanvas.RefreshEX();
}

void ViewMenu_cls::OnMenuToggleLink() {
    if (mCanvas.mDisplayMode.mValue < DISPLAY_PATH)
        OnMenuMoveToCamPos();
    else
        mCanvas.ChooseDisplayMode(DISPLAY_FREE);
}
