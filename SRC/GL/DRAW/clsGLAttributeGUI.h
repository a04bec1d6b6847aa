// The page of one attribute: how the particles of one class look.
#pragma once

#include "GL/DRAW/DrawnCounts.h"
#include "WIDGET/clsMultiInputPanel.h"

class ColorCurve_cls;
class GLAttribute_cls;

class GLAttributeGUI_cls : public MultiInputPanel_cls {
public:
    GLAttributeGUI_cls(wxWindow* pParent, GLAttribute_cls* pAttribute);

    /// All fields from the attribute, and only those rows that matter with these choices.
    void UpdateValues();
    void HideAndShow();
    /// Tell how many particles of the frame this attribute draws.
    void ShowCounts(const DrawnCounts_st& counts);

protected:
    void FuncHookClick(int row) override;
    void FuncHookCombobox(int row) override;
    void FuncHookValue(int row, bool bFinal) override;

private:
    void AddCountRow();
    wxString GetCountText() const;
    void GoToMost();
    void AddColorRows();
    void AddPointRows();
    void AddRadiusRows();
    void AddAlphaRows();
    void Redraw();
    bool IsDrawType(unsigned type) const;

    GLAttribute_cls* mpCAttribute;
    DrawnCounts_st mCounts;
    wxButton* mpCButtonMost = nullptr; ///< to the page whose class has most
    int mRowCount, mRowDrawType, mRowQuality, mRowFineness, mRowBlend, mRowPointSize, mRowShader, mRowTexture;
    int mRowRadiusType, mRowRadiusFactor, mRowRadiusConst;
    int mRowAlphaType, mRowAlphaFactor, mRowAlphaBase;
    int mRowColor, mRowUseCurve, mRowCurve, mRowDepend, mRowScaling, mRowFit;
    int mRowAmbient, mRowDiffuse, mRowSpecular;
};
