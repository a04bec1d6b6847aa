// What filters cost. FilterBox, FilterHardBox, FilterSphere: ten million particles through one region against
// a pass on as many threads that streams the same arrays, reading list and places and writing weights;
// counter "ratio" is ours over theirs, "cpuRatio" the same of what all threads worked. DrawCopies: 27 copies
// of a million points against 27 single draws of them, both finished; counter "ratio". The copies cover other
// pixels than draws that hide each other; counter "placedRatio" is against single draws at the copies'
// places.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include "BenchContext.h"
#include "BenchTimes.h"
#include "COMMON/OnThreads.h"
#include "FILTER/clsFilterBoolean.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/DrawCopies.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"
#include "PDATA/clsPeriodicBoundary.h"

namespace {

constexpr int kParticles = 10000000;
constexpr int kPoints = 1000000;
constexpr int kThreads = 4; // of the filters at so many
constexpr int kRounds = 7;

using Clock = std::chrono::steady_clock;

double MillisOf(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// What all threads worked: says more on a busy machine.
double GetWorkMs() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return 1e3 * double(now.tv_sec) + 1e-6 * double(now.tv_nsec);
}

void Report(benchmark::State& state, const std::vector<double>& theirs, const std::vector<double>& ours) {
    state.counters["bareMs"] = Median(theirs);
    state.counters["oursMs"] = Median(ours);
    state.counters["ratio"] = Median(ours) / Median(theirs);
}

/// Nothing of it can be left out: each weight hangs on its record and its place.
void Stream(const DrawList_t& list, const std::vector<float>& places, std::vector<float>& weights) {
    OnThreads(kThreads, [&](int k) {
        const size_t begin = list.size() * size_t(k) / kThreads;
        const size_t end = list.size() * size_t(k + 1) / kThreads;
        for (size_t i = begin; i < end; ++i) {
            const float* p = &places[3 * size_t(list[i].mIndex)];
            weights[i] = p[0] + p[1] + p[2] + list[i].mAlpha;
        }
    });
}

void Region(benchmark::State& state, unsigned region, float border) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> side(-1.0f, 1.0f);
    std::vector<float> places(3 * size_t(kParticles));
    for (float& v : places)
        v = side(random);
    DrawList_t all(static_cast<size_t>(kParticles));
    for (int i = 0; i < kParticles; ++i)
        all[size_t(i)] = {i, 0.0f, 1.0f};
    std::vector<float> weights(static_cast<size_t>(kParticles));

    Parameters_cls::msbUndoCommandMake = false;
    FilterLists_cls lists;
    auto& cut = static_cast<FilterBoolean_cls&>(*lists.GetBoolean().AddFilter(FILTER_BOOLEAN));
    cut.GetPCData()->mCRegionType.mValue = region;
    cut.GetPCData()->mCBorderFactor.mValue = border;
    const double scale[3] = {1.6, 1.6, 1.6};
    cut.GetPCData()->mpCScale->SetKeyFrame(scale, true, SceneObj_cls::kCurrent);

    std::vector<double> theirs, ours;
    double theirWork = 0.0, ourWork = 0.0;
    DrawList_t list;
    for (auto _ : state)
        for (int round = 0; round < kRounds; ++round) {
            list = all;
            const double before = GetWorkMs();
            theirs.push_back(MillisOf([&] { Stream(list, places, weights); }));
            const double between = GetWorkMs();
            benchmark::DoNotOptimize(weights.data());
            ours.push_back(MillisOf([&] {
                lists.GetBoolean().Thin(list, kParticles, reinterpret_cast<const float(*)[3]>(places.data()),
                                        0.0);
            }));
            theirWork += between - before;
            ourWork += GetWorkMs() - between;
        }
    Report(state, theirs, ours);
    state.counters["cpuRatio"] = ourWork / theirWork;
    state.counters["kept"] = double(list.size());
}

