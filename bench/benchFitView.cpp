// Fitting a view to 10,000,000 particles, which is one pass over their places. The limit: reading the places
// once, on as many threads. Counters: "readMs" and "fitMs" are the best of their rounds, "ratio" is fit over
// reading, "beyondMs" the difference (30 at most is wanted).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

#include "GL/BASE/ViewFit.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "ReadPlaces.h"

namespace {

void FitView(benchmark::State& state) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> place(-1.0f, 1.0f);
    std::vector<Place_st> places(static_cast<size_t>(state.range(0)));
    for (Place_st& one : places)
        for (float& v : one.p)
            v = place(random);
    const int threads = std::max(1, static_cast<int>(std::min(8u, std::thread::hardware_concurrency())));
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
        benchmark::DoNotOptimize(ReadOnce(places, threads));
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
