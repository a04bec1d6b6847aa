#include "WIDGET/TIMELINE/TimeGesture.h"

#include <wx/timer.h>

#include "COMMON/UserActs.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class BurstTimer_cls : public wxTimer {
public:
    void Notify() override {
        NoteUserAct("rest", wxString());
        Finish();
    }
    void Finish() {
        Stop();
        if (TimeCtrl_cls* time = mpCTime) time->EndGesture();
        mpCTime = nullptr;
    }
    TimeCtrl_cls* mpCTime = nullptr; ///< whose burst is under way
};

// Never deleted: a timer must not outlive the toolkit's.
BurstTimer_cls& Timer() {
    static auto* spTimer = new BurstTimer_cls;
    return *spTimer;
}

} // namespace

TimeGesture_cls::TimeGesture_cls(TimeCtrl_cls* pTime) : mpCTime(pTime), mbOwn(!pTime->IsGesture()) {
    if (mbOwn) mpCTime->BeginGesture();
}

TimeGesture_cls::~TimeGesture_cls() {
    if (mbOwn) mpCTime->EndGesture();
}

void TimeGesture_cls::Begin(TimeCtrl_cls* pTime) {
    Timer().Finish();
    pTime->BeginGesture();
}

void TimeGesture_cls::End(TimeCtrl_cls* pTime) { pTime->EndGesture(); }

void TimeGesture_cls::EndBurst() { Timer().Finish(); }

void TimeGesture_cls::Burst(TimeCtrl_cls* pTime) {
    if (pTime->IsGesture() && Timer().mpCTime != pTime) return; // a hand is at it
    pTime->BeginGesture();
    Timer().mpCTime = pTime;
    if (!IsReplaying()) Timer().StartOnce(kBurstEnd); // a record says when the hand rested
}
