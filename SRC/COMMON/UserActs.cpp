#include "COMMON/UserActs.h"

UserActs_st GUserActs;

wxString AskUser(const char* verb, const std::function<wxString()>& ask) {
    const wxString answer = IsReplaying() ? GUserActs.mAnswer(verb) : ask();
    NoteUserAct(verb, answer);
    return answer;
}
