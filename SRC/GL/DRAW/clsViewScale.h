// Where things lie on the screen and how large they are there, for the loops that draw them.
#pragma once

#include <algorithm>
#include <cmath>

#include "GL/BASE/clsShaderCtrl.h"

class ViewScale_cls {
public:
    /// Of the current matrices and viewport.
    ViewScale_cls();

    /// Projection and model-view matrix have the forms that the silhouette below is exact for: a centred or
    /// shifted perspective or parallel view, and turns, shifts and one scale.
    bool IsPlain() const { return mbPlain; }
    const ShaderCtrl_cls::Rays_st& GetRays() const { return mRays; }

    float GetScreen() const { return mScreen; } ///< pixels
    /// Pixels that something of this radius (data units) covers at most.
    float GetArea(const float* pPos, float radius) const {
        const float depth = -(mModel[2] * pPos[0] + mModel[6] * pPos[1] + mModel[10] * pPos[2] + mModel[14]);
        const float size = 2.0f * std::fabs(radius) * mPixels;
        const float scaled = mRays.bPerspective ? size / std::max(depth, 1e-6f) : size;
        return std::min(scaled * scaled, mScreen);
    }

    /// The silhouette of a sphere, as GL/Exact.vert has it.
    struct Silhouette_st {
        bool bVisible; ///< may reach the screen
        bool bFull;    ///< may lie anywhere on it
        float x, y;    ///< middle, -1 to 1 on the screen
        float size;    ///< edge of the square around it, pixels
    };
    Silhouette_st GetSilhouette(const float* pPos, float radius) const;

private:
    /// Of a perspective view; eye coordinates.
    bool TouchesView(const float* pEye, float radius) const;

    float mModel[16];
    float mProjection[16];
    float mPixels = 1.0f; ///< of a length of 1 at depth 1
    float mScreen = 1.0f; ///< pixels of the screen
    bool mbPlain = false;
    ShaderCtrl_cls::Rays_st mRays;
};
