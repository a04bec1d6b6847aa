// Textured quads gathered into batches for OpenGL, in the order in which they are added.
#pragma once

#include <cstddef>
#include <vector>

#include "GL/DRAW/ParticleChecks.h"

class GLBillboardBatch_cls {
public:
    static constexpr int kCapacity = 2048; ///< quads a call: few enough to stay in the second-level cache

    /// Quads are drawn with the state that is current when a batch goes out: texture, blending, and unless
    /// `bColors` the colour. `storage` is the caller's, for the next use. `bEachBlends`: some cover and some
    /// add, by their own; sets the blend function.
    GLBillboardBatch_cls(std::vector<float>& storage, bool bColors, bool bEachBlends = false);
    ~GLBillboardBatch_cls();
    GLBillboardBatch_cls(const GLBillboardBatch_cls&) = delete;
    GLBillboardBatch_cls& operator=(const GLBillboardBatch_cls&) = delete;

    /// A quad around a place: its four corners, three numbers each, times the radius. One whose place or
    /// radius is no number is left out.
    void Add(const float* pPos, const float* pCorners, float radius, const float* pColor,
             bool bAdditive = false) {
        if (!IsDrawable(pPos, radius)) return;
        float* p = mpPlaces + static_cast<size_t>(mCount) * 12;
        for (int k = 0; k < 12; k += 3) {
            p[k] = pCorners[k] * radius + pPos[0];
            p[k + 1] = pCorners[k + 1] * radius + pPos[1];
            p[k + 2] = pCorners[k + 2] * radius + pPos[2];
        }
        if (mbColors) {
            float* q = mpColors + static_cast<size_t>(mCount) * 16;
            const float alpha = mbEachBlends && bAdditive ? -pColor[3] : pColor[3];
            for (int k = 0; k < 16; k += 4)
                q[k] = pColor[0], q[k + 1] = pColor[1], q[k + 2] = pColor[2], q[k + 3] = alpha;
        }
        if (++mCount == kCapacity) Flush();
    }
    /// Draw what has been gathered; needed before a change of state.
    void Flush();

    /// Can each billboard blend by its own with the texture and fog that are set?
    static bool HasOwnBlending();

private:
    float* mpPlaces;
    float* mpColors;
    int mCount = 0;
    bool mbColors;
    bool mbEachBlends;
};
