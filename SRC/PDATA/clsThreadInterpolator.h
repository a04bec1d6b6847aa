// Computes, once a snapshot pair and in the background, each particle's slope towards the next snapshot.
//
// Settings and array pointers are copied when the thread is made. It reads two blocks and writes the slope
// arrays of the first; at most one works at any time (GpCThreadInterpolate). Its owner joins it by deleting
// it, so that nothing of it is left running when the program ends.
#pragma once

#include <atomic>
#include <thread>

class PDataBlock_cls;
class PeriodicBoundary_cls;
enum PeriodicEffect : unsigned;
enum PeriodicType : unsigned;

class ThreadInterpolator_cls {
public:
    ThreadInterpolator_cls() = default;
    /// Waits for the work to end.
    ~ThreadInterpolator_cls();
    ThreadInterpolator_cls(const ThreadInterpolator_cls&) = delete;
    ThreadInterpolator_cls& operator=(const ThreadInterpolator_cls&) = delete;

    /// `pFinished` is set when the slopes of `block` are there; `dt` is the time from it to `next`. Without a
    /// boundary nothing wraps.
    void SetParameters(std::atomic<bool>* pFinished, const PeriodicBoundary_cls* pPeriodic,
                       const PDataBlock_cls& block, const PDataBlock_cls& next, float dt);
    /// Where the system gives no more threads, the work is done here and now.
    void Run();
    /// Threads for a snapshot of `number` particles, 1 to 6.
    static int GetThreadCount(int number);

private:
    struct Box {
        PeriodicType mType{};
        PeriodicEffect mEffect{};
        float mLength[3] = {0, 0, 0};
    };
    void Entry();
    void Interpolate() const;
    static Box CopyBox(const PeriodicBoundary_cls* pPeriodic);

    std::atomic<bool>* mpbFinished = nullptr;
    const PDataBlock_cls* mpCBlock = nullptr;
    const PDataBlock_cls* mpCNext = nullptr;
    Box mBox;
    float mDT = 1.0f;
    std::thread mThread;
};
