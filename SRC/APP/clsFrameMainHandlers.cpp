// What menu entries and posted commands do, but for files (clsFrameMainFile.cpp).
#include "APP/clsFrameMain.h"

#include <functional>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/listbase.h>
#include <wx/listctrl.h>
#include <wx/menu.h>
#include <wx/numdlg.h>
#include <wx/platinfo.h>
#include <wx/splitter.h>
#include <wx/textentry.h>
#include <wx/thread.h>
#include <wx/utils.h>
#include <wx/versioninfo.h>

#include "APP/clsMain.h"
#include "APP/clsPreferenceGUI.h"
#include "APP/clsRecentFiles.h"
#include "APP/clsScene.h"
#include "APP/clsShortcut.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "GL/BASE/clsGLInfo.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsGLExtraFrame.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/clsMultiInputPanel.h"

void FrameMain_cls::Bind(int id, void (FrameMain_cls::*pHandler)(wxCommandEvent&)) {
    wxFrame::Bind(wxEVT_MENU, pHandler, this, id);
}

void FrameMain_cls::BindHandlers() {
    Bind(ID_OPEN_PROJECT, &FrameMain_cls::OnMenuOpenProject);
    Bind(ID_SAVE_PROJECT, &FrameMain_cls::OnMenuSaveProject);
    Bind(ID_SAVE_PROJECT_AS, &FrameMain_cls::OnMenuSaveProjectAs);
    for (int place = 0; place < int(RecentFiles_cls::kMost); ++place) {
        Bind(ID_RECENT_PROJECT_0 + place, &FrameMain_cls::OnMenuRecent);
        Bind(ID_RECENT_DATA_0 + place, &FrameMain_cls::OnMenuRecent);
    }
    Bind(ID_LOAD_DATA, &FrameMain_cls::OnMenuLoadData);
    Bind(ID_GUESS_DATA, &FrameMain_cls::OnMenuGuessData);
    Bind(ID_CLOSE_DATA, &FrameMain_cls::OnMenuCloseData);
    Bind(ID_QUIT, &FrameMain_cls::OnQuit);
    Bind(ID_GO, &FrameMain_cls::OnMenuGo);
    Bind(ID_REMOVE_CACHE_SNAP, &FrameMain_cls::OnMenuRemoveCacheSnap);
    Bind(ID_REMOVE_CACHE_ALL, &FrameMain_cls::OnMenuRemoveCacheAll);
    Bind(ID_UNDO, &FrameMain_cls::OnMenuUndo);
    Bind(ID_REDO, &FrameMain_cls::OnMenuRedo);
    Bind(ID_TIME_REMAP, &FrameMain_cls::OnMenuTimeRemap);
    Bind(ID_DESELECT, &FrameMain_cls::OnMenuDeselect);
    Bind(ID_SCENE, &FrameMain_cls::OnMenuScene);
    BindMenuStates();
    BindExport();
    BindImages();
    Bind(ID_PREFERENCE, &FrameMain_cls::OnMenuPreference);
    Bind(ID_PERIODIC_BOUNDARY, &FrameMain_cls::OnMenuPeriodicBoundary);
    Bind(ID_COLOR_CURVE, &FrameMain_cls::OnMenuColorCurve);
    Bind(ID_REFRESH_COLOR, &FrameMain_cls::OnMenuRefreshColor);
    Bind(ID_REFRESH_GL, &FrameMain_cls::OnMenuRefreshGL);
    Bind(ID_REFRESH_TL, &FrameMain_cls::OnMenuRefreshTL);
    Bind(ID_REFRESH_SB, &FrameMain_cls::OnMenuRefreshSB);
    Bind(ID_REFRESH_ATTRIB, &FrameMain_cls::OnMenuRefreshAttrib);
    Bind(ID_REFRESH_DRAW_OPTIONS, &FrameMain_cls::OnMenuRefreshDrawOptions);
    Bind(ID_REFRESH_EXPOSURE, &FrameMain_cls::OnMenuRefreshExposure);
    Bind(ID_RESIZED_TL, &FrameMain_cls::OnMenuResizedTL);
    Bind(ID_SHORTCUT, &FrameMain_cls::OnMenuShortcut);
    Bind(ID_SYNC_GL_CTRL, &FrameMain_cls::OnMenuSyncGLCtrl);
    for (int id = ID_VIEW_PANEL_TYPE_0; id <= ID_VIEW_PANEL_TYPE_4; ++id)
        Bind(id, &FrameMain_cls::OnMenuViewPanelType);
    Bind(ID_VIEW_EXTRA, &FrameMain_cls::OnMenuViewExtra);
    Bind(ID_PLAY_STOP, &FrameMain_cls::OnMenuPlayStop);
    for (const int id : {ID_SET_KEY_POS, ID_SET_KEY_POS_ROT, ID_SET_KEY_ANC})
        Bind(id, &FrameMain_cls::OnMenuSetCameraKey);
    Bind(ID_ABOUT, &FrameMain_cls::OnAbout);
    Bind(ID_ABOUT_GL, &FrameMain_cls::OnMenuAboutGL);
    Bind(ID_UNLOCK, &FrameMain_cls::OnMenuUnlock);
    Bind(ID_SPECIAL, &FrameMain_cls::OnMenuSpecial);
    wxFrame::Bind(wxEVT_CLOSE_WINDOW, &FrameMain_cls::OnClose, this);
    wxFrame::Bind(wxEVT_IDLE, &FrameMain_cls::OnIdle, this);
    wxFrame::Bind(wxEVT_TIMER, &FrameMain_cls::OnTimer, this);
    wxFrame::Bind(wxEVT_CHAR_HOOK, &FrameMain_cls::OnCharHook, this);
    mpCSplitter->Bind(wxEVT_SPLITTER_SASH_POS_CHANGED, &FrameMain_cls::OnSash, this);
}

