// Evaluation of animated settings. Limit: reading the keys' bytes once from the cache, in the same run.
#include <ctime>
#include <numeric>
#include <vector>

#include <benchmark/benchmark.h>

#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

namespace {

constexpr int kKeys = 50;
constexpr int kTimes = 4096;
const wxString kSuffixes[] = {"R", "G", "B", "A"};

/// Four curves of 50 keys, all of one kind.
void FillGroup(ParamGroup_cls& group, unsigned kind, int period) {
    unsigned seed = 1;
    for (Parameters_cls& param : group.mVParams) {
        param.mPeriodic.mValue = period;
        for (int i = 0; i < kKeys; ++i) {
            seed = seed * 1664525u + 1013904223u;
            KeyFrame_cls key;
            key.Set(double(i) / (kKeys - 1), kind, double(seed >> 8) / double(1 << 24), 0.5, 0.5, false);
            i == 0 ? param.ExecCommandOvwtKey(0, key) : param.ExecCommandSetKey(key);
        }
    }
}

/// Times in no order, as the colours of particles ask for them, or in the order of a film.
std::vector<double> MakeTimes(bool bInOrder) {
    std::vector<double> times(kTimes);
    unsigned seed = 7;
    for (int i = 0; i < kTimes; ++i) {
        seed = seed * 1664525u + 1013904223u;
        times[size_t(i)] = bInOrder ? double(i) / kTimes : double(seed >> 8) / double(1 << 24);
    }
    return times;
}

/// ns_per_eval: processor time for one group of four curves at one time.
void ParamEvaluate(benchmark::State& state) {
    ParamGroup_cls group("Bench", 4, kSuffixes, 0, true);
    FillGroup(group, unsigned(state.range(0)), int(state.range(2)));
    const std::vector<double> times = MakeTimes(state.range(1) != 0);
    double rgba[4];
    const std::clock_t start = std::clock();
    for (auto _ : state) {
        for (const double t : times) {
            group.GetInterpolatedValue(rgba, t, 0.0);
            benchmark::DoNotOptimize(rgba);
        }
    }
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    state.counters["ns_per_eval"] = seconds * 1e9 / (double(state.iterations()) * kTimes);
}

/// The limit of a walk over all keys: their bytes, read once.
void ParamKeyBytes(benchmark::State& state) {
    const std::vector<unsigned> words(4 * kKeys * sizeof(KeyFrame_cls) / sizeof(unsigned), 1u);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::accumulate(words.begin(), words.end(), 0u));
}

/// One gesture: a key set in four curves and taken back, ns each.
void ParamEditAndUndo(benchmark::State& state) {
    ParamGroup_cls group("Bench", 4, kSuffixes, 0, true);
    FillGroup(group, INTERP_HERMITE_AUTO, 0);
    double value = 0.0;
    for (auto _ : state) {
        value += 1.0;
        const double values[] = {value, value, value, value};
        group.SetKeyFrame(values, true, 0.5);
        GCUndoList.UndoCurrent();
    }
    GCUndoList.Clear();
}

BENCHMARK(ParamEvaluate)
    ->ArgNames({"kind", "in_order", "period"})
    ->Args({0, 1, 0})
    ->Args({0, 0, 0})
    ->Args({1, 0, 0})
    ->Args({4, 0, 0})
    ->Args({1, 0, 360});
BENCHMARK(ParamKeyBytes);
BENCHMARK(ParamEditAndUndo);

} // namespace
