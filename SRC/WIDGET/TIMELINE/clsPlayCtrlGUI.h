// The play panel: transport buttons, position, work area, how the film plays, and the memory in use.
#pragma once

#include <functional>
#include <vector>

#include <wx/panel.h>

class NumField_cls;
class PDataSeqCtrl_cls;
class TimeCtrl_cls;
struct NumSpec;
class wxBitmapToggleButton;
class wxButton;
class wxCheckBox;
class wxSizer;
class wxStaticText;

/// The prefetch that is granted: of a request over 3 at most 60% of the snapshots that fit the memory
/// (`expectedMax`, negative when unknown).
int LimitPrefetch(int request, int expectedMax);

class PlayCtrlGUI_cls : public wxPanel {
public:
    PlayCtrlGUI_cls(wxWindow* pParent, TimeCtrl_cls* pTime, PDataSeqCtrl_cls* pStore);

    /// Fields and buttons from the clock; what is the same isn't touched.
    void UpdateValues();
    void RefreshMemory();
    NumField_cls* GetPCFrameField() const { return mpCFrame; }
    NumField_cls* GetPCPrefetchField() const { return mpCPrefetch; }

private:
    void MakeTransport(wxSizer* pSizer);
    void MakePosition(wxSizer* pSizer);
    void MakeArea(wxSizer* pSizer);
    void MakeSettings(wxSizer* pSizer);
    void MakeState(wxSizer* pSizer);
    void AddButton(wxSizer* pSizer, const wxString& icon, const wxString& tip, std::function<void()> action);
    wxBitmapToggleButton* AddToggle(wxSizer* pSizer, const wxString& icon, const wxString& tip,
                                    std::function<void()> action);
    NumField_cls* AddField(wxSizer* pSizer, const wxString& label, int low, int high, const wxString& tip,
                           std::function<void(int)> set);
    void Play(int direction);
    void SetWorkArea(int frame, bool bUpper);

    TimeCtrl_cls* mpCTime;
    PDataSeqCtrl_cls* mpCStore;
    wxBitmapToggleButton* mpCPlayBack = nullptr;
    wxBitmapToggleButton* mpCPlayForward = nullptr;
    NumField_cls* mpCFrame = nullptr;
    NumField_cls* mpCStep = nullptr;
    wxStaticText* mpCLast = nullptr; ///< length of the film
    NumField_cls* mpCFrom = nullptr;
    NumField_cls* mpCTo = nullptr;
    wxCheckBox* mpCRepeat = nullptr;
    NumField_cls* mpCStepping = nullptr;
    NumField_cls* mpCInterval = nullptr;
    NumField_cls* mpCPrefetch = nullptr;
    NumField_cls* mpCPace = nullptr;
    wxStaticText* mpCMemory = nullptr;
};