void FrameMain_cls::OnMenuRefreshGL(wxCommandEvent&) {
    MainGLCanvas_cls* extra = GetPCGLCanvas(MainGLCanvas_cls::kExtraPanel);
    if (extra && (mpCExtraFrame->IsShown() || extra->WritesOutput())) {
        extra->MarkStale();
        extra->RefreshEX();
    }
    mpCTopHalf->RefreshGLPanels();
}

void FrameMain_cls::OnMenuRefreshTL(wxCommandEvent&) {
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

void FrameMain_cls::OnMenuUndo(wxCommandEvent&) { mpCMain->Undo(); }

void FrameMain_cls::OnMenuRedo(wxCommandEvent&) { mpCMain->Redo(); }

void FrameMain_cls::OnMenuTimeRemap(wxCommandEvent& event) {
    GetPCTimeCtrl()->SetUseTimeRemapCommand(event.IsChecked());
}

void FrameMain_cls::OnMenuDeselect(wxCommandEvent&) {
    mpCBtmHalf->GetPCParamGUICtrl()->SelectObject(static_cast<SceneObj_cls*>(nullptr));
}

void FrameMain_cls::OnMenuScene(wxCommandEvent&) { mpCMain->mpCScene->OpenWindow(this); }

// Entries that follow the program's state by themselves.
void FrameMain_cls::BindMenuStates() {
    const auto state = [this](int id, std::function<void(wxUpdateUIEvent&)> tell) {
        wxFrame::Bind(wxEVT_UPDATE_UI, tell, id);
    };
    state(ID_UNDO, [this](wxUpdateUIEvent& event) { event.Enable(mpCMain->IsUndoable()); });
    state(ID_REDO, [](wxUpdateUIEvent& event) { event.Enable(GCUndoList.IsRedoable()); });
    state(ID_TIME_REMAP,
          [this](wxUpdateUIEvent& event) { event.Check(GetPCTimeCtrl()->mbUseTimeRemap.mValue); });
}

void FrameMain_cls::OnMenuGo(wxCommandEvent&) {
    TimeCtrl_cls* time = GetPCTimeCtrl();
    const long frame = wxGetNumberFromUser(wxEmptyString, _("Frame"), _("Move Frame"), time->GetFrame(), 0,
                                           time->GetMaxFrame(), this);
    if (frame >= 0) time->SetFrameCommand(int(frame), -1);
}

void FrameMain_cls::OnMenuRemoveCacheSnap(wxCommandEvent& event) {
    GetPCDataSeqCtrl()->ClearData(-1, GetPCTimeCtrl()->GetRemappedIndex(-1), false);
    OnMenuRefreshGL(event);
    OnMenuRefreshTL(event);
}

void FrameMain_cls::OnMenuRemoveCacheAll(wxCommandEvent& event) {
    GetPCDataSeqCtrl()->ClearData(-1, -2, false);
    OnMenuRefreshGL(event);
    OnMenuRefreshTL(event);
}

void FrameMain_cls::OnMenuPreference(wxCommandEvent&) {
    if (!mpCPreferenceGUI) mpCPreferenceGUI = new PreferenceGUI_cls(this, mpCPreference, GetPCDataSeqCtrl());
    mpCPreferenceGUI->OpenWindow();
}

void FrameMain_cls::OnMenuPeriodicBoundary(wxCommandEvent&) {
    mpCMain->mpCPeriodicBoundary->OpenWindow(this);
}

void FrameMain_cls::OnMenuColorCurve(wxCommandEvent&) { mpCMain->OpenColorCurveDialog(); }

void FrameMain_cls::OnMenuRefreshColor(wxCommandEvent&) { mpCMain->mpCColorCurveCtrl->UpdateItems(true); }

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
    StopOutputs();
    if (time->IsPlaying()) time->ProcStopPlaying();
}

