// The film's time axis as animated values see it.
//
// A double index is a position on that axis: 0.0 is the first frame, 1.0 the last, so that a longer film
// stretches all animation. The clock (TIME) alone writes these.
#pragma once

class Parameters_cls {
public:
    /// Where an operation takes a double index, exactly this means the current one.
    static constexpr double kCurrent = -1.0;

    /// Axis distance of one interpolation step for a film of `frames` frames of `stepsPerFrame` steps.
    static void SetFrameNumber(int frames, int stepsPerFrame);

    static double msCurrentDoubleIndex;
    static double msResolution; ///< two positions closer than half of it count as the same
};
