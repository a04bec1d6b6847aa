#include "GL/DRAW/clsDrawProgress.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "COMMON/Globals.h"
#include "COMMON/clsUpdateStatusBar.h"

namespace {
constexpr float kPixelsPerRun = 2e7f;
constexpr float kMinRun = 8192.0f;
constexpr float kMaxRun = 1e6f;
} // namespace

DrawProgress_cls::DrawProgress_cls(int total, float size)
    : mTotal(std::max(total, 1)), mInterval(mTotal > 2000000 ? mTotal / 20 : 100000),
      mRun(static_cast<int>(std::clamp(kPixelsPerRun / (size * size), kMinRun, kMaxRun))) {}

bool DrawProgress_cls::Report(int done) {
    glFlush(); // what is queued can't be taken back
    mCost = 0.0f;
    const long long told = done / mInterval * static_cast<long long>(mInterval);
    GDrawingPercentage.store(static_cast<int>(100 * told / mTotal), std::memory_order_relaxed);
    if (mCStopWatch.Time() > 200) {
        UpdateStatusBar_cls::UpdateStatusBar();
        mCStopWatch.Start();
    }
    return !GbAbort.exchange(false);
}
