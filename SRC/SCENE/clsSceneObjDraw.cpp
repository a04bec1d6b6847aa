// A placed object in OpenGL.
#include <cmath>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsMarkPainter.h"
#include "GL/BASE/clsNavigators.h"
#include "SCENE/clsSceneObj.h"

void SceneObj_cls::GLSetMatrix() const {
    double matrix[16];
    mCCurrent.GetGLMatrix(matrix);
    glScaled(mCScaleCurrent[0], mCScaleCurrent[1], mCScaleCurrent[2]);
    glMultMatrixd(matrix);
}

// Evaluates past the cached values, which a panel may be editing.
void SceneObj_cls::GLDrawPath() const {
    constexpr int kPoints = 100;
    if (!mCVisible.mValue || !mpCTranslate) return;
    GLfloat points[kPoints][3];
    int number = 0;
    for (int i = 0; i < kPoints; ++i) {
        for (size_t k = 0; k < 3; ++k)
            points[number][k] = GLfloat(
                mpCTranslate->mVParams[k].Evaluate(double(i) / kPoints, Parameters_cls::msResolution));
        const GLfloat* p = points[number];
        if (std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2])) ++number;
    }
    const GLClientScope_cls client;
    glColor4f(0.2f, 1.0f, 0.2f, 1.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, points);
    glDrawArrays(GL_POINTS, 0, number);
}

void SceneObj_cls::GLDrawGuide(MarkPainter_cls& painter) const {
    static const GLGuides_cls kTranslate(GLGuides_cls::TRANSLATE), kScale(GLGuides_cls::SCALE),
        kRotate(GLGuides_cls::ROTATE);
    const int mode = Navigators_cls::msManipulatorMode;
    if (!painter.mbHandles || !TakesMode(mode)) return;
    double place[3], axes[3][3];
    GetTranslation(kCurrent, place);
    ToScene(place);
    GetGuideAxes(mode, axes);
    const GLGuides_cls& guide = mode == GLGuides_cls::SCALE    ? kScale
                                : mode == GLGuides_cls::ROTATE ? kRotate
                                                               : kTranslate;
    guide.DrawGuide(painter, place, axes, mDragMode);
}

void SceneObj_cls::SetMarkColor(MarkPainter_cls& painter, float r, float g, float b) const {
    const float white = mspCHovered == this && painter.mbHandles ? 0.5f : 0.0f;
    const auto brighter = [white](float c) { return c + white * (1.0f - c); };
    painter.SetColor(brighter(r), brighter(g), brighter(b));
}
