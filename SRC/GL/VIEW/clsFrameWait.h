// The wait of a paint for the data of its frame.
#pragma once

#include <wx/stopwatch.h>

class ViewHost_cls;

class FrameWait_cls {
public:
    explicit FrameWait_cls(ViewHost_cls& host) : mHost(host) {}

    enum class DataState { Ready, Loading };
    /// Have the current frame read, and wait a moment for it. Loading: it takes longer; the wait is over, and
    /// its end wakes the idle loop. `bPatient` waits for as long as it takes. Ready may also mean that
    /// nothing more will come.
    DataState WaitForFrame(bool bPatient);
    /// Has the last wait given up on this position?
    bool IsWaitingFor(int frame, int step) const { return frame == mWaitFrame && step == mWaitStep; }

private:
    ViewHost_cls& mHost;
    int mWaitFrame = -1; ///< position whose reading mCWaitWatch times
    int mWaitStep = -1;
    wxStopWatch mCWaitWatch;
};
