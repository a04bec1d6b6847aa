// Places of particles, and what reading them once costs: the limit of all that looks at each.
#pragma once

#include <chrono>
#include <vector>

#include "COMMON/OnThreads.h"

struct Place_st {
    float p[3];
};

inline double MillisSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// Each float is read and counts.
inline double ReadOnce(const std::vector<Place_st>& places, int threads) {
    std::vector<double> sums(static_cast<size_t>(threads));
    const size_t count = places.size() * 3;
    const float* pFloats = places[0].p;
    OnThreads(threads, [&](int k) {
        constexpr size_t kLanes = 16;
        float lanes[kLanes] = {};
        const size_t begin = count * static_cast<size_t>(k) / static_cast<size_t>(threads);
        const size_t end = count * static_cast<size_t>(k + 1) / static_cast<size_t>(threads);
        for (size_t i = begin; i + kLanes <= end; i += kLanes)
            for (size_t j = 0; j < kLanes; ++j)
                lanes[j] += pFloats[i + j];
        for (const float lane : lanes)
            sums[static_cast<size_t>(k)] += static_cast<double>(lane);
    });
    double sum = 0.0;
    for (const double one : sums)
        sum += one;
    return sum;
}
