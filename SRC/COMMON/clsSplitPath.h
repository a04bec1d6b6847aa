// The parts of a path. Only "/" separates directories; the extension holds its dot.
#pragma once

#include <string>

#include <wx/string.h>

class SplitPath_cls {
public:
    SplitPath_cls() = default;
    explicit SplitPath_cls(const wxString& path);

    /// 0 directory + "/" + stem + extension, 3 directory, 4 stem, 7 path without extension, 8 extension,
    /// 12 stem + extension; anything else the full path.
    wxString GetPathStr(int selector) const;

    wxString mStrFull;
    wxString mStrNoExt; ///< the path without its extension
    wxString mStrDir;   ///< without a trailing "/"
    wxString mStrStem;
    wxString mStrExt; ///< from the last "." behind the last "/" on, or empty
};

/// A path as the bytes that the file system knows it by. Falls back on UTF-8 where the environment's
/// encoding has no word for it; empty only for an empty path.
std::string NarrowPath(const wxString& path);
/// From now on file names are UTF-8 whatever the locale, and other bytes in them come and go unchanged.
void UseAnyFileName();
