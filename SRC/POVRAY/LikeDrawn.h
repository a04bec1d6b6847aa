// What POV-Ray writes into a picture's file beside the picture, and the program's own pictures don't have:
// the moment at which it was made, by which two films of one project differ, and in a PNG a gamma of 1, by
// which viewers that know it show it brighter than the view that it was made of.
#pragma once

#include <string>

#include <wx/string.h>

/// The bytes of a PNG, JPEG, PPM, HDR or EXR without those; as they are where that is no whole head of one.
std::string LikeDrawn(const std::string& bytes);
/// The same of a file. Empty on success, else why it couldn't be written.
wxString MakeLikeDrawn(const wxString& path);
