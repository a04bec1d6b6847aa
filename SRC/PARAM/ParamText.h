// Reading the text form of curves.
#pragma once

#include <istream>

#include <wx/string.h>

/// The next line without its end; false at the end of the stream.
bool ReadParamLine(std::wistream& stream, wxString* pLine);
/// Does the text of another curve, group or block begin here?
bool IsParamHeading(const wxString& line);
/// Back to where the stream stood, also from behind its end.
void GoBackTo(std::wistream& stream, std::wistream::pos_type position);
