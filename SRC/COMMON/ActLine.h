// A line of a record of what a user did: a verb and words, behind "#" a remark. Words are parted by blanks;
// one that holds anything but plain letters stands in quotes, with \" \\ and \n. docs/FILE_FORMATS.md has all
// verbs.
#pragma once

#include <string>
#include <vector>

#include <wx/string.h>

constexpr const char* kRecordStart = "morentis-record 1"; ///< the first line of each record
constexpr size_t kLargestRecord = size_t(64) << 20;       ///< bytes
constexpr size_t kLongestActLine = size_t(64) << 10;      ///< characters

struct ActLine_st {
    int mNumber = 0; ///< in its file, from 1
    std::vector<wxString> mWords;
    wxString mRemark; ///< without "#"; not needed for replaying

    wxString GetVerb() const { return mWords.empty() ? wxString() : mWords[0]; }
    /// Empty where there is none.
    wxString GetWord(size_t place) const { return place < mWords.size() ? mWords[place] : wxString(); }
};

/// Without an end of line.
wxString WriteActLine(const ActLine_st& line);
/// Nothing is a mistake here but a quote without an end, control characters and a line that is too long: then
/// the answer says so.
wxString ReadActLine(const wxString& text, ActLine_st* pLine);

/// A number of a record as a double has it, exactly; no locale's.
wxString WriteActNumber(double number);
/// False for text that is no finite number.
bool ReadActNumber(const wxString& text, double* pNumber);
/// A whole number between the limits.
bool ReadActCount(const wxString& text, long least, long most, long* pCount);

struct ActFile_st {
    std::vector<ActLine_st> mLines;   ///< without empty ones
    std::vector<wxString> mVMistakes; ///< each begins with the number of its line
    wxString mStrReason;              ///< not empty: this is no record, and there are no lines
};
ActFile_st ReadActFile(const std::string& bytes);
