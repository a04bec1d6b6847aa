// What the user's hands do to the clock, as steps of the undo list.
#include "TIME/clsTimeCtrl.h"

#include <algorithm>
#include <cmath>

#include "COMMON/UpdateBits.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsParameters.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCommand.h"

namespace {

constexpr unsigned BitOf(int kind) { return 1u << kind; }

constexpr unsigned kAreas =
    BitOf(TIME_WA_MIN) | BitOf(TIME_WA_MAX) | BitOf(TIME_AA_MIN) | BitOf(TIME_AA_MAX) | BitOf(TIME_FRAME);

} // namespace

void TimeCtrl_cls::Command(int kind, int value, int old) {
    const int held = GetValue(kind);
    if (mbGesture) {
        mTouched |= BitOf(kind);
        if (value != held) SetValueNative(kind, value);
        TellStale();
        return;
    }
    if (old == -1) {
        if (value == held) return;
        old = held;
    }
    GCUndoList.PushNewCommand(new CommandSetTimeCtrlValue_cls(this, kind, value),
                              new CommandSetTimeCtrlValue_cls(this, kind, old));
    GCUndoList.ExecCurrent();
}

void TimeCtrl_cls::PushLength(const TimeState_st& before, const TimeState_st& after) {
    auto* redo = new CommandSetTimeCtrlValue_cls(this, TIME_MAX_FRAME, after.mValue[TIME_MAX_FRAME]);
    auto* undo = new CommandSetTimeCtrlValue_cls(this, TIME_MAX_FRAME, before.mValue[TIME_MAX_FRAME]);
    redo->KeepState(after);
    undo->KeepState(before);
    GCUndoList.PushNewCommand(redo, undo);
    GCUndoList.ExecCurrent();
}

void TimeCtrl_cls::BeginGesture() {
    if (mbGesture) return;
    mbGesture = true;
    mTouched = 0;
    mBeforeGesture = GetState();
}

void TimeCtrl_cls::EndGesture() {
    if (!mbGesture) return;
    mbGesture = false;
    const TimeState_st now = GetState();
    if (now == mBeforeGesture) return; // opening a block would forget what waits for a redo
    if (mTouched & BitOf(TIME_MAX_FRAME)) {
        PushLength(mBeforeGesture, now);
        return;
    }
    // Playing may have gone on meanwhile: what the hand didn't touch is no part of the step.
    const UndoBlock_cls block;
    for (int kind = 0; kind < TIME_VALUE_COUNT; ++kind)
        if (mTouched & BitOf(kind) && now.mValue[size_t(kind)] != mBeforeGesture.mValue[size_t(kind)])
            Command(kind, now.mValue[size_t(kind)], mBeforeGesture.mValue[size_t(kind)]);
}

void TimeCtrl_cls::SetFrameCommand(int frame, int old) {
    Command(TIME_FRAME, std::clamp(frame, 0, GetMaxFrame()), old);
}

void TimeCtrl_cls::SetInterpStepCommand(int step) {
    Command(TIME_INTERP_STEP, std::clamp(step, 0, GetAnimInterp() - 1));
}

void TimeCtrl_cls::SetWAMinCommand(int frame, int old) { Command(TIME_WA_MIN, std::max(frame, 0), old); }
void TimeCtrl_cls::SetWAMaxCommand(int frame, int old) { Command(TIME_WA_MAX, std::max(frame, 0), old); }
void TimeCtrl_cls::SetAAMinCommand(int frame, int old) { Command(TIME_AA_MIN, std::max(frame, 0), old); }
void TimeCtrl_cls::SetAAMaxCommand(int frame, int old) { Command(TIME_AA_MAX, std::max(frame, 0), old); }
void TimeCtrl_cls::SetRepeatCommand(int repeat, int old) { Command(TIME_REPEAT, repeat != 0, old); }
void TimeCtrl_cls::SetPrefetchCommand(int frames, int old) {
    Command(TIME_PREFETCH, std::max(frames, 0), old);
}

void TimeCtrl_cls::SetAnimStepCommand(int step, int old) {
    if (step == GetAnimStep() && RoundFrame(mFrame) == mFrame) return;
    const UndoBlock_cls block(!mbGesture);
    Command(TIME_ANIM_STEP, std::max(step, 1), old);
    const int rounded = RoundFrame(mFrame);
    if (rounded != mFrame) SetFrameCommand(rounded);
}

