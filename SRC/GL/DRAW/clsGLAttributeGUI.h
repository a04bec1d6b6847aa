// The page of one attribute: how the particles of one class look.
#pragma once

#include "WIDGET/clsMultiInputPanel.h"

class ColorCurve_cls;
class GLAttribute_cls;

class GLAttributeGUI_cls : public MultiInputPanel_cls {
public:
    GLAttributeGUI_cls(wxWindow* pParent, GLAttribute_cls* pAttribute);

    /// All fields from the attribute, and only those rows that matter with these choices.
    void UpdateValues();
    void HideAndShow();

protected:
    void FuncHookClick(int row) override;
    void FuncHookCombobox(int row) override;
    void FuncHookValue(int row, bool bFinal) override;

private:
    void AddColorRows();
    void AddPointRows();
    void AddRadiusRows();
    void AddAlphaRows();
    void Redraw();
    bool IsDrawType(unsigned type) const;

    GLAttribute_cls* mpCAttribute;
    int mRowDrawType, mRowQuality, mRowFineness, mRowBlend, mRowPointSize, mRowShader, mRowTexture;
    int mRowRadiusType, mRowRadiusFactor, mRowRadiusConst;
    int mRowAlphaType, mRowAlphaFactor, mRowAlphaBase;
    int mRowColor, mRowUseCurve, mRowCurve, mRowDepend, mRowScaling, mRowFit;
    int mRowAmbient, mRowDiffuse, mRowSpecular;
};
