// When work has come to rest.
#pragma once

/// Finds the first quiet moment after some work: asked at even intervals, it says yes once when nothing was
/// done between some of them.
class QuietMoment_cls {
public:
    /// \param done a number that is another one when something was done since the last call
    bool Strike(long long done) {
        if (done == mDone) return mStrikes < kStrikes && ++mStrikes == kStrikes;
        mDone = done;
        mStrikes = 0;
        return false;
    }

    static constexpr int kStrikes = 4;

private:
    long long mDone = 0;
    int mStrikes = kStrikes; ///< nothing was done yet
};
