// The panel around one view: a row of controls above the canvas.
#pragma once

#include <array>
#include <functional>
#include <memory>

#include <wx/panel.h>

class MainGLCanvas_cls;
class wxAnyButton;
class wxBoxSizer;
class wxCheckBox;
class wxChoice;
class wxGLContext;
class wxToggleButton;
struct ViewLinks_st;

class GLCanvasCtrl_cls : public wxPanel {
public:
    /// `name` as "MainGLCanvas 0"; index 4 is the Extra Panel's.
    GLCanvasCtrl_cls(wxWindow* pParent, const ViewLinks_st& links, const wxString& name, int panelIndex,
                     int displayMode, std::shared_ptr<wxGLContext> pContext);

    MainGLCanvas_cls* GetPCCanvas() const { return mpCCanvas; }
    /// Controls from the canvas's settings.
    void UpdateWindow();
    void SyncDisplayModeToCombobox();
    void SyncComboboxToDisplayMode();
    void UpdateToggleButtonsAndParams();
    void OnMenuHide();
    void ShowPanel();
    bool IsPanelShown() const { return mbPanelShown; }
    /// Call `change`, which sets the view's settings, and leave a step that takes it back.
    void ChangeBy(const std::function<void()>& change);
    wxString Serialize();
    void ReadStrLine(const wxString& line);

private:
    /// What the row of controls and the popup menu set.
    struct Settings_st {
        int mMode = 0;
        int mGeometry = 0;
        bool mbPivot = false;
        std::array<bool, 4> mbToggle{};
        bool mbDistortion = false;
        bool mbFisheyeGrid = false;
        float mAngle = 35.0f;
        bool operator==(const Settings_st& other) const;
    };
    Settings_st GetSettings() const;
    void SetSettings(const Settings_st& settings);
    void MakeControls();
    void MakeToggle(int which);
    void MakeFitButton();
    void OnComboBox(wxCommandEvent& event);
    void OnPivot(wxCommandEvent& event);
    void OnToggle(int which);
    void OnSize(wxSizeEvent& event);
    void OnRightUp(wxMouseEvent& event);
    void FitControls(int width);

    MainGLCanvas_cls* mpCCanvas = nullptr;
    wxBoxSizer* mpCSizerRow = nullptr; ///< the controls and the space around them; null where nobody sees any
    wxBoxSizer* mpCSizerControls = nullptr;
    wxChoice* mpCComboDisplayMode = nullptr;
    wxChoice* mpCComboGeometry = nullptr;
    wxCheckBox* mpCCheckPivot = nullptr;
    wxToggleButton* mpCToggle[4] = {}; ///< message, items, grid, data
    wxAnyButton* mpCButtonFit = nullptr;
    static constexpr int kPivotForms = 3;
    int mPivotWidth[kPivotForms] = {}; ///< of the check box with its label in each form, pixels
    bool mbPanelShown = true;
};
