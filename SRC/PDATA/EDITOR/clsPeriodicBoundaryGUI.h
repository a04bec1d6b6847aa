// The dialog "Periodic Boundary": size and base vectors of the periodic box.
#pragma once

#include "WIDGET/clsDialogEXKey.h"

class MultiInputPanel_cls;
class PeriodicBoundary_cls;

class PeriodicBoundaryGUI_cls : public wxDialogEXKey {
public:
    PeriodicBoundaryGUI_cls(wxWindow* pParent, PeriodicBoundary_cls* pPeriodic);
    void UpdateValues() override;
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }

private:
    MultiInputPanel_cls* mpCPanel;
};
