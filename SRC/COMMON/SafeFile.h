// Writing and reading whole files so that a full disk, a closed folder or a kill never costs the old one.
#pragma once

#include <functional>
#include <string>

#include <wx/string.h>

/// Put `bytes` under the name `path`: they are written beside it, forced to the disk if wanted, and renamed.
/// Whatever happens on the way, a whole file stands under the name, the old one or the new one.
///
/// A link is followed, and what it leads to is replaced. An existing file keeps its permissions and, where
/// the system lets us, its owner; a new one gets what the user's mask allows. Anything else than a file
/// under the name (a folder, a device) is left alone. On failure nothing is left beside the file.
/// \return empty on success, else the reason in the system's words.
enum class ToDisk {
    Force, ///< it survives a power failure
    Later  ///< for files that can be made again: whenever the system likes
};
wxString WriteFileSafely(const wxString& path, const std::string& bytes, ToDisk disk = ToDisk::Force);

enum class ReadFileResult {
    Ok,
    NotOpened, ///< it isn't there, may not be read, or is no plain file (a folder, pipe or device)
    TooLarge
};

/// Read a whole file of up to `limit` bytes. Never waits for a pipe or a device.
ReadFileResult ReadWholeFile(const wxString& path, size_t limit, std::string* pBytes);

/// For tests: asked before each step of WriteFileSafely ("open", "write", "sync", "rename"); false makes the
/// step fail. Empty otherwise.
extern std::function<bool(const char* step)> GSafeFileStep;
