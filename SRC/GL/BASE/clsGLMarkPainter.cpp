#include "GL/BASE/clsGLMarkPainter.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"

namespace {

constexpr unsigned kWholeLine = 0xFFFF;
constexpr float kRim = 1.5f; // pixels of the window to each side of a handle's line

GLenum ModeOf(MarkPainter_cls::Shape shape) {
    switch (shape) {
    case MarkPainter_cls::Shape::Points:
        return GL_POINTS;
    case MarkPainter_cls::Shape::Lines:
        return GL_LINES;
    case MarkPainter_cls::Shape::Strip:
        return GL_LINE_STRIP;
    case MarkPainter_cls::Shape::Loop:
        return GL_LINE_LOOP;
    default:
        return GL_TRIANGLE_FAN;
    }
}

} // namespace

GLMarkPainter_cls::GLMarkPainter_cls(const double* pProjection, double pixelsAcross, float lineWidth,
                                     float pixel)
    : MarkPainter_cls(pProjection, pixelsAcross), mLineWidth(std::max(lineWidth, 1e-3f)), mPixel(pixel) {}

void GLMarkPainter_cls::PushMatrix() { glPushMatrix(); }

void GLMarkPainter_cls::PopMatrix() { glPopMatrix(); }

void GLMarkPainter_cls::Multiply(const double* pMatrix) { glMultMatrixd(pMatrix); }

void GLMarkPainter_cls::DoTranslate(const double* pWay) { glTranslated(pWay[0], pWay[1], pWay[2]); }

void GLMarkPainter_cls::DoRotate(double degrees, const double* pAxis) {
    glRotated(degrees, pAxis[0], pAxis[1], pAxis[2]);
}

void GLMarkPainter_cls::DoScale(const double* pFactors) { glScaled(pFactors[0], pFactors[1], pFactors[2]); }

void GLMarkPainter_cls::GetModelView(double out[16]) const { glGetDoublev(GL_MODELVIEW_MATRIX, out); }

void GLMarkPainter_cls::SetColor(float r, float g, float b) {
    mColor[0] = r;
    mColor[1] = g;
    mColor[2] = b;
    glColor4f(r, g, b, 1.0f);
}

void GLMarkPainter_cls::SetDashes(unsigned pattern) {
    if (pattern == kWholeLine) {
        glDisable(GL_LINE_STIPPLE);
        return;
    }
    glEnable(GL_LINE_STIPPLE);
    glLineStipple(1, static_cast<GLushort>(pattern));
}

void GLMarkPainter_cls::SetHandle(float width) {
    if (width > 0.0f && !(mHandle > 0.0f)) mbCulls = glIsEnabled(GL_CULL_FACE) != GL_FALSE;
    mHandle = width;
    if (width > 0.0f) { // handles lie over everything and have no back
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_CULL_FACE);
    } else {
        glEnable(GL_DEPTH_TEST);
        if (mbCulls) glEnable(GL_CULL_FACE);
    }
    glLineWidth(width > 0.0f ? std::max(width * mPixel, 1.0f) : mLineWidth);
}

// Light around what is coloured: on a dark background the rim is seen, on a light one the colour.
void GLMarkPainter_cls::DrawRim(unsigned mode, int number) const {
    glLineWidth(std::max((mHandle + 2.0f * kRim) * mPixel, 2.0f));
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glColor4f(0.9f, 0.9f, 0.9f, 1.0f);
    glDrawArrays(mode, 0, number);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glLineWidth(std::max(mHandle * mPixel, 1.0f));
    glColor4f(mColor[0], mColor[1], mColor[2], 1.0f);
}

void GLMarkPainter_cls::Draw(Shape shape, const Point* pPoints, int number) {
    const GLClientScope_cls client;
    const GLenum mode = ModeOf(shape);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, pPoints);
    if (mHandle > 0.0f) DrawRim(mode, number);
    glDrawArrays(mode, 0, number);
}