void TimeCtrl_cls::SetAnimInterpCommand(int interp, int old) {
    if (interp == GetAnimInterp()) return;
    const UndoBlock_cls block(!mbGesture);
    // A step that no longer fits goes first, so that undo brings it back.
    Command(TIME_INTERP_STEP, std::min(mInterpStep, std::max(interp, 1) - 1));
    Command(TIME_ANIM_INTERP, std::max(interp, 1), old);
}

void TimeCtrl_cls::SetMaxFrameCommand(int maxFrame) {
    if (maxFrame == GetMaxFrame()) return;
    if (mbGesture) {
        Command(TIME_MAX_FRAME, maxFrame);
        return;
    }
    const TimeState_st before = GetState();
    SetMaxFrameNative(maxFrame);
    PushLength(before, GetState());
}

void TimeCtrl_cls::SetUseTimeRemapCommand(bool bUse) {
    if (bUse == mbUseTimeRemap.mValue) return;
    const auto set = [this](bool b) {
        return new CommandCall_cls(
            [this, b] {
                mbUseTimeRemap.mValue = b;
                SetBUseTimeRemap(b);
            },
            UPDATE_GL | UPDATE_TL);
    };
    GCUndoList.PushNewCommand(set(bUse), set(!bUse));
    GCUndoList.ExecCurrent();
}

void TimeCtrl_cls::MoveToCommand(int frame, int step) {
    if (frame == mFrame && step == mInterpStep) return;
    const UndoBlock_cls block(!mbGesture);
    SetInterpStepCommand(step);
    SetFrameCommand(frame);
}

void TimeCtrl_cls::MoveFrameCommand(int dir) {
    const int next = CalcNextFrame(-1, dir, true, true);
    if (next != mFrame) SetFrameCommand(next);
}

void TimeCtrl_cls::MoveInterpStepCommand(int dir) {
    int frame = mFrame;
    int step = mInterpStep + dir;
    CalcNextFrameFromStep(&frame, &step, true, true);
    MoveToCommand(frame, step);
}

void TimeCtrl_cls::MoveFrameCommandLarge(int dir) { MoveToCommand(dir < 0 ? GetWAMin() : GetWAMax(), 0); }

void TimeCtrl_cls::MoveFrameCommandSnip(int dir) {
    UpdateSnippingTag();
    const double here = GetDoubleIndex();
    const double to = GParamHooks.mNeighbourKey ? GParamHooks.mNeighbourKey(here, dir) : here;
    if (to == here) return MoveToCommand(dir < 0 ? GetSnipPrev() : GetSnipNext(), 0);
    // Keys stand on steps too.
    const long long at = std::llround(to * GetMaxFrame() * GetAnimInterp());
    MoveToCommand(int(at / GetAnimInterp()), int(at % GetAnimInterp()));
}

void TimeCtrl_cls::ExpandAACommand(bool bZoomIn) {
    const int before = mFrame - GetAAMin();
    const int after = GetAAMax() - mFrame;
    int low = mFrame - (bZoomIn ? before / 2 : std::max(before * 2, 1));
    int high = mFrame + (bZoomIn ? after / 2 : std::max(after * 2, 1));
    low = std::min(std::max(low, 0), mFrame);
    high = std::max(std::min(high, GetMaxFrame()), mFrame);
    if (low == GetAAMin() && high == GetAAMax()) return;
    const UndoBlock_cls block(!mbGesture);
    SetAAMinCommand(low);
    SetAAMaxCommand(high);
}

void TimeCtrl_cls::SetWAInHere() { SetBoundHere(TIME_WA_MIN); }

void TimeCtrl_cls::SetWAOutHere() { SetBoundHere(TIME_WA_MAX); }

void TimeCtrl_cls::SetBoundHere(int kind) {
    const bool bOwn = !mbGesture;
    BeginGesture();
    mTouched |= kAreas; // what the checks may move
    Command(kind, mFrame);
    CheckWorkingArea();
    if (bOwn) EndGesture();
}
