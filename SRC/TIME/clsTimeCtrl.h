// The single clock of the film: current frame and step, film length, work area (what plays), active area
// (what the time lines show), stepping, repeat, prefetch, and playing.
//
// A position is a frame (0 to and including the last) plus an interpolation step below the interval. Its
// double index is (frame + step / interval) / last frame. A data index is a snapshot number with a
// fraction. Every change the user makes goes through a ...Command operation, which leaves a step in the undo
// list, and lands in a ...Native one.
#pragma once

#include <functional>
#include <istream>
#include <vector>

#include <wx/stopwatch.h>
#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "TIME/TimeValues.h"
#include "TIME/clsMotionBlurCtrl.h"

class Main_cls;
class ParamGroup_cls;

class TimeCtrl_cls {
public:
    explicit TimeCtrl_cls(Main_cls* pMain);
    ~TimeCtrl_cls();
    TimeCtrl_cls(const TimeCtrl_cls&) = delete;
    TimeCtrl_cls& operator=(const TimeCtrl_cls&) = delete;

    // Reading.
    int GetFrame() const { return mFrame; }
    int GetInterpStep() const { return mInterpStep; }
    int GetMaxFrame() const { return ToFrame(mMaxFrame); }
    int GetWAMin() const { return ToFrame(mWAMin); }
    int GetWAMax() const { return ToFrame(mWAMax); }
    int GetAAMin() const { return ToFrame(mAAMin); }
    int GetAAMax() const { return ToFrame(mAAMax); }
    int GetAnimStep() const;   ///< "Stepping", at least 1
    int GetAnimInterp() const; ///< "Interval", steps a frame, at least 1
    bool IsRepeat() const { return mbRepeat.mValue; }
    bool IsPlaying() const { return mbPlaying; }
    int GetPlayDirection() const { return mPlayDirection; }
    int GetPrefetch() const { return mPrefetch; }
    /// Paint must make the slopes ready even at whole snapshots: a blur is running.
    bool IsForceInterpolation() const { return mCMotionBlur.mbBlur; }
    /// frame -1: the current position with its motion blur term.
    double GetDoubleIndex(int frame = -1, int step = 0) const;
    double GetDoubleIndexWAMin() const { return BoundIndex(GetWAMin()); }
    double GetDoubleIndexWAMax() const { return BoundIndex(GetWAMax()); }
    double GetDoubleIndexAAMin() const { return BoundIndex(GetAAMin()); }
    double GetDoubleIndexAAMax() const { return BoundIndex(GetAAMax()); }
    long long GetIndexFromDouble(double doubleIndex) const;
    /// Data index of a frame, whole and with its fraction; -1 stands for the current value.
    int GetRemappedIndex(int frame) const;
    double GetRemappedIndexDouble(int frame, int step) const;
    /// Fraction of the way between two data frames.
    double GetRemappedInterpStepDouble(int frame, int step) const;
    int GetOffsetForImgSeq(int frame, int step) const;
    static int GetInterval(int maxFrame); ///< tick spacing on a ruler
    int GetExpectedPrefetchMax() const;   ///< snapshots that fit the memory limit; -1 unknown
    int RoundFrame(int frame) const;      ///< nearest multiple of the stepping
    bool IsWorkingArea(int frame) const;
    bool IsPlayConditionSatisfied(int frame) const { return IsWorkingArea(frame); }
    bool IsTheFrameReady(int frame, bool bIgnoreInterp) const;
    bool IsTheFrameLoaded(int frame) const;
    int GetSnipNext() const;
    int GetSnipPrev() const;
    int CalcNextFrame(int frame, int dir, bool bUseRange, bool bRepeat) const;
    void AdjustFrameByRange(int* pFrame, int* pStep, int dir, bool bUseRange, bool bRepeat) const;
    void CalcNextFrameFromStep(int* pFrame, int* pStep, bool bUseRange, bool bRepeat) const;

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
    void SetFrameFromDoubleCommand(double doubleIndex);
    void ExpandAACommand(bool bZoomIn);

    void SetUseTimeRemapCommand(bool bUse);
    /// Between the two, ...Command operations change the clock at once and leave no step; the end leaves one
    /// for all of them. Not nested.
    void BeginGesture();
    void EndGesture();
    bool IsGesture() const { return mbGesture; }

