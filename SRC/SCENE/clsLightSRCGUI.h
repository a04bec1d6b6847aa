// The dialog "Light Source Editor": the lights in use with their icons, and the settings of one of them.
#pragma once

#include "WIDGET/clsDialogEXKey.h"

class LightSRCCtrl_cls;
class LightSRC_cls;
class MultiInputPanel_cls;
class wxBoxSizer;
class wxButton;
class wxListCtrl;

class LightSRCGUI_cls : public wxDialogEXKey {
public:
    LightSRCGUI_cls(wxWindow* pParent, LightSRCCtrl_cls& ctrl);
    ~LightSRCGUI_cls() override;

    /// From the light that is current now.
    void UpdateValues() override;
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }
    wxListCtrl* GetPCList() const { return mpCList; }

    /// Rows of the panel, in their order.
    enum Row {
        ROW_VALID,
        ROW_TYPE, ///< type, fade, target
        ROW_TRANSLATE,
        ROW_ROTATE,
        ROW_STRENGTH,
        ROW_FADE_DISTANCE,
        ROW_SPOT_ANGLE,
        ROW_CAST_SHADOW,
        ROW_AREA_LIGHT,
        ROW_AREA_SIZE ///< size, quality
    };

    static LightSRCGUI_cls* mspCThis; ///< null while there is none

private:
    wxBoxSizer* SetMNumMain();
    void SetMNumParam(LightSRC_cls& light);
    /// The fields hold places of values, so another light has others.
    void ReconnectParam();
    void FuncHookType();
    void HideAndShowAll();
    void KeepTarget();
    void ShowList();
    void OnSelect(long row);

    LightSRCCtrl_cls& mCtrl;
    LightSRC_cls* mpCShown = nullptr; ///< whose fields these are
    wxString mStrShown;               ///< its text when they were last brought up to date
    wxListCtrl* mpCList = nullptr;
    wxButton* mpCRemove = nullptr;
    wxBoxSizer* mpCParamSizer = nullptr;
    MultiInputPanel_cls* mpCPanel = nullptr;
    bool mbShowing = false; ///< the list is being filled, and nobody chooses from it
};
