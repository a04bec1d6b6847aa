// The dialog "Array Vector": the matrix that a mesh goes through, column by column.
#pragma once

#include "WIDGET/clsDialogEXKey.h"

class FilterObjectData_cls;
class MultiInputPanel_cls;

/// Modal. "OK" takes what was edited over, as one step; nothing changes before.
class ArrayVectorGUI_cls : public wxDialogEXKey {
public:
    ArrayVectorGUI_cls(wxWindow* pParent, FilterObjectData_cls& data);
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }

private:
    void Apply();

    FilterObjectData_cls& mData;
    float mEdited[3][3];
    MultiInputPanel_cls* mpCPanel;
};
