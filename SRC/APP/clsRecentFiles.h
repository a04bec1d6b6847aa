// Projects and data files that were opened last, newest first.
#pragma once

#include <vector>

#include <wx/string.h>

class wxMenu;

class RecentFiles_cls {
public:
    enum Kind { Projects, Data, kKindNumber };
    static constexpr size_t kMost = 9; ///< of each kind: one digit a line in the menu

    /// Put a path at the top, whole. It stands once in the list; the last ones fall out.
    void Add(Kind kind, const wxString& path);
    void Remove(Kind kind, const wxString& path);
    const std::vector<wxString>& Get(Kind kind) const { return mVPaths[kind]; }
    /// The path behind a menu id, empty when there is none.
    wxString GetByMenuId(int id) const;

    /// One line a path, for the configure file.
    wxString Serialize() const;
    /// True for a line of ours; its path goes behind those that are there.
    bool ReadStrLine(const wxString& line);

    /// Fill a submenu with the paths of a kind; grey where there is none.
    void FillMenu(Kind kind, wxMenu* pMenu) const;
    /// Number, folder and name, shortened in the middle; "~" is the user's home.
    static wxString MakeLabel(size_t place, const wxString& path);

private:
    std::vector<wxString> mVPaths[kKindNumber];
};
