// What is computed of every particle, against the memory's limit: a plain copy of as many bytes by as many
// threads in the same run (counter "ratio", ours / limit). Evaluate: a draw-time snapshot of ten million
// particles. Interpolate...: the slopes of a pair of snapshots.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "FourAttributes.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/DRAW/clsThreadSnapInterpolate.h"
#include "InterpolateNow.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"
#include "PDATA/clsPeriodicBoundary.h"

namespace {

constexpr int kNumber = 10000000;
constexpr int kRounds = 9;
constexpr double kSpectrum[7][5] = {
    {0, 0.03, 0, 0.07, 1},     {0.167, 0.32, 0, 0.77, 1}, {0.333, 0, 0.31, 0.59, 1}, {0.5, 0, 0.78, 0, 1},
    {0.666, 0.82, 0.56, 0, 1}, {0.833, 0.84, 0, 0, 1},    {1, 0.26, 0, 0, 1}};

double Seconds(const std::chrono::steady_clock::time_point& since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

template <class JOB>
double Median(JOB job) {
    std::vector<double> times;
    job();
    for (int round = 0; round < kRounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        job();
        times.push_back(Seconds(start));
    }
    std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
    return times[kRounds / 2];
}

/// Copies `bytes` read and written together: half of them from one buffer to another.
class StreamCopy_cls {
public:
    explicit StreamCopy_cls(size_t bytes) : mFrom(bytes / 2, 1), mTo(bytes / 2, 2) {}
    void operator()(int threadCount) {
        std::vector<std::thread> threads;
        const size_t share = mFrom.size() / static_cast<size_t>(threadCount);
        for (int k = 0; k < threadCount; ++k)
            threads.emplace_back([this, k, share] {
                std::memcpy(mTo.data() + share * static_cast<size_t>(k),
                            mFrom.data() + share * static_cast<size_t>(k), share);
            });
        for (std::thread& thread : threads)
            thread.join();
        benchmark::DoNotOptimize(mTo.data());
    }

private:
    std::vector<char> mFrom;
    std::vector<char> mTo;
};

/// A block of particles in two classes, a tenth of which crosses a face of the box until the next one.
struct Block_st {
    explicit Block_st(int variable, int number = kNumber) : mSnap(nullptr, 0), mBlock(*mSnap.mpCBlock) {
        mSnap.mTime = 0.0;
        mBlock.Allocate(number);
        mBlock.mInterpolateType = 0;
        mBlock.mVariableNumber = variable;
        for (int i = 0; i < number; ++i) {
            for (int c = 0; c < 3; ++c) {
                mBlock.mpPos[i][c] = static_cast<float>(i % 1000 + c);
                mBlock.mpVel[i][c] = static_cast<float>(i % 10);
            }
            mBlock.mpRadius[i] = mBlock.mpDRadius[i] = 1.0f;
            mBlock.mpValue1[i] = static_cast<float>((i * 7919LL) % 1000) / 1000.0f;
            mBlock.mpDValue1[i] = 0.01f;
            mBlock.mpType[i] = static_cast<unsigned char>(i % 2);
            mBlock.mpID[i] = i;
        }
    }
    void MoveOn() {
        for (int i = 0; i < mBlock.mParticleNumber; ++i)
            for (float& x : mBlock.mpPos[i])
                x = std::fmod(x + 100.0f, 1000.0f);
    }
    PDataSnap_cls mSnap;
    PDataBlock_cls& mBlock;
};

void Report(benchmark::State& state, double limit, double ours) {
    state.counters["limit_ms"] = limit * 1e3;
    state.counters["ours_ms"] = ours * 1e3;
    state.counters["ratio"] = ours / limit;
}

/// How the colours of a run are found.
enum Coloring { COLOR_CONSTANT, COLOR_CURVE, COLOR_SMOOTH_CURVE, COLOR_OFF_CURVE, COLOR_SPEED };

void SetColoring(ColorCurve_cls& color, int coloring) {
    std::vector<ColorCurve_cls::Key> keys;
    for (const auto& row : kSpectrum)
        keys.push_back({row[0], row[1], row[2], row[3], row[4]});
    color.SetKeys(keys);
    color.mbUseColorCurve.mValue = coloring != COLOR_CONSTANT && coloring != COLOR_OFF_CURVE;
    if (coloring == COLOR_SMOOTH_CURVE)
        for (Parameters_cls& param : color.mpCParamGroup->mVParams)
            for (int k = 0; k < param.GetKeyNumber(); ++k) {
                KeyFrame_cls key = param.GetKeys()[size_t(k)];
                key.mInterpType = INTERP_HERMITE_AUTO;
                param.ExecCommandOvwtKey(k, key);
            }
    if (coloring == COLOR_SPEED || coloring == COLOR_OFF_CURVE) color.mDependType.mValue = 6;
    color.mScalingMax.mValue = coloring == COLOR_SPEED ? 20.0f : 1.0f;
}

/// 0 constant colours, 1 seven keys on the value, 2 the same keys smoothly joined, 3 a curve on the speed
/// that is off, 4 the same in use.
void Evaluate(benchmark::State& state) {
    Block_st block(0);
    FourAttributes_st attributes;
    for (GLAttribute_cls* one : attributes.mp)
        SetColoring(one->mColor, static_cast<int>(state.range(0)));
    // 41 bytes of a particle are read and 36 written.
    StreamCopy_cls copy(size_t(kNumber) * 77);
    const int threads = ThreadSnapInterpolate_cls::GetThreadCount(kNumber);
    for (auto _ : state) {
        const double limit = Median([&] { copy(threads); });
        Report(state, limit, Median([&] { const SnapData_cls snap(&block.mBlock, attributes.mp, 0.5, 1); }));
    }
}
BENCHMARK(Evaluate)->DenseRange(COLOR_CONSTANT, COLOR_SPEED)->Iterations(1)->Unit(benchmark::kMillisecond);

/// 40 bytes of a particle are read (both snapshots' positions, radii, values) and 20 written; IDs are 8 more.
void Interpolate(benchmark::State& state, Block_st& block, Block_st& next, const PeriodicBoundary_cls* pBox) {
    const size_t number = static_cast<size_t>(block.mBlock.mParticleNumber);
    StreamCopy_cls copy(number * (block.mBlock.mVariableNumber == 0 ? 60 : 68));
    const int threads = ThreadInterpolator_cls::GetThreadCount(block.mBlock.mParticleNumber);
    for (auto _ : state) {
        const double limit = Median([&] { copy(threads); });
        Report(state, limit, Median([&] { InterpolateNow(block.mBlock, next.mBlock, pBox, 1.0f); }));
    }
}

void InterpolateConstant(benchmark::State& state) {
    Block_st block(0);
    Block_st next(0);
    Interpolate(state, block, next, nullptr);
}
BENCHMARK(InterpolateConstant)->Iterations(1)->Unit(benchmark::kMillisecond);

/// 1 periodic in x and y, 2 in all directions; 0 the short way round, 1 forced to stand.
void InterpolatePeriodic(benchmark::State& state) {
    Block_st block(0);
    Block_st next(0);
    next.MoveOn();
    PeriodicBoundary_cls box;
    box.mCPeriodicType.mValue = static_cast<unsigned>(state.range(0));
    box.mCPeriodicEffect.mValue = static_cast<unsigned>(state.range(1));
    for (float& factor : box.mCPeriodicSize.mValue)
        factor = 100.0f; // times a vector of 10
    Interpolate(state, block, next, &box);
}
BENCHMARK(InterpolatePeriodic)
    ->Args({1, 0})
    ->Args({2, 0})
    ->Args({2, 1})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// IDs in no order, the same in both snapshots but for a share of pairs (per thousand) that changed places
/// within the given distance; 0 anywhere.
void InterpolateById(benchmark::State& state) {
    const int number = static_cast<int>(state.range(0));
    const int distance = static_cast<int>(state.range(2));
    Block_st block(1, number);
    Block_st next(1, number);
    std::mt19937 random(5);
    std::shuffle(block.mBlock.mpID, block.mBlock.mpID + number, random);
    std::copy_n(block.mBlock.mpID, number, next.mBlock.mpID);
    for (long long k = 0; k < number * state.range(1) / 1000; ++k) {
        const int i = static_cast<int>(random() % static_cast<unsigned>(number));
        const int reach = distance > 0 ? std::min(distance, number - i) : number - i;
        std::swap(next.mBlock.mpID[i], next.mBlock.mpID[i + static_cast<int>(random() % unsigned(reach))]);
    }
    Interpolate(state, block, next, nullptr);
}
BENCHMARK(InterpolateById)
    ->ArgNames({"number", "moved", "distance"})
    ->Args({1000000, 10, 1000})
    ->Args({1000000, 100, 20000})
    ->Args({1000000, 1000, 0})
    ->Args({kNumber, 10, 1000})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// Ascending IDs, every seventh of them gone in the next snapshot: time grows with the number alone.
void InterpolateSorted(benchmark::State& state) {
    const int number = static_cast<int>(state.range(0));
    Block_st block(2, number);
    Block_st next(2, number);
    for (int i = 0; i < number; ++i)
        next.mBlock.mpID[i] = i + i / 6;
    Interpolate(state, block, next, nullptr);
}
BENCHMARK(InterpolateSorted)->Arg(1000000)->Arg(kNumber)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
