// Moves a camera by the mouse: turns it around its anchor, brings it nearer, shifts both.
#pragma once

#include <wx/gdicmn.h>

#include "GL/BASE/DisplayMode.h"

class MouseNormalized_cls;
class Position_cls;
class PositionAndDirection_cls;
class Preference_cls;

class Dolly_cls {
public:
    explicit Dolly_cls(Preference_cls* pPreference) : mpCPreference(pPreference) {}

    /// What the gestures that follow go by. The mouse is read by each of them and must outlive them;
    /// display modes 1 to 6 are axis views.
    void SetParameter(double sensitivity, const MouseNormalized_cls* pMouse, wxSize sizeInPixels,
                      int displayMode);

    // Each returns true when it changed the view. The cameras must know their anchors.

    /// Turn around the anchor; an axis view is shifted instead, for it never turns.
    bool Gyration(PositionAndDirection_cls* pCamera);
    /// Scale the distance to the anchor, in an axis view `pOrthoScale`.
    bool Zoom(PositionAndDirection_cls* pCamera, float* pOrthoScale);
    /// Shift camera and anchor across the line of sight so that what was under the pointer stays there.
    bool MoveCenter(PositionAndDirection_cls* pCamera, Position_cls* pAnchor);
    /// As Zoom, a tenth a step.
    bool ZoomWheel(PositionAndDirection_cls* pCamera, double steps, float* pOrthoScale);

private:
    bool IsAxisView() const { return IsAxisMode(mDisplayMode); }
    bool IsMoved() const;

    Preference_cls* mpCPreference;                 // link
    const MouseNormalized_cls* mpCMouse = nullptr; // link
    double mSensitivity = 1;
    double mAspectRatio = 1;
    int mDisplayMode = 0;
};
