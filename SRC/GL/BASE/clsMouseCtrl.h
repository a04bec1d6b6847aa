// The state of the mouse over a view, and what the user means by it.
#pragma once

#include <wx/gdicmn.h>

class Preference_cls;
class wxMouseEvent;

/// Places are physical pixels from the upper left corner.
class MouseCtrl_cls {
public:
    Preference_cls* mpCPreference; ///< link
    bool mEventBTN[4] = {};        ///< left, middle, right as the event states them
    bool mBTN[4] = {};             ///< the same with an emulated middle button
    bool mModifiers[4] = {};       ///< shift, ctrl, alt, without the key that emulates
    bool mbCtrl = false;           ///< also where it emulates
    int mCurX = 0, mCurY = 0;
    int mPrevX = 0, mPrevY = 0;
    int mPressX = 0, mPressY = 0;
    bool mbButtonDown = false, mbButtonUp = false, mbDragging = false, mbWheel = false;
    double mWheelSteps = 0;       ///< of the vertical wheel, positive away from the user
    bool mbGyrationOuter = false; ///< the press was near the rim of the window

    explicit MouseCtrl_cls(Preference_cls* pPreference) : mpCPreference(pPreference) {}

    /// Take over an event; a unit of its coordinates is `contentScale` pixels.
    void SetMouseInformation(const wxMouseEvent& event, double contentScale, wxSize sizeInPixels);
    /// The current place is where the next way starts.
    void SetPreviousPosition();
    /// Tell from the press, beyond 0.85 of the half size on either axis, whether it is near the rim.
    void SetGyrationMode(wxSize sizeInPixels);

    // What the buttons and keys mean, by the preferences.
    bool IsGyration() const;
    bool IsZoom() const;
    bool IsMoveCenter() const;
    bool IsMoveItem() const;
    bool IsHitTest() const;
    bool IsPick() const;
    /// True for the press alone, so that a drag does not open the menu again.
    bool IsShowMenu() const;

    bool IsWheel() const { return mbWheel; }
    bool IsButton() const { return mbButtonDown || mbButtonUp; }
    bool IsButtonDown() const { return mbButtonDown; } ///< second clicks of a double click too
    bool IsButtonUp() const { return mbButtonUp; }
    bool IsMouseDragging() const { return mbDragging; }

private:
    void SetButtons(const wxMouseEvent& event);
};
