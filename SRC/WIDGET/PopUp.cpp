#include "WIDGET/PopUp.h"

#include <wx/menu.h>
#include <wx/window.h>

#include "COMMON/ActLine.h"
#include "COMMON/UserActs.h"

namespace {

constexpr long kMostPlaces = 10000;

/// The item at a place (`pId` null), or the place of an item; `place` counts on from the caller's.
wxMenuItem* Walk(const wxMenu& menu, long& place, const long* pEnd, int id) {
    for (wxMenuItem* item : menu.GetMenuItems()) {
        if (pEnd ? place == *pEnd : (item->GetId() == id && !item->IsSeparator())) return item;
        ++place;
        if (const wxMenu* sub = item->GetSubMenu())
            if (wxMenuItem* found = Walk(*sub, place, pEnd, id)) return found;
    }
    return nullptr;
}

/// What the record says; null where nothing was chosen, or it can't be.
wxMenuItem* GetReplayed(wxMenu& menu) {
    long end = 0;
    if (!ReadActCount(GUserActs.mAnswer("popup"), 0, kMostPlaces, &end)) return nullptr;
    long place = 0;
    wxMenuItem* item = Walk(menu, place, &end, wxID_NONE);
    if (!item || item->IsSeparator() || item->IsSubMenu() || !item->IsEnabled()) return nullptr;
    return item;
}

} // namespace

int GetMenuPlace(const wxMenu& menu, int id) {
    long place = 0;
    return Walk(menu, place, nullptr, id) ? int(place) : -1;
}

void PopUpMenu(wxWindow* pWindow, wxMenu& menu, wxPoint position) {
    if (!IsReplaying()) {
        pWindow->PopupMenu(&menu, position);
        return;
    }
    wxMenuItem* item = GetReplayed(menu);
    if (!item) return;
    if (item->IsCheckable()) item->Check(item->GetKind() == wxITEM_RADIO || !item->IsChecked());
    wxCommandEvent event(wxEVT_MENU, item->GetId());
    event.SetInt(item->IsCheckable() && item->IsChecked() ? 1 : 0);
    event.SetEventObject(&menu);
    if (!item->GetMenu()->SafelyProcessEvent(event) && !menu.SafelyProcessEvent(event))
        pWindow->HandleWindowEvent(event);
}

int AskPopUpMenu(wxWindow* pWindow, wxMenu& menu, wxPoint position) {
    if (!IsReplaying()) return pWindow->GetPopupMenuSelectionFromUser(menu, position);
    const wxMenuItem* item = GetReplayed(menu);
    if (!item) return wxID_NONE;
    NoteUserAct("popup", wxString::Format("%d", GetMenuPlace(menu, item->GetId())));
    return item->GetId();
}
