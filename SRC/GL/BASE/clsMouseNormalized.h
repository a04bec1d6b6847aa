// Mouse places in units of the half window: -1 to 1, y upward.
#pragma once

#include <wx/gdicmn.h>

class MouseCtrl_cls;

class MouseNormalized_cls {
public:
    float mPrevX = 0, mPrevY = 0;
    float mCurX = 0, mCurY = 0;
    float mPressX = 0, mPressY = 0;
    bool mbGyrationOuter = false; ///< the press was near the rim of the window

    MouseNormalized_cls() = default;
    MouseNormalized_cls(const MouseCtrl_cls& mouse, wxSize sizeInPixels);

    /// Hold each axis of the current place near the previous one (MouseSpeed::kLongestWay), so that one event
    /// can never turn far.
    void LimitMove();
    /// Flip all signs.
    void Invert();
};
