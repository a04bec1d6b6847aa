// What shadows cost: 100,000 spheres under one light, drawn as a view with "Shadow Volume" draws them,
// against the same frame without. Counter "ratio" is with over without; "cpuRatio" the same of what all
// threads worked. By quality: 0 to 2 meshes, 3 ray-cast; by radius in pixels, and for a
// far light or one that stands near.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <cmath>

#include "BenchContext.h"
#include "BenchScene.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsShadowStencil.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsPDataBlock.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

constexpr int kSpheres = 100000;

class ShadowScene : BenchScene_cls {
public:
    ShadowScene(unsigned quality, float pixels, bool bNear)
        : BenchScene_cls(kSpheres, [pixels](PDataBlock_cls& block, int i, float) {
              block.mpRadius[i] = pixels * float(2.0 * kEye * std::tan(kAngle * M_PI / 360.0) / kSize);
          }) {
        for (GLAttribute_cls* a : mpAttribute) {
            a->mDrawType.mValue = DRAW_SPHERE;
            a->mDrawQuality.mValue = quality;
        }
        MakeDrawn();
        mLights.mCLightNumber.mValue = 1;
        if (!bNear) return;
        const double place[3] = {1.2, 1.5, 1.8};
        LightSRC_cls& light = mLights.GetLight(0);
        light.mCType.mValue = LightSRC_cls::TYPE_POINT;
        light.mpCTranslate->SetKeyFrame(place, true, ParamGroup_cls::kCurrent);
    }
    void Draw(bool bShadows, Times_st* pTimes) {
        const Took_st took = Time(
            [this] {
                glDepthFunc(GL_LEQUAL);
                glEnable(GL_LIGHTING);
                mLights.SetNonShadowLight(0.0);
            },
            [&] {
                DrawData(0);
                if (bShadows) DrawShadowed();
            });
        if (!pTimes) return;
        pTimes->work.push_back(took.work);
        pTimes->wall.push_back(took.wall);
    }

private:
    void DrawData(int face) { mDraw.GLDrawSequential(face, mDrawn.get(), mpAttribute); }
    void DrawShadowed() {
        float light[4];
        mLights.GetPosition(0, 0.0, light);
        light[2] -= float(kEye) * light[3]; // the camera looks along z from there
        mDraw.SetLightSourceInfo(1, light);
        mDraw.mbShadowPass = true;
        {
            const ShadowStencil_cls stencil(false);
            DrawData(1);
        }
        mDraw.mbShadowPass = false;
        const GLAttribScope_cls attributes;
        ShadowStencil_cls::SelectShadowed();
        const float background[4] = {0, 0, 0, 1};
        ShadowStencil_cls::Fill(background, true);
        mLights.SetBasicLight(0.0, true);
        DrawData(1);
    }

    LightSRCCtrl_cls mLights;
};

void DrawShadows(benchmark::State& state) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    ShadowScene scene(unsigned(state.range(0)), float(state.range(1)), state.range(2) != 0);
    Times_st without, with;
    scene.Draw(false, nullptr);
    scene.Draw(true, nullptr);
    for (auto _ : state)
        for (int round = 0; round < 5; ++round) {
            scene.Draw(false, &without);
            scene.Draw(true, &with);
        }
    state.counters["withoutMs"] = Median(without.wall) * 1e3;
    state.counters["withMs"] = Median(with.wall) * 1e3;
    state.counters["ratio"] = Median(with.wall) / Median(without.wall);
    state.counters["cpuRatio"] = Median(with.work) / Median(without.work);
}

BENCHMARK(DrawShadows)
    ->ArgNames({"quality", "pixels", "near"})
    ->Args({0, 4, 0})
    ->Args({1, 4, 0})
    ->Args({3, 4, 0})
    ->Args({3, 4, 1})
    ->Args({0, 8, 0})
    ->Args({3, 8, 0})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
