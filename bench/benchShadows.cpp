// What shadows cost: 100,000 spheres under one light, drawn as a view with "Shadow Volume" draws them,
// against the same frame without. Counter "ratio" is with over without; "cpuRatio" the same of what all
// threads worked. By quality: 0 to 2 meshes, 3 ray-cast; and by radius in pixels.
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
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsShadowStencil.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

constexpr int kSize = 2048;
constexpr int kSpheres = 100000;
constexpr double kEye = 4.0;
constexpr double kAngle = 35.0;

class ShadowScene {
public:
    ShadowScene(unsigned quality, float pixels) : mSnap(nullptr, 0), mTarget(kSize, kSize) {
        GLAttribute_cls::InitializeShader(nullptr, true);
        const double perPixel = 2.0 * kEye * std::tan(kAngle * M_PI / 360.0) / kSize;
        PDataBlock_cls& block = *mSnap.mpCBlock;
        block.mParticleNumber = kSpheres;
        if (!block.Allocate(kSpheres)) std::abort();
        std::mt19937 random(7);
        std::uniform_real_distribution<float> side(-1.0f, 1.0f);
        for (int i = 0; i < kSpheres; ++i) {
            for (int axis = 0; axis < 3; ++axis)
                block.mpPos[i][axis] = side(random);
            block.mpRadius[i] = pixels * float(perPixel);
            block.mpValue1[i] = 0.5f;
            block.mpType[i] = 0;
        }
        for (int i = 0; i < 4; ++i) {
            mAttribute[i] = std::make_unique<GLAttribute_cls>(nullptr, 0, i, &mOption);
            mAttribute[i]->mDrawType.mValue = DRAW_SPHERE;
            mAttribute[i]->mDrawQuality.mValue = quality;
            mpAttribute[i] = mAttribute[i].get();
        }
        mSnap.mTime = 0.0;
        mDrawn = std::make_unique<SnapData_cls>(mSnap.mpCBlock, mpAttribute, 0.0, 1);
        mTarget.MakeFBO(false);
        mLights.mCLightNumber.mValue = 1;
    }
    void Draw(bool bShadows, Times_st* pTimes) {
        const FBOScope_cls target(mTarget, true);
        PositionAndDirection_cls camera;
        camera.Set(0, 0, kEye);
        GLPerspective_cls perspective(kSize, kSize, kAngle);
        perspective.SetPerspectiveOnGL(camera);
        perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
        glEnable(GL_CULL_FACE);
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        glEnable(GL_LIGHTING);
        mLights.SetNonShadowLight(0.0);
        glFinish();
        const double work = GetWork();
        const auto start = std::chrono::steady_clock::now();
        DrawData(0);
        if (bShadows) DrawShadowed();
        glFinish();
        if (!pTimes) return;
        pTimes->work.push_back(GetWork() - work);
        pTimes->wall.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }

private:
    void DrawData(int face) { mDraw.GLDrawSequential(face, mDrawn.get(), mpAttribute); }
    void DrawShadowed() {
        float light[4];
        mLights.GetPosition(0, 0.0, light); // the camera looks along z
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

    DrawOption_cls mOption;
    std::unique_ptr<GLAttribute_cls> mAttribute[4];
    GLAttribute_cls* mpAttribute[4] = {};
    PDataSnap_cls mSnap;
    std::unique_ptr<SnapData_cls> mDrawn;
    GLDrawData_cls mDraw;
    FBO_cls mTarget;
    LightSRCCtrl_cls mLights;
};

void DrawShadows(benchmark::State& state) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    ShadowScene scene(unsigned(state.range(0)), float(state.range(1)));
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
    ->ArgNames({"quality", "pixels"})
    ->Args({0, 4})
    ->Args({1, 4})
    ->Args({3, 4})
    ->Args({0, 8})
    ->Args({3, 8})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
