// The dialog "Stereogram Configure".
#pragma once

#include "WIDGET/clsDialogEXKey.h"

class MultiInputPanel_cls;
class StereoGram_cls;
class wxBoxSizer;

class StereoGramGUI_cls : public wxDialogEXKey {
public:
    StereoGramGUI_cls(wxWindow* pParent, StereoGram_cls& stereo);

    void UpdateValues() override;
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }

    /// Rows of the panel, in their order.
    enum Row {
        ROW_CAMERA,
        ROW_TYPE,
        ROW_PARALLAX, ///< and "Fit"
        ROW_TOE_IN,
        ROW_FOCUS,
        ROW_FILE,
        ROW_HINT
    };

private:
    void AddRows();
    wxBoxSizer* MakeButtons();
    void OnChange(int row, bool bFinal);
    void HideAndShow();
    wxString GetFocusText() const;
    wxString GetHint() const;
    void OnDefault();

    StereoGram_cls& mStereo;
    MultiInputPanel_cls* mpCPanel;
};
