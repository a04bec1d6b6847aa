// An input for readers that want a file.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <string>

#include <wx/string.h>

/// The bytes as a file that goes at the end of the scope.
class FuzzFile_cls {
public:
    explicit FuzzFile_cls(const std::string& bytes, const std::string& ending = std::string()) {
        // In memory where there is such a place.
        static const std::string sFolder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
        std::string name = sFolder + "/morentis_fuzz_XXXXXX" + ending;
        const int file = mkstemps(name.data(), int(ending.size()));
        if (file < 0 || write(file, bytes.data(), bytes.size()) != ssize_t(bytes.size())) std::exit(2);
        close(file);
        mPath = name;
    }
    ~FuzzFile_cls() { unlink(mPath.c_str()); }
    FuzzFile_cls(const FuzzFile_cls&) = delete;
    FuzzFile_cls& operator=(const FuzzFile_cls&) = delete;
    wxString GetPath() const { return wxString::FromUTF8(mPath); }
    const std::string& GetName() const { return mPath; }

private:
    std::string mPath;
};
