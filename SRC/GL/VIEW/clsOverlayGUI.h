// The page "Overlay".
#pragma once

#include "WIDGET/clsMultiInputPanel.h"

class Overlay_cls;

class OverlayGUI_cls : public MultiInputPanel_cls {
public:
    OverlayGUI_cls(wxWindow* pParent, Overlay_cls* pOverlay);

    void UpdateValues();
    /// Rows that matter with these choices.
    void HideAndShow();

protected:
    void FuncHookClick(int row) override;
    void FuncHookCombobox(int row) override;
    void FuncHookValue(int row, bool bFinal) override;

private:
    void AddTimeRows();
    void AddLegendRows();
    void Redraw();

    Overlay_cls* mpCOverlay;
    int mRowStyle = 0;
    int mRowFace = 0;
    int mRowAsk = 0;
    int mRowPoint = 0;
    int mRowTag = 0;
    int mRowAlpha = 0;
    int mRowTics = 0;
    int mRowLegendPos = 0;
};
