#include "TIME/clsMotionBlurCtrl.h"

#include "TIME/clsFilmTime.h"

void MotionBlurCtrl_cls::BeginMotionBlur(int dir) {
    mbBlur = true;
    mBlurStep = dir == 1 ? -1 : mBlurSteps;
}

bool MotionBlurCtrl_cls::Increment(int dir) {
    if (dir == 1) {
        if (++mBlurStep < mBlurSteps) return false;
        mBlurStep = 0;
        return true;
    }
    if (--mBlurStep >= 0) return false;
    mBlurStep = mBlurSteps - 1;
    return true;
}

bool MotionBlurCtrl_cls::IsInitBluring() const {
    return mBlurStep == (mpCTimeCtrl->GetPlayDirection() == 1 ? 0 : mBlurSteps - 1);
}

bool MotionBlurCtrl_cls::IsLastBluring() const {
    return mBlurStep == (mpCTimeCtrl->GetPlayDirection() == 1 ? mBlurSteps - 1 : 0);
}
