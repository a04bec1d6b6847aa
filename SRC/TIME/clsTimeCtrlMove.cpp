// Moving through the film and changing its areas. A ...Command operation is what the user's hands do, and
// it lands in a ...Native one; the undo list has its place between the two.
#include "TIME/clsTimeCtrl.h"

#include <algorithm>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsParameters.h"

namespace {

constexpr int kPositionMask = UPDATE_GL | UPDATE_TL;

unsigned ToItem(int frame) { return unsigned(std::max(frame, 0)); }

} // namespace

void TimeCtrl_cls::SetFrameCommand(int frame, int) {
    SetFrameNative(std::clamp(frame, 0, GetMaxFrame()), kPositionMask);
}
void TimeCtrl_cls::SetInterpStepCommand(int step) {
    SetInterpStepNative(std::clamp(step, 0, GetAnimInterp() - 1), kPositionMask);
}
void TimeCtrl_cls::SetWAMinCommand(int frame, int) { SetWAMinNative(frame); }
void TimeCtrl_cls::SetWAMaxCommand(int frame, int) { SetWAMaxNative(frame); }
void TimeCtrl_cls::SetAAMinCommand(int frame, int) { SetAAMinNative(frame); }
void TimeCtrl_cls::SetAAMaxCommand(int frame, int) { SetAAMaxNative(frame); }
void TimeCtrl_cls::SetRepeatCommand(int repeat, int) { SetRepeatNative(repeat); }
void TimeCtrl_cls::SetAnimInterpCommand(int interp, int) { SetAnimInterpNative(interp); }
void TimeCtrl_cls::SetPrefetchCommand(int frames, int) { SetPrefetchNative(frames); }
void TimeCtrl_cls::SetMaxFrameCommand(int maxFrame) { SetMaxFrameNative(maxFrame); }

void TimeCtrl_cls::SetAnimStepCommand(int step, int) {
    SetAnimStepNative(step);
    const int rounded = RoundFrame(mFrame);
    if (rounded != mFrame) SetFrameCommand(rounded);
}

void TimeCtrl_cls::SetFrameNative(int frame, int updateMask) {
    mFrame = frame;
    UpdateCurrentDoubleIndex();
    PostUpdateEvents(updateMask);
}

void TimeCtrl_cls::SetInterpStepNative(int step, int updateMask) {
    mInterpStep = step;
    UpdateCurrentDoubleIndex();
    PostUpdateEvents(updateMask);
}

