#include "COMMON/Confined.h"

#include <climits>
#include <cstdlib>

#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"

namespace {

std::string& Folder() { // only ever set, by the first window of the process
    static std::string sFolder;
    return sFolder;
}

/// Behind all links; empty where there is nothing.
std::string Resolve(const std::string& path) {
    char whole[PATH_MAX];
    return realpath(path.c_str(), whole) ? std::string(whole) : std::string();
}

} // namespace

void ConfineTo(const wxString& folder) {
    Folder() = Resolve(NarrowPath(folder));
    if (Folder().empty()) Folder() = "/nowhere/"; // the folder went: nothing may be written at all
}

bool IsConfined() { return !Folder().empty(); }

bool MayWriteFile(const std::string& path) {
    if (!IsConfined()) return true;
    const size_t slash = path.rfind('/');
    const std::string folder = Resolve(slash == std::string::npos ? "." : path.substr(0, slash + 1));
    return folder == Folder() || folder.compare(0, Folder().size() + 1, Folder() + "/") == 0;
}

wxString WhyNoProgram() {
    return IsConfined() ? wxString(_("This window replays a record and starts no other programs."))
                        : wxString();
}
