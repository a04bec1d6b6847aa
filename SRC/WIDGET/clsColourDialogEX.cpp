#include "WIDGET/clsColourDialogEX.h"

#include <wx/colordlg.h>

#include "COMMON/Globals.h"
#include "COMMON/UserActs.h"

wxColour wxColourDialogEX::sTestAnswer;

wxColourDialogEX::wxColourDialogEX(wxWindow* pParent) : mpParent(pParent) { mData.SetChooseFull(true); }

int wxColourDialogEX::ShowModal() {
    const wxString chosen = AskUser("color", [this] {
        return Ask() == wxID_OK ? mData.GetColour().GetAsString(wxC2S_HTML_SYNTAX) : wxString();
    });
    if (!IsReplaying()) return chosen.empty() ? wxID_CANCEL : wxID_OK;
    const wxColour colour(chosen);
    if (colour.IsOk()) mData.SetColour(colour);
    return colour.IsOk() ? wxID_OK : wxID_CANCEL;
}

int wxColourDialogEX::Ask() {
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
