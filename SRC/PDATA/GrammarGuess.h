// A guess at the record grammar of a file that nobody has described yet. Pure logic: it looks at the first
// 64 KB and the length, and takes any file.
#pragma once

#include <vector>

#include <wx/string.h>

class GrammerBase_cls;

struct GrammarGuess_st {
    bool mbFound = false;
    int mDataType = 0;              ///< a DataType
    std::vector<int> mHead, mBody;  ///< item codes, 16 at most each
    std::vector<wxString> mReasons; ///< what led to the guess, a sentence each
    /// The first three records, or fewer: for each number a cell "name=value" as it would be read.
    std::vector<std::vector<wxString>> mRecords;
    bool mbFractions = false; ///< positions are fractions of the box
    wxString mStrProblem;     ///< why nothing was found; empty when mbFound
};

/// Text: headers with "ITEM:" lines and named columns, or a line with the particle count before lines of
/// numbers. Binary: what the length of the file allows for the present record, the default one, and heads
/// with time and count, count and time, or the count alone.
GrammarGuess_st GuessGrammar(const wxString& path, const GrammerBase_cls& present);
