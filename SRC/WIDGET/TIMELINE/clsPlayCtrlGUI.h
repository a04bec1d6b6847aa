// The play panel: transport buttons, position, work area, how the film plays, and the memory in use.
#pragma once

#include <functional>
#include <vector>

#include <wx/panel.h>

class NumField_cls;
class PDataSeqCtrl_cls;
class TimeCtrl_cls;
struct NumSpec;
class wxCheckBox;
class wxSizer;
class wxStaticText;
class wxToggleButton;

/// The prefetch that is granted: of a request over 3 at most 60% of the snapshots that fit the memory
/// (`expectedMax`, negative when unknown).
int LimitPrefetch(int request, int expectedMax);

class PlayCtrlGUI_cls : public wxPanel {
public:
    PlayCtrlGUI_cls(wxWindow* pParent, TimeCtrl_cls* pTime, PDataSeqCtrl_cls* pStore);

    /// Fields and buttons from the clock; what is the same isn't touched.
    void UpdateValues();
    void RefreshMemory();

private:
    /// A button's picture, and the text where that is missing.
    struct ButtonLook_st {
        const char* mIcon;
        wxString mText; ///< where the icon is missing
    };

    void MakeTransport();
    void MakePosition();
    void MakeArea();
    void MakeSettings();
    void MakeKeys();
    void MakeState();
    template <class TEXT_BUTTON, class BITMAP_BUTTON>
    TEXT_BUTTON* AddButton(std::vector<wxWindow*>& row, const ButtonLook_st& look, const wxString& tip);
    void AddAction(std::vector<wxWindow*>& row, const ButtonLook_st& look, const wxString& tip,
                   std::function<void()> action);
    wxToggleButton* AddToggle(const ButtonLook_st& look, const wxString& tip, std::function<void()> action);
    NumField_cls* AddField(std::vector<wxWindow*>& row, const wxString& label, int low, int high,
                           const wxString& tip, std::function<void(int)> set);
    void Arrange(bool bNarrow);
    static wxSizer* MakeRow(const std::vector<wxWindow*>& windows, int gap = 0);
    static void AddFields(wxSizer* pSizer, const std::vector<wxWindow*>& windows, int gap);
    void OnSize(wxSizeEvent& event);
    void FitWidth();
    void Play(int direction);
    void SetWorkArea(int frame, bool bUpper);

    TimeCtrl_cls* mpCTime;
    PDataSeqCtrl_cls* mpCStore;
    wxToggleButton* mpCPlayBack = nullptr;
    wxToggleButton* mpCPlayForward = nullptr;
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
    bool mbNarrow = false;             ///< three rows
    int mWideWidth = 0;                ///< what two rows need, pixels
    std::vector<wxWindow*> mTransport; ///< the groups of the panel, in the order of their windows
    std::vector<wxWindow*> mPosition;  ///< frame, step and work area: labels and fields
    std::vector<wxWindow*> mHere;      ///< work area from or to the current frame
    std::vector<wxWindow*> mSettings;  ///< stepping, interval, prefetch and pace: labels and fields
    std::vector<wxWindow*> mKeys;      ///< camera and anchor keys
    std::vector<wxWindow*> mState;     ///< memory and abort
};
