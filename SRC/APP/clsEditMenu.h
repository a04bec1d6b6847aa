// The frame's "Edit" menu, and the dialogs that its menus open.
#pragma once

class FrameMain_cls;
class Main_cls;
class PreferenceGUI_cls;
class wxCommandEvent;

class EditMenu_cls {
public:
    /// Takes the frame's commands about editing from here on. A part of the frame.
    explicit EditMenu_cls(FrameMain_cls& frame);
    EditMenu_cls(const EditMenu_cls&) = delete;
    EditMenu_cls& operator=(const EditMenu_cls&) = delete;

    /// Bring the dialog "Preference", if there is one, in line with settings that were just read.
    void UpdatePreference();

private:
    void OnMenuUndo(wxCommandEvent& event);
    void OnMenuRedo(wxCommandEvent& event);
    void OnMenuTimeRemap(wxCommandEvent& event);
    void OnMenuDeselect(wxCommandEvent& event);
    void OnMenuScene(wxCommandEvent& event);
    void BindMenuStates();
    void OnMenuGo(wxCommandEvent& event);
    void OnMenuRemoveCacheSnap(wxCommandEvent& event);
    void OnMenuRemoveCacheAll(wxCommandEvent& event);
    void OnMenuPreference(wxCommandEvent& event);
    void OnMenuPeriodicBoundary(wxCommandEvent& event);
    void OnMenuColorCurve(wxCommandEvent& event);
    void OnMenuRefreshColor(wxCommandEvent& event);
    void OnMenuLighgtSRC(wxCommandEvent& event);
    void OnMenuRefreshLight(wxCommandEvent& event);
    void OnMenuCameraPath(wxCommandEvent& event);
    void OnMenuRefreshCamConf(wxCommandEvent& event);
    void OnMenuStereogram(wxCommandEvent& event);
    void OnMenuRefreshStereo(wxCommandEvent& event);

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    PreferenceGUI_cls* mpCPreferenceGUI = nullptr; ///< made at first use; a child window of the frame
};
