// Points gathered into batches for OpenGL: position, colour and size a point.
#pragma once

#include <vector>

class GLPointBatch_cls {
public:
    static constexpr int kCapacity = 65536; ///< points a call
    static constexpr int kStride = 8;       ///< floats a point: x y z, r g b a, size

    /// Points are drawn with the state that is current when a batch goes out, but blending is left out for
    /// a batch of opaque points where `bOverwrites` tells that opaque ones hide what they cover. `bSized`
    /// takes each point's own size, else that of glPointSize. `storage` is the caller's, for the next use.
    GLPointBatch_cls(std::vector<float>& storage, bool bSized, bool bOverwrites);
    ~GLPointBatch_cls();
    GLPointBatch_cls(const GLPointBatch_cls&) = delete;
    GLPointBatch_cls& operator=(const GLPointBatch_cls&) = delete;

    void Add(const float* pPos, const float* pColor, float size) {
        float* p = mpData + static_cast<std::size_t>(mCount) * kStride;
        p[0] = pPos[0], p[1] = pPos[1], p[2] = pPos[2];
        p[3] = pColor[0], p[4] = pColor[1], p[5] = pColor[2], p[6] = pColor[3];
        p[7] = size;
        mMinAlpha = pColor[3] < mMinAlpha ? pColor[3] : mMinAlpha;
        if (++mCount == kCapacity) Flush();
    }
    /// Draw what has been gathered; needed before a change of state.
    void Flush();

    void SetOverwrites(bool bOverwrites) { mbOverwrites = bOverwrites; }

    /// Can points of different sizes go out in one batch?
    static bool HasSizedPoints();

private:
    float* mpData;
    int mCount = 0;
    float mMinAlpha = 1.0f;
    bool mbSized;
    bool mbOverwrites;
};
