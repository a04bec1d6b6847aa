// What posted commands do, and the entries of menus that have no class of their own.
#include "APP/clsFrameMain.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/listbase.h>
#include <wx/listctrl.h>
#include <wx/menu.h>
#include <wx/splitter.h>
#include <wx/textentry.h>

#include "APP/BindMenu.h"
#include "APP/clsImageRun.h"
#include "APP/clsMain.h"
#include "APP/clsShortcut.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsGLExtraFrame.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/clsMultiInputPanel.h"

void FrameMain_cls::BindHandlers() {
    BindMenu(*this, this, ID_REFRESH_GL, &FrameMain_cls::OnMenuRefreshGL);
    BindMenu(*this, this, ID_REFRESH_TL, &FrameMain_cls::OnMenuRefreshTL);
    BindMenu(*this, this, ID_REFRESH_SB, &FrameMain_cls::OnMenuRefreshSB);
    BindMenu(*this, this, ID_REFRESH_ATTRIB, &FrameMain_cls::OnMenuRefreshAttrib);
    BindMenu(*this, this, ID_REFRESH_DRAW_OPTIONS, &FrameMain_cls::OnMenuRefreshDrawOptions);
    BindMenu(*this, this, ID_REFRESH_EXPOSURE, &FrameMain_cls::OnMenuRefreshExposure);
    BindMenu(*this, this, ID_RESIZED_TL, &FrameMain_cls::OnMenuResizedTL);
    BindMenu(*this, this, ID_SHORTCUT, &FrameMain_cls::OnMenuShortcut);
    BindMenu(*this, this, ID_SYNC_GL_CTRL, &FrameMain_cls::OnMenuSyncGLCtrl);
    for (int id = ID_VIEW_PANEL_TYPE_0; id <= ID_VIEW_PANEL_TYPE_4; ++id)
        BindMenu(*this, this, id, &FrameMain_cls::OnMenuViewPanelType);
    BindMenu(*this, this, ID_VIEW_EXTRA, &FrameMain_cls::OnMenuViewExtra);
    BindMenu(*this, this, ID_PLAY_STOP, &FrameMain_cls::OnMenuPlayStop);
    for (const int id : {ID_SET_KEY_POS, ID_SET_KEY_POS_ROT, ID_SET_KEY_ANC})
        BindMenu(*this, this, id, &FrameMain_cls::OnMenuSetCameraKey);
    BindMenu(*this, this, ID_FIT_VIEW, &FrameMain_cls::OnMenuFitView);
    Bind(
        wxEVT_UPDATE_UI,
        [this](wxUpdateUIEvent& event) { event.Enable(GetPCOutputCanvas()->HasOwnCamera()); }, ID_FIT_VIEW);
    Bind(wxEVT_IDLE, &FrameMain_cls::OnIdle, this);
    Bind(wxEVT_TIMER, &FrameMain_cls::OnTimer, this);
    Bind(wxEVT_CHAR_HOOK, &FrameMain_cls::OnCharHook, this);
    mpCSplitter->Bind(wxEVT_SPLITTER_SASH_POS_CHANGED, &FrameMain_cls::OnSash, this);
}

void FrameMain_cls::OnMenuRefreshGL(wxCommandEvent&) { RefreshGL(); }

void FrameMain_cls::OnMenuRefreshTL(wxCommandEvent&) { RefreshTL(); }

void FrameMain_cls::RefreshGL() {
    MainGLCanvas_cls* extra = GetPCGLCanvas(MainGLCanvas_cls::kExtraPanel);
    if (extra && (mpCExtraFrame->IsShown() || extra->WritesOutput())) {
        extra->MarkStale();
        extra->RefreshEX();
    }
    mpCTopHalf->RefreshGLPanels();
}

void FrameMain_cls::RefreshTL() {
    mpCBtmHalf->RefreshGUI();
    mpCBtmHalf->RefreshTLPanels();
    if (!GetPCTimeCtrl()->IsPlaying()) GetPCTimeCtrl()->UpdateSnippingTag(); // keys may have changed
    MultiInputPanel_cls::UpdateAllParams();
    UpdateStatusText();
}

