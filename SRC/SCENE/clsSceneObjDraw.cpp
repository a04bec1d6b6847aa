// A placed object in OpenGL.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

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

namespace {

constexpr GLfloat kPathPoint = 6.0f;
constexpr GLfloat kKeyPoint = 10.0f;

using PathPoints = std::vector<std::array<GLfloat, 3>>;

void DrawPoints(const PathPoints& points, GLfloat size) {
    glPointSize(size);
    glVertexPointer(3, GL_FLOAT, 0, points.data());
    glDrawArrays(GL_POINTS, 0, GLsizei(points.size()));
}

} // namespace

// Evaluates past the cached values, which a panel may be editing.
void SceneObj_cls::GLDrawPath() const {
    constexpr int kPoints = 100;
    if (!mCVisible.mValue || !mpCTranslate) return;
    const auto add = [this](PathPoints& points, double index) {
        double p[3];
        for (size_t k = 0; k < 3; ++k)
            p[k] = mpCTranslate->mVParams[k].Evaluate(index, Parameters_cls::msResolution);
        ToScene(p);
        const std::array<GLfloat, 3> point = {GLfloat(p[0]), GLfloat(p[1]), GLfloat(p[2])};
        if (std::all_of(point.begin(), point.end(), [](GLfloat x) { return std::isfinite(x); }))
            points.push_back(point);
    };
    PathPoints path, keys;
    for (int i = 0; i < kPoints; ++i)
        add(path, double(i) / kPoints);
    for (const Parameters_cls& param : mpCTranslate->mVParams) {
        if (!param.mbTimeDepend.mValue) continue;
        for (const KeyFrame_cls& key : param.GetKeys())
            add(keys, key.mDoubleIndex);
    }
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glColor4f(0.2f, 1.0f, 0.2f, 1.0f);
    DrawPoints(path, kPathPoint);
    glColor4f(1.0f, 0.8f, 0.2f, 1.0f);
    DrawPoints(keys, kKeyPoint);
    glPointSize(kPathPoint);
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
