// How fast the camera path turns in a film, and keys without jumps of speed.
#pragma once

class AnchorPath_cls;
class CameraPath_cls;
class TimeCtrl_cls;

struct CameraTurn_st {
    double mDegrees = 0.0; ///< a second of film
    int mFrame = 0;        ///< where that is
};

/// The fastest turn between two pictures of the work area, at `rate` pictures a second; of very long films
/// between two frames.
CameraTurn_st FindFastestTurn(const CameraPath_cls& camera, const AnchorPath_cls& anchor,
                              const TimeCtrl_cls& time, double rate);

/// All keys of camera and anchor get automatic tangents, so that the curves have one slope on both sides of
/// each; one step. False where there is nothing to change.
bool EaseWholePath(CameraPath_cls& camera, AnchorPath_cls& anchor);
