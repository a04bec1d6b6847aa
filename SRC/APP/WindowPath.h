// Names of the program's windows in a record: "FrameMain/TopHalfPanel/MainGLCanvas.2". Each part is a class;
// a number behind it tells the second, third... of that class below the part before. No language and no size
// of the screen changes them.
#pragma once

#include <wx/string.h>

class wxWindow;

/// Empty for windows that aren't ours, such as the toolkit's own dialogs.
wxString GetWindowPath(const wxWindow* pWindow);
/// Null where there is none.
wxWindow* FindWindowByPath(const wxString& path);
