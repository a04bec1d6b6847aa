#include "WIDGET/clsFileDialogEX.h"

#include <utility>

#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>

#include "COMMON/Globals.h"
#include "COMMON/UserActs.h"

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
    return Ask((mStyle & wxFD_SAVE) != 0 ? "save" : "file", [this](wxString* pPath) {
        wxFileDialog dialog(mpParent, mStrMessage, mStrDir, mStrName, mStrWildcard, mStyle);
        const int answer = dialog.ShowModal();
        *pPath = dialog.GetPath();
        return answer;
    });
}

int wxFileDialogEX::ShowModalFolder(const wxString& message, const wxString& dir) {
    return Ask("folder", [&](wxString* pPath) {
        wxDirDialog dialog(mpParent, message, dir);
        const int answer = dialog.ShowModal();
        *pPath = dialog.GetPath();
        return answer;
    });
}

int wxFileDialogEX::Ask(const char* verb, const std::function<int(wxString* pPath)>& show) {
    const wxString path = AskUser(verb, [&show] {
        wxString chosen = std::exchange(sStrTestAnswer, wxString());
        if (!chosen.empty()) return chosen == "CANCEL" ? wxString() : chosen;
        const bool bWasLocked = GbGLLockModalDialog.exchange(true);
        const int answer = show(&chosen);
        GbGLLockModalDialog.store(bWasLocked);
        return answer == wxID_OK ? chosen : wxString();
    });
    if (path.empty()) return wxID_CANCEL;
    mStrPath = path;
    mStrLastDir = wxFileName(path).GetPath();
    return wxID_OK;
}
