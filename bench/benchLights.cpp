// What lights cost on ray-cast spheres: 1,000,000 of them about two pixels wide under seven lights against
// the same under one far light. Counter "ratio" is seven over one; "cpuRatio" the same of what all threads
// worked, which says more on a busy machine. DrawSpheresExactLights: seven far lights, as new ones are;
// ...Mixed: spots, point lights that fade and far ones.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <cmath>

#include "BenchContext.h"
#include "BenchScene.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPDataBlock.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

constexpr int kSpheres = 1000000;
constexpr float kRadius = 0.00125f; // a pixel where they are
constexpr int kLights = LightSRCCtrl_cls::kLightNumber;

class LitScene : BenchScene_cls {
public:
    explicit LitScene(bool bMixed)
        : BenchScene_cls(kSpheres, [](PDataBlock_cls& block, int i, float) { block.mpRadius[i] = kRadius; }) {
        for (GLAttribute_cls* a : mpAttribute) {
            a->mDrawType.mValue = DRAW_SPHERE;
            a->mDrawQuality.mValue = 3;
        }
        MakeDrawn();
        for (int i = 1; i < kLights; ++i)
            Place(i, bMixed);
    }
    void Draw(int lights, Times_st* pTimes) {
        const Took_st took = Time(
            [&] {
                glEnable(GL_LIGHTING);
                mLights.mCLightNumber.mValue = lights;
                mLights.SetNonShadowLight(0.0);
            },
            [this] { mDraw.GLDrawSequential(0, mDrawn.get(), mpAttribute); });
        if (!pTimes) return;
        pTimes->work.push_back(took.work);
        pTimes->wall.push_back(took.wall);
    }

private:
    void Place(int i, bool bMixed) {
        LightSRC_cls& light = mLights.GetLight(i);
        const double place[3] = {2.0 * std::cos(i), 2.0 * std::sin(i), 2.0};
        const double angles[3] = {0, 50, 180.0 + 51.0 * i};
        light.mpCTranslate->SetKeyFrame(place, true, ParamGroup_cls::kCurrent);
        light.mpCRotate->SetKeyFrame(angles, true, ParamGroup_cls::kCurrent);
        if (!bMixed) return;
        light.mCType.mValue = i % 4;
        light.mCFade.mValue = i % 3;
    }

    LightSRCCtrl_cls mLights;
};

void DrawSpheresExactLights(benchmark::State& state, bool bMixed) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    LitScene scene(bMixed);
    Times_st one, seven;
    scene.Draw(1, nullptr);
    scene.Draw(kLights, nullptr);
    for (auto _ : state)
        for (int round = 0; round < 5; ++round) {
            scene.Draw(1, &one);
            scene.Draw(kLights, &seven);
        }
    state.counters["oneMs"] = Median(one.wall) * 1e3;
    state.counters["sevenMs"] = Median(seven.wall) * 1e3;
    state.counters["ratio"] = Median(seven.wall) / Median(one.wall);
    state.counters["cpuRatio"] = Median(seven.work) / Median(one.work);
}

BENCHMARK_CAPTURE(DrawSpheresExactLights, far, false)
    ->Name("DrawSpheresExactLights")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSpheresExactLights, mixed, true)
    ->Name("DrawSpheresExactLightsMixed")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
