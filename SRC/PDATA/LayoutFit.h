// Does a file look like one of the present layout?
#pragma once

class GrammerBase_cls;
class wxString;

/// Binary: head and records fill the file to its last byte. Text: the head tells a number, and the first
/// record has a number in each column that is used. A file that can't be read doesn't fit. Reads the file's
/// first bytes only.
bool FitsLayout(const GrammerBase_cls& grammar, const wxString& path);
