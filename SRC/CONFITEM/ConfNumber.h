// Numbers of configuration items to text and back, always in the C locale.
#pragma once

#include <wx/string.h>

wxString ConfNumberToText(int value);
wxString ConfNumberToText(unsigned value);
wxString ConfNumberToText(float value);  ///< six decimals
wxString ConfNumberToText(double value); ///< six significant digits
wxString ConfNumberToText(bool value);   ///< 0 or 1

/// The number at the start of a text, 0 where there is none; ASCII only.
template <class T>
T ConfNumberFromText(const wxString& text);
