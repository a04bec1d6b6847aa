// Pictures of numbers without an upper end, as POV-Ray writes them: OpenEXR and Radiance HDR.
#pragma once

#include <wx/image.h>

/// Such a file of a scene of ours as PNG has it: numbers are the screen's colours ("File_Gamma=1"), above 1
/// is as 1, and transparency is lost. Not ok where the file is none, is damaged or has over `mostPixels`.
wxImage ReadLinearPicture(const wxString& path, long long mostPixels);
