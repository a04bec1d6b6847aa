// Temporary files and folders: where they go, and what becomes of those whose owner was killed.
#pragma once

#include <functional>
#include <string>

/// A folder for temporary files: TMPDIR, the system's, or else `fallback`; the first one that can be written
/// to. Empty when none can.
std::string FindTempFolder(const std::string& fallback);

/// Marks a file or folder as in use, for as long as the object lives and the process does.
class InUse_cls {
public:
    InUse_cls() = default;
    ~InUse_cls() { Release(); }
    InUse_cls(const InUse_cls&) = delete;
    InUse_cls& operator=(const InUse_cls&) = delete;
    void Hold(const std::string& path);
    void Release();

private:
    int mFile = -1;
};

/// Remove what of `folder` bears a name of ours, belongs to this user, is older than a moment and in nobody's
/// use. Where the file system knows no locks nothing is removed.
void RemoveLeftovers(const std::string& folder, const std::function<bool(const std::string& name)>& isOurs);

/// Of "film.1234.part.mp4", a file that the process 1234 writes, the name "film.mp4" that it will have; empty
/// for other names.
std::string NameOfPart(const std::string& name);
