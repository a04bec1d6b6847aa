// While a hand drags something in a view, of many particles only some are drawn, so that the picture keeps
// up.
#pragma once

/// Of all views: they share the time there is. UI thread only.
class DragThinning_cls {
public:
    /// The hand moves; without `bWanted` all particles are drawn all the same.
    void Begin(bool bWanted) { mbActive = bWanted; }
    /// The hand rests.
    void Rest() { mbActive = false; }
    /// Every how many particles one is drawn now.
    int GetFactor() const { return mbActive ? mFactor : 1; }
    /// A paint of so many particles, thinned by GetFactor, took that long; `views` are painted for each move
    /// of the hand. Finds the factor for the next one.
    void NotePaint(double millis, long long particles, int views);

    static constexpr double kFrameMillis = 40.0; ///< for all views together

private:
    bool mbActive = false;
    int mFactor = 1;
    double mLastMillis = 0.0, mLastFactor = 1.0; ///< of the paint before
    double mRest = 0.0;                          ///< ms of a paint beside the particles, as far as is known
};
