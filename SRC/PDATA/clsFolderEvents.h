// What the kernel tells of a folder: which files were closed after writing or moved there.
#pragma once

#include <set>
#include <string>

class FolderEvents_cls {
public:
    FolderEvents_cls() = default;
    ~FolderEvents_cls();
    FolderEvents_cls(const FolderEvents_cls&) = delete;
    FolderEvents_cls& operator=(const FolderEvents_cls&) = delete;

    /// Listen to a folder. False where its file system tells nothing of what others write, as over a network,
    /// or the kernel has no more room. May wait for a file system that hangs.
    bool Open(const std::string& folder);
    bool IsOpen() const { return mFile >= 0; }
    /// Add the names of files that are finished, as they stand in the folder. Never waits. True when anything
    /// happened there; it stops listening when the folder itself goes.
    bool Read(std::set<std::string>* pFinished);

private:
    void Close();

    int mFile = -1;
};
