// What a user does where no event tells of it: answers to questions, files that were chosen. Whoever records
// hears of them here, and whoever replays gives the answers. Empty hooks cost nothing.
#pragma once

#include <functional>

#include <wx/string.h>

class wxWindow;

struct UserActs_st {
    /// A line of a record: its verb (ActLine.h) and what goes with it.
    std::function<void(const char* verb, const wxString& what)> mNote;
    /// The answer in the user's place, empty for "Cancel". Set while a record is replayed.
    std::function<wxString(const char* verb)> mAnswer;
    /// A message that was shown, or would have been.
    std::function<void(const wxString& text)> mTold;
    /// Whom a replayed key is for: no focus tells. Null while none is replayed.
    wxWindow* mpKeyTarget = nullptr;
};
extern UserActs_st GUserActs;

inline bool IsReplaying() { return static_cast<bool>(GUserActs.mAnswer); }
inline void NoteUserAct(const char* verb, const wxString& what) {
    if (GUserActs.mNote) GUserActs.mNote(verb, what);
}
/// What `ask` gets from the user, or whoever replays in his place; noted. Empty: cancelled.
wxString AskUser(const char* verb, const std::function<wxString()>& ask);
