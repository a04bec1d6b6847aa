// Menus that open under the pointer. While a record is replayed none opens: its item is chosen at once.
#pragma once

#include <wx/gdicmn.h>

class wxMenu;
class wxMenuItem;
class wxWindow;

/// As wxWindow::PopupMenu.
void PopUpMenu(wxWindow* pWindow, wxMenu& menu, wxPoint position = wxDefaultPosition);
/// The id of the chosen item, wxID_NONE for none.
int AskPopUpMenu(wxWindow* pWindow, wxMenu& menu, wxPoint position = wxDefaultPosition);
/// Place of an item among all of its menu, those of sub-menus behind their own; -1: it isn't there.
int GetMenuPlace(const wxMenu& menu, int id);
