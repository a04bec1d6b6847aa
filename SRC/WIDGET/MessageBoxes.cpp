#include "WIDGET/MessageBoxes.h"

#include <wx/app.h>
#include <wx/msgdlg.h>
#include <wx/toplevel.h>

#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"

namespace {

/// The window that the user looks at: a box behind a dialog could not be reached.
wxWindow* FrontWindow() {
    if (wxWindow* active = wxGetActiveWindow()) return wxGetTopLevelParent(active);
    return wxTheApp ? wxTheApp->GetTopWindow() : nullptr;
}

bool ShowBox(MessageKind kind, const wxString& text, const wxString& title) {
    long style = wxCENTRE;
    if (kind == MessageKind::Question)
        style |= wxYES_NO | wxICON_QUESTION;
    else
        style |= wxOK | (kind == MessageKind::Fatal ? wxICON_ERROR : wxICON_INFORMATION);
    const bool bWasLocked = GbGLLockModalDialog.exchange(true);
    wxMessageDialog dialog(FrontWindow(), text, title, style);
    const int answer = dialog.ShowModal();
    GbGLLockModalDialog.store(bWasLocked);
    return answer == wxID_OK || answer == wxID_YES;
}

} // namespace

void InstallMessageBoxes(std::function<void(const wxString&)> notice) {
    SetMessageHandler(
        [notice = std::move(notice)](MessageKind kind, const wxString& text, const wxString& title) {
            if (kind == MessageKind::Notice) {
                if (notice) notice(text);
                return true;
            }
            return ShowBox(kind, text, title);
        });
}
