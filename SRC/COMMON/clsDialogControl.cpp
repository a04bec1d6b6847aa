#include "COMMON/clsDialogControl.h"

OwnedDialog_cls::~OwnedDialog_cls() {
    if (mpCOwner) mpCOwner->mpCDialog = nullptr;
}

DialogControl_cls::~DialogControl_cls() {
    if (mpCDialog) mpCDialog->mpCOwner = nullptr;
}

OwnedDialog_cls* DialogControl_cls::MakeDialog(wxWindow* pParent) {
    return mMakeDialog ? mMakeDialog(pParent) : nullptr;
}

void DialogControl_cls::InitGUI(wxWindow* pParent) {
    if (mpCDialog) return;
    mpCDialog = MakeDialog(pParent);
    if (mpCDialog) mpCDialog->mpCOwner = this;
}

void DialogControl_cls::OpenWindow(wxWindow* pParent) {
    InitGUI(pParent);
    if (mpCDialog) mpCDialog->OpenWindow();
}

void DialogControl_cls::UpdateItems(bool bOnlyShown) {
    if (mpCDialog && (!bOnlyShown || mpCDialog->IsDialogShown())) mpCDialog->UpdateValues();
}
