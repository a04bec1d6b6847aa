#include "APP/clsViewsMenu.h"

#include <wx/menu.h>

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsGLExtraFrame.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GL/VIEW/clsViewFitCtrl.h"

ViewsMenu_cls::ViewsMenu_cls(FrameMain_cls& frame) : mFrame(frame) {
    for (int id = ID_VIEW_PANEL_TYPE_0; id <= ID_VIEW_PANEL_TYPE_4; ++id)
        BindMenu(mFrame, this, id, &ViewsMenu_cls::OnMenuViewPanelType);
    BindMenu(mFrame, this, ID_VIEW_EXTRA, &ViewsMenu_cls::OnMenuViewExtra);
    BindMenu(mFrame, this, ID_FIT_VIEW, &ViewsMenu_cls::OnMenuFitView);
    for (const int id : {ID_SET_KEY_POS, ID_SET_KEY_POS_ROT, ID_SET_KEY_ANC})
        BindMenu(mFrame, this, id, &ViewsMenu_cls::OnMenuSetCameraKey);
    BindMenu(mFrame, this, ID_SYNC_GL_CTRL, &ViewsMenu_cls::OnMenuSyncGLCtrl);
    mFrame.Bind(
        wxEVT_UPDATE_UI,
        [this](wxUpdateUIEvent& event) { event.Enable(mFrame.GetPCOutputCanvas()->HasOwnCamera()); },
        ID_FIT_VIEW);
}

// Keys and dialogs act on the active view.
void LeaveHiddenView(const FrameMain_cls& frame) {
    MainGLCanvas_cls* canvas = frame.GetPCOutputCanvas();
    if (canvas == GpCurrentGLPanel || !canvas->IsShownOnScreen()) return;
    if (GpCurrentGLPanel) GpCurrentGLPanel->OnDragKey(WXK_RETURN); // the hand has lost what it held there
    canvas->SetThisToBeActiveGL();
    canvas->SetFocus();
    canvas->RefreshEX();
}

void ViewsMenu_cls::OnMenuViewPanelType(wxCommandEvent& event) {
    mFrame.GetPCTopHalf()->SplitPanel(event.GetId() - ID_VIEW_PANEL_TYPE_0);
    LeaveHiddenView(mFrame);
    mFrame.GetMenuBar()->Check(event.GetId(), true);
}

void ViewsMenu_cls::OnMenuViewExtra(wxCommandEvent& event) {
    mFrame.GetPCExtraFrame()->Show(event.IsChecked());
    UpdateStatusBar_cls::sbAllowDispach = !event.IsChecked();
    LeaveHiddenView(mFrame);
}

void ViewsMenu_cls::OnMenuFitView(wxCommandEvent&) {
    mFrame.GetPCViewFit()->Fit(*mFrame.GetPCOutputCanvas());
}

// The keys of camera and anchor come from the view that was used last.
void ViewsMenu_cls::OnMenuSetCameraKey(wxCommandEvent& event) {
    if (!GpCurrentGLPanel) return;
    if (event.GetId() == ID_SET_KEY_POS) GpCurrentGLPanel->mCamera.SetKeyPos();
    if (event.GetId() == ID_SET_KEY_POS_ROT) GpCurrentGLPanel->mCamera.SetKeyPosRot();
    if (event.GetId() == ID_SET_KEY_ANC) GpCurrentGLPanel->mCamera.SetKeyAnc();
    mFrame.RefreshGL();
    mFrame.RefreshTL();
}

void ViewsMenu_cls::OnMenuSyncGLCtrl(wxCommandEvent&) {
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view)
        mFrame.GetPCGLCanvasCtrl(view)->UpdateWindow();
}
