// The system's clipboard.
#pragma once

class wxString;

/// What was copied survives the program.
void PutOnClipboard(const wxString& text);
