#include "WIDGET/clsDialogControl.h"

#include "WIDGET/clsDialogEXKey.h"

DialogControl_cls::~DialogControl_cls() {
    // Dialog and object may go in either order.
    if (mpCDialog) mpCDialog->Unbind(wxEVT_DESTROY, &DialogControl_cls::OnDestroyDialog, this);
}

void DialogControl_cls::InitGUI(wxWindow* pParent) {
    if (mpCDialog) return;
    mpCDialog = MakeDialog(pParent);
    mpCDialog->Bind(wxEVT_DESTROY, &DialogControl_cls::OnDestroyDialog, this);
}

void DialogControl_cls::OnDestroyDialog(wxWindowDestroyEvent& event) {
    if (event.GetEventObject() == mpCDialog) mpCDialog = nullptr;
    event.Skip();
}

void DialogControl_cls::OpenWindow(wxWindow* pParent) {
    InitGUI(pParent);
    mpCDialog->OpenWindow();
}

void DialogControl_cls::UpdateItems(bool bOnlyShown) {
    if (mpCDialog && (!bOnlyShown || mpCDialog->IsShown())) mpCDialog->UpdateValues();
}
