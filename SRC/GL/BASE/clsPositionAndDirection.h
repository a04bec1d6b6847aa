// A camera, or any placed object: where it is, how it is turned, and the anchor it moves around.
#pragma once

#include "GL/BASE/clsDirection.h"
#include "GL/BASE/clsPosition.h"

/// Mouse ways dx, dy and places curX... are in units of the half window, -1 to 1, y upward.
class PositionAndDirection_cls : public Position_cls, public Direction_cls {
public:
    double mAnc[3] = {0, 0, 0};
    double mSensitivity = 1;     ///< factor of all mouse ways
    double mMove[3] = {1, 1, 1}; ///< factors of Translate along x, y, z
    double mAspectRatio = 1;     ///< width / height, scales sideways ways of Translate

    /// Which of x, y, z each translation mode moves.
    static const bool msbMatrixMove[5][3];

    void SetSensitivity(double sensitivity) { mSensitivity = sensitivity; }
    void SetAspectRatio(double aspect) { mAspectRatio = aspect; }
    void SetAncPos(const double* p);

    double GetDistanceToAnc() const;
    /// Distance to the anchor along front, never negative.
    double GetProjectedDistanceToAnc() const { return GetProjectedDistance(mAnc); }
    double GetProjectedDistance(const double* p) const;

    /// Turn around the anchor at an unchanged distance; near the rim of the window, roll.
    void TrackBall(double prevX, double prevY, double curX, double curY);
    /// Scale the distance to the anchor by 1 + dy - 0.2 dx.
    void Zoom(double dx, double dy);
    /// Move across the line of sight, against the mouse. `mode` picks the axes (msbMatrixMove); with
    /// `pOther` its axis front, right or up weighs x, y and z instead, in the modes 0, 1 and 2.
    void Translate(double dx, double dy, int mode, const PositionAndDirection_cls* pOther);

    /// Look at a point, up as it is where that can be.
    void PointAt(const double* p);

    /// The placement as a column-major matrix: x goes to front, y to left, z to up.
    void GetGLMatrix(double* matrix) const;
};
