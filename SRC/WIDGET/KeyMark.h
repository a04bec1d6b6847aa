// The mark of a key frame, the same on fields, time-line strips and in the graph.
#pragma once

class Parameters_cls;
class wxColour;
class wxDC;

/// What a field tells about its value at the current time.
enum class KeyState {
    CONSTANT, ///< the value doesn't depend on time: no mark
    ANIMATED, ///< it does, and no key stands here: hollow diamond
    KEY       ///< a key stands here: filled diamond
};

/// `doubleIndex` may be Parameters_cls::kCurrent.
KeyState GetKeyState(const Parameters_cls& param, double doubleIndex);

/// A diamond around (x, y), pixels; `radius` from the centre to a corner.
void DrawKeyMark(wxDC& dc, int x, int y, int radius, KeyState state, const wxColour& colour);
