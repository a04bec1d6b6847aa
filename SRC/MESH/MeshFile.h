// The bytes of a mesh's file, and by what a change of the file is seen.
#pragma once

#include <atomic>
#include <vector>

#include <wx/string.h>

#include "COMMON/BigAllocator.h"

/// A whole file. Behind mLength stand a line feed and kMeshPad zeros.
struct MeshText_st {
    std::vector<char, BigAllocator_cls<char>> mBytes;
    size_t mLength = 0;

    const char* Begin() const { return mBytes.data(); }
    const char* End() const { return mBytes.data() + mLength; }
};
constexpr size_t kMeshPad = 31;

/// Read a file whole, on several threads. \return why that failed, as the end of a sentence; empty when it is
/// there. Throws std::bad_alloc.
wxString ReadMeshText(const wxString& path, MeshText_st* pText, const std::atomic<bool>* pStop = nullptr);
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
