// Changes of the clock that belong together: one step of the undo list for a scope.
#pragma once

#include "TIME/clsTimeCtrl.h"

class TimeGesture_cls {
public:
    explicit TimeGesture_cls(TimeCtrl_cls* pTime) : mpCTime(pTime) { Begin(mpCTime); }
    ~TimeGesture_cls() { End(mpCTime); }
    TimeGesture_cls(const TimeGesture_cls&) = delete;
    TimeGesture_cls& operator=(const TimeGesture_cls&) = delete;

    /// For gestures that go on over several events.
    static void Begin(TimeCtrl_cls* pTime) { pTime->BeginGesture(); }
    static void End(TimeCtrl_cls* pTime) { pTime->EndGesture(); }

private:
    TimeCtrl_cls* mpCTime;
};