/// A million points before a camera.
class Points_cls {
public:
    Points_cls() : mSnap(nullptr, 0), mTarget(kSize, kSize) {
        GLAttribute_cls::InitializeShader(nullptr, true);
        PDataBlock_cls& block = *mSnap.mpCBlock;
        block.mParticleNumber = kPoints;
        if (!block.Allocate(kPoints)) std::abort();
        std::mt19937 random(7);
        std::uniform_real_distribution<float> side(-1.0f, 1.0f);
        for (int i = 0; i < kPoints; ++i) {
            for (int axis = 0; axis < 3; ++axis)
                block.mpPos[i][axis] = side(random);
            block.mpRadius[i] = 1.0f;
            block.mpValue1[i] = 0.0f;
            block.mpType[i] = 0;
        }
        mSnap.mTime = 0.0;
        mSnap.mbLoadStarted = true;
        mSnap.mbLoaded.store(true);
        for (int i = 0; i < 4; ++i) {
            mAttribute[i] = std::make_unique<GLAttribute_cls>(nullptr, 0, i, &mOption);
            mAttribute[i]->mDrawType.mValue = DRAW_POINT;
            mAttribute[i]->mPointSize.mValue = 1;
            mpAttribute[i] = mAttribute[i].get();
        }
        mTarget.MakeFBO(false);
    }
    ~Points_cls() {
        delete GLDrawData_cls::mspCSnapShot;
        GLDrawData_cls::mspCSnapShot = nullptr;
    }
    void DrawOne(int face) { GLSequence_cls::DrawSnapshot(face, mSnap, &mDraw, mpAttribute, 0.0); }
    double Time(const std::function<void()>& draw) {
        const FBOScope_cls target(mTarget, true);
        PositionAndDirection_cls camera;
        camera.Set(0, 0, 8);
        GLPerspective_cls perspective(kSize, kSize);
        perspective.SetPerspectiveOnGL(camera);
        perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
        mDraw.SetCameraPos(camera);
        glFinish();
        return MillisOf([&] {
            draw();
            glFinish();
        });
    }

private:
    static constexpr int kSize = 512;
    DrawOption_cls mOption;
    std::unique_ptr<GLAttribute_cls> mAttribute[4];
    GLAttribute_cls* mpAttribute[4] = {};
    PDataSnap_cls mSnap;
    GLDrawData_cls mDraw;
    FBO_cls mTarget;
};

void Copies(benchmark::State& state) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    FilterLists_cls lists;
    PeriodicBoundary_cls periodic;
    periodic.ReadStrLine("PeriodicSize=0.05 0.05 0.05"); // the picture is as full as one draw's
    lists.mpCPeriodic = &periodic;
    auto& copies = static_cast<FilterCopy_cls&>(*lists.GetWorld().AddFilter(FILTER_COPY));
    for (int axis = 0; axis < 3; ++axis) {
        copies.GetPCData()->mCMin[axis].mValue = -1;
        copies.GetPCData()->mCMax[axis].mValue = 2;
    }
    Points_cls points;
    const auto single = [&] {
        for (int i = 0; i < 27; ++i)
            points.DrawOne(0);
    };
    const auto repeated = [&] {
        DrawCopies(&copies, copies.GetNumber(), 1e8f,
                   [&](long long copy) { points.DrawOne(copy == 0 ? 0 : 1); });
    };
    const auto placed = [&] {
        for (int i = 0; i < 27; ++i) {
            const GLMatrixScope_cls matrix;
            copies.GLTranslate(i);
            points.DrawOne(0);
        }
    };
    points.Time([&] { points.DrawOne(0); });
    std::vector<double> theirs, ours, placedTheirs;
    for (auto _ : state)
        for (int round = 0; round < 3; ++round) {
            theirs.push_back(points.Time(single));
            ours.push_back(points.Time(repeated));
            placedTheirs.push_back(points.Time(placed));
        }
    Report(state, theirs, ours);
    state.counters["placedMs"] = Median(placedTheirs);
    state.counters["placedRatio"] = Median(ours) / Median(placedTheirs);
}

BENCHMARK_CAPTURE(Region, Soft, FilterBooleanData_cls::BOX, 0.1f)
    ->Name("FilterBox")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Region, Hard, FilterBooleanData_cls::BOX, 0.0f)
    ->Name("FilterHardBox")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Region, Sphere, FilterBooleanData_cls::SPHERE, 0.0f)
    ->Name("FilterSphere")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Copies)->Name("DrawCopies")->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
