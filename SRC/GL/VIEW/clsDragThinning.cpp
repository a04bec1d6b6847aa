#include "GL/VIEW/clsDragThinning.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr long long kLeastParticles = 2000; // fewer would show nothing of the shape, and save nothing
constexpr double kLeastShare = 0.25; // of the time there is: particles get it, whatever else a paint costs

constexpr double kApart = 1.3; // factors of two paints that can be told from each other

} // namespace

// A paint is what all particles cost, which thinning divides, and the rest, which it doesn't: two paints with
// different factors tell them apart.
void DragThinning_cls::NotePaint(double millis, long long particles, int views) {
    const double target = kFrameMillis / std::max(views, 1);
    const double most = double(std::max(particles / kLeastParticles, 1LL));
    const double factor = double(GetFactor());
    if (!mbActive) {
        mRest = 0.0;
    } else if (factor > kApart * mLastFactor || mLastFactor > kApart * factor) {
        // One that was held up on the way tells nothing.
        const double rest = (millis * factor - mLastMillis * mLastFactor) / (factor - mLastFactor);
        if (rest >= 0.0)
            mRest = 0.5 * (std::min(rest, millis) + (mRest > 0.0 ? mRest : std::min(rest, millis)));
    }
    mRest = std::min(mRest, millis);
    mLastMillis = millis;
    mLastFactor = mbActive ? factor : 1.0;
    const double all = (millis - mRest) * mLastFactor;
    const double room = std::max(target - mRest, kLeastShare * target);
    // In a drag a paint that something else has held up isn't believed at once.
    const double wanted = all / room;
    const double next = mbActive ? std::clamp(wanted, 0.5 * factor, 3.0 * factor) : wanted;
    mFactor = int(std::ceil(std::clamp(next, 1.0, most)));
}