void FrameMain_cls::OnMenuRefreshSB(wxCommandEvent&) { UpdateStatusText(); }

void FrameMain_cls::OnMenuRefreshAttrib(wxCommandEvent&) { mpCTopHalf->RefreshAttrib(); }

void FrameMain_cls::OnMenuRefreshDrawOptions(wxCommandEvent&) { mpCTopHalf->RefreshDrawOptions(); }

void FrameMain_cls::OnMenuRefreshExposure(wxCommandEvent&) { mpCTopHalf->RefreshExposure(); }

void FrameMain_cls::OnMenuResizedTL(wxCommandEvent&) {
    // A sash that nobody has moved follows what the bottom half needs; one that was moved gives way only.
    const int now = mpCBtmHalf->GetSize().y;
    const int needed = mpCBtmHalf->GetMinHeight();
    if (now == mBtmFitted || now < needed) FitSplitterWindow(true);
    mpCBtmHalf->RecheckSize();
}

void FrameMain_cls::OnMenuShortcut(wxCommandEvent&) {
    mpCShortcut->ProcShortcutKey(GShortcutModifier, GShortcutKeycode);
}

void FrameMain_cls::OnMenuSyncGLCtrl(wxCommandEvent&) {
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view)
        GetPCGLCanvasCtrl(view)->UpdateWindow();
}

void FrameMain_cls::OnMenuViewPanelType(wxCommandEvent& event) {
    mpCTopHalf->SplitPanel(event.GetId() - ID_VIEW_PANEL_TYPE_0);
    GetMenuBar()->Check(event.GetId(), true);
}

void FrameMain_cls::OnMenuViewExtra(wxCommandEvent& event) {
    mpCExtraFrame->Show(event.IsChecked());
    UpdateStatusBar_cls::sbAllowDispach = !event.IsChecked();
}

void FrameMain_cls::OnMenuPlayStop(wxCommandEvent&) {
    TimeCtrl_cls* time = GetPCTimeCtrl();
    if (time->mbIgnoreNextStop) {
        time->mbIgnoreNextStop = false;
        return;
    }
    mpCImageRun->StopOutputs();
    if (time->IsPlaying()) time->ProcStopPlaying();
}

// The keys of camera and anchor come from the view that was used last.
void FrameMain_cls::OnMenuSetCameraKey(wxCommandEvent& event) {
    if (!GpCurrentGLPanel) return;
    if (event.GetId() == ID_SET_KEY_POS) GpCurrentGLPanel->mCamera.SetKeyPos();
    if (event.GetId() == ID_SET_KEY_POS_ROT) GpCurrentGLPanel->mCamera.SetKeyPosRot();
    if (event.GetId() == ID_SET_KEY_ANC) GpCurrentGLPanel->mCamera.SetKeyAnc();
    RefreshGL();
    RefreshTL();
}

void FrameMain_cls::OnMenuFitView(wxCommandEvent&) { mpCViewFit->Fit(*GetPCOutputCanvas()); }

void FrameMain_cls::OnCharHook(wxKeyEvent& event) {
    // Whoever edits text, or picks from a list by keys, has the key first.
    wxWindow* focus = wxWindow::FindFocus();
    const bool bNeedsKeys = dynamic_cast<wxTextEntryBase*>(focus) || dynamic_cast<wxChoice*>(focus) ||
                            dynamic_cast<wxCheckBox*>(focus) || dynamic_cast<wxListCtrl*>(focus);
    const int modifier = (event.AltDown() ? 1 : 0) + (event.ControlDown() ? 2 : 0) +
                         (event.ShiftDown() ? 4 : 0) + (event.MetaDown() ? 8 : 0);
    if (bNeedsKeys || !mpCShortcut->ProcShortcutKey(modifier, event.GetKeyCode())) event.Skip();
}

void FrameMain_cls::OnSash(wxSplitterEvent& event) {
    event.Skip();
    mpCBtmHalf->RecheckSize();
}
