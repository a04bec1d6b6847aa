// The bytes of a mesh's file, and by what a change of the file is seen.
#pragma once

#include <atomic>
#include <vector>

#include <wx/string.h>

#include "COMMON/BigAllocator.h"

/// A whole file. Behind it stand two line feeds (a backslash may take one away) and zeros, kMeshPad bytes in
/// all.
struct MeshText_st {
    std::vector<char, BigAllocator_cls<char>> mBytes;
    size_t mLength = 0;

    const char* Begin() const { return mBytes.data(); }
    const char* End() const { return mBytes.data() + mLength; }
};
constexpr size_t kMeshPad = 96;
/// Write them.
void EndMeshText(char* pEnd);

/// Bytes that are read piece by piece, by several threads at a time: those of a file, or of a text in memory.
class MeshSource_cls {
public:
    /// The text must stay.
    explicit MeshSource_cls(const MeshText_st& text);
    explicit MeshSource_cls(const wxString& path);
    ~MeshSource_cls();
    MeshSource_cls(const MeshSource_cls&) = delete;
    MeshSource_cls& operator=(const MeshSource_cls&) = delete;

    size_t GetLength() const { return mLength; }
    /// Bytes [from, to) to `pTo`; false when they are not there.
    bool Read(size_t from, size_t to, char* pTo);
    /// Why the file can't be read, as the end of a sentence; empty when nothing went wrong so far.
    wxString GetReason() const;

private:
    const char* mpText = nullptr;
    int mFile = -1;
    size_t mLength = 0;
    std::atomic<int> mError{0}; ///< errno, or a Fault
};

/// Read a file whole, on several threads. \return why that failed, as the end of a sentence; empty when it is
/// there. Throws std::bad_alloc.
wxString ReadMeshText(const wxString& path, MeshText_st* pText, const std::atomic<bool>* pStop = nullptr);
/// All that a source has. False when it can't be read. Throws std::bad_alloc.
bool ReadMeshText(MeshSource_cls& source, MeshText_st* pText);
/// A text that is in memory already, with what must stand behind it.
MeshText_st MakeMeshText(const std::string& bytes);

/// What the system tells of a file; the same for two files that aren't there.
struct FileStamp_st {
    long long mSize = -1;
    long long mSeconds = 0;
    long long mNanoseconds = 0;
    unsigned long long mNode = 0;

    bool operator==(const FileStamp_st& o) const {
        return mSize == o.mSize && mSeconds == o.mSeconds && mNanoseconds == o.mNanoseconds &&
               mNode == o.mNode;
    }
    bool operator!=(const FileStamp_st& o) const { return !(*this == o); }
};
FileStamp_st GetFileStamp(const wxString& path);

/// How many threads share the work on so many bytes.
int GetMeshThreads(size_t bytes);
