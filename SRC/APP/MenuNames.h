// The commands of the menu bar by their names in a record.
#pragma once

#include <wx/string.h>

/// As COMMON/EventIds.h has it; empty for an id that no menu has.
wxString GetMenuName(int id);
/// wxID_NONE for an unknown name.
int GetMenuId(const wxString& name);
