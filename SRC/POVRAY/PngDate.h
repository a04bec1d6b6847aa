// The moment at which POV-Ray made a picture stands in the picture; two films of one project differ by it.
#pragma once

#include <string>

#include <wx/string.h>

/// The bytes of a PNG without the chunks that tell when it was made; as they are where that is no PNG.
std::string WithoutPngDate(const std::string& bytes);
/// The same of a file. Empty on success, else why it couldn't be written.
wxString RemovePngDate(const wxString& path);
