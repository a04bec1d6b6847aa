#include "WIDGET/clsFileDialogEX.h"

#include <wx/filedlg.h>
#include <wx/filename.h>

#include "COMMON/Globals.h"

wxString wxFileDialogEX::sStrTestAnswer;

void wxFileDialogEX::SetParams(const wxString& message, const wxString& dir, const wxString& name,
                               const wxString& wildcard, long style) {
    mStrMessage = message;
    mStrDir = dir.empty() ? mStrLastDir : dir;
    mStrName = name;
    mStrWildcard = wildcard;
    mStyle = style;
}

int wxFileDialogEX::ShowModal() {
    wxString path;
    if (!sStrTestAnswer.empty()) {
        path = sStrTestAnswer;
        sStrTestAnswer.clear();
        if (path == "CANCEL") return wxID_CANCEL;
    } else {
        const bool bWasLocked = GbGLLockModalDialog.exchange(true);
        wxFileDialog dialog(mpParent, mStrMessage, mStrDir, mStrName, mStrWildcard, mStyle);
        const int answer = dialog.ShowModal();
        path = dialog.GetPath();
        GbGLLockModalDialog.store(bWasLocked);
        if (answer != wxID_OK) return wxID_CANCEL;
    }
    mStrPath = path;
    mStrLastDir = wxFileName(path).GetPath();
    return wxID_OK;
}
