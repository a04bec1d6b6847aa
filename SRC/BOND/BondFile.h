// Files with lists of sticks: ".bond", and text with a stick on each line. docs/FILE_FORMATS.md describes
// both.
#pragma once

#include <string>

#include <wx/string.h>

#include "BOND/StickList.h"

/// Read a file of either kind, which its extension tells, into an emptied list. Returns why it can't be read
/// or where it stops making sense, empty when all is well. A ".bond" file is read whole or not at all; of a
/// text the lines before the wrong one stay.
wxString ReadStickFile(const wxString& path, StickList_st* pList);
/// Is it called ".bond", in small letters or capitals?
bool IsBondPath(const wxString& path);
/// The text itself. Returns as ReadStickFile does, without the file's name. Throws bad_alloc.
wxString ReadStickText(const char* pText, size_t length, StickList_st* pList);
