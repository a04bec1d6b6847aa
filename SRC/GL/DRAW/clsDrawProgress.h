// How far a long drawing loop has come, and whether the user wants it to stop.
#pragma once

#include <wx/stopwatch.h>

class DrawProgress_cls {
public:
    /// A loop over `total` particles.
    explicit DrawProgress_cls(int total);

    /// Particles between two reports.
    int GetInterval() const { return mInterval; }
    /// Publish the percentage and, five times a second at most, let the window breathe. False: stop.
    bool Report(int done);

private:
    int mTotal;
    int mInterval;
    wxStopWatch mCStopWatch;
};
