// The single clock of the film: the film's time (FilmTime_cls), settable (FilmClock_cls), and here what the
// user's hands do to it, and playing. A ...Command operation leaves a step in the undo list and lands in a
// ...Native one.
#pragma once

#include <wx/stopwatch.h>

#include "TIME/clsFilmClock.h"

class TimeCtrl_cls final : public FilmClock_cls {
public:
    /// pMain may be null: no data are ready then.
    explicit TimeCtrl_cls(TimeHost_cls* pMain) : FilmClock_cls(pMain) {}

    // Moving, a step each. An old value of -1 means the one now held; then what changes nothing leaves none.
    void SetFrameCommand(int frame, int old = -1);
    void SetInterpStepCommand(int step);
    void SetWAMinCommand(int frame, int old = -1);
    void SetWAMaxCommand(int frame, int old = -1);
    void SetAAMinCommand(int frame, int old = -1);
    void SetAAMaxCommand(int frame, int old = -1);
    void SetRepeatCommand(int repeat, int old = -1);
    void SetAnimStepCommand(int step, int old = -1);
    void SetAnimInterpCommand(int interp, int old = -1);
    void SetPrefetchCommand(int frames, int old = -1);
    void SetMaxFrameCommand(int maxFrame);
    void MoveFrameCommand(int dir);
    void MoveInterpStepCommand(int dir);
    void MoveFrameCommandLarge(int dir);
    void MoveFrameCommandSnip(int dir);
    void ExpandAACommand(bool bZoomIn);
    void SetUseTimeRemapCommand(bool bUse);
    void SetWAInHere();
    void SetWAOutHere();
    /// Between the two, ...Command operations change the clock at once and leave no step; the end leaves one
    /// for all of them. Not nested.
    void BeginGesture();
    void EndGesture();
    bool IsGesture() const { return mbGesture; }

    // Playing.
    void StartPlayCommand(int dir);
    void StartPlay(int dir);
    /// Not playing, at this position; what takes a start back.
    void TakeBackPlay(int frame, int step);
    /// One advance at most; true when the position moved and waits to be drawn.
    bool ProcPlaying();
    void ProcStopPlaying();
    void BeginMotionBlur();
    /// The last start of playing led nowhere: nothing is left to play from this position. The direction it
    /// had, else 0.
    int GetStuckDirection() const;

    int mFrameInterval = 30;       ///< least milliseconds between two advances
    bool mbIgnoreNextStop = false; ///< a repeat went round: the next stop event is not meant

private:
    void Command(int kind, int value, int old = -1);
    void PushLength(const TimeState_st& before, const TimeState_st& after);
    void MoveToCommand(int frame, int step);
    void SetBoundHere(int kind);
    void WaitForNextAdvance() const;
    void SetPosition(int frame, int step);
    void StopPlaying(bool bByUser);

    wxStopWatch mCStopWatchPlay;
    int mPlayElapsed = 0;
    int mStopCount = 0;
    wxStopWatch mCStopWatchFrame;
    long mLastFrameTime = 0;
    bool mbGesture = false;
    int mStartFrame = -1; ///< where playing started
    int mStartStep = -1;
    bool mbStuck = false;  ///< and where it ended without a move
    unsigned mTouched = 0; ///< values that the gesture under way may have changed, a bit each
    TimeState_st mBeforeGesture;
};
