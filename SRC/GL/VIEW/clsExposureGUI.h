// The page "Exposure".
#pragma once

#include "WIDGET/clsMultiInputPanel.h"

class Exposure_cls;

class ExposureGUI_cls : public MultiInputPanel_cls {
public:
    ExposureGUI_cls(wxWindow* pParent, Exposure_cls* pExposure);

    void UpdateValues() { MultiInputPanel_cls::UpdateValues(kAllRows); }

protected:
    void FuncHookClick(int row) override;
    void FuncHookValue(int row, bool bFinal) override;

private:
    Exposure_cls* mpCExposure;
    int mRowDefault;
};
