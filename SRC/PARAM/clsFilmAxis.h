// The film's time axis, on which all keys stand.
//
// A double index is a position on that axis: 0.0 is the first frame, 1.0 the last, so that a longer film
// stretches all animation. A resolution is a distance on it; two positions closer than half of it count
// as the same. Where an operation takes either, exactly -1.0 (kCurrent) means the current position or
// the film's resolution. Main thread only.
#pragma once

class FilmAxis_cls {
public:
    static constexpr double kCurrent = -1.0;

    // The clock (TIME) alone writes these.
    static void SetFrameNumber(int frames, int stepsPerFrame);
    static int msFrameNumber;
    static int msAnimInterp;
    static double msResolution;
    static double msCurrentDoubleIndex;

    static double Time(double doubleIndex) {
        return doubleIndex == kCurrent ? msCurrentDoubleIndex : doubleIndex;
    }
    static double Resolution(double r) { return r == kCurrent ? msResolution : r; }
};
