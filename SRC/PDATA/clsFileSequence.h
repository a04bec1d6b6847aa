// A run of numbered files: one path that the user pointed at, or a format such as "run%04d.dat", turned
// into a name for each index. Names output files as well.
#pragma once

#include <functional>

#include <wx/string.h>

class FileSequence_cls {
public:
    FileSequence_cls() = default;
    explicit FileSequence_cls(const wxString& path) { Set(path); }

    /// Work out format, first number and width from a path. An empty path changes nothing but mStrPath.
    void Set(const wxString& path);
    /// Position of a tag "%01d" to "%05d" in the path, setting mDigits and mStartOffset; -1: there is none.
    int SequenceFormatPos();
    /// Take the digits at the end of the stem for the number. A number that no int holds is none.
    void InitFormat();
    /// Split at the tag that stands at `pos`.
    void SplitFormat(int pos);
    /// Find the length by probing for files in steps of 100, 10 and 1. Shows a message and leaves the
    /// length 0 when the first one doesn't open; a directory isn't a file.
    void CalcMaxOffset();
    /// The same of what `opens` says of each index; index 0 is taken to open. A hole ends the sequence,
    /// unless a step leads over it.
    static int CountBySteps(const std::function<bool(int)>& opens);
    wxString GetFormat() const { return mStrFormat; }
    /// File name of an index; eye 1 and 2 put "L" or "R" before the number (without a number: before
    /// the extension). Numbers past INT_MAX stay there.
    wxString GetModifiedStr(int index, int eye) const;
    /// Format and range, such as "run%04d.dat (100-351)": the second number is one past the last file.
    wxString GetInfoStr() const;
    /// For output: the format takes the path's place, with 0 as the first number. It gives the same names
    /// when it is set as a path.
    void AdoptFormat();
    /// Give a name that was typed without a number the tag "%04d".
    void AppendDefaultSequenceTag();

    wxString mStrPath;    ///< as given
    wxString mStrPrefix;  ///< before the number; ends in "%" when the tag was typed
    wxString mStrFormat;  ///< with one integer tag; other "%" of it are plain text
    wxString mStrSuffix;  ///< extension with its dot
    int mStartOffset = 0; ///< number of index 0
    int mDigits = -1;     ///< width of the number; -1: the path has none
    int mMaxOffset = -1;  ///< length of the sequence, -1 until known

private:
    void SetTag(size_t pos, size_t length, bool bTyped);
    void FindOddTag();
    static wxString ProtectPercents(const wxString& text);
    bool DoesTheIndexOpen(int index) const;

    size_t mTagPos = wxString::npos; ///< where the tag stands in mStrFormat
    size_t mTagLength = 0;
    bool mbTyped = false; ///< the tag was typed: "%%" means "%"
};
