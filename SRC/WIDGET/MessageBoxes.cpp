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

int ShowBox(MessageKind kind, const wxString& text, const wxString& title) {
    long style = wxCENTRE;
    if (kind == MessageKind::Question)
        style |= wxYES_NO | wxICON_QUESTION;
    else if (kind == MessageKind::Save)
        style |= wxYES_NO | wxCANCEL | wxICON_QUESTION;
    else
        style |= wxOK | (kind == MessageKind::Fatal ? wxICON_ERROR : wxICON_INFORMATION);
    const bool bWasLocked = GbGLLockModalDialog.exchange(true);
    wxMessageDialog dialog(FrontWindow(), text, title, style);
    if (kind == MessageKind::Save) dialog.SetYesNoCancelLabels(_("Save"), _("Don't Save"), _("Cancel"));
    const int answer = dialog.ShowModal();
    GbGLLockModalDialog.store(bWasLocked);
    if (kind == MessageKind::Save && answer != wxID_YES && answer != wxID_NO) return MESSAGE_CANCEL;
    return answer == wxID_OK || answer == wxID_YES ? MESSAGE_YES : MESSAGE_NO;
}

} // namespace

void InstallMessageBoxes(std::function<void(const wxString&)> notice) {
    SetMessageHandler(
        [notice = std::move(notice)](MessageKind kind, const wxString& text, const wxString& title) {
            if (kind == MessageKind::Notice) {
                if (notice) notice(text);
                return int(MESSAGE_YES);
            }
            return ShowBox(kind, text, title);
        });
}
