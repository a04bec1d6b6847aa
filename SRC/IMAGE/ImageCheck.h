// Is a file that stands there the picture that was meant to be written?
#pragma once

#include <wx/string.h>

/// A whole picture of this size, in the format that its ending names, stored with alpha or without.
bool IsWholeImage(const wxString& path, int w, int h, bool bAlpha);
