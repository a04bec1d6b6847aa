// Drawing points against a bare OpenGL program that owns the same vertices in a buffer object: same
// context, same off-screen buffer, finished both. The counter "ratio" is ours over the bare one.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
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
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"

namespace {

constexpr int kPoints = 1000000;
constexpr int kSize = 2048;

// How the points look in one case.
struct Look {
    int pointSize;
    bool bClassify;
    bool bCurve;     ///< colour by value
    bool bMixedSize; ///< four classes in file order, each with a size of its own
};

class Scene {
public:
    explicit Scene(const Look& look)
        : mSnap(nullptr, 0), mTarget(kSize, kSize), mParts(look.bMixedSize ? 4 : 1) {
        FillBlock(look.bMixedSize);
        mOption.mClassify.mValue = look.bClassify ? 1 : 0;
        for (int i = 0; i < 4; ++i) {
            mAttribute[i] = std::make_unique<GLAttribute_cls>(nullptr, 0, i, &mOption);
            mAttribute[i]->mPointSize.mValue = look.pointSize + (look.bMixedSize ? i : 0);
            mAttribute[i]->mColor.mbUseColorCurve.mValue = look.bCurve;
            mpAttribute[i] = mAttribute[i].get();
            mAttribute[i]->mColor.PreCalcScaleFactor();
        }
        mSnap.mTime = 0.0;
        mDrawn = std::make_unique<SnapData_cls>(mSnap.mpCBlock, mpAttribute, 0.0, 1);
        mTarget.MakeFBO(false);
        MakeBareBuffer();
    }
    ~Scene() { glDeleteBuffers(2, mBuffer); }

    double TimeOurs() {
        return Time([this] {
            if (mOption.mClassify.mValue != 0)
                mDraw.GLDrawSequential(0, mDrawn.get(), mpAttribute);
            else if (mpAttribute[0]->mColor.IsConstant())
                mDraw.GLDrawPointArrayElement(0, mDrawn.get(), mpAttribute[0]);
            else
                mDraw.GLDrawPointAll(0, mDrawn.get(), mpAttribute[0]);
        });
    }
    double TimeBare() {
        return Time([this] {
            glDepthMask(mOption.mClassify.mValue == 0); // classes are drawn without depth writes
            glEnableClientState(GL_VERTEX_ARRAY);
            glEnableClientState(GL_COLOR_ARRAY);
            for (int part = 0; part < mParts; ++part) {
                const GLsizei particle = mParts == 1 ? 0 : mParts;
                glBindBuffer(GL_ARRAY_BUFFER, mBuffer[0]);
                glVertexPointer(3, GL_FLOAT, particle * 12, static_cast<char*>(nullptr) + part * 12);
                glBindBuffer(GL_ARRAY_BUFFER, mBuffer[1]);
                glColorPointer(4, GL_FLOAT, particle * 16, static_cast<char*>(nullptr) + part * 16);
                glPointSize(float(mpAttribute[part]->mPointSize.mValue));
                glDrawArrays(GL_POINTS, 0, kPoints / mParts);
            }
            glBindBuffer(GL_ARRAY_BUFFER, 0);
            glDisableClientState(GL_VERTEX_ARRAY);
            glDisableClientState(GL_COLOR_ARRAY);
        });
    }

private:
    void FillBlock(bool bMixed) {
        PDataBlock_cls& block = *mSnap.mpCBlock;
        block.mParticleNumber = kPoints;
        if (!block.Allocate(kPoints)) std::abort();
        std::mt19937 random(7);
        std::uniform_real_distribution<float> side(-1.0f, 1.0f);
        for (int i = 0; i < kPoints; ++i) {
            for (int axis = 0; axis < 3; ++axis)
                block.mpPos[i][axis] = side(random);
            block.mpRadius[i] = 0.01f;
            block.mpValue1[i] = 0.5f + 0.5f * side(random);
            block.mpType[i] = bMixed ? static_cast<unsigned char>(i % 4) : 0;
        }
    }
    void MakeBareBuffer() {
        glGenBuffers(2, mBuffer);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[0]);
        glBufferData(GL_ARRAY_BUFFER, kPoints * 12, mDrawn->mpPos, GL_STATIC_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[1]);
        glBufferData(GL_ARRAY_BUFFER, kPoints * 16, mDrawn->mpColor, GL_STATIC_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    }

    template <class DRAW>
    double Time(DRAW draw) {
        const FBOScope_cls target(mTarget, true);
        PositionAndDirection_cls camera;
        camera.Set(0, 0, 4);
        GLPerspective_cls perspective(kSize, kSize);
        perspective.SetPerspectiveOnGL(camera);
        perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
        glEnable(GL_DEPTH_TEST);
        glDisable(GL_LIGHTING);
        glFinish();
        const auto start = std::chrono::steady_clock::now();
        draw();
        glFinish();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    DrawOption_cls mOption;
    std::unique_ptr<GLAttribute_cls> mAttribute[4];
    GLAttribute_cls* mpAttribute[4] = {};
    PDataSnap_cls mSnap;
    std::unique_ptr<SnapData_cls> mDrawn;
    GLDrawData_cls mDraw;
    FBO_cls mTarget;
    int mParts; ///< calls of the bare program, one a point size
    GLuint mBuffer[2] = {0, 0};
};

constexpr int kRounds = 5; // of both, in turn

void DrawPoints(benchmark::State& state, Look look) {
    if (!MakeBenchContext()) {
        state.SkipWithError("no display");
        return;
    }
    Scene scene(look);
    scene.TimeBare();
    scene.TimeOurs();
    std::vector<double> ours, bare;
    for (auto _ : state)
        for (int round = 0; round < kRounds; ++round) {
            bare.push_back(scene.TimeBare());
            ours.push_back(scene.TimeOurs());
        }
    state.counters["bareMs"] = Median(bare) * 1e3;
    state.counters["oursMs"] = Median(ours) * 1e3;
    state.counters["ratio"] = Median(ours) / Median(bare);
}

// The first one is the figure that we quote: 1,000,000 points of one pixel, a colour for each particle.
#define DRAW_CASE(name, ...)                                                                                 \
    BENCHMARK_CAPTURE(DrawPoints, name, Look{__VA_ARGS__})->Name(#name)->Unit(benchmark::kMillisecond)

DRAW_CASE(DrawPoints, 1, true, false, false);
DRAW_CASE(DrawPoints4px, 4, true, false, false);
DRAW_CASE(DrawPoints10px, 10, true, false, false);
DRAW_CASE(DrawPointsMixedSizes, 1, true, false, true);
DRAW_CASE(DrawPointsOneColour, 1, false, false, false);
DRAW_CASE(DrawPointsByValue, 1, false, true, false);

} // namespace
