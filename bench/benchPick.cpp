// Finding the particle under a click among 10,000,000, as spheres of radii of their own and as points. The
// limit: reading the places once, on as many threads. Counters: "readMs" and "pickMs" are medians of rounds
// in turns, "ratio" is pick over reading (4 at most is wanted, and 50 ms).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <vector>

#include "BenchTimes.h"
#include "GL/DRAW/clsParticlePicker.h"
#include "GL/DRAW/clsThreadSnapInterpolate.h"
#include "ReadPlaces.h"

namespace {

/// The second argument: spheres with radii.
void PickParticle(benchmark::State& state) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> place(-1.0f, 1.0f);
    std::vector<Place_st> places(static_cast<size_t>(state.range(0)));
    std::vector<float> radii(places.size());
    for (Place_st& one : places)
        for (float& v : one.p)
            v = place(random);
    for (float& radius : radii)
        radius = 0.001f * (1.0f + place(random));
    const int threads = ThreadSnapInterpolate_cls::GetThreadCount(state.range(0));
    PickCloud_st cloud;
    cloud.mpPos = &places[0].p;
    cloud.mNumber = static_cast<long long>(places.size());
    if (state.range(1) != 0) {
        cloud.mpRadius = radii.data();
        cloud.mRadiusFactor[0] = 1.0f;
        cloud.mbBall[0] = true;
    }
    PickRay_st ray;
    ray.mEye[2] = -4.0;
    ray.mPixel[1] = 0.0006;
    ray.mNear = 0.03;
    std::vector<double> read, pick;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(ReadOnce(places, threads));
        read.push_back(MillisSince(start));
        ray.mSlope[0] = 0.1 * double(place(random));
        ray.mSlope[1] = 0.1 * double(place(random));
        start = std::chrono::steady_clock::now();
        if (ParticlePicker_cls(cloud, ray).Find().mIndex < 0) state.SkipWithError("nothing is there");
        pick.push_back(MillisSince(start));
    }
    state.counters["readMs"] = Median(read);
    state.counters["pickMs"] = Median(pick);
    state.counters["ratio"] = Median(pick) / Median(read);
}

BENCHMARK(PickParticle)
    ->Args({10000000, 0})
    ->Args({10000000, 1})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(20);

} // namespace
