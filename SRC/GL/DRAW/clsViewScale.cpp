#include "GL/DRAW/clsViewScale.h"

#include <epoxy/gl.h>

#include "COMMON/DataLoops.h"

namespace {

constexpr float kTolerance = 1e-4f;
constexpr float kMargin = 0.0625f; // pixels, as GL/Exact.vert has it

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

/// Where the picture plane lies under the pixels.
struct Picture_st {
    float left, bottom;          ///< of the viewport on the plane
    float zoomX, zoomY, largest; ///< pixels a length of the plane
};

using Silhouettes_st = ViewScale_cls::Silhouettes_st;

MORENTIS_DATA_LOOP void ToEye(Silhouettes_st& s, int count, const float* m, float scale) {
    for (int i = 0; i < count; ++i) {
        const float x = s.eyeX[i];
        const float y = s.eyeY[i];
        const float z = s.eyeZ[i];
        s.eyeX[i] = m[0] * x + m[4] * y + m[8] * z + m[12];
        s.eyeY[i] = m[1] * x + m[5] * y + m[9] * z + m[13];
        s.eyeZ[i] = m[2] * x + m[6] * y + m[10] * z + m[14];
        s.radius[i] *= scale;
    }
}

// With depth d and rest = d * d - r * r the silhouette reaches r * sqrt(x * x + rest) / rest across; with
// sqrt(x * x + rest) < d + x * x / 2d no root is needed for what is at least that.
MORENTIS_DATA_LOOP void SeePerspective(Silhouettes_st& s, int count, Picture_st picture) {
    for (int i = 0; i < count; ++i) {
        const float x = s.eyeX[i];
        const float y = s.eyeY[i];
        const float r = s.radius[i];
        const float depth = -s.eyeZ[i];
        const float rest = depth * depth - r * r;
        const float both = 1.0f / (depth * rest);
        const float perRest = depth * both;
        const float farther = x * x > y * y ? x * x : y * y;
        s.x[i] = (x * depth * perRest - picture.left) * picture.zoomX;
        s.y[i] = (y * depth * perRest - picture.bottom) * picture.zoomY;
        s.reach[i] = r * (depth + 0.5f * farther * rest * both) * perRest * picture.largest + kMargin;
    }
}

MORENTIS_DATA_LOOP void SeeParallel(Silhouettes_st& s, int count, Picture_st picture) {
    for (int i = 0; i < count; ++i) {
        s.x[i] = (s.eyeX[i] - picture.left) * picture.zoomX;
        s.y[i] = (s.eyeY[i] - picture.bottom) * picture.zoomY;
        s.reach[i] = s.radius[i] * picture.largest + kMargin;
    }
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
    const bool bDeep = bPerspective ? p[14] < 0.0f : p[10] < 0.0f; // what is farther has the larger depth
    float window[2];
    glGetFloatv(GL_DEPTH_RANGE, window);
    mbRays = bStraight && (bPerspective || bParallel) && bDeep && window[0] < window[1];
    mbPlain = IsSimilarity(mModel, &mRays.modelScale) && mbRays;
    mRays.bPerspective = bPerspective;
    for (int axis = 0; axis < 2; ++axis) {
        // On the picture plane: window coordinate = (plane - offset) / scale.
        const float zoom = std::max(p[5 * axis], 1e-30f);
        const float shift = bPerspective ? p[8 + axis] : -p[12 + axis];
        mRays.scale[axis] = 2.0f / (mRays.viewport[2 + axis] * zoom);
        mRays.offset[axis] = (shift - 1.0f) / zoom - mRays.viewport[axis] * mRays.scale[axis];
    }
    // ndc z = -p10 - p14 / z, in a parallel view p10 * z + p14.
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
bool ViewScale_cls::TouchesView(float x, float y, float z, float radius) const {
    const float across[2] = {x, y};
    for (int axis = 0; axis < 2; ++axis)
        for (const float side : {-1.0f, 1.0f}) {
            // Inside: side * x * zoom + z * (side * shift - 1) >= 0
            const float zoom = side * mProjection[5 * axis];
            const float slope = side * mProjection[8 + axis] - 1.0f;
            const float inside = zoom * across[axis] + slope * z;
            if (inside < -radius * std::sqrt(zoom * zoom + slope * slope)) return false;
        }
    return true;
}

void ViewScale_cls::GetSilhouettes(const float* pBalls, int stride, int count, Silhouettes_st& out) const {
    for (int i = 0; i < count; ++i) {
        const float* p = pBalls + static_cast<ptrdiff_t>(i) * stride;
        out.eyeX[i] = p[0], out.eyeY[i] = p[1], out.eyeZ[i] = p[2], out.radius[i] = p[3];
    }
    const Picture_st picture = {mRays.offset[0] + mRays.viewport[0] * mRays.scale[0],
                                mRays.offset[1] + mRays.viewport[1] * mRays.scale[1], 1.0f / mRays.scale[0],
                                1.0f / mRays.scale[1],
                                std::max(1.0f / mRays.scale[0], 1.0f / mRays.scale[1])};
    ToEye(out, count, mModel, mRays.modelScale);
    if (mRays.bPerspective)
        SeePerspective(out, count, picture);
    else
        SeeParallel(out, count, picture);
}

ViewScale_cls::Where ViewScale_cls::Locate(const Silhouettes_st& all, int i) const {
    const float r = all.radius[i];
    const float z = all.eyeZ[i];
    if (!(z - r <= mRays.depthRange[0] && z + r >= mRays.depthRange[1])) return Where::Hidden;
    if (mRays.bPerspective && -z <= r * 1.0001f)
        return TouchesView(all.eyeX[i], all.eyeY[i], z, r) ? Where::Near : Where::Hidden;
    const float reach = all.reach[i];
    const float width = mRays.viewport[2];
    const float height = mRays.viewport[3];
    const bool bSeen = all.x[i] + reach >= 0.0f && all.x[i] - reach <= width && all.y[i] + reach >= 0.0f &&
                       all.y[i] - reach <= height;
    if (!bSeen) return Where::Hidden;
    if (z + r > mRays.depthRange[0] || z - r < mRays.depthRange[1]) return Where::Near;
    constexpr float kRim = 0.0005f;
    const bool bInside = all.x[i] > kRim * width && all.x[i] < (1.0f - kRim) * width &&
                         all.y[i] > kRim * height && all.y[i] < (1.0f - kRim) * height;
    return bInside ? Where::Inside : Where::Rim;
}
