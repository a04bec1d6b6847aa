// Messages to the user. The logic of the program speaks only through these functions; what they do is
// set from outside: the program installs boxes on the screen, tests install a recorder, and with
// nothing installed the words go to standard output.
#pragma once

#include <functional>

#include <wx/string.h>

enum class MessageKind {
    Inform,   ///< a box with OK
    Question, ///< a box with Yes and No
    Save,     ///< a box with Save, Don't Save and Cancel
    Notice,   ///< told beside the work, never in its way; may come from inside a paint
    Fatal     ///< a box with OK; the process ends behind it
};

/// The answer to a message. No stands for Don't Save, too; what has no Cancel never gives it.
enum MessageAnswer : int { MESSAGE_NO = 0, MESSAGE_YES = 1, MESSAGE_CANCEL = 2 };

/// Shows a message and gives a MessageAnswer; true is MESSAGE_YES, as for OK.
using MessageHandler = std::function<int(MessageKind, const wxString& text, const wxString& title)>;

/// Install what shows messages; an empty handler goes back to standard output (questions: no, and
/// nothing is saved).
void SetMessageHandler(MessageHandler handler);
bool HasMessageHandler();

void MsgBox(const wxString& text, const wxString& title);
/// As MsgBox, with a printf format ("%ls" for wide texts).
void MsgBoxf(const wxString& title, const wchar_t* format, ...);
/// A question; true for yes.
bool MsgBoxYesno(const wxString& text, const wxString& title);
/// Whether to save what would be lost: MESSAGE_YES, MESSAGE_NO or MESSAGE_CANCEL.
MessageAnswer MsgBoxSave(const wxString& text, const wxString& title);
/// Tell a condition that nobody can work around, then end the process with exit(status).
[[noreturn]] void MsgBoxExit(const wxString& text, const wxString& title, int status = 0);

/// Something is wrong with the user's input and work goes on. `about` names the matter (a file sequence,
/// say): until ForgetNotices is called, a second notice about the same matter goes to standard output
/// alone. UI thread only.
void Notice(const wxString& about, const wxString& text);
/// New input was chosen: every matter may be told again.
void ForgetNotices();
