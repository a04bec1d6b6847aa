// Follows a simulation that is still running: the open sequence grows as new snapshots appear, and the film
// with it.
#pragma once

#include <memory>

#include <wx/stopwatch.h>
#include <wx/string.h>
#include <wx/timer.h>

class FolderWatch_cls;
class FrameMain_cls;
class Main_cls;
struct SequenceNews_st;
class wxCommandEvent;

class FollowRun_cls {
public:
    /// Takes the frame's commands about following from here on. A part of the frame.
    explicit FollowRun_cls(FrameMain_cls& frame);
    ~FollowRun_cls();
    FollowRun_cls(const FollowRun_cls&) = delete;
    FollowRun_cls& operator=(const FollowRun_cls&) = delete;

    /// Data were opened or closed: following ends with its sequence, and goes on when that is the next one to
    /// be opened, as the loader and steps of the undo list do it.
    void OnData();
    /// Before a project is read.
    void Reset();
    /// One line for the user; empty when there is nothing to tell.
    wxString GetStatus() const;
    wxString Serialize() const;
    void ReadStrLine(const wxString& line);

private:
    void OnMenuFollow(wxCommandEvent& event);
    void OnMenuNewest(wxCommandEvent& event);
    void OnTimer(wxTimerEvent& event);
    bool IsFollowable() const;
    void Begin();
    void End(const wxString& words);
    void SetFollow(bool bFollow);
    void SetNewest(bool bNewest);
    bool MayGrow() const;
    void Take(const SequenceNews_st& news);
    void GrowFilm(int before, int length);
    void GoToNewest();
    void Tell(const wxString& words);

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    std::unique_ptr<FolderWatch_cls> mpCWatch; ///< while it follows
    wxString mStrPath;                         ///< of the sequence that is followed
    bool mbResume = false;                     ///< it was followed when it was closed
    bool mbNewest = false;                     ///< the clock goes to each snapshot that comes
    wxTimer mTimer;
    wxString mStrWords; ///< shown for a while
    wxStopWatch mTold;
};
