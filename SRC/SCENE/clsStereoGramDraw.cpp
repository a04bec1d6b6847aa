// A stereogram's masks, and its mark in other views.
#include <cmath>
#include <vector>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsTextureBase.h"
#include "SCENE/clsStereoGram.h"

namespace {

constexpr double kCrossShare = 0.02; // of the distance to the focus
constexpr float kLineWeight = 0.707f;

} // namespace

void StereoGram_cls::DrawFocus(const PositionAndDirection_cls& camera) const {
    if (mCType.mValue == TYPE_MONOGRAM || mParallax == 0.0) return;
    std::vector<double> ends;
    const auto add = [&](double right, double front, double up) {
        for (int i = 0; i < 3; ++i)
            ends.push_back(camera.mPos[i] + camera.mRight[i] * right + camera.mFront[i] * front +
                           camera.mUp[i] * up);
    };
    const double half = mParallax / 2.0;
    add(-half, 0, 0);
    add(half, 0, 0);
    const double slope = std::tan(static_cast<double>(mCToeInAngle.mValue) * M_PI / 180.0);
    const double focus = half / slope;
    if (mCType.mValue == TYPE_TOE_IN && std::isfinite(focus)) {
        const double cross = kCrossShare * std::abs(focus);
        for (const double side : {-half, half}) {
            add(side, 0, 0);
            add(0, focus, 0);
        }
        add(-cross, focus, 0);
        add(cross, focus, 0);
        add(0, focus, -cross);
        add(0, focus, cross);
    }
    const GLClientScope_cls client;
    glColor4f(1.0f, 0.7f, 0.2f, 1.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_DOUBLE, 0, ends.data());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(ends.size() / 3));
}

void StereoGram_cls::SetColorMaskBegin(int pass, bool bSwap, bool bLastStep) const {
    const bool bFirst = (pass == 0) != bSwap;
    glColor4f(1, 1, 1, 1);
    if (mCEye.mValue == OUTPUT_RED_CYAN)
        glColorMask(bFirst, !bFirst, !bFirst, GL_TRUE);
    else if (mCEye.mValue == OUTPUT_YELLOW_BLUE)
        glColorMask(bFirst, bFirst, !bFirst, GL_TRUE);
    else if (mCEye.mValue == OUTPUT_LINE_BY_LINE && !bLastStep)
        glColor4f(1, 1, 1, kLineWeight);
    else
        SetColorMaskEnd();
}

void StereoGram_cls::SetColorMaskEnd() const { glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE); }

void StereoGram_cls::SetStencilMaskBegin(int w, int h, int pass, bool bSwap) const {
    if (mCEye.mValue != OUTPUT_LINE_BY_LINE) return;
    glEnable(GL_STENCIL_TEST);
    MakeStripePatternOnStencil(w, h, (pass == 1) != bSwap);
    glStencilFunc(GL_EQUAL, 1, ~0u);
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
}

void StereoGram_cls::MakeStripePatternOnStencil(int w, int h, bool bOdd) {
    std::vector<GLfloat> ends;
    for (int y = bOdd ? 1 : 0; y < h; y += 2)
        for (const int x : {0, w}) {
            ends.push_back(static_cast<GLfloat>(x));
            ends.push_back(static_cast<GLfloat>(y) + 0.5f);
        }
    const GLAttribScope_cls attributes;
    const GLClientScope_cls client;
    TextureBase_cls::Push2DMatrix(w, h);
    glUseProgram(0);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glClearStencil(0);
    glStencilMask(~0u);
    glClear(GL_STENCIL_BUFFER_BIT);
    glEnable(GL_STENCIL_TEST);
    glStencilFunc(GL_ALWAYS, 1, ~0u);
    glStencilOp(GL_REPLACE, GL_REPLACE, GL_REPLACE);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glDepthMask(GL_FALSE);
    glLineWidth(1.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, ends.data());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(ends.size() / 2));
    TextureBase_cls::Pop2DMatrix();
}
