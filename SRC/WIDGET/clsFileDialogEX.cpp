#include "WIDGET/clsFileDialogEX.h"

#include <wx/dirdlg.h>
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
    return Ask([this](wxString* pPath) {
        wxFileDialog dialog(mpParent, mStrMessage, mStrDir, mStrName, mStrWildcard, mStyle);
        const int answer = dialog.ShowModal();
        *pPath = dialog.GetPath();
        return answer;
    });
}

int wxFileDialogEX::ShowModalFolder(const wxString& message, const wxString& dir) {
    return Ask([&](wxString* pPath) {
        wxDirDialog dialog(mpParent, message, dir);
        const int answer = dialog.ShowModal();
        *pPath = dialog.GetPath();
        return answer;
    });
}

int wxFileDialogEX::Ask(const std::function<int(wxString* pPath)>& show) {
    wxString path;
    if (!sStrTestAnswer.empty()) {
        path = sStrTestAnswer;
        sStrTestAnswer.clear();
        if (path == "CANCEL") return wxID_CANCEL;
    } else {
        const bool bWasLocked = GbGLLockModalDialog.exchange(true);
        const int answer = show(&path);
        GbGLLockModalDialog.store(bWasLocked);
        if (answer != wxID_OK) return wxID_CANCEL;
    }
    mStrPath = path;
    mStrLastDir = wxFileName(path).GetPath();
    return wxID_OK;
}
