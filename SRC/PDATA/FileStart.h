// The first bytes of a file that may be anything, and what is wrong with it.
#pragma once

#include <string>

#include <wx/string.h>

struct FileStart_st {
    std::string mBytes;  ///< as many as were asked for, or the file has
    long long mSize = 0; ///< of the whole file
    wxString mStrError;  ///< why it can't be read, without its name; empty when it can
};

/// Read the first `wanted` bytes of a regular file. Directories and pipes are refused, not waited for.
FileStart_st ReadFileStart(const wxString& path, size_t wanted);
