#include "WIDGET/clsDialogEXKey.h"

#include <algorithm>

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
        if (mLastPosition != wxDefaultPosition)
            Move(mLastPosition);
        else
            CentreOnParent();
        KeepOnScreen();
    }
    Show();
    Raise();
}

// The display may have got smaller since, or the main window stands at its edge.
void wxDialogEXKey::KeepOnScreen() {
    int display = wxDisplay::GetFromWindow(this);
    if (display == wxNOT_FOUND) display = 0;
    const wxRect area = wxDisplay(static_cast<unsigned>(display)).GetClientArea();
    const wxRect rect = GetRect();
    const wxPoint inside(std::max(std::min(rect.x, area.GetRight() + 1 - rect.width), area.x),
                         std::max(std::min(rect.y, area.GetBottom() + 1 - rect.height), area.y));
    if (inside != rect.GetPosition()) Move(inside);
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
