// A whole number that is asked for in a dialog.
#pragma once

#include <wx/string.h>

class wxWindow;

/// As wxGetNumberFromUser: -1 for "Cancel" and for what lies outside of the limits.
long AskNumber(wxWindow* pParent, const wxString& message, const wxString& prompt, const wxString& title,
               long value, long least, long most);
