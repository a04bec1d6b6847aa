// One row of a MultiInputPanel_cls; only its own sources know it.
#pragma once

#include "WIDGET/clsMultiInputPanel.h"

class wxBoxSizer;
class wxFlexGridSizer;

struct MultiInputPanel_cls::Row {
    wxWindow* mpLabel = nullptr;
    wxBoxSizer* mpFields = nullptr;
    wxFlexGridSizer* mpGrid = nullptr; ///< both stand in it
    std::vector<wxWindow*> mFields;
    std::vector<std::function<void()>> mRefresh; ///< each shows a bound value in its field
    std::vector<KeyButton_cls*> mKeyButtons;
    bool mbParam = false; ///< its values depend on time
    bool mbShown = true;
};
