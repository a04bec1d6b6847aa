// Points of all classes in the order of the list.
#pragma once

#include <algorithm>
#include <vector>

#include <epoxy/gl.h>

#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsGLPointBatch.h"
#include "GL/DRAW/clsSequentialLooks.h"

// Feeds points to a batch and breaks it only where one batch can't give the picture. Both ways of
// blending fit one batch when colours come multiplied by alpha and additive ones say alpha 0; fog, which
// works on the bare colour, forbids that.
class SequentialPoints_cls {
public:
    SequentialPoints_cls(std::vector<float>& storage, const SequentialLooks_st& looks)
        : mbSized(looks.bMixedSize && GLPointBatch_cls::HasSizedPoints()),
          mbPremultiply(looks.bMixedBlend && !glIsEnabled(GL_FOG)), mSize(looks.size),
          mbAdditive(looks.bAdditive), mBatch(storage, mbSized, mbPremultiply || !mbAdditive) {
        glPointSize(mSize);
        if (mbPremultiply)
            SetUnlitBlend(false, true);
        else
            SetUnlitBlend(mbAdditive);
    }

    SequentialPoints_cls(const SequentialPoints_cls&) = delete;
    SequentialPoints_cls& operator=(const SequentialPoints_cls&) = delete;

    void Add(const float* pPos, const float* pColor, const ClassLook_st& look) {
        if (!mbSized && look.size != mSize) {
            mBatch.Flush();
            glPointSize(mSize = look.size);
        }
        if (mbPremultiply) {
            const float a = std::clamp(pColor[3], 0.0f, 1.0f);
            const float color[4] = {a * std::clamp(pColor[0], 0.0f, 1.0f),
                                    a * std::clamp(pColor[1], 0.0f, 1.0f),
                                    a * std::clamp(pColor[2], 0.0f, 1.0f), look.bAdditive ? 0.0f : a};
            mBatch.Add(pPos, color, look.size);
            return;
        }
        if (look.bAdditive != mbAdditive) {
            mBatch.Flush();
            SetUnlitBlend(mbAdditive = look.bAdditive);
            mBatch.SetOverwrites(!mbAdditive);
        }
        mBatch.Add(pPos, pColor, look.size);
    }
    void Flush() { mBatch.Flush(); }

private:
    bool mbSized;
    bool mbPremultiply;
    float mSize;
    bool mbAdditive;
    GLPointBatch_cls mBatch;
};
