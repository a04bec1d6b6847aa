// Particles drawn by the processor beside the same by OpenGL, in one run and one buffer of 2048 x 2048,
// handing it back included; the buffer is known to be cleared, as that of a view is. Counters: "cpuMs" and
// "glMs" of the two ways in wall time, "work" what all threads worked (ms), "fillMs" what OpenGL takes to
// fill the buffer once; "speedup" is OpenGL's time over the processor's, "ratio" the processor's over a fill.
// "fourCores" is how many times as fast four cores were than one, by counting work: on two cores wall time is
// what one thread does alone and half of the rest, so both parts are known (a quiet machine told). The list
// stands before, sorted or not.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "BenchContext.h"
#include "BenchScene.h"
#include "GL/BASE/DrawWay.h"
#include "GL/DRAW/clsCpuDraw.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsPDataBlock.h"

namespace {

struct Case {
    int number;
    unsigned drawType;
    unsigned quality;
    unsigned blend;
    unsigned sortOrder;
    float radius; ///< pixels
};

class Scene : BenchScene_cls {
public:
    explicit Scene(const Case& what)
        : BenchScene_cls(what.number, [&](PDataBlock_cls& block, int i, float) {
              block.mpRadius[i] = what.radius * kPixel;
          }) {
        mOption.mSortOrder.mValue = what.sortOrder;
        for (GLAttribute_cls* a : mpAttribute) {
            a->mDrawType.mValue = what.drawType;
            a->mDrawQuality.mValue = what.quality;
            a->mBlendType.mValue = what.blend;
            a->mPointSize.mValue = 1;
            a->mAlphaFactor.mValue = what.drawType == 1 ? 0.3f : 1.0f;
        }
        MakeDrawn();
        TimeOne(DrawWay::GL, 0); // makes the list
    }
    double TimeOne(DrawWay way, int face = 1) {
        SetDrawWay(way);
        CpuDraw_cls::SetBlank(true);
        const Took_st took = Time(SetLight, [&] { mDraw.GLDrawSequential(face, mDrawn.get(), mpAttribute); });
        CpuDraw_cls::SetBlank(false);
        SetDrawWay(DrawWay::Auto);
        mWork = took.work;
        return took.wall;
    }
    double TimeFill() {
        return Time([] {},
                    [] {
                        for (const GLenum what : {GL_LIGHTING, GL_CULL_FACE, GL_TEXTURE_2D, GL_BLEND})
                            glDisable(what);
                        glMatrixMode(GL_PROJECTION);
                        glLoadIdentity();
                        glMatrixMode(GL_MODELVIEW);
                        glLoadIdentity();
                        glRectf(-1, -1, 1, 1);
                    })
            .wall;
    }
    double GetLastWork() const { return mWork; } ///< seconds of all threads

private:
    static void SetLight() {
        const float from[4] = {0.5f, 0.5f, 0.7f, 0.0f};
        const float white[4] = {1, 1, 1, 0};
        glDepthFunc(GL_LEQUAL);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, from);
        for (const GLenum color : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR})
            glLightfv(GL_LIGHT0, color, white);
    }
    double mWork = 0.0;
};

void DrawWays(benchmark::State& state, Case what) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    Scene scene(what);
    scene.TimeOne(DrawWay::CPU);
    std::vector<double> gl, cpu, work, fill;
    for (auto _ : state)
        for (int round = 0; round < 5; ++round) {
            fill.push_back(scene.TimeFill());
            gl.push_back(scene.TimeOne(DrawWay::GL));
            cpu.push_back(scene.TimeOne(DrawWay::CPU));
            work.push_back(scene.GetLastWork());
        }
    state.counters["cpuMs"] = Median(cpu) * 1e3;
    state.counters["work"] = Median(work) * 1e3;
    state.counters["glMs"] = Median(gl) * 1e3;
    state.counters["fillMs"] = Median(fill) * 1e3;
    const double alone = std::max(2.0 * Median(cpu) - Median(work), 0.0);
    if (std::thread::hardware_concurrency() == 2)
        state.counters["fourCores"] = Median(work) / (alone + (Median(work) - alone) / 4.0);
    state.counters["speedup"] = Median(gl) / Median(cpu);
    state.counters["ratio"] = Median(cpu) / Median(fill);
}

#define WAYS_CASE(name, ...)                                                                                 \
    BENCHMARK_CAPTURE(DrawWays, name, Case{__VA_ARGS__})                                                     \
        ->Name(#name)                                                                                        \
        ->Iterations(1)                                                                                      \
        ->Unit(benchmark::kMillisecond)

// Number, draw type, quality, additive, order, radius in pixels.
WAYS_CASE(WaysSpheres, 1000000, 2, 3, 0, 0, 2.0f);
WAYS_CASE(WaysSpheres100k8px, 100000, 2, 3, 0, 0, 4.0f);
WAYS_CASE(WaysSprites, 1000000, 1, 0, 1, 0, 2.0f);
WAYS_CASE(WaysSpritesSorted, 1000000, 1, 0, 0, 1, 2.0f);
WAYS_CASE(WaysSpritesFacing, 1000000, 1, 1, 1, 0, 2.0f);
WAYS_CASE(WaysPoints, 10000000, 0, 0, 0, 0, 1.0f);

} // namespace
