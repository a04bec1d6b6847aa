// Fitting a view to 10,000,000 particles, which is one pass over their places. The limit: reading the places
// once, on as many threads. Counters: "readMs" and "fitMs" are the best of their rounds, "ratio" is fit over
// reading, "beyondMs" the difference (30 at most is wanted).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

#include "COMMON/OnThreads.h"
#include "GL/BASE/ViewFit.h"
#include "GL/BASE/clsPositionAndDirection.h"

namespace {

struct Place_st {
    float p[3];
};

double MillisSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// Each float is read and counts.
double ReadOnce(const std::vector<Place_st>& places) {
    const int threads = std::max(1, static_cast<int>(std::min(8u, std::thread::hardware_concurrency())));
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

void FitView(benchmark::State& state) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> place(-1.0f, 1.0f);
    std::vector<Place_st> places(static_cast<size_t>(state.range(0)));
    for (Place_st& one : places)
        for (float& v : one.p)
            v = place(random);
    FitCloud_st cloud;
    cloud.mpPos = &places[0].p;
    cloud.mNumber = static_cast<long long>(places.size());
    PositionAndDirection_cls camera;
    const double front[3] = {1.12, 0.8, -0.56};
    const double up[3] = {0, 0, 1};
    camera.Setv(front, up);
    double read = 1e9, fit = 1e9;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(ReadOnce(places));
        read = std::min(read, MillisSince(start));
        start = std::chrono::steady_clock::now();
        CloudReach_cls reach;
        const ViewFitter_cls fitter(camera, FitShape_st(), &reach);
        if (!reach.Measure(cloud)) state.SkipWithError("nothing counts");
        benchmark::DoNotOptimize(fitter.Get(reach, 1.0));
        fit = std::min(fit, MillisSince(start));
    }
    state.counters["readMs"] = read;
    state.counters["fitMs"] = fit;
    state.counters["ratio"] = fit / read;
    state.counters["beyondMs"] = fit - read;
}

BENCHMARK(FitView)->Arg(10000000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

} // namespace
