#include "GL/VIEW/clsFrameWait.h"

#include <wx/utils.h>

#include "COMMON/ThreadStates.h"
#include "GL/VIEW/clsViewHost.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kReadyTries = 10;
constexpr long kWaitMillis = 250; // what a user doesn't feel as a halt
constexpr unsigned long kPollMillis = 2;

} // namespace

// Reading is started without waiting in the store, so that the window stays alive: a read that takes longer
// is left alone, and its end wakes the idle loop. A paint without a window waits for as long as it takes.
FrameWait_cls::DataState FrameWait_cls::WaitForFrame(bool bPatient) {
    const TimeCtrl_cls& time = *mHost.GetPCTimeCtrl();
    if (mWaitFrame != time.GetFrame() || mWaitStep != time.GetInterpStep()) {
        mWaitFrame = time.GetFrame();
        mWaitStep = time.GetInterpStep();
        mCWaitWatch.Start();
    }
    mHost.TellPresent();
    const double index = time.GetRemappedIndexDouble(-1, -1);
    const int whole = static_cast<int>(index);
    for (int tries = 0; tries < kReadyTries && !mHost.IsTheFrameReady(-1); ++tries) {
        if (bPatient) {
            mHost.PrepareTheFrame(-1);
            continue;
        }
        if (!IsAnyThreadBusy())
            mHost.GetPCDataSeqCtrl()->PrepareIndex(whole, index - whole, time.IsForceInterpolation(), false);
        while (IsAnyThreadBusy() && !mHost.IsTheFrameReady(-1)) {
            if (mCWaitWatch.Time() > kWaitMillis) return DataState::Loading;
            wxMilliSleep(kPollMillis);
        }
    }
    mWaitFrame = mWaitStep = -1;
    return DataState::Ready; // or what there is: nothing more will come
}
