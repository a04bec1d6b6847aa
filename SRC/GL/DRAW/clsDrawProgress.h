// How far a long drawing loop has come, and whether the user wants it to stop.
#pragma once

#include <wx/stopwatch.h>

class DrawProgress_cls {
public:
    /// A loop over `total` points of `size` pixels.
    DrawProgress_cls(int total, float size);

    /// Points to draw between two reports: as many as take the slowest OpenGL a fraction of a second.
    int GetRun() const { return mRun; }
    /// Publish the percentage, which moves every 100,000 or, above 2,000,000, in twentieths; five times a
    /// second at most let the window breathe. False: stop.
    bool Report(int done);

private:
    int mTotal;
    int mInterval; ///< between two percentages
    int mRun;
    wxStopWatch mCStopWatch;
};
