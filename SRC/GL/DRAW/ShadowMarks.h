// Pixels that show a point in the shadow of one of many small spheres, looked up by the processor: where
// OpenGL is a software driver, that takes a fraction of what its shader does.
#pragma once

#include "GL/BASE/clsShaderCtrl.h"

class ShadowGrid_cls;

/// Does the processor draw, and into a buffer whose depths and stencil it can take over?
bool CanMarkShadows();
/// Set the stencil's bit `bit` where a pixel of the bounds (left, bottom, right, top, -1 to 1) lies in
/// shadow, by the depths of the buffer; as GL/ShadowLookup.frag does. The grid is sorted.
void MarkShadows(const ShadowGrid_cls& grid, const ShaderCtrl_cls::Lookup_st& lookup,
                 const ShaderCtrl_cls::Rays_st& rays, const float* pBounds, unsigned bit);
