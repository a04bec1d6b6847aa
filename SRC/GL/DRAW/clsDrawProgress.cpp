#include "GL/DRAW/clsDrawProgress.h"

#include "COMMON/Globals.h"
#include "COMMON/clsUpdateStatusBar.h"

DrawProgress_cls::DrawProgress_cls(int total)
    : mTotal(total > 0 ? total : 1), mInterval(mTotal > 2000000 ? mTotal / 20 : 100000) {}

bool DrawProgress_cls::Report(int done) {
    GDrawingPercentage.store(static_cast<int>(100LL * done / mTotal), std::memory_order_relaxed);
    if (mCStopWatch.Time() > 200) {
        UpdateStatusBar_cls::UpdateStatusBar();
        mCStopWatch.Start();
    }
    return !GbAbort.exchange(false);
}
