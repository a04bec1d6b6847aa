// Does again what a record says, a line at a time, as fast as the program comes to rest between them. What
// can't be done is told with the number of its line, and the next line follows. The record may be a
// stranger's: the process is confined (COMMON/Confined.h), and files that it saves go into one folder.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include <wx/stopwatch.h>
#include <wx/string.h>
#include <wx/timer.h>

#include "COMMON/ActLine.h"

class Main_cls;
class NumField_cls;
class wxWindow;

class Replay_cls {
public:
    static constexpr long kPatience = 60000; ///< milliseconds until a line no longer waits for rest

    /// `folder` takes what is saved; it is there. `pathOfRecord`: files that aren't where the record says are
    /// looked for beside it.
    Replay_cls(Main_cls& hub, ActFile_st file, const wxString& pathOfRecord, const wxString& folder);
    ~Replay_cls();
    Replay_cls(const Replay_cls&) = delete;
    Replay_cls& operator=(const Replay_cls&) = delete;

    /// Lines follow from the event loop.
    void Begin();
    bool IsDone() const { return mbDone; }
    /// What could not be done, each with the number of its line.
    const std::vector<wxString>& GetMistakes() const { return mFile.mVMistakes; }
    /// How a new replay's folder is called, beside the record; nothing is there yet.
    static wxString MakeFolderName(const wxString& pathOfRecord);

private:
    using Act = wxString (Replay_cls::*)(const ActLine_st& line, wxWindow* pWindow);
    struct Verb_st {
        Act mAct;
        bool mbWindow;  ///< the second word is a window
        bool mbControl; ///< that can be seen and used
        size_t mWords;  ///< at least, with the verb
    };
    static const std::map<wxString, Verb_st>& GetVerbs();

    void Step();
    bool IsAtRest() const;
    wxString Do(const ActLine_st& line);
    wxString Answer(const wxString& verb);
    wxString GetFileToOpen(const wxString& path) const;
    wxString GetFileToSave(const wxString& path);
    void Tell(int number, const wxString& what);
    void End();

    // clsReplayActs.cpp; each answers what was wrong, empty for nothing.
    wxString DoMenu(const ActLine_st& line, wxWindow* pWindow);
    wxString DoMouse(const ActLine_st& line, wxWindow* pWindow);
    wxString DoTouch(const ActLine_st& line, wxWindow* pWindow);
    wxString DoKey(const ActLine_st& line, wxWindow* pWindow);
    wxString DoShortcut(const ActLine_st& line, wxWindow* pWindow);
    wxString DoSet(const ActLine_st& line, wxWindow* pWindow);
    wxString DoText(const ActLine_st& line, wxWindow* pWindow);
    wxString DoPress(const ActLine_st& line, wxWindow* pWindow);
    wxString DoCheck(const ActLine_st& line, wxWindow* pWindow);
    wxString DoChoose(const ActLine_st& line, wxWindow* pWindow);
    wxString DoPage(const ActLine_st& line, wxWindow* pWindow);
    wxString DoScroll(const ActLine_st& line, wxWindow* pWindow);
    wxString DoClose(const ActLine_st& line, wxWindow* pWindow);
    wxString DoFrame(const ActLine_st& line, wxWindow* pWindow);
    wxString DoSize(const ActLine_st& line, wxWindow* pWindow);
    wxString DoOpen(const ActLine_st& line, wxWindow* pWindow);
    wxString DoRest(const ActLine_st& line, wxWindow* pWindow);
    wxString DoNothing(const ActLine_st& line, wxWindow* pWindow);

    Main_cls& mHub;
    ActFile_st mFile;
    wxString mStrBeside; ///< the record's folder
    wxString mStrFolder;
    std::map<wxString, wxString> mSaved; ///< paths of the record, and where the files are now
    size_t mAt = 0;                      ///< the next line
    bool mbDone = false;
    bool mbPressed = false; ///< between press and release nothing waits
    wxTimer mTimer;
    wxStopWatch mWaited;
};
