// What readers of texts in picture files have in common. Such files come from anywhere: a reader asks for
// what it needs, and nothing in the file makes it take more.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include <wx/string.h>

/// A plain file that is read here and there. Never waits for a pipe or a device.
class PictureFile_cls {
public:
    explicit PictureFile_cls(const wxString& path);
    ~PictureFile_cls();
    PictureFile_cls(const PictureFile_cls&) = delete;
    PictureFile_cls& operator=(const PictureFile_cls&) = delete;

    std::uint64_t GetSize() const { return mSize; } ///< 0 for what can't be read
    /// `length` bytes from `at` on; false when the file has less.
    bool Read(std::uint64_t at, size_t length, std::string* pBytes) const;

private:
    int mFile;
    std::uint64_t mSize = 0;
};

struct PictureText_st {
    std::string mText;
    wxString mTrouble; ///< why it can't be read; empty where it can, or isn't there
};
using PictureTexts = std::map<std::string, PictureText_st>; ///< by their keys

// What can be wrong, as the end of a sentence.
wxString SayCutOff();
wxString SayDamaged();
wxString SayTooLong();
