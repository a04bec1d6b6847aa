// Why the picture that is being drawn isn't whole, for whoever writes it to a file. UI thread only, as all
// drawing is.
#pragma once

#include <wx/string.h>

/// Particles or buffers of the picture are missing. The first fault since the last Take counts.
void TellPictureFault(const wxString& text);
bool HasPictureFault();
/// Empty when there was none; the next picture begins anew.
wxString TakePictureFault();
