#include "APP/clsRecentFiles.h"

#include <algorithm>

#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/menu.h>

#include "COMMON/EventIds.h"

namespace {

const char* const kKeys[] = {"RecentProject", "RecentData"};
constexpr int kFirstIds[] = {ID_RECENT_PROJECT_0, ID_RECENT_DATA_0};
constexpr size_t kLongestLabel = 60; // letters of a menu line

} // namespace

void RecentFiles_cls::Add(Kind kind, const wxString& path) {
    // A line of the configure file holds one path.
    if (path.empty() || path.find_first_of("\r\n") != wxString::npos) return;
    wxFileName name(path);
    name.MakeAbsolute();
    const wxString whole = name.GetFullPath();
    Remove(kind, whole);
    mVPaths[kind].insert(mVPaths[kind].begin(), whole);
    if (mVPaths[kind].size() > kMost) mVPaths[kind].resize(kMost);
}

void RecentFiles_cls::Remove(Kind kind, const wxString& path) {
    std::vector<wxString>& paths = mVPaths[kind];
    paths.erase(std::remove(paths.begin(), paths.end(), path), paths.end());
}

wxString RecentFiles_cls::GetByMenuId(int id) const {
    for (int kind = 0; kind < kKindNumber; ++kind) {
        const int place = id - kFirstIds[kind];
        if (place >= 0 && size_t(place) < mVPaths[kind].size()) return mVPaths[kind][size_t(place)];
    }
    return wxString();
}

wxString RecentFiles_cls::Serialize() const {
    wxString text;
    for (int kind = 0; kind < kKindNumber; ++kind)
        for (size_t i = 0; i < mVPaths[kind].size(); ++i)
            text += wxString::Format("%s%zu=", kKeys[kind], i + 1) + mVPaths[kind][i] + "\n";
    return text;
}

bool RecentFiles_cls::ReadStrLine(const wxString& line) {
    for (int kind = 0; kind < kKindNumber; ++kind) {
        wxString rest;
        if (!line.StartsWith(kKeys[kind], &rest) || rest.length() < 2 || !wxIsdigit(rest[0]) ||
            rest[1] != '=')
            continue;
        std::vector<wxString>& paths = mVPaths[kind];
        const wxString path = rest.substr(2);
        const bool bNew = !path.empty() && std::find(paths.begin(), paths.end(), path) == paths.end();
        if (bNew && paths.size() < kMost) paths.push_back(path);
        return true;
    }
    return false;
}

wxString RecentFiles_cls::MakeLabel(size_t place, const wxString& path) {
    wxString label = path;
    const wxString home = wxFileName::GetHomeDir();
    if (home.length() > 1 && label.StartsWith(home + "/")) label = "~" + label.substr(home.length());
    if (label.length() > kLongestLabel)
        label = label.Left(kLongestLabel / 3) + wxString::FromUTF8("\xE2\x80\xA6") +
                label.Right(kLongestLabel - kLongestLabel / 3 - 1);
    label.Replace("&", "&&");
    label.Replace("\t", " "); // a shortcut would follow
    return wxString::Format("&%zu ", place) + label;
}

void RecentFiles_cls::FillMenu(Kind kind, wxMenu* pMenu) const {
    while (pMenu->GetMenuItemCount() > 0)
        pMenu->Destroy(pMenu->FindItemByPosition(0));
    const std::vector<wxString>& paths = mVPaths[kind];
    for (size_t i = 0; i < paths.size(); ++i)
        pMenu->Append(kFirstIds[kind] + int(i), MakeLabel(i + 1, paths[i]), paths[i]);
    if (paths.empty()) pMenu->Append(kFirstIds[kind], _("None yet"))->Enable(false);
}
