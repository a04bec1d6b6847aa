// Moving through the film and changing its areas. A ...Command operation is what the user's hands do; it
// leaves a step in the undo list (clsTimeCtrlCommand.cpp) and lands in a ...Native one.
#include "TIME/clsTimeCtrl.h"

#include <algorithm>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsCommandItem.h"
#include "PARAM/clsParameters.h"

namespace {

constexpr int kPositionMask = UPDATE_GL | UPDATE_TL;

unsigned ToItem(int frame) { return unsigned(std::max(frame, 0)); }

} // namespace

void TimeCtrl_cls::SetFrameNative(int frame, int updateMask) {
    mFrame = frame;
    UpdateCurrentDoubleIndex();
    CommandItem_cls::UpdateBit(updateMask);
}

void TimeCtrl_cls::SetInterpStepNative(int step, int updateMask) {
    mInterpStep = step;
    UpdateCurrentDoubleIndex();
    CommandItem_cls::UpdateBit(updateMask);
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

void TimeCtrl_cls::SetIndex(unsigned frame) {
    int low = 0;
    int high = 0;
    LowHigh(&low, &high);
    int clamped = int(std::min(frame, unsigned(GetMaxFrame())));
    clamped = std::min(std::max(clamped, GetAAMin()), GetAAMax());
    clamped = FloorToStep(std::min(std::max(clamped, low), high));
    if (clamped == mFrame) return;
    SetFrameNative(clamped, kPositionMask);
    TellStale();
}

void TimeCtrl_cls::SetIndexWithinWA() {
    const int clamped = std::min(std::max(mFrame, GetWAMin()), GetWAMax());
    if (clamped == mFrame) return;
    SetFrameNative(clamped, kPositionMask);
    TellStale();
}
