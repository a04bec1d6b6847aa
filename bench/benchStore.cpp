// The draw-time snapshot against its limit: evaluating ten million particles (positions, radii, values,
// colours) over a plain copy of as many bytes, by as many threads, measured in the same run (counter "ratio",
// ours / limit). Argument 0: constant colours, 1: a seven-key curve on the value.
#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"
#include "PDATA/clsSnapData.h"
#include "PDATA/clsThreadInterpolator.h"
#include "PDATA/clsThreadSnapInterpolate.h"

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

/// A block of ten million particles in two classes.
struct Block_st {
    explicit Block_st(int variable) : mSnap(nullptr, 0), mBlock(*mSnap.mpCBlock) {
        mSnap.mTime = 0.0;
        mBlock.Allocate(kNumber);
        mBlock.mInterpolateType = 0;
        mBlock.mVariableNumber = variable;
        for (int i = 0; i < kNumber; ++i) {
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
    PDataSnap_cls mSnap;
    PDataBlock_cls& mBlock;
};

void SnapEvaluate(benchmark::State& state) {
    Block_st block(0);
    DrawOption_cls option;
    std::unique_ptr<GLAttribute_cls> owned[4];
    GLAttribute_cls* attributes[4];
    for (int k = 0; k < 4; ++k) {
        owned[k] = std::make_unique<GLAttribute_cls>(nullptr, 0, k, &option);
        attributes[k] = owned[k].get();
        attributes[k]->mColor.mbUseColorCurve.mValue = state.range(0) == 1;
        attributes[k]->mColor.SetKeys([] {
            std::vector<ColorCurve_cls::Key> keys;
            for (const auto& row : kSpectrum)
                keys.push_back({row[0], row[1], row[2], row[3], row[4]});
            return keys;
        }());
    }
    // 41 bytes of a particle are read and 36 written.
    StreamCopy_cls copy(size_t(kNumber) * 77);
    const int threads = ThreadSnapInterpolate_cls::GetThreadCount(kNumber);
    for (auto _ : state) {
        const double limit = Median([&] { copy(threads); });
        const double ours = Median([&] { const SnapData_cls snap(&block.mBlock, attributes, 0.5, 1); });
        state.counters["limit_ms"] = limit * 1e3;
        state.counters["ours_ms"] = ours * 1e3;
        state.counters["ratio"] = ours / limit;
    }
}
BENCHMARK(SnapEvaluate)->Arg(0)->Arg(1)->Iterations(1)->Unit(benchmark::kMillisecond);

/// Slopes of ten million particles: constant numbers (0), found by ID (1), sorted by ID (2).
void Slopes(benchmark::State& state) {
    const int variable = static_cast<int>(state.range(0));
    Block_st block(variable);
    Block_st next(variable);
    StreamCopy_cls copy(size_t(kNumber) * (variable == 0 ? 60 : 68));
    const int threads = ThreadInterpolator_cls::GetThreadCount(kNumber);
    for (auto _ : state) {
        const double limit = Median([&] { copy(threads); });
        const double ours =
            Median([&] { ThreadInterpolator_cls::Interpolate(block.mBlock, next.mBlock, nullptr, 1.0f); });
        state.counters["limit_ms"] = limit * 1e3;
        state.counters["ours_ms"] = ours * 1e3;
        state.counters["ratio"] = ours / limit;
    }
}
BENCHMARK(Slopes)->Arg(0)->Arg(1)->Arg(2)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
