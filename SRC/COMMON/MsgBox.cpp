#include "COMMON/MsgBox.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "COMMON/UserActs.h"

namespace {

MessageHandler& Handler() {
    static MessageHandler sHandler;
    return sHandler;
}

std::set<wxString>& ToldMatters() {
    static std::set<wxString> sTold;
    return sTold;
}

void Print(const wxString& text, const wxString& title) {
    std::printf("%s: %s\n", static_cast<const char*>(title.utf8_str()),
                static_cast<const char*>(text.utf8_str()));
    std::fflush(stdout);
}

int Ask(MessageKind kind, const wxString& text, const wxString& title) {
    if (Handler()) return Handler()(kind, text, title);
    Print(text, title);
    return kind == MessageKind::Question || kind == MessageKind::Save ? MESSAGE_NO : MESSAGE_YES;
}

int Show(MessageKind kind, const wxString& text, const wxString& title) {
    if (GUserActs.mTold) GUserActs.mTold(text);
    const bool bQuestion = kind == MessageKind::Question || kind == MessageKind::Save;
    if (!bQuestion && kind != MessageKind::Fatal && IsReplaying()) { // nobody is there to press OK
        Print(text, title);
        return MESSAGE_YES;
    }
    if (!bQuestion) return Ask(kind, text, title);
    static const wxString kWords[] = {"no", "yes", "cancel"};
    const wxString word = AskUser("answer", [&] {
        const int answer = Ask(kind, text, title);
        return kWords[answer >= MESSAGE_NO && answer <= MESSAGE_CANCEL ? answer : MESSAGE_CANCEL];
    });
    if (word == kWords[MESSAGE_YES]) return MESSAGE_YES;
    const bool bNo = word == kWords[MESSAGE_NO] || kind == MessageKind::Question;
    return bNo ? MESSAGE_NO : MESSAGE_CANCEL;
}

} // namespace

void SetMessageHandler(MessageHandler handler) { Handler() = std::move(handler); }

bool HasMessageHandler() { return static_cast<bool>(Handler()); }

void MsgBox(const wxString& text, const wxString& title) { Show(MessageKind::Inform, text, title); }

void MsgBoxf(const wxString& title, const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const wxString text = wxString::FormatV(wxString(format), arguments);
    va_end(arguments);
    Show(MessageKind::Inform, text, title);
}

bool MsgBoxYesno(const wxString& text, const wxString& title) {
    return Show(MessageKind::Question, text, title) == MESSAGE_YES;
}

MessageAnswer MsgBoxSave(const wxString& text, const wxString& title) {
    const int answer = Show(MessageKind::Save, text, title);
    return answer == MESSAGE_YES ? MESSAGE_YES : answer == MESSAGE_NO ? MESSAGE_NO : MESSAGE_CANCEL;
}

void MsgBoxExit(const wxString& text, const wxString& title, int status) {
    Show(MessageKind::Fatal, text, title);
    std::exit(status);
}

void Notice(const wxString& about, const wxString& text) {
    const bool bNew = ToldMatters().insert(about).second;
    Print(text, "Notice");
    if (bNew && GUserActs.mTold) GUserActs.mTold(text);
    if (bNew && Handler()) Handler()(MessageKind::Notice, text, "Notice");
}

void ForgetNotices() { ToldMatters().clear(); }
