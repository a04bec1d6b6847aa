#include "WIDGET/clsDialogEXKey.h"

#include <wx/display.h>

#include "COMMON/EventIds.h"
#include "WIDGET/DenseStyle.h"
#include "WIDGET/ShortcutKeys.h"

wxDialogEXKey::wxDialogEXKey(wxWindow* pParent, const wxString& title, long style)
    : wxDialog(pParent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, style) {
    InstallDenseStyle();
    SetEscapeId(wxID_NONE); // Escape hides through CloseEXKey, in whatever field it is pressed
    Bind(wxEVT_CHAR_HOOK, &wxDialogEXKey::OnCharHook, this);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        if (event.CanVeto()) {
            event.Veto();
            CloseEXKey();
        } else {
            Destroy();
        }
    });
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { CloseEXKey(); }, ID_DIALOG_CLOSE);
}

void wxDialogEXKey::OpenWindow() {
    UpdateValues();
    if (!IsShown()) {
        const bool bOnScreen =
            mLastPosition != wxDefaultPosition && wxDisplay::GetFromPoint(mLastPosition) != wxNOT_FOUND;
        if (bOnScreen)
            Move(mLastPosition);
        else
            CentreOnParent();
    }
    Show();
    Raise();
}

void wxDialogEXKey::CloseEXKey() {
    mLastPosition = GetPosition();
    if (IsModal())
        EndModal(wxID_CANCEL);
    else
        Hide();
}

void wxDialogEXKey::OnCharHook(wxKeyEvent& event) {
    if (OnKeyDown(event)) return;
    if (event.GetKeyCode() == WXK_ESCAPE && event.GetModifiers() == wxMOD_NONE) {
        CloseEXKey();
        return;
    }
    if (IsModal() || !HandBackShortcut(event)) event.Skip();
}
