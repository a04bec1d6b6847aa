// Messages to the user. The logic of the program speaks only through these functions; what they do is
// set from outside: the program installs boxes on the screen, tests install a recorder, and with
// nothing installed the words go to standard output.
#pragma once

#include <functional>

#include <wx/string.h>

enum class MessageKind {
    Inform,   ///< a box with OK
    Question, ///< a box with Yes and No
    Notice,   ///< told beside the work, never in its way; may come from inside a paint
    Fatal     ///< a box with OK; the process ends behind it
};

/// Shows a message; the answer is true for OK and Yes.
using MessageHandler = std::function<bool(MessageKind, const wxString& text, const wxString& title)>;

/// Install what shows messages; an empty handler goes back to standard output (questions: no).
void SetMessageHandler(MessageHandler handler);
bool HasMessageHandler();

void MsgBox(const wxString& text, const wxString& title);
/// As MsgBox, with a printf format ("%ls" for wide texts).
void MsgBoxf(const wxString& title, const wchar_t* format, ...);
/// A question; true for yes.
bool MsgBoxYesno(const wxString& text, const wxString& title);
/// Tell a condition that nobody can work around, then end the process with exit(status).
[[noreturn]] void MsgBoxExit(const wxString& text, const wxString& title, int status = 0);

/// Something is wrong with the user's input and work goes on. `about` names the matter (a file sequence,
/// say): until ForgetNotices is called, a second notice about the same matter goes to standard output
/// alone. UI thread only.
void Notice(const wxString& about, const wxString& text);
/// New input was chosen: every matter may be told again.
void ForgetNotices();