void TimeCtrl_cls::SetWAMinNative(int frame) {
    mWAMin.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetWAMaxNative(int frame) {
    mWAMax.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetAAMinNative(int frame) {
    mAAMin.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetAAMaxNative(int frame) {
    mAAMax.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetRepeatNative(int repeat) {
    mbRepeat.mValue = repeat != 0;
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetAnimStepNative(int step) {
    mAnimStep.mValue = std::max(step, 1);
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetAnimInterpNative(int interp) {
    mAnimInterp.mValue = std::max(interp, 1);
    mInterpStep = std::min(mInterpStep, mAnimInterp.mValue - 1);
    UpdateCurrentDoubleIndex();
    Parameters_cls::SetFrameNumber(GetMaxFrame(), GetAnimInterp());
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetPrefetchNative(int frames) {
    mPrefetch = std::max(frames, 0);
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::SetMaxFrameNative(int maxFrame) {
    mMaxFrame.mValue = ToItem(maxFrame);
    CheckAfterMaxFrameChange();
    Parameters_cls::SetFrameNumber(GetMaxFrame(), GetAnimInterp());
    UpdateCurrentDoubleIndex();
    UpdateSnippingTag();
    PostMenuEvent(ID_REFRESH_TL);
}

void TimeCtrl_cls::CheckAfterMaxFrameChange() {
    const int length = GetMaxFrame();
    // An area that reached to the end goes on doing so.
    for (ConfItemUINT_cls* area : {&mAAMax, &mWAMax}) {
        if (ToFrame(*area) == mPrevMaxFrame || ToFrame(*area) > length) area->mValue = mMaxFrame.mValue;
    }
    mPrevMaxFrame = length;
    mRegionMin = 0;
    mRegionMax = length;
    if (mFrame > length) {
        mFrame = 0;
        mInterpStep = 0;
    }
}

void TimeCtrl_cls::MoveFrameCommand(int dir) {
    const int next = CalcNextFrame(-1, dir, true, true);
    if (next != mFrame) SetFrameCommand(next);
}

void TimeCtrl_cls::MoveInterpStepCommand(int dir) {
    int frame = mFrame;
    int step = mInterpStep + dir;
    CalcNextFrameFromStep(&frame, &step, true, true);
    if (frame == mFrame && step == mInterpStep) return;
    SetInterpStepCommand(step);
    SetFrameCommand(frame);
}

void TimeCtrl_cls::MoveFrameCommandLarge(int dir) {
    SetInterpStepCommand(0);
    SetFrameCommand(dir < 0 ? GetWAMin() : GetWAMax());
}

void TimeCtrl_cls::MoveFrameCommandSnip(int dir) {
    SetInterpStepCommand(0);
    SetFrameCommand(dir < 0 ? GetSnipPrev() : GetSnipNext());
}

void TimeCtrl_cls::SetFrameFromDoubleCommand(double doubleIndex) {
    SetInterpStepCommand(0);
    SetFrameCommand(
        int(std::clamp(GetIndexFromDouble(doubleIndex), 0LL, static_cast<long long>(GetMaxFrame()))));
}

void TimeCtrl_cls::ExpandAACommand(bool bZoomIn) {
    const int before = mFrame - GetAAMin();
    const int after = GetAAMax() - mFrame;
    const int low = mFrame - (bZoomIn ? before / 2 : std::max(before * 2, 1));
    const int high = mFrame + (bZoomIn ? after / 2 : std::max(after * 2, 1));
    SetAAMinCommand(std::min(std::max(low, 0), mFrame));
    SetAAMaxCommand(std::max(std::min(high, GetMaxFrame()), mFrame));
}

void TimeCtrl_cls::SetWorkingArea(int lastFrame) {
    mWAMin.mValue = mAAMin.mValue = 0;
    mWAMax.mValue = mAAMax.mValue = ToItem(lastFrame);
}

void TimeCtrl_cls::CheckWorkingArea() {
    const unsigned length = unsigned(GetMaxFrame());
    mWAMax.mValue = std::min(mWAMax.mValue, length);
    if (mWAMin.mValue > mWAMax.mValue) std::swap(mWAMin.mValue, mWAMax.mValue);
    mAAMax.mValue = std::min(mAAMax.mValue, length);
    if (mAAMin.mValue > mAAMax.mValue) std::swap(mAAMin.mValue, mAAMax.mValue);
    // A swapped bound may have come from beyond the end.
    for (ConfItemUINT_cls* bound : {&mWAMin, &mWAMax, &mAAMin, &mAAMax})
        bound->mValue = std::min(bound->mValue, length);
    SetIndex(unsigned(mFrame));
}

void TimeCtrl_cls::SetWAInHere() {
    SetWAMinCommand(mFrame);
    CheckWorkingArea();
}

void TimeCtrl_cls::SetWAOutHere() {
    SetWAMaxCommand(mFrame);
    CheckWorkingArea();
}

void TimeCtrl_cls::SetIndex(unsigned frame) {
    int low = 0;
    int high = 0;
    LowHigh(&low, &high);
    int clamped = int(std::min(frame, unsigned(GetMaxFrame())));
    clamped = std::min(std::max(clamped, GetAAMin()), GetAAMax());
    clamped = FloorToStep(std::min(std::max(clamped, low), high));
    if (clamped != mFrame) SetFrameNative(clamped, kPositionMask);
}

void TimeCtrl_cls::SetIndexWithinWA() {
    const int clamped = std::min(std::max(mFrame, GetWAMin()), GetWAMax());
    if (clamped != mFrame) SetFrameNative(clamped, kPositionMask);
}
