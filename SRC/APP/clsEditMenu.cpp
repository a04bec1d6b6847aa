#include "APP/clsEditMenu.h"

#include <functional>

#include <wx/intl.h>

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsPreferenceGUI.h"
#include "APP/clsScene.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COMMON/EventIds.h"
#include "FILTER/clsFilterLists.h"
#include "GL/VIEW/clsCameraPathCtrl.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/AskNumber.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"

EditMenu_cls::EditMenu_cls(FrameMain_cls& frame) : mFrame(frame), mHub(*frame.GetPCMain()) {
    BindMenu(mFrame, this, ID_UNDO, &EditMenu_cls::OnMenuUndo);
    BindMenu(mFrame, this, ID_REDO, &EditMenu_cls::OnMenuRedo);
    BindMenu(mFrame, this, ID_TIME_REMAP, &EditMenu_cls::OnMenuTimeRemap);
    BindMenu(mFrame, this, ID_DESELECT, &EditMenu_cls::OnMenuDeselect);
    BindMenu(mFrame, this, ID_SCENE, &EditMenu_cls::OnMenuScene);
    BindMenu(mFrame, this, ID_GO, &EditMenu_cls::OnMenuGo);
    BindMenu(mFrame, this, ID_REMOVE_CACHE_SNAP, &EditMenu_cls::OnMenuRemoveCacheSnap);
    BindMenu(mFrame, this, ID_REMOVE_CACHE_ALL, &EditMenu_cls::OnMenuRemoveCacheAll);
    BindMenu(mFrame, this, ID_PREFERENCE, &EditMenu_cls::OnMenuPreference);
    BindMenu(mFrame, this, ID_PERIODIC_BOUNDARY, &EditMenu_cls::OnMenuPeriodicBoundary);
    BindMenu(mFrame, this, ID_COLOR_CURVE, &EditMenu_cls::OnMenuColorCurve);
    BindMenu(mFrame, this, ID_REFRESH_COLOR, &EditMenu_cls::OnMenuRefreshColor);
    BindMenu(mFrame, this, ID_LIGHT_SOURCE, &EditMenu_cls::OnMenuLighgtSRC);
    BindMenu(mFrame, this, ID_REFRESH_LIGHT, &EditMenu_cls::OnMenuRefreshLight);
    BindMenu(mFrame, this, ID_CAMERA_PATH, &EditMenu_cls::OnMenuCameraPath);
    BindMenu(mFrame, this, ID_REFRESH_CAM_CONF, &EditMenu_cls::OnMenuRefreshCamConf);
    BindMenu(mFrame, this, ID_STEREOGRAM, &EditMenu_cls::OnMenuStereogram);
    BindMenu(mFrame, this, ID_REFRESH_STEREO, &EditMenu_cls::OnMenuRefreshStereo);
    BindMenuStates();
}

void EditMenu_cls::OnMenuUndo(wxCommandEvent&) { mHub.Undo(); }

void EditMenu_cls::OnMenuRedo(wxCommandEvent&) { mHub.Redo(); }

void EditMenu_cls::OnMenuTimeRemap(wxCommandEvent& event) {
    mHub.mpCTimeCtrl->SetUseTimeRemapCommand(event.IsChecked());
}

void EditMenu_cls::OnMenuDeselect(wxCommandEvent&) { mHub.SelectObject(nullptr); }

void EditMenu_cls::OnMenuScene(wxCommandEvent&) { mHub.mpCScene->OpenWindow(&mFrame); }

// Entries that follow the program's state by themselves.
void EditMenu_cls::BindMenuStates() {
    const auto state = [this](int id, std::function<void(wxUpdateUIEvent&)> tell) {
        mFrame.Bind(wxEVT_UPDATE_UI, tell, id);
    };
    state(ID_UNDO, [this](wxUpdateUIEvent& event) { event.Enable(mHub.IsUndoable()); });
    state(ID_REDO, [](wxUpdateUIEvent& event) { event.Enable(GCUndoList.IsRedoable()); });
    state(ID_TIME_REMAP,
          [this](wxUpdateUIEvent& event) { event.Check(mHub.mpCTimeCtrl->mbUseTimeRemap.mValue); });
}

void EditMenu_cls::OnMenuGo(wxCommandEvent&) {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    const long frame = AskNumber(&mFrame, wxEmptyString, _("Frame"), _("Move Frame"), time->GetFrame(), 0,
                                 time->GetMaxFrame());
    if (frame >= 0) time->SetFrameCommand(int(frame), -1);
}

void EditMenu_cls::OnMenuRemoveCacheSnap(wxCommandEvent&) {
    mHub.mpCPDataSeqCtrl->ClearData(-1, mHub.mpCTimeCtrl->GetRemappedIndex(-1), false);
    mFrame.RefreshGL();
    mFrame.RefreshTL();
}

void EditMenu_cls::OnMenuRemoveCacheAll(wxCommandEvent&) {
    mHub.mpCPDataSeqCtrl->ClearData(-1, -2, false);
    mFrame.RefreshGL();
    mFrame.RefreshTL();
}

void EditMenu_cls::OnMenuPreference(wxCommandEvent&) {
    if (!mpCPreferenceGUI)
        mpCPreferenceGUI = new PreferenceGUI_cls(&mFrame, mFrame.GetPCPreference(),
                                                 mFrame.GetPCUserPreference(), mHub.mpCPDataSeqCtrl);
    mpCPreferenceGUI->OpenWindow();
}

void EditMenu_cls::UpdatePreference() {
    if (mpCPreferenceGUI) mpCPreferenceGUI->UpdateValues();
}

void EditMenu_cls::OnMenuPeriodicBoundary(wxCommandEvent&) { mHub.mpCPeriodicBoundary->OpenWindow(&mFrame); }

void EditMenu_cls::OnMenuColorCurve(wxCommandEvent&) { mHub.OpenColorCurveDialog(); }

void EditMenu_cls::OnMenuRefreshColor(wxCommandEvent&) { mHub.mpCColorCurveCtrl->UpdateItems(true); }

void EditMenu_cls::OnMenuLighgtSRC(wxCommandEvent&) { mHub.mpCLightSRCCtrl->OpenWindow(&mFrame); }

// Undo may have changed how many lights there are.
void EditMenu_cls::OnMenuRefreshLight(wxCommandEvent&) {
    mHub.mpCLightSRCCtrl->UpdateTLShown();
    mHub.mpCLightSRCCtrl->UpdateItems(true);
}

void EditMenu_cls::OnMenuCameraPath(wxCommandEvent&) { mHub.mpCCameraPathCtrl->OpenWindow(&mFrame); }

void EditMenu_cls::OnMenuRefreshCamConf(wxCommandEvent&) { mHub.mpCCameraPathCtrl->UpdateItems(true); }

void EditMenu_cls::OnMenuStereogram(wxCommandEvent&) { mHub.mpCStereoGram->OpenWindow(&mFrame); }

void EditMenu_cls::OnMenuRefreshStereo(wxCommandEvent&) {
    mHub.mpCStereoGram->UpdateTLShown();
    mHub.mpCStereoGram->UpdateItems(true);
}
