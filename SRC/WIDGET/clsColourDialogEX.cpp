#include "WIDGET/clsColourDialogEX.h"

#include <wx/colordlg.h>

#include "COMMON/Globals.h"

wxColour wxColourDialogEX::sTestAnswer;

wxColourDialogEX::wxColourDialogEX(wxWindow* pParent) : mpParent(pParent) { mData.SetChooseFull(true); }

int wxColourDialogEX::ShowModal() {
    if (sTestAnswer.IsOk()) {
        mData.SetColour(sTestAnswer);
        sTestAnswer = wxColour();
        return wxID_OK;
    }
    const bool bWasLocked = GbGLLockModalDialog.exchange(true);
    wxColourDialog dialog(mpParent, &mData);
    const int answer = dialog.ShowModal();
    if (answer == wxID_OK) mData = dialog.GetColourData();
    GbGLLockModalDialog.store(bWasLocked);
    return answer == wxID_OK ? wxID_OK : wxID_CANCEL;
}
