// The seam between OpenGL and particles drawn by the processor: reads OpenGL's state, takes over what the
// buffer holds, has the particles drawn, and hands the picture back.
#pragma once

#include "GL/DRAW/CPU/TileScene.h"

class TileCanvas_cls;
class ViewScale_cls;

class CpuDraw_cls {
public:
    /// With a current context and the state with which particles are to be drawn.
    explicit CpuDraw_cls(const ViewScale_cls& view);

    /// The processor is to draw, and can into this buffer and with this view. The lights are asked of
    /// TakeLights.
    bool IsPossible() const { return mbPossible; }
    /// As a shader of this type (ShaderCtrl_cls::Type) sums them; false: not those of an earlier call.
    bool TakeLights(unsigned shaderType, int lightNumber);
    /// What is bound as the texture of billboards.
    void TakeTexture();
    TileLook_st& GetLook(unsigned which) { return mScene.look[which]; }
    /// Of the buffer, that may be changed.
    long long GetPixels() const { return static_cast<long long>(mClip[2]) * mClip[3]; }
    bool HasFog() const { return mScene.fog.mode != TileFog_st::NONE; }

    /// Until the next Draw: the target holds nothing but what it was cleared with, and needn't be read.
    static void SetBlank(bool bBlank) { msbBlank = bBlank; }

    void Draw(const TileSource_cls& source);
    /// Passes that were drawn so, of the run.
    static long long GetPasses() { return msPasses; }

private:
    bool TakeTarget();
    bool TakeState(const ViewScale_cls& view);
    void TakeFog();
    void HandBack(TileCanvas_cls& canvas, int firstRow, int endRow) const;
    void TakeBlank(TileCanvas_cls& canvas) const;
    class Goal_cls;

    static long long msPasses;
    static bool msbBlank;

    bool mbPossible = false;
    bool mbStencil = false; ///< only where the stencil isn't 0
    int mLights = -1;       ///< none asked for yet
    TileScene_st mScene;
    int mWidth = 0;
    int mHeight = 0;
    unsigned mTexture = 0;       ///< the buffer's colours
    unsigned mDepthTexture = 0;  ///< with stencil
    int mClip[4] = {0, 0, 0, 0}; ///< what may be changed: left, bottom, width, height
};