// The keys of camera and anchor come from the view that was used last.
void FrameMain_cls::OnMenuSetCameraKey(wxCommandEvent& event) {
    if (!GpCurrentGLPanel) return;
    if (event.GetId() == ID_SET_KEY_POS) GpCurrentGLPanel->SetKeyPos();
    if (event.GetId() == ID_SET_KEY_POS_ROT) GpCurrentGLPanel->SetKeyPosRot();
    if (event.GetId() == ID_SET_KEY_ANC) GpCurrentGLPanel->SetKeyAnc();
    OnMenuRefreshGL(event);
    OnMenuRefreshTL(event);
}

void FrameMain_cls::OnMenuUnlock(wxCommandEvent&) { GbGLLockDrawing.store(false); }

void FrameMain_cls::OnMenuSpecial(wxCommandEvent&) { mpCMain->Special(); }

void FrameMain_cls::OnAbout(wxCommandEvent&) {
    const auto orUnknown = [](bool bKnown, const wxString& text) {
        return bKnown ? text : wxString(_("Unknown"));
    };
    const wxVersionInfo toolkit = wxGetLibraryVersionInfo();
    const wxMemorySize memory = wxGetFreeMemory();
    const int cores = wxThread::GetCPUCount();
    wxString text = "Morentis 3 v 0.80\n\n";
    text += wxString::Format("%s %s %d.%d.%d\n", _("Powered by"), toolkit.GetName(), toolkit.GetMajor(),
                             toolkit.GetMinor(), toolkit.GetMicro());
    text += wxString::Format("%s %s\n", _("running under"), wxGetOsDescription());
    text +=
        wxString::Format("%s %s\n", _("free memory"),
                         orUnknown(memory >= 0, wxString::Format("%lld MB", memory.GetValue() / 1048576)));
    text += wxString::Format("%s %s", _("CoreNumber:"), orUnknown(cores > 0, wxString::Format("%d", cores)));
    MsgBox(text, _("About Morentis3"));
}

void FrameMain_cls::OnMenuAboutGL(wxCommandEvent&) { MsgBox(mpCGLInfo->GetText(), _("About Open GL")); }

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
