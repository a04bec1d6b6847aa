#include "GL/BASE/clsMouseCtrl.h"

#include <algorithm>
#include <cmath>

#include <wx/event.h>

#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/BASE/clsPreference.h"

void MouseCtrl_cls::SetButtons(const wxMouseEvent& event) {
    // Some ports state the buttons as they were before a press.
    mEventBTN[0] = event.LeftIsDown() || event.LeftDown() || event.LeftDClick();
    mEventBTN[1] = event.MiddleIsDown() || event.MiddleDown() || event.MiddleDClick();
    mEventBTN[2] = event.RightIsDown() || event.RightDown() || event.RightDClick();
    std::copy(mEventBTN, mEventBTN + 4, mBTN);
    mModifiers[0] = event.ShiftDown();
    mModifiers[1] = mbCtrl = event.ControlDown();
    mModifiers[2] = event.AltDown();
    mModifiers[3] = false;
    mpCPreference->ModulateBTN(mModifiers, mBTN);
}

void MouseCtrl_cls::SetMouseInformation(const wxMouseEvent& event, double contentScale, wxSize sizeInPixels) {
    SetButtons(event);
    mCurX = static_cast<int>(std::lround(event.GetX() * contentScale));
    mCurY = static_cast<int>(std::lround(event.GetY() * contentScale));
    mbButtonDown = event.ButtonDown() || event.ButtonDClick();
    mbButtonUp = event.ButtonUp();
    mbDragging = event.Dragging();
    mbWheel = event.GetEventType() == wxEVT_MOUSEWHEEL && event.GetWheelAxis() == wxMOUSE_WHEEL_VERTICAL;
    const int delta = event.GetWheelDelta() != 0 ? event.GetWheelDelta() : 120;
    mWheelSteps = mbWheel ? static_cast<double>(event.GetWheelRotation()) / delta : 0.0;
    if (!mbButtonDown) return;
    mPressX = mCurX;
    mPressY = mCurY;
    SetGyrationMode(sizeInPixels);
}

void MouseCtrl_cls::SetPreviousPosition() {
    mPrevX = mCurX;
    mPrevY = mCurY;
}

void MouseCtrl_cls::SetGyrationMode(wxSize sizeInPixels) {
    const MouseNormalized_cls mouse(*this, sizeInPixels);
    mbGyrationOuter =
        std::fabs(mouse.mPressX) > MouseSpeed::kRim || std::fabs(mouse.mPressY) > MouseSpeed::kRim;
}

bool MouseCtrl_cls::IsGyration() const { return mpCPreference->IsMouse4Gyration(mModifiers, mBTN); }

bool MouseCtrl_cls::IsZoom() const { return mpCPreference->IsMouse4Zoom(mModifiers, mBTN); }

bool MouseCtrl_cls::IsMoveCenter() const { return mpCPreference->IsMouse4MoveCenter(mModifiers, mBTN); }

bool MouseCtrl_cls::IsMoveItem() const { return mpCPreference->IsMouse4MoveItem(mModifiers, mBTN); }

bool MouseCtrl_cls::IsHitTest() const { return mpCPreference->IsMouse4HitTest(mModifiers, mBTN); }

bool MouseCtrl_cls::IsPick() const { return mpCPreference->IsMouse4Pick(mModifiers, mBTN); }

bool MouseCtrl_cls::IsShowMenu() const {
    return mbButtonDown && mpCPreference->IsMouse4Menu(mModifiers, mBTN);
}
