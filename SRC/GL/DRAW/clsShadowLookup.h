// Marks pixels that show a point in the shadow of one of many small spheres: each looks among those near it.
#pragma once

#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsShadowGrid.h"

class ShadowStencil_cls;

class ShadowLookup_cls {
public:
    /// Of the current projection and viewport; `pModel` leads from the spheres to the eye and has an inverse.
    ShadowLookup_cls(const ShadowShape_st& shape, const double* pModel);

    /// Can this OpenGL do it, and does the view have a form for it?
    bool IsHere();
    /// Within bounds of the screen: left, bottom, right, top, -1 to 1. The grid is sorted.
    void Draw(ShadowStencil_cls& stencil, const float* pBounds);

    ShadowGrid_cls mGrid;
    static bool msbUsed; ///< off: every shadow is drawn as a volume, for a picture to compare with

private:
    ShaderCtrl_cls::Lookup_st GetLookup() const;

    ShaderCtrl_cls::Rays_st mRays;
    bool mbRays;
    double mToEye[16];
};
