// Playing.
#include "TIME/clsTimeCtrl.h"

#include <algorithm>

#include <wx/utils.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCommand.h"

void TimeCtrl_cls::StartPlayCommand(int dir) {
    if (!mbPlaying) {
        // One step, although starting may move the frame by a command of its own.
        const UndoBlock_cls block;
        GCUndoList.PushNewCommand(new CommandStartAnim_cls(this, dir), new CommandStopAnim_cls(this, mFrame));
        GCUndoList.ExecCurrent();
        return;
    }
    if (mStopCount++ == 0) mPlayElapsed = int(mCStopWatchPlay.Time());
    StopPlaying(true);
}

void TimeCtrl_cls::StartPlay(int dir) {
    mbPlaying = true;
    mPlayDirection = dir < 0 ? -1 : 1;
    mStopCount = 0;
    mCStopWatchPlay.Start();
    const int next = CalcNextFrame(-1, mPlayDirection, true, true);
    if (!IsWorkingArea(mFrame) && next != mFrame) SetFrameCommand(next);
    mStartFrame = mFrame;
    mStartStep = mInterpStep;
    mbStuck = false;
    CommandItem_cls::UpdateBit(UPDATE_TL | UPDATE_GL);
    TellStale();
}

void TimeCtrl_cls::TakeBackPlay(int frame, int step) {
    const bool bWasPlaying = mbPlaying;
    mbPlaying = false;
    mbCustomRange = false;
    mbOutputRun = false;
    mCMotionBlur.EndMotionBlur();
    SetInterpStepNative(std::min(step, GetAnimInterp() - 1), UPDATE_TL | UPDATE_GL);
    SetFrameNative(std::min(frame, GetMaxFrame()), UPDATE_TL | UPDATE_GL);
    if (bWasPlaying) PostMenuEvent(ID_PLAY_STOP); // what runs along with playing ends, too
}

void TimeCtrl_cls::WaitForNextAdvance() const {
    // Paces playing on the UI thread: an advance is due every mFrameInterval milliseconds at most.
    while (!mbOutputRun && mCStopWatchFrame.Time() - mLastFrameTime < mFrameInterval)
        wxMilliSleep(3);
}

void TimeCtrl_cls::SetPosition(int frame, int step) {
    mFrame = frame;
    mInterpStep = step;
    UpdateCurrentDoubleIndex();
    CommandItem_cls::UpdateBit(UPDATE_TL | UPDATE_GL);
    TellStale();
}

bool TimeCtrl_cls::ProcPlaying() {
    int frame = mFrame;
    int step = mInterpStep;
    const bool bNewPosition = !mCMotionBlur.mbBlur || mCMotionBlur.Increment(mPlayDirection);
    if (bNewPosition) {
        step += mPlayDirection;
        CalcNextFrameFromStep(&frame, &step, true, true);
        // With a stepping that doesn't meet the end, the last frame's steps would come again and again.
        const int way = frame != mFrame ? frame - mFrame : step - mInterpStep;
        if (way == 0 || (way * mPlayDirection < 0 && !GoesRound())) {
            mbStuck = !mbOutputRun && mFrame == mStartFrame && mInterpStep == mStartStep;
            StopPlaying(false);
            return false;
        }
    }
    WaitForNextAdvance();
    mLastFrameTime = mCStopWatchFrame.Time();
    SetPosition(frame, step);
    // With repeat the last frame is drawn as every other one; the next advance goes round.
    if (frame == GetMaxFrame() && mPlayDirection > 0 && !mbOutputRun &&
        !(mbRepeat.mValue && !mbCustomRange)) {
        StopPlaying(false);
        return false;
    }
    return true;
}

int TimeCtrl_cls::GetStuckDirection() const {
    const bool bHere = mFrame == mStartFrame && mInterpStep == mStartStep;
    return mbStuck && bHere && !mbPlaying ? mPlayDirection : 0;
}

void TimeCtrl_cls::ProcStopPlaying() { StopPlaying(false); }

void TimeCtrl_cls::StopPlaying(bool bByUser) {
    mbPlaying = false;
    mbCustomRange = false;
    mCMotionBlur.EndMotionBlur();
    UpdateCurrentDoubleIndex(); // without the time of a blur's step
    const int end = mPlayDirection > 0 ? GetWAMax() : GetWAMin();
    // A user who stops at the end of a repeated film means it.
    if (GoesRound() && !bByUser && mFrame == FloorToStep(end) && GetWAMax() != GetWAMin()) {
        mbPlaying = true;
        mbIgnoreNextStop = true;
        SetPosition(mPlayDirection > 0 ? GetWAMin() : GetWAMax(), 0);
    }
    mbOutputRun = false;
    PostMenuEvent(ID_REFRESH_TL);
    PostMenuEvent(ID_PLAY_STOP);
}

void TimeCtrl_cls::BeginMotionBlur() {
    // Open for no time, the shutter takes the plain picture.
    if (mbUseMotionBlur.mValue && mCMotionBlur.mShutter > 0.0f) mCMotionBlur.BeginMotionBlur(mPlayDirection);
}
