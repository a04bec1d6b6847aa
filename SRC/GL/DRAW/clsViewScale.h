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
    /// The projection alone has such a form, and GetRays holds for it.
    bool HasRays() const { return mbRays; }
    const ShaderCtrl_cls::Rays_st& GetRays() const { return mRays; }

    /// Pixels that something of this radius (data units) covers at most.
    float GetArea(const float* pPos, float radius) const {
        const float depth = -(mModel[2] * pPos[0] + mModel[6] * pPos[1] + mModel[10] * pPos[2] + mModel[14]);
        const float size = 2.0f * std::fabs(radius) * mPixels;
        const float scaled = mRays.bPerspective ? size / std::max(depth, 1e-6f) : size;
        return std::min(scaled * scaled, mScreen);
    }

    /// Silhouettes of many spheres on the screen, pixels from the viewport's corner.
    struct Silhouettes_st {
        static constexpr int kRoom = 512;
        float x[kRoom], y[kRoom]; ///< middles
        float reach[kRoom];       ///< at least half the edge of the square around each
        float eyeX[kRoom], eyeY[kRoom], eyeZ[kRoom], radius[kRoom]; ///< eye coordinates
    };
    /// Of `count` spheres, four numbers each (centre and radius) every `stride` floats; kRoom at most.
    void GetSilhouettes(const float* pBalls, int stride, int count, Silhouettes_st& out) const;

    enum class Where {
        Hidden, ///< can't be seen
        Inside, ///< the middle lies on the screen
        Rim,    ///< the middle may lie off it
        Near    ///< cut by the near or far plane, or reaches the eye's and may be anywhere
    };
    Where Locate(const Silhouettes_st& all, int i) const;

private:
    /// Of a perspective view; eye coordinates.
    bool TouchesView(float x, float y, float z, float radius) const;

    float mModel[16];
    float mProjection[16];
    float mPixels = 1.0f; ///< of a length of 1 at depth 1
    float mScreen = 1.0f; ///< pixels of the screen
    bool mbPlain = false;
    bool mbRays = false;
    ShaderCtrl_cls::Rays_st mRays;
};
