// How fast the mouse moves cameras: every number that a user may find too slow or too fast. Ways of the mouse
// are in half windows (MouseNormalized_cls), so that speed doesn't depend on a window's size in pixels.
#pragma once

namespace MouseSpeed {

/// Of the track ball and of zooming by a drag: radians, or shares of the distance, a half window.
constexpr double kDrag = 1.0;
/// The longest way that one event counts for: a pointer that jumps never turns a camera far.
constexpr float kLongestWay = 0.2f;
/// The same for what the track ball makes of it, radians.
constexpr double kLongestTurn = 0.2;
/// Shares of the distance that a step of the wheel zooms by.
constexpr double kWheelStep = 0.1;
/// Ways to the side zoom too, that much slower and to the right nearer.
constexpr double kSideways = 0.2;
/// Moving the centre: the half window is half the distance wide, so that what is under the pointer stays
/// there at a usual opening angle.
constexpr double kCentre = 0.5;
/// Moving an item: the half window is that much of its distance wide, which is what the default angle shows.
constexpr double kItem = 0.3;
/// Turning an item: degrees for a way around it of one radian. Somewhat more than the hand turns.
constexpr double kItemTurn = 75.0;
/// No event may carry a camera through its anchor: what stays of the distance at least.
constexpr double kLeastZoom = 0.01;
/// A press farther out than this, in half windows, is near the rim.
constexpr float kRim = 0.85f;

} // namespace MouseSpeed
