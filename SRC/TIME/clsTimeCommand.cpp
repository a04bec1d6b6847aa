#include "TIME/clsTimeCommand.h"

#include "COMMON/UpdateBits.h"
#include "TIME/clsTimeCtrl.h"

CommandSetTimeCtrlValue_cls::CommandSetTimeCtrlValue_cls(TimeCtrl_cls* pTime, int kind, int value)
    : CommandItem_cls(kind <= TIME_INTERP_STEP ? UPDATE_GL | UPDATE_TL : UPDATE_TL), mpCTime(pTime),
      mKind(kind), mValue(value) {}

void CommandSetTimeCtrlValue_cls::Execute(bool) {
    if (mState)
        mpCTime->SetState(*mState);
    else
        mpCTime->SetValueNative(mKind, mValue);
    UpdateBit();
}

CommandStartAnim_cls::CommandStartAnim_cls(TimeCtrl_cls* pTime, int direction)
    : CommandItem_cls(UPDATE_GL | UPDATE_TL), mpCTime(pTime), mDirection(direction) {}

void CommandStartAnim_cls::Execute(bool) { mpCTime->StartPlay(mDirection); }

CommandStopAnim_cls::CommandStopAnim_cls(TimeCtrl_cls* pTime, int frame)
    : CommandItem_cls(UPDATE_GL | UPDATE_TL), mpCTime(pTime), mFrame(frame), mStep(pTime->GetInterpStep()) {}

void CommandStopAnim_cls::Execute(bool) { mpCTime->TakeBackPlay(mFrame, mStep); }
