// What lights cost on ray-cast spheres: 1,000,000 of them about two pixels wide under seven lights against
// the same under one far light. Counter "ratio" is seven over one; "cpuRatio" the same of what all threads
// worked, which says more on a busy machine. DrawSpheresExactLights: seven far lights, as new ones are;
// ...Mixed: spots, point lights that fade and far ones.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <random>
#include <vector>

#include "BenchContext.h"
#include "BenchTimes.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

constexpr int kSize = 2048;
constexpr int kSpheres = 1000000;
constexpr double kEye = 4.0;
constexpr float kRadius = 0.00125f; // a pixel where they are
constexpr int kLights = LightSRCCtrl_cls::kLightNumber;

class LitScene {
public:
    explicit LitScene(bool bMixed) : mSnap(nullptr, 0), mTarget(kSize, kSize) {
        GLAttribute_cls::InitializeShader(nullptr, true);
        PDataBlock_cls& block = *mSnap.mpCBlock;
        block.mParticleNumber = kSpheres;
        if (!block.Allocate(kSpheres)) std::abort();
        std::mt19937 random(7);
        std::uniform_real_distribution<float> side(-1.0f, 1.0f);
        for (int i = 0; i < kSpheres; ++i) {
            for (int axis = 0; axis < 3; ++axis)
                block.mpPos[i][axis] = side(random);
            block.mpRadius[i] = kRadius;
            block.mpValue1[i] = 0.5f;
            block.mpType[i] = 0;
        }
        for (int i = 0; i < 4; ++i) {
            mAttribute[i] = std::make_unique<GLAttribute_cls>(nullptr, 0, i, &mOption);
            mAttribute[i]->mDrawType.mValue = 2;
            mAttribute[i]->mDrawQuality.mValue = 3;
            mpAttribute[i] = mAttribute[i].get();
        }
        mSnap.mTime = 0.0;
        mDrawn = std::make_unique<SnapData_cls>(mSnap.mpCBlock, mpAttribute, 0.0, 1);
        mTarget.MakeFBO(false);
        for (int i = 1; i < kLights; ++i)
            Place(i, bMixed);
    }
    void Draw(int lights, Times_st* pTimes) {
        const FBOScope_cls target(mTarget, true);
        PositionAndDirection_cls camera;
        camera.Set(0, 0, kEye);
        GLPerspective_cls perspective(kSize, kSize);
        perspective.SetPerspectiveOnGL(camera);
        perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
        glEnable(GL_CULL_FACE);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_LIGHTING);
        mLights.mCLightNumber.mValue = lights;
        mLights.SetNonShadowLight(0.0);
        glFinish();
        const double work = GetWork();
        const auto start = std::chrono::steady_clock::now();
        mDraw.GLDrawSequential(0, mDrawn.get(), mpAttribute);
        glFinish();
        if (!pTimes) return;
        pTimes->work.push_back(GetWork() - work);
        pTimes->wall.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
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

    DrawOption_cls mOption;
    std::unique_ptr<GLAttribute_cls> mAttribute[4];
    GLAttribute_cls* mpAttribute[4] = {};
    PDataSnap_cls mSnap;
    std::unique_ptr<SnapData_cls> mDrawn;
    GLDrawData_cls mDraw;
    FBO_cls mTarget;
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
