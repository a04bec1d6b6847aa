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
    /// The last directory name as "/name/", empty when the directory holds no "/".
    wxString GetPathDirLast() const;
    /// "jpeg", "png", "gif", "tga", "tiff", "hdr", "exr" by the extension, else "unknown_format".
    wxString GetImageTypeStr() const;

    wxString mStrFull;
    wxString mStrNoExt; ///< the path without its extension
    wxString mStrDir;   ///< without a trailing "/"
    wxString mStrStem;
    wxString mStrExt; ///< from the last "." behind the last "/" on, or empty
};

/// A file name as text, with the parts of SplitPath_cls on demand.
class Filename_cls {
public:
    Filename_cls() = default;
    explicit Filename_cls(const wchar_t* name) : mStrName(name) {}
    explicit Filename_cls(const wxString& name) : mStrName(name) {}

    void Set(wxString name) { mStrName = std::move(name); }
    const wchar_t* c_str() const { return mStrName.wc_str(); }
    wxString GetPathStr(int selector) const { return SplitPath_cls(mStrName).GetPathStr(selector); }
    /// Doubles every "\" of a text in place.
    static void DoubleSlash(wxString& text);

private:
    wxString mStrName;
};

/// A path as the bytes that the file system knows it by. Falls back on UTF-8 where the environment's
/// encoding has no word for it; empty only for an empty path.
std::string NarrowPath(const wxString& path);
/// From now on file names are UTF-8 whatever the locale, and other bytes in them come and go unchanged.
void UseAnyFileName();
