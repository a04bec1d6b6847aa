// Times of benchmarks that compare two ways of one thing in turns.
#pragma once

#include <algorithm>
#include <ctime>
#include <vector>

struct Times_st {
    std::vector<double> wall, work; ///< seconds; of all threads
};

inline double Median(std::vector<double> times) {
    std::nth_element(times.begin(), times.begin() + long(times.size() / 2), times.end());
    return times[times.size() / 2];
}

/// Processor time of this process up to now, seconds.
inline double GetWork() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}
