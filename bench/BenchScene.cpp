#include "BenchScene.h"

#include <chrono>
#include <cstdlib>
#include <random>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsPDataBlock.h"

BenchScene_cls::BenchScene_cls(int number, const Fill& fill) : mSnap(nullptr, 0), mTarget(kSize, kSize) {
    GLAttribute_cls::InitializeShader(nullptr, true);
    PDataBlock_cls& block = *mSnap.mpCBlock;
    block.mParticleNumber = number;
    if (!block.Allocate(number)) std::abort();
    std::mt19937 random(7);
    std::uniform_real_distribution<float> side(-1.0f, 1.0f);
    for (int i = 0; i < number; ++i) {
        for (int axis = 0; axis < 3; ++axis)
            block.mpPos[i][axis] = side(random);
        block.mpRadius[i] = 0.01f;
        block.mpValue1[i] = 0.5f;
        block.mpType[i] = 0;
        fill(block, i, 0.5f + 0.5f * side(random));
    }
    for (int i = 0; i < 4; ++i) {
        mAttribute[i] = std::make_unique<GLAttribute_cls>(nullptr, 0, i, &mOption);
        mpAttribute[i] = mAttribute[i].get();
    }
    mSnap.mTime = 0.0;
    mTarget.MakeFBO(false);
}

BenchScene_cls::~BenchScene_cls() = default;

void BenchScene_cls::MakeDrawn() {
    mDrawn = std::make_unique<SnapData_cls>(mSnap.mpCBlock, mpAttribute, 0.0, 1);
}

BenchScene_cls::Took_st BenchScene_cls::Time(const std::function<void()>& prepare,
                                             const std::function<void()>& draw) {
    const FBOScope_cls target(mTarget, true);
    PositionAndDirection_cls camera;
    camera.Set(0, 0, kEye);
    GLPerspective_cls perspective(kSize, kSize, kAngle);
    perspective.SetPerspectiveOnGL(camera);
    perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
    mDraw.SetCameraPos(camera, nullptr);
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    prepare();
    glFinish();
    const double work = GetWork();
    const auto start = std::chrono::steady_clock::now();
    draw();
    glFinish();
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return {wall, GetWork() - work};
}
