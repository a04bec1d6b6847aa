// Files of other programs that morentis-import reads.
#pragma once

#include <vector>

#include <wx/string.h>

enum class ForeignKind {
    None,
    Sure,  ///< its first bytes show one of the formats
    Likely ///< it might as well be a snapshot in text of some layout
};
/// Looks at the file's beginning, also where it is gzipped. None for what can't be read.
ForeignKind GetForeignKind(const wxString& path);
/// The files in its folder whose names differ from it in their last number alone, itself among them, by that
/// number.
std::vector<wxString> ListNumberedAlike(const wxString& path);
/// A folder beside it that isn't there yet, for what is made of it.
wxString ProposeImportFolder(const wxString& path);
