#include "GL/DRAW/clsViewScale.h"

#include <epoxy/gl.h>

namespace {

constexpr float kTolerance = 1e-4f;

// Columns of the model-view matrix: of one length, at right angles, no mirror.
bool IsSimilarity(const float* m, float* pScale) {
    const auto dot = [m](int a, int b) {
        return m[4 * a] * m[4 * b] + m[4 * a + 1] * m[4 * b + 1] + m[4 * a + 2] * m[4 * b + 2];
    };
    const float square = dot(0, 0);
    *pScale = std::sqrt(square);
    const float limit = kTolerance * square;
    const bool bOdd = std::fabs(dot(1, 1) - square) > limit || std::fabs(dot(2, 2) - square) > limit ||
                      std::fabs(dot(0, 1)) > limit || std::fabs(dot(0, 2)) > limit ||
                      std::fabs(dot(1, 2)) > limit;
    return !bOdd && square > 0.0f;
}

} // namespace

ViewScale_cls::ViewScale_cls() {
    glGetFloatv(GL_MODELVIEW_MATRIX, mModel);
    glGetFloatv(GL_PROJECTION_MATRIX, mProjection);
    glGetFloatv(GL_VIEWPORT, mRays.viewport);
    const float* p = mProjection;
    const bool bStraight = p[1] == 0.0f && p[2] == 0.0f && p[3] == 0.0f && p[4] == 0.0f && p[6] == 0.0f &&
                           p[7] == 0.0f && p[0] > 0.0f && p[5] > 0.0f;
    const bool bPerspective = p[11] == -1.0f && p[15] == 0.0f && p[12] == 0.0f && p[13] == 0.0f;
    const bool bParallel = p[11] == 0.0f && p[15] == 1.0f && p[8] == 0.0f && p[9] == 0.0f;
    mbPlain = IsSimilarity(mModel, &mRays.modelScale) && bStraight && (bPerspective || bParallel);
    mRays.bPerspective = bPerspective;
    for (int axis = 0; axis < 2; ++axis) {
        // On the picture plane: window coordinate = (plane - offset) / scale.
        const float zoom = std::max(p[5 * axis], 1e-30f);
        const float shift = bPerspective ? p[8 + axis] : -p[12 + axis];
        mRays.scale[axis] = 2.0f / (mRays.viewport[2 + axis] * zoom);
        mRays.offset[axis] = (shift - 1.0f) / zoom - mRays.viewport[axis] * mRays.scale[axis];
    }
    // ndc z = -p10 - p14 / z, in a parallel view p10 * z + p14.
    float window[2];
    glGetFloatv(GL_DEPTH_RANGE, window);
    const float half = 0.5f * (window[1] - window[0]);
    const float middle = 0.5f * (window[0] + window[1]);
    if (bPerspective) {
        mRays.depthMap[0] = middle - half * p[10];
        mRays.depthMap[1] = -half * p[14];
        // ndc z = -1 at the near plane, 1 at the far one.
        mRays.depthRange[0] = p[14] / (1.0f - p[10]);
        mRays.depthRange[1] = p[10] < -1.0f ? p[14] / (-1.0f - p[10]) : -1e30f;
    } else if (p[10] != 0.0f) {
        mRays.depthMap[0] = middle + half * p[14];
        mRays.depthMap[1] = half * p[10];
        mRays.depthRange[0] = (-1.0f - p[14]) / p[10];
        mRays.depthRange[1] = (1.0f - p[14]) / p[10];
    }
    mPixels = mRays.modelScale * std::max(1.0f / mRays.scale[0], 1.0f / mRays.scale[1]);
    mScreen = mRays.viewport[2] * mRays.viewport[3];
}

// Beside the eye, most spheres that reach its plane are out of sight; a wide view has many of them.
bool ViewScale_cls::TouchesView(const float* pEye, float radius) const {
    for (int axis = 0; axis < 2; ++axis)
        for (const float side : {-1.0f, 1.0f}) {
            // Inside: side * x * zoom + z * (side * shift - 1) >= 0
            const float zoom = side * mProjection[5 * axis];
            const float slope = side * mProjection[8 + axis] - 1.0f;
            const float inside = zoom * pEye[axis] + slope * pEye[2];
            if (inside < -radius * std::sqrt(zoom * zoom + slope * slope)) return false;
        }
    return true;
}

ViewScale_cls::Silhouette_st ViewScale_cls::GetSilhouette(const float* pPos, float radius) const {
    const float* m = mModel;
    float eye[3];
    for (int i = 0; i < 3; ++i)
        eye[i] = m[i] * pPos[0] + m[4 + i] * pPos[1] + m[8 + i] * pPos[2] + m[12 + i];
    const float r = radius * mRays.modelScale;
    const float depth = -eye[2];
    Silhouette_st out = {false, false, 0.0f, 0.0f, 0.0f};
    if (mRays.bPerspective && depth <= -r) return out;
    if (mRays.bPerspective && depth <= r * 1.0001f) {
        out.bVisible = out.bFull = TouchesView(eye, r);
        return out;
    }
    const float rest = mRays.bPerspective ? depth * depth - r * r : 1.0f;
    float middle[2];
    float size = 0.0f;
    bool bOutside = false;
    for (int axis = 0; axis < 2; ++axis) {
        const float across = mRays.bPerspective ? eye[axis] * depth / rest : eye[axis];
        const float half = mRays.bPerspective ? r * std::sqrt(eye[axis] * eye[axis] + rest) / rest : r;
        const float pixel = (across - mRays.offset[axis]) / mRays.scale[axis] - mRays.viewport[axis];
        const float reach = half / mRays.scale[axis] + 0.125f;
        middle[axis] = 2.0f * pixel / mRays.viewport[2 + axis] - 1.0f;
        bOutside |= pixel + reach < 0.0f || pixel - reach > mRays.viewport[2 + axis];
        size = std::max(size, 2.0f * reach);
    }
    out.bVisible = !bOutside;
    out.x = middle[0];
    out.y = middle[1];
    out.size = size;
    return out;
}
