// How long each part of a film's pictures took, on whichever thread: they overlap, so that the sum may be
// more than the time that passed.
#pragma once

#include <chrono>
#include <string>

enum class Work { Read, Evaluate, Sort, Particles, Fetch, Convert, Pack, Write, Number };

/// Adds the time of its scope to a part.
class WorkScope_cls {
public:
    explicit WorkScope_cls(Work what) : mWhat(what), mStart(Clock::now()) {}
    ~WorkScope_cls();
    WorkScope_cls(const WorkScope_cls&) = delete;
    WorkScope_cls& operator=(const WorkScope_cls&) = delete;

private:
    using Clock = std::chrono::steady_clock;
    Work mWhat;
    Clock::time_point mStart;
};

/// "read=1.234 evaluate=0.100 ...": seconds of the run.
std::string GetWorkTimes();
