// Files told apart by what they are, not by how they are called.
#pragma once

#include <set>
#include <string>

#include <wx/string.h>

/// Paths with links, "." and ".." resolved, of files that are there and of files that aren't yet.
class FileSet_cls {
public:
    /// False when it is in the set already.
    bool Add(const wxString& path) { return mSPaths.insert(Resolve(path)).second; }
    bool Has(const wxString& path) const { return mSPaths.count(Resolve(path)) > 0; }

private:
    static std::string Resolve(const wxString& path);

    std::set<std::string> mSPaths;
};
