#include "GL/BASE/clsMouseNormalized.h"

#include <algorithm>

#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsMouseCtrl.h"

namespace {

float Normal(int doubled, int size) { return static_cast<float>(doubled) / static_cast<float>(size); }

} // namespace

MouseNormalized_cls::MouseNormalized_cls(const MouseCtrl_cls& mouse, wxSize sizeInPixels)
    : mbGyrationOuter(mouse.mbGyrationOuter) {
    const int w = std::max(sizeInPixels.GetWidth(), 1), h = std::max(sizeInPixels.GetHeight(), 1);
    mPrevX = Normal(2 * mouse.mPrevX - w, w);
    mPrevY = Normal(h - 2 * mouse.mPrevY, h);
    mCurX = Normal(2 * mouse.mCurX - w, w);
    mCurY = Normal(h - 2 * mouse.mCurY, h);
    mPressX = Normal(2 * mouse.mPressX - w, w);
    mPressY = Normal(h - 2 * mouse.mPressY, h);
}

void MouseNormalized_cls::LimitMove() {
    constexpr float kWay = MouseSpeed::kLongestWay;
    mCurX = std::clamp(mCurX, mPrevX - kWay, mPrevX + kWay);
    mCurY = std::clamp(mCurY, mPrevY - kWay, mPrevY + kWay);
}

void MouseNormalized_cls::Invert() {
    for (float* value : {&mPrevX, &mPrevY, &mCurX, &mCurY, &mPressX, &mPressY})
        *value = -*value;
}
