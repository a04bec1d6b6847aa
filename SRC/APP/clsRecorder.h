// Keeps what the user does as lines of text, always the last of them in memory and all of them in a file
// where one was asked for. It listens to the toolkit's events as they come to windows, and to
// COMMON/UserActs.h. What is typed into a field is kept as the field's value, once it has one.
#pragma once

#include <cstdio>
#include <deque>
#include <memory>
#include <vector>

#include <wx/eventfilter.h>
#include <wx/stopwatch.h>
#include <wx/string.h>

class Main_cls;
class wxCommandEvent;
class wxKeyEvent;
class wxMouseEvent;
class wxWindow;

struct MouseName_st {
    wxEventType mType;
    const char* mName;
};
/// What "mouse" lines say.
const std::vector<MouseName_st>& GetMouseNames();

class Recorder_cls : public wxEventFilter {
public:
    static constexpr size_t kMostLines = 20000; ///< kept in memory
    static constexpr size_t kMostTold = 100;    ///< messages kept

    /// Listens from here on. The hub's frame is there.
    explicit Recorder_cls(Main_cls& hub);
    ~Recorder_cls() override;
    Recorder_cls(const Recorder_cls&) = delete;
    Recorder_cls& operator=(const Recorder_cls&) = delete;

    /// Into a file as well, from here on, a line at once, so that a crash leaves all of them. One that is
    /// there is left alone. \return empty, or the reason in the system's words.
    wxString BeginFile(const wxString& path);
    /// A whole record: its head and the lines in memory.
    wxString GetText() const;
    /// Forget the lines in memory: a record begins here.
    void Restart();
    const std::deque<wxString>& GetTold() const { return mTold; } ///< messages, the latest last

    int FilterEvent(wxEvent& event) override;

private:
    using Words = std::vector<wxString>;
    struct CloseFile_st {
        void operator()(std::FILE* pFile) const { std::fclose(pFile); }
    };

    void OnMouse(wxMouseEvent& event, const wxWindow* pWindow);
    void OnKey(const wxKeyEvent& event, const wxWindow* pWindow);
    void OnFocus(const wxWindow* pWindow, bool bGot);
    void OnMenu(const wxCommandEvent& event);
    void OnCommand(wxEvent& event, const wxWindow* pWindow);
    void NoteText(const wxWindow* pWindow);
    void Note(const char* verb, const wxString& what);
    /// What stands still between acts: a playing film, the window's size.
    void NoteState();
    /// `pWindow` null: of no window.
    void Add(const char* verb, const wxWindow* pWindow, const Words& words, const wxString& remark);
    void Write(const Words& words, const wxString& remark);
    wxString GetHead() const;
    wxString GetTimeStamp() const;

    Main_cls& mHub;
    std::deque<wxString> mLines;
    std::deque<wxString> mTold;
    long long mDropped = 0; ///< lines that memory had no room for
    std::unique_ptr<std::FILE, CloseFile_st> mFile;
    wxStopWatch mWatch;
    const wxWindow* mpPressed = nullptr; ///< has a button of the mouse since its press; only compared
    wxString mPressedPath;
    const wxWindow* mpTyped = nullptr; ///< the text with the focus; only compared
    wxString mTypedBefore;
    int mFrame = -1;
    int mStep = -1;
    int mWidth = -1;
    int mHeight = -1;
};
