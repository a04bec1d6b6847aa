// Asks before a picture draws the data a great many times.
#pragma once

#include <set>

class FrameMain_cls;

class CopyQuestion_cls {
public:
    static constexpr long long kMost = 100000; ///< draws that nobody is asked about

    explicit CopyQuestion_cls(FrameMain_cls& frame) : mFrame(frame) {}
    CopyQuestion_cls(const CopyQuestion_cls&) = delete;
    CopyQuestion_cls& operator=(const CopyQuestion_cls&) = delete;

    /// Asks behind the present event: inside a paint no box can open. A number that may be drawn may be drawn
    /// for the rest of the run, one that may not is asked about again when another has been there meanwhile.
    bool MayDraw(long long number);
    /// Nobody is there to answer: what is many is told, and drawn.
    void TellOnly() { mbAsks = false; }

private:
    static constexpr long long kNone = -1;

    void Ask(long long number);

    FrameMain_cls& mFrame;
    std::set<long long> mSAllowed;
    long long mRefused = kNone;
    bool mbAsks = true;
    bool mbPending = false;
};
