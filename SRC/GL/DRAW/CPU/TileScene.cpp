#include "GL/DRAW/CPU/TileScene.h"

#include <algorithm>
#include <cmath>

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
    const float turned = m[0] * (m[5] * m[10] - m[6] * m[9]) - m[4] * (m[1] * m[10] - m[2] * m[9]) +
                         m[8] * (m[1] * m[6] - m[2] * m[5]);
    return square > 0.0f && turned > 0.0f && std::fabs(dot(1, 1) - square) <= limit &&
           std::fabs(dot(2, 2) - square) <= limit && std::fabs(dot(0, 1)) <= limit &&
           std::fabs(dot(0, 2)) <= limit && std::fabs(dot(1, 2)) <= limit && m[3] == 0.0f && m[7] == 0.0f &&
           m[11] == 0.0f && m[15] == 1.0f;
}

} // namespace

bool TileView_st::Set(const float* pModel, const float* pProjection, int w, int h) {
    std::copy_n(pModel, 16, model);
    std::copy_n(pProjection, 16, projection);
    width = w, height = h;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row) {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k)
                sum += projection[4 * k + row] * model[4 * column + k];
            both[4 * column + row] = sum;
        }
    const float* p = projection;
    const bool bStraight = p[1] == 0.0f && p[2] == 0.0f && p[3] == 0.0f && p[4] == 0.0f && p[6] == 0.0f &&
                           p[7] == 0.0f && p[0] > 0.0f && p[5] > 0.0f;
    bPerspective = p[11] == -1.0f && p[15] == 0.0f && p[12] == 0.0f && p[13] == 0.0f;
    const bool bParallel = p[11] == 0.0f && p[15] == 1.0f && p[8] == 0.0f && p[9] == 0.0f;
    // What is farther has the larger depth.
    const bool bDeep = bPerspective ? p[14] < 0.0f && p[10] < 0.0f : p[10] < 0.0f;
    if (!bStraight || !(bPerspective || bParallel) || !bDeep || w < 1 || h < 1) return false;
    for (int axis = 0; axis < 2; ++axis) {
        // On the picture plane: window coordinate = (plane - offset) / scale.
        const float zoom = p[5 * axis];
        const float shift = bPerspective ? p[8 + axis] : -p[12 + axis];
        scale[axis] = 2.0f / (static_cast<float>(axis == 0 ? w : h) * zoom);
        offset[axis] = (shift - 1.0f) / zoom;
    }
    if (bPerspective) {
        depthMap[0] = 0.5f - 0.5f * p[10];
        depthMap[1] = -0.5f * p[14];
        zRange[0] = p[14] / (1.0f - p[10]);
        zRange[1] = p[10] < -1.0f ? p[14] / (-1.0f - p[10]) : -1e30f;
    } else {
        depthMap[0] = 0.5f + 0.5f * p[14];
        depthMap[1] = 0.5f * p[10];
        zRange[0] = (-1.0f - p[14]) / p[10];
        zRange[1] = (1.0f - p[14]) / p[10];
    }
    return IsSimilarity(model, &modelScale);
}

void TileTexture_st::Set(const unsigned char* pRGBA, int w, int h) {
    width = w, height = h;
    texels.resize(static_cast<size_t>(w) * static_cast<size_t>(h));
    alphas.clear();
    bWhite = true;
    for (uint32_t& texel : texels) {
        texel = static_cast<uint32_t>(pRGBA[0]) | static_cast<uint32_t>(pRGBA[1]) << 8 |
                static_cast<uint32_t>(pRGBA[2]) << 16 | static_cast<uint32_t>(pRGBA[3]) << 24;
        alphas.push_back(pRGBA[3]);
        bWhite = bWhite && (texel & 0xffffffu) == 0xffffffu;
        pRGBA += 4;
    }
}
