// What POV-Ray writes into a PNG beside the picture, and the program's own pictures don't have: the moment at
// which it was made, by which two films of one project differ, and a gamma of 1, by which viewers that know
// it show it brighter than the view that it was made of.
#pragma once

#include <string>

#include <wx/string.h>

/// The bytes of a PNG without those; as they are where that is no whole PNG.
std::string LikeDrawnPng(const std::string& bytes);
/// The same of a file. Empty on success, else why it couldn't be written.
wxString MakeLikeDrawn(const wxString& path);
