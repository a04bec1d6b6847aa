// The film's time: current frame and step, film length, work area (what plays), active area (what the time
// lines show), stepping, and all arithmetic on them. Changes nothing.
//
// A position is a frame (0 to and including the last) plus an interpolation step below the interval. Its
// double index is (frame + step / interval) / last frame. A data index is a snapshot number with a
// fraction.
#pragma once

#include <vector>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "TIME/clsMotionBlurCtrl.h"

class ParamGroup_cls;
class TimeHost_cls;

class FilmTime_cls {
public:
    FilmTime_cls(const FilmTime_cls&) = delete;
    FilmTime_cls& operator=(const FilmTime_cls&) = delete;

    int GetFrame() const { return mFrame; }
    int GetInterpStep() const { return mInterpStep; }
    int GetMaxFrame() const { return ToFrame(mMaxFrame); }
    int GetWAMin() const { return ToFrame(mWAMin); }
    int GetWAMax() const { return ToFrame(mWAMax); }
    int GetAAMin() const { return ToFrame(mAAMin); }
    int GetAAMax() const { return ToFrame(mAAMax); }
    int GetAnimStep() const;   ///< "Stepping", at least 1
    int GetDataStep() const;   ///< between snapshots that playing comes to; 1 where a remap may come to any
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
    /// Frames that hold keys, a bit each.
    const std::vector<bool>& GetSnippingTags() const { return mVSnippingTag; }
    int GetSnipNext() const;
    int GetSnipPrev() const;
    int CalcNextFrame(int frame, int dir, bool bUseRange, bool bRepeat) const;
    void AdjustFrameByRange(int* pFrame, int* pStep, int dir, bool bUseRange, bool bRepeat) const;
    void CalcNextFrameFromStep(int* pFrame, int* pStep, bool bUseRange, bool bRepeat) const;

    bool mbCustomRange = false; ///< mRangeMin, mRangeMax replace the work area
    int mRangeMin = 0;
    int mRangeMax = 0;
    /// An output run plays: each frame of the range once, the last one as whole as the others, whatever
    /// "Repeat" says, and as fast as pictures are made. Ends with the stop.
    bool mbOutputRun = false;
    MotionBlurCtrl_cls mCMotionBlur;
    ConfItemBOOL_cls mbUseTimeRemap;
    ConfItemBOOL_cls mbUseMotionBlur;
    ConfItemUINT_cls mSceneLengthType; ///< 0 "do remap", 1 "do not remap"
    ParamGroup_cls* mpCTimeRemapGroup; ///< film time to snapshot number, while mbUseTimeRemap is on; owned

protected:
    /// pHost may be null: no data are ready then.
    explicit FilmTime_cls(TimeHost_cls* pHost);
    ~FilmTime_cls();

    static int ToFrame(const ConfItemUINT_cls& item);
    int FloorToStep(int frame) const;
    void LowHigh(int* pLow, int* pHigh) const;
    bool GoesRound() const { return mbRepeat.mValue && !mbOutputRun; }

    TimeHost_cls* mpCMain;
    bool mbPlaying = false;
    int mPlayDirection = 1;
    int mPrefetch = 3;
    std::vector<bool> mVSnippingTag; ///< one bit per frame
    int mFrame = 0;
    int mInterpStep = 0;

    ConfItemList_cls mConfList;
    ConfItemUINT_cls mMaxFrame;
    ConfItemUINT_cls mWAMin;
    ConfItemUINT_cls mWAMax;
    ConfItemUINT_cls mAAMin;
    ConfItemUINT_cls mAAMax;
    ConfItemINT_cls mAnimStep;
    ConfItemINT_cls mAnimInterp;
    ConfItemBOOL_cls mbRepeat;

private:
    double RemappedValue(double doubleIndex) const;
    double BoundIndex(int frame) const;
};
