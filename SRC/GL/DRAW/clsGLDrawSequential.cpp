// All classes of particles in one pass, in the order of the list.
#include "GL/DRAW/clsGLDrawData.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLPointBatch.h"
#include "PDATA/clsSnapData.h"

namespace {

constexpr unsigned kClasses = 4;

struct ClassLook {
    unsigned drawType = 4;
    bool bConstant = true;
    bool bAdditive = false;
    float size = 1.0f;
};

// How the classes that occur among the particles look, and what they have in common.
struct Looks {
    ClassLook look[kClasses];
    bool bAllPoints = true;
    bool bMixedSize = false;
    bool bMixedBlend = false;
    float size = 1.0f;
    float maxSize = 1.0f;
    bool bAdditive = false;
};

unsigned GetClass(const SnapData_cls& snap, int index) {
    const unsigned type = snap.mpType ? snap.mpType[index] : 0u;
    return type < kClasses ? type : 0u;
}

Looks GatherLooks(const SnapData_cls& snap, GLAttribute_cls** ppAttribute) {
    bool bOccurs[kClasses] = {};
    for (int i = 0; i < snap.mNumber; ++i)
        bOccurs[GetClass(snap, i)] = true;
    Looks looks;
    bool bFirst = true;
    for (unsigned c = 0; c < kClasses; ++c) {
        const GLAttribute_cls& attribute = *ppAttribute[c];
        ClassLook& look = looks.look[c];
        look.drawType = attribute.mDrawType.mValue;
        look.bConstant = attribute.mColor.IsConstant();
        look.bAdditive = attribute.mBlendType.mValue == 1;
        look.size = static_cast<float>(std::max(attribute.mPointSize.mValue, 1));
        if (!bOccurs[c]) continue;
        if (look.drawType != 0) {
            looks.bAllPoints = false;
            continue;
        }
        if (bFirst) {
            looks.size = look.size;
            looks.bAdditive = look.bAdditive;
        }
        looks.maxSize = std::max(looks.maxSize, look.size);
        looks.bMixedSize |= look.size != looks.size;
        looks.bMixedBlend |= look.bAdditive != looks.bAdditive;
        bFirst = false;
    }
    return looks;
}

void SetBlend(bool bAdditive) { glBlendFunc(GL_SRC_ALPHA, bAdditive ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA); }

// Feeds points to a batch and breaks it only where one batch can't give the picture. Both ways of
// blending fit one batch when colours come multiplied by alpha and additive ones say alpha 0; fog, which
// works on the bare colour, forbids that.
class SequentialPoints_cls {
public:
    SequentialPoints_cls(std::vector<float>& storage, const Looks& looks)
        : mbSized(looks.bMixedSize && GLPointBatch_cls::HasSizedPoints()),
          mbPremultiply(looks.bMixedBlend && !glIsEnabled(GL_FOG)), mSize(looks.size),
          mbAdditive(looks.bAdditive), mBatch(storage, mbSized, mbPremultiply || !mbAdditive) {
        glPointSize(mSize);
        if (mbPremultiply)
            glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        else
            SetBlend(mbAdditive);
    }

    void Add(const float* pPos, const float* pColor, const ClassLook& look) {
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
            SetBlend(mbAdditive = look.bAdditive);
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

bool IsOpaque(const SnapData_cls& snap) {
    float alpha = 1.0f;
    for (int i = 0; i < snap.mNumber; ++i)
        alpha = std::min(alpha, snap.mpColor[i][3]);
    return alpha >= 1.0f;
}

void SetSequentialState() {
    glEnable(GL_BLEND);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
}

} // namespace

void GLDrawData_cls::GLDrawSequential(int face, SnapData_cls* pSnap, GLAttribute_cls** ppAttribute) {
    const int number = ZSort(face, pSnap, ppAttribute[0]);
    if (number == 0 || !pSnap->mpColor || mbShadowPass) return;
    const GLAttribScope_cls attributes;
    SetSequentialState();
    const Looks looks = GatherLooks(*pSnap, ppAttribute);
    const int step = ppAttribute[0]->mpCDrawOption->GetDownSizing();
    const float stepping = static_cast<float>(GetSteppingAlphaFactor(step));

    if (msbListIsIdentity && looks.bAllPoints && !looks.bMixedSize && !looks.bMixedBlend) {
        SetBlend(looks.bAdditive);
        if (!looks.bAdditive && IsOpaque(*pSnap)) glDisable(GL_BLEND);
        DrawStraight(pSnap, number, looks.size, true);
        CheckGLErrors("points of all classes, straight");
        return;
    }

    DrawProgress_cls progress(number, looks.maxSize);
    SequentialPoints_cls points(mVBatch, looks);
    unsigned last = kClasses;
    float color[4] = {0, 0, 0, 0};
    for (int i = 0; i < number;) {
        for (const int end = std::min(number, i + progress.GetRun()); i < end; ++i) {
            const ArrayAndIndex_cls& entry = mspIndexAndZ[i];
            const unsigned type = GetClass(*pSnap, entry.mIndex);
            const ClassLook& look = looks.look[type];
            // Billboards and spheres join here: they flush the points before them.
            if (look.drawType != 0) continue;
            if (type != last || !look.bConstant) {
                std::copy(pSnap->mpColor[entry.mIndex], pSnap->mpColor[entry.mIndex] + 4, color);
                color[3] *= entry.mAlpha * stepping;
                last = type;
            }
            points.Add(pSnap->mpPos[entry.mIndex], color, look);
        }
        points.Flush();
        if (!progress.Report(i)) break;
    }
    CheckGLErrors("points of all classes");
}
