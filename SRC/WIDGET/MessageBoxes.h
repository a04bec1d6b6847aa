// Messages of the logic (COMMON/MsgBox.h) as boxes on the screen.
#pragma once

#include <functional>

#include <wx/string.h>

/// Show messages and questions in boxes over the front window, with the views still meanwhile; notices
/// go to `notice`, which must not block.
void InstallMessageBoxes(std::function<void(const wxString&)> notice);