    void SetFrameNative(int frame, int updateMask);
    void SetInterpStepNative(int step, int updateMask);
    void SetWAMinNative(int frame);
    void SetWAMaxNative(int frame);
    void SetAAMinNative(int frame);
    void SetAAMaxNative(int frame);
    void SetRepeatNative(int repeat);
    void SetAnimStepNative(int step);
    void SetAnimInterpNative(int interp);
    void SetPrefetchNative(int frames);
    void SetMaxFrameNative(int maxFrame);
    /// `kind` is a TimeValue.
    int GetValue(int kind) const;
    void SetValueNative(int kind, int value);
    TimeState_st GetState() const;
    void SetState(const TimeState_st& state);

    /// Told when the film's length or the remapping changes. Keys keep their share of the film and the
    /// curve its values, so there is nothing to do.
    void RemapParameterKeys(double) {}
    void SetBUseTimeRemap(bool) {}

    // Areas.
    void SetWorkingArea(int lastFrame);
    void CheckWorkingArea();
    void SetWAInHere();
    void SetWAOutHere();
    void SetIndex(unsigned frame);
    void SetIndexWithinWA();

    // Playing.
    void StartPlayCommand(int dir);
    void StartPlay(int dir);
    /// Not playing, at this position; what takes a start back.
    void TakeBackPlay(int frame, int step);
    /// One advance at most; true when the position moved and waits to be drawn.
    bool ProcPlaying();
    void ProcStopPlaying();
    void BeginMotionBlur();

    // Snipping marks: which frames hold keys.
    void EmptySnippingTag();
    /// Clear them and have mCollectTags set them anew.
    void UpdateSnippingTag();
    const std::vector<bool>& GetSnippingTags() const { return mVSnippingTag; }
    std::function<void(std::vector<bool>*)> mCollectTags; ///< the hub knows whose keys count

    wxString Serialize();
    void ReadStrLine(std::wistream& stream, const wxString& line);

    int mFrameInterval = 30; ///< least milliseconds between two advances
    bool mbShyMode = false;
    bool mbCustomRange = false; ///< mRangeMin, mRangeMax replace the work area
    int mRangeMin = 0;
    int mRangeMax = 0;
    /// An output run plays: each frame of the range once, the last one as whole as the others, whatever
    /// "Repeat" says, and as fast as pictures are made. Ends with the stop.
    bool mbOutputRun = false;
    bool mbIgnoreNextStop = false; ///< a repeat went round: the next stop event is not meant
    MotionBlurCtrl_cls mCMotionBlur;
    ConfItemBOOL_cls mbUseTimeRemap;
    ConfItemBOOL_cls mbUseMotionBlur;
    ConfItemUINT_cls mSceneLengthType; ///< 0 "do remap", 1 "do not remap"
    ParamGroup_cls* mpCTimeRemapGroup; ///< film time to snapshot number, while mbUseTimeRemap is on; owned

private:
    static int ToFrame(const ConfItemUINT_cls& item);
    double RemappedValue(double doubleIndex) const;
    void Command(int kind, int value, int old = -1);
    void PushLength(const TimeState_st& before, const TimeState_st& after);
    void MoveToCommand(int frame, int step);
    void SetBoundHere(int kind);
    void TellStale() const;
    double BoundIndex(int frame) const;
    void LowHigh(int* pLow, int* pHigh) const;
    int FloorToStep(int frame) const;
    void CheckAfterMaxFrameChange();
    void UpdateCurrentDoubleIndex();
    void WaitForNextAdvance() const;
    void SetPosition(int frame, int step);
    void StopPlaying(bool bByUser);
    bool GoesRound() const { return mbRepeat.mValue && !mbOutputRun; }

    Main_cls* mpCMain;
    wxStopWatch mCStopWatchPlay;
    int mPlayElapsed = 0;
    int mStopCount = 0;
    wxStopWatch mCStopWatchFrame;
    long mLastFrameTime = 0;
    bool mbPlaying = false;
    int mPlayDirection = 1;
    int mPrefetch = 3;
    std::vector<bool> mVSnippingTag; ///< one bit per frame
    int mFrame = 0;
    int mInterpStep = 0;
    int mRegionMin = 0;
    int mRegionMax = 99;
    int mPrevMaxFrame = 100;
    bool mbGesture = false;
    unsigned mTouched = 0; ///< values that the gesture under way may have changed, a bit each
    TimeState_st mBeforeGesture;

    ConfItemList_cls mConfList;
    ConfItemUINT_cls mMaxFrame;
    ConfItemUINT_cls mWAMin;
    ConfItemUINT_cls mWAMax;
    ConfItemUINT_cls mAAMin;
    ConfItemUINT_cls mAAMax;
    ConfItemINT_cls mAnimStep;
    ConfItemINT_cls mAnimInterp;
    ConfItemBOOL_cls mbRepeat;
};
