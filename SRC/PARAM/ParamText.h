// Reading the text form of curves.
#pragma once

#include <istream>

#include <wx/string.h>

/// The next line without its end; false at the end of the stream.
bool ReadParamLine(std::wistream& stream, wxString* pLine);
