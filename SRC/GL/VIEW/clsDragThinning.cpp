#include "GL/VIEW/clsDragThinning.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr long long kLeastParticles = 2000; // fewer would show nothing of the shape, and save nothing
constexpr double kEasy = 0.4;               // of the time there is: more can be drawn

} // namespace

// What a paint costs beside the particles is unknown: a step up may be too small, and is made again.
void DragThinning_cls::NotePaint(double millis, long long particles, int views) {
    const double target = kFrameMillis / std::max(views, 1);
    const double most = double(std::max(particles / kLeastParticles, 1LL));
    double factor = double(GetFactor());
    if (!mbActive)
        factor = millis / target; // of a whole picture
    else if (millis > target)
        factor *= std::min(millis / target, 4.0);
    else if (millis < kEasy * target)
        factor *= 0.7;
    mFactor = int(std::ceil(std::clamp(factor, 1.0, most)));
}
