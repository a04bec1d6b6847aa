// Pictures of a film that POV-Ray makes: several that add up to one, and whether one is whole.
#pragma once

#include <vector>

#include <wx/string.h>

/// The mean of pictures of one size, in light: what is stored is light itself, as POV-Ray is told to write
/// it. Written as `path`, whose ending names the format. Empty on success, else why not.
wxString AveragePictures(const std::vector<wxString>& pictures, const wxString& path);

/// A picture that stands there, whole and of this size, with alpha or without.
bool IsWholePovPicture(const wxString& path, int w, int h, bool bAlpha);
