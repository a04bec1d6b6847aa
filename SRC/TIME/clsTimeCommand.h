// The commands of the clock: one of its values, and playing.
#pragma once

#include <optional>

#include "PARAM/clsCommandItem.h"
#include "TIME/TimeValues.h"

class TimeCtrl_cls;

/// Writes one value of the clock through its native setter.
class CommandSetTimeCtrlValue_cls final : public CommandItem_cls {
public:
    /// `kind` is a TimeValue.
    CommandSetTimeCtrlValue_cls(TimeCtrl_cls* pTime, int kind, int value);

    void Execute(bool bUndo) override;
    /// Bring these values along: a film of another length has moved areas and frame, too.
    void KeepState(const TimeState_st& state) { mState = state; }

private:
    TimeCtrl_cls* mpCTime;
    int mKind;
    int mValue;
    std::optional<TimeState_st> mState;
};

/// Starts playing, +1 or -1.
class CommandStartAnim_cls final : public CommandItem_cls {
public:
    CommandStartAnim_cls(TimeCtrl_cls* pTime, int direction);
    void Execute(bool bUndo) override;

private:
    TimeCtrl_cls* mpCTime;
    int mDirection;
};

/// Stops playing and puts the frame back, with the step that stands when the command is made.
class CommandStopAnim_cls final : public CommandItem_cls {
public:
    CommandStopAnim_cls(TimeCtrl_cls* pTime, int frame);
    void Execute(bool bUndo) override;

private:
    TimeCtrl_cls* mpCTime;
    int mFrame;
    int mStep;
};
