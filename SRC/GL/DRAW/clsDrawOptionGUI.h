// The page of the options that apply to all particles.
#pragma once

#include "WIDGET/clsMultiInputPanel.h"

class DrawOption_cls;

class DrawOptionGUI_cls : public MultiInputPanel_cls {
public:
    DrawOptionGUI_cls(wxWindow* pParent, DrawOption_cls* pDrawOption);

    void UpdateValues();
    /// Rows that matter with these choices.
    void HideAndShow();

protected:
    void FuncHookCombobox(int row) override;
    void FuncHookValue(int row, bool bFinal) override;

private:
    void Redraw();

    DrawOption_cls* mpCDrawOption;
    int mRowShadow;
    int mRowDarkness;
};
