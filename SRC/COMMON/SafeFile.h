// Writing and reading whole files so that a full disk, a closed folder or a kill never costs the old one.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <wx/string.h>

/// When the disk gets a file.
enum class ToDisk {
    Force, ///< before we go on: it survives a power failure
    Later  ///< whenever the system likes, for files that can be made again
};

/// Put `bytes` under the name `path`: they are written beside it, forced to the disk if wanted, and renamed.
/// Whatever happens on the way, a whole file stands under the name, the old one or the new one.
///
/// A link is followed, and what it leads to is replaced. An existing file keeps its permissions and, where
/// the system lets us, its owner; a new one gets what the user's mask allows. Anything else than a file
/// under the name (a folder, a device) is left alone. On failure nothing is left beside the file.
/// \return empty on success, else the reason in the system's words.
wxString WriteFileSafely(const wxString& path, const std::string& bytes, ToDisk disk = ToDisk::Force);

/// The same piece by piece, for files that are too large to be held in memory.
class SafeFile_cls {
public:
    explicit SafeFile_cls(const wxString& path);
    /// Without Commit nothing of it is left.
    ~SafeFile_cls();
    SafeFile_cls(const SafeFile_cls&) = delete;
    SafeFile_cls& operator=(const SafeFile_cls&) = delete;

    bool IsOpen() const { return mpBeside != nullptr; }
    bool Write(const char* pBytes, size_t length);
    /// Put the file under its name.
    bool Commit(ToDisk disk);
    /// Why the last call failed, in the system's words.
    wxString GetReason() const { return mStrReason; }

private:
    bool Fail();

    std::string mTarget; ///< behind all links
    std::unique_ptr<class FileBeside_cls> mpBeside;
    wxString mStrReason;
};

enum class ReadFileResult {
    Ok,
    NotOpened, ///< it isn't there, may not be read, or is no plain file (a folder, pipe or device)
    TooLarge
};

/// Read a whole file of up to `limit` bytes. Never waits for a pipe or a device.
ReadFileResult ReadWholeFile(const wxString& path, size_t limit, std::string* pBytes);

/// For tests: asked before each step of writing ("open", "write", "sync", "rename"); false makes the
/// step fail. Empty otherwise.
extern std::function<bool(const char* step)> GSafeFileStep;
