// Changes of the clock that belong together: one step of the undo list for a scope, a drag, or a burst of
// turns.
#pragma once

class TimeCtrl_cls;

class TimeGesture_cls {
public:
    explicit TimeGesture_cls(TimeCtrl_cls* pTime);
    ~TimeGesture_cls();
    TimeGesture_cls(const TimeGesture_cls&) = delete;
    TimeGesture_cls& operator=(const TimeGesture_cls&) = delete;

    /// For gestures that go on over several events.
    static void Begin(TimeCtrl_cls* pTime);
    static void End(TimeCtrl_cls* pTime);
    /// Before each of several quick turns of the wheel or presses of a key: they are one step, left when no
    /// other one came for kBurstEnd milliseconds.
    static void Burst(TimeCtrl_cls* pTime);
    /// The hand rested: what such a burst did so far is its step.
    static void EndBurst();
    static constexpr int kBurstEnd = 400;

private:
    TimeCtrl_cls* mpCTime;
    bool mbOwn; ///< no other gesture is around it
};
