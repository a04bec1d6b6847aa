// Drawing points against a bare OpenGL program that owns the same vertices in a buffer object: same
// context, same off-screen buffer, finished both. The counter "ratio" is ours over the bare one.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <vector>

#include "BenchContext.h"
#include "BenchScene.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsPDataBlock.h"

namespace {

constexpr int kPoints = 1000000;

// How the points look in one case.
struct Look {
    int pointSize;
    bool bClassify;
    bool bCurve;     ///< colour by value
    bool bMixedSize; ///< four classes in file order, each with a size of its own
};

class Scene : BenchScene_cls {
public:
    explicit Scene(const Look& look)
        : BenchScene_cls(kPoints,
                         [&look](PDataBlock_cls& block, int i, float random) {
                             block.mpValue1[i] = random;
                             block.mpType[i] = look.bMixedSize ? static_cast<unsigned char>(i % 4) : 0;
                         }),
          mParts(look.bMixedSize ? 4 : 1) {
        mOption.mClassify.mValue = look.bClassify ? 1 : 0;
        for (int i = 0; i < 4; ++i) {
            mpAttribute[i]->mPointSize.mValue = look.pointSize + (look.bMixedSize ? i : 0);
            mpAttribute[i]->mColor.mbUseColorCurve.mValue = look.bCurve;
            mpAttribute[i]->mColor.PreCalcScaleFactor();
        }
        MakeDrawn();
        MakeBareBuffer();
    }
    ~Scene() { glDeleteBuffers(2, mBuffer); }

    double TimeOurs() {
        return TimeUnlit([this] {
            if (mOption.mClassify.mValue != 0)
                mDraw.GLDrawSequential(0, mDrawn.get(), mpAttribute);
            else if (mpAttribute[0]->mColor.IsConstant())
                mDraw.GLDrawPointArrayElement(0, mDrawn.get(), mpAttribute[0]);
            else
                mDraw.GLDrawPointAll(0, mDrawn.get(), mpAttribute[0]);
        });
    }
    double TimeBare() {
        return TimeUnlit([this] {
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
    void MakeBareBuffer() {
        glGenBuffers(2, mBuffer);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[0]);
        glBufferData(GL_ARRAY_BUFFER, kPoints * 12, mDrawn->mpPos, GL_STATIC_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[1]);
        glBufferData(GL_ARRAY_BUFFER, kPoints * 16, mDrawn->mpColor, GL_STATIC_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    }

    double TimeUnlit(const std::function<void()>& draw) {
        return Time([] { glDisable(GL_LIGHTING); }, draw).wall;
    }

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
