// The page "Info".
#pragma once

#include "GL/VIEW/clsInformation.h"
#include "WIDGET/clsMultiInputPanel.h"

class InformationGUI_cls : public MultiInputPanel_cls {
public:
    InformationGUI_cls(wxWindow* pParent, Information_cls* pInformation);

    /// The chosen particle; all zero when there is none.
    void UpdateInfo(const SnapData_cls* pSnap);
    void UpdateInfo(const PDataBlock_cls* pBlock);

protected:
    void FuncHookCombobox(int row) override;
    void FuncHookValue(int row, bool bFinal) override;

private:
    void Show(const Information_cls::Values_st& values);

    Information_cls* mpCInformation;
    Information_cls::Values_st mValues;
};
