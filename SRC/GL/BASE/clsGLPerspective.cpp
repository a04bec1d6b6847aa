#include "GL/BASE/clsGLPerspective.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsTextureBase.h"

namespace {

constexpr double ORTHO_DEPTH = 1000.0;

double Ratio(int width, int height) {
    return static_cast<double>(std::max(width, 1)) / static_cast<double>(std::max(height, 1));
}

void SetOrtho(double halfW, double halfH, double depth, double out[16]) {
    std::fill(out, out + 16, 0.0);
    out[0] = 1.0 / halfW;
    out[5] = 1.0 / halfH;
    out[10] = -1.0 / depth;
    out[15] = 1.0;
}

// As gluPerspective with aspect 1, which knows the true pi.
void SetPerspective(double angle, double nearPlane, double farPlane, double out[16]) {
    const double scale = 1.0 / std::tan(angle * M_PI / 360.0);
    std::fill(out, out + 16, 0.0);
    out[0] = out[5] = scale;
    out[10] = (farPlane + nearPlane) / (nearPlane - farPlane);
    out[11] = -1.0;
    out[14] = 2.0 * farPlane * nearPlane / (nearPlane - farPlane);
}

void Transform(const double m[16], const double v[4], double out[4]) {
    for (int i = 0; i < 4; ++i)
        out[i] = m[i] * v[0] + m[4 + i] * v[1] + m[8 + i] * v[2] + m[12 + i] * v[3];
}

} // namespace

GLPerspective_cls::GLPerspective_cls(int width, int height, double angle, double nearPlane, double farPlane)
    : mAngle(angle), mNear(nearPlane), mFar(farPlane), mWindowW(width), mWindowH(height), mClipW(width),
      mClipH(height) {}

void GLPerspective_cls::SetWindowSize(int width, int height) {
    mWindowW = width;
    mWindowH = height;
}

void GLPerspective_cls::SetClipSize(int width, int height) {
    mClipW = width;
    mClipH = height;
}

double GLPerspective_cls::GetAspectRatio() const { return Ratio(mWindowW, mWindowH); }

double GLPerspective_cls::GetClipAspectRatio() const { return Ratio(mClipW, mClipH); }

double GLPerspective_cls::GetSquareAngle() const {
    const double angle = std::clamp(std::isfinite(mAngle) ? mAngle : 35.0, 0.01, 179.0);
    const double clip = GetClipAspectRatio();
    if (clip <= 1.0) return angle;
    return MyVector::ToDegrees(2.0 * std::atan(std::tan(MyVector::ToRadians(angle) / 2.0) * clip));
}

void GLPerspective_cls::GetProjectionMatrix(const PositionAndDirection_cls& camera, double out[16]) const {
    if (mbPerspective) {
        // Planes that a user has crossed give a thin but valid view.
        const double nearPlane = mNear > 0.0 ? mNear : 1e-6;
        SetPerspective(GetSquareAngle(), nearPlane, std::max(mFar, nearPlane * 1.001), out);
        return;
    }
    const double half = std::max(camera.GetDistanceToAnc() / 2.0, 1e-30);
    const double aspect = GetAspectRatio();
    const double depth = GetOrthoDepth(2.0 * half, mFar);
    if (mbFitWidth)
        SetOrtho(half, half / aspect, depth, out);
    else
        SetOrtho(half * aspect, half, depth, out);
}

// What is tiny needs its depths told apart, and what is huge must not be cut.
double GLPerspective_cls::GetOrthoDepth(double width, double farPlane) {
    const double depth = farPlane > 0.0 && farPlane < 1.0 ? farPlane : ORTHO_DEPTH;
    return width < depth ? depth : 2.0 * width;
}

void GLPerspective_cls::GetModelViewMatrix(const PositionAndDirection_cls& camera, double out[16]) {
    for (int i = 0; i < 3; ++i) {
        out[4 * i] = camera.mRight[i];
        out[4 * i + 1] = camera.mUp[i];
        out[4 * i + 2] = -camera.mFront[i];
        out[4 * i + 3] = 0.0;
    }
    out[12] = -MyVector::GetScalarProduct(camera.mRight, camera.mPos);
    out[13] = -MyVector::GetScalarProduct(camera.mUp, camera.mPos);
    out[14] = MyVector::GetScalarProduct(camera.mFront, camera.mPos);
    out[15] = 1.0;
}

bool GLPerspective_cls::Project(const PositionAndDirection_cls& camera, const double p[3],
                                double win[3]) const {
    double model[16], projection[16], eye[4], clip[4];
    GetModelViewMatrix(camera, model);
    GetProjectionMatrix(camera, projection);
    const double point[4] = {p[0], p[1], p[2], 1.0};
    Transform(model, point, eye);
    Transform(projection, eye, clip);
    if (!(clip[3] > 0.0)) return false;
    for (int i = 0; i < 3; ++i)
        win[i] = clip[i] / clip[3];
    return true;
}

void GLPerspective_cls::SetViewportOnGL() const { glViewport(0, 0, mWindowW, mWindowH); }

void GLPerspective_cls::SetPerspectiveOnGL(const PositionAndDirection_cls& camera) const {
    double matrix[16];
    GetProjectionMatrix(camera, matrix);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(matrix);
    glMatrixMode(GL_MODELVIEW);
}

void GLPerspective_cls::SetModelOrProjectionViewOnGL(const PositionAndDirection_cls& camera,
                                                     unsigned matrixMode) const {
    double matrix[16];
    GetModelViewMatrix(camera, matrix);
    glMatrixMode(matrixMode);
    glLoadMatrixd(matrix);
}

void GLPerspective_cls::Push2DMatrix(int width, int height) {
    glViewport(0, 0, width, height);
    TextureBase_cls::Push2DMatrix(width, height);
}

void GLPerspective_cls::Pop2DMatrix() { TextureBase_cls::Pop2DMatrix(); }
