// The command line of the program with the window.
#pragma once

#include <vector>

#include <wx/string.h>

struct WindowArgs_st {
    bool mbHelp = false;
    bool mbVersion = false;
    wxString mStrRecord; ///< whole paths of what --record and --replay name; empty without
    wxString mStrReplay;
    wxString mStrReplayFolder;     ///< empty: one beside the record
    std::vector<wxString> mVFiles; ///< whole paths, in the order in which they were given
};

/// A word of the command line: paths are bytes of any kind, and come out as they went in (UseAnyFileName).
wxString FromCommandLine(const char* word);
/// Options before "--", files everywhere. The answer says what is wrong with the words; empty when nothing
/// is.
wxString ParseWindowArgs(const std::vector<wxString>& words, WindowArgs_st* pArgs);
wxString GetWindowHelp();
/// The program's version, as packages and `--version` have it.
const char* GetVersion();
