// All classes of particles in one pass, in the order of the list.
#include "GL/DRAW/clsGLDrawData.h"

#include <algorithm>
#include <optional>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/DrawByProcessor.h"
#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/SequentialColors.h"
#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLBillboardBatch.h"
#include "GL/DRAW/clsGLSphereBatch.h"
#include "GL/DRAW/clsSequentialLooks.h"
#include "GL/DRAW/clsSequentialPoints.h"
#include "GL/DRAW/clsSnapData.h"

namespace {

void SetBlend(bool bAdditive) { glBlendFunc(GL_SRC_ALPHA, bAdditive ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA); }

bool IsOpaque(const SnapData_cls& snap) {
    float alpha = 1.0f;
    for (int i = 0; i < snap.mNumber; ++i)
        alpha = std::min(alpha, snap.mpColor[i][3]);
    return alpha >= 1.0f;
}

void SetPointState(const SnapData_cls& snap, bool bAdditive) {
    glEnable(GL_BLEND);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    SetUnlitBlend(bAdditive);
    if (!bAdditive && IsOpaque(snap)) EnableUnlitBlend(false);
}

// Keeps one batch open, and closes it where the next particle needs another one: the order of the list is
// the order of drawing.
class SequentialBatches_cls {
public:
    SequentialBatches_cls(std::vector<float>& storage, const SequentialLooks_st& looks,
                          const ViewScale_cls& view, int lightNumber, bool bMirrored)
        : mStorage(storage), mLooks(looks), mView(view), mLightNumber(lightNumber),
          mbUncull(bMirrored && glIsEnabled(GL_CULL_FACE)),
          mbEachBlends(looks.bMixedBillboards && GLBillboardBatch_cls::HasOwnBlending()) {
        glEnable(GL_BLEND);
        glEnable(GL_DEPTH_TEST);
        glDepthMask(GL_FALSE);
        glDisable(GL_LIGHTING);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_COLOR_MATERIAL);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    }
    ~SequentialBatches_cls() { Close(); }
    SequentialBatches_cls(const SequentialBatches_cls&) = delete;
    SequentialBatches_cls& operator=(const SequentialBatches_cls&) = delete;

    void AddPoint(const float* pPos, const float* pColor, const ClassLook_st& look) {
        if (!mPoints) {
            Close();
            mPoints.emplace(mStorage, mLooks);
        }
        mPoints->Add(pPos, pColor, look);
    }

    void AddBillboard(const float* pPos, const float* pCorners, float radius, const float* pColor,
                      const ClassLook_st& look) {
        if (!mBillboards || (!mbEachBlends && mbAdditive != look.bAdditive)) {
            Close();
            glEnable(GL_TEXTURE_2D);
            if (mbUncull) glDisable(GL_CULL_FACE);
            SetUnlitBlend(mbAdditive = look.bAdditive);
            mBillboards.emplace(mStorage, true, mbEachBlends);
        }
        mBillboards->Add(pPos, pCorners, radius, pColor, look.bAdditive);
    }

    /// Returns the cost.
    float AddSphere(const float* pPos, float radius, const SphereMaterial_st& material,
                    const ClassLook_st& look) {
        const bool bEachBlends = mLooks.bMixedSpheres;
        const SphereStyle_st style = {
            look.shaderType, look.quality, mLightNumber, !mLooks.bOneMaterial, !bEachBlends && look.bAdditive,
            bEachBlends};
        if (!mSpheres || !(style == mStyle)) {
            Close();
            SetGLMaterial(material);
            glEnable(GL_LIGHTING);
            glEnable(GL_NORMALIZE);
            glDepthMask(GL_TRUE);
            SetBlend(look.bAdditive);
            mSpheres.emplace(mStorage, mStyle = style, mView);
        }
        if (!bEachBlends) return mSpheres->Add(pPos, radius, material);
        SphereMaterial_st telling = material;
        telling.mAmbient[3] = look.bAdditive ? 0.0f : 1.0f;
        return mSpheres->Add(pPos, radius, telling);
    }

    void Flush() {
        if (mPoints) mPoints->Flush();
        if (mBillboards) mBillboards->Flush();
        if (mSpheres) mSpheres->Flush();
    }

private:
    void Close() {
        mPoints.reset();
        if (mBillboards) {
            mBillboards.reset();
            glDisable(GL_TEXTURE_2D);
            if (mbUncull) glEnable(GL_CULL_FACE);
        }
        if (mSpheres) {
            mSpheres.reset();
            glDisable(GL_LIGHTING);
            glDisable(GL_NORMALIZE);
            glDepthMask(GL_FALSE);
        }
        glEnable(GL_BLEND); // which opaque points do without
    }

    std::vector<float>& mStorage;
    const SequentialLooks_st& mLooks;
    const ViewScale_cls& mView;
    int mLightNumber;
    bool mbUncull;     ///< quads face the eye, though a mirrored box takes them for turned
    bool mbEachBlends; ///< billboards of both ways to blend share a batch
    bool mbAdditive = false;
    SphereStyle_st mStyle;
    std::optional<SequentialPoints_cls> mPoints;
    std::optional<GLBillboardBatch_cls> mBillboards;
    std::optional<GLSphereBatch_cls> mSpheres;
};

} // namespace

void GLDrawData_cls::GLDrawSequential(int face, SnapData_cls* pSnap, GLAttribute_cls** ppAttribute) {
    const int number = ZSort(face, pSnap, ppAttribute[0]);
    if (number == 0 || !pSnap->mpColor) return;
    const GLAttribScope_cls attributes;
    const int step = ppAttribute[0]->mpCDrawOption->GetDownSizing();
    const float stepping = static_cast<float>(GetSteppingAlphaFactor(step));
    const float widening = static_cast<float>(GetSteppingRadiusFactor(step));
    SequentialLooks_st looks = GatherSequentialLooks(*pSnap, ppAttribute, widening);
    if (IsFaded()) looks.bOneMaterial = false;
    if (mbShadowPass) {
        unsigned coarsest = GLSphereBatch_cls::kExact;
        for (const ClassLook_st& look : looks.look)
            if (look.drawType == DRAW_SPHERE) coarsest = std::min(coarsest, look.quality);
        DrawShadows(number, coarsest, *pSnap, [&](int index) {
            const ClassLook_st& look = looks.look[looks.GetClass(*pSnap, index)];
            if (look.drawType != DRAW_SPHERE) return 0.0f;
            return look.bOneRadius ? look.radius : look.radius * pSnap->mpRadius[index];
        });
        return;
    }
    const ViewScale_cls view;

    if (looks.bBillboards) ppAttribute[0]->BindTexture(); // one for all classes
    if (DrawByProcessor(
            {*pSnap, mspIndexAndZ, number, looks, stepping, IsFaded(), mLightNumber, !mbPlaced, IsShifted()},
            view))
        return;

    if (msbListIsIdentity && looks.bAllPoints && !looks.bMixedSize && !looks.bMixedBlend) {
        SetPointState(*pSnap, looks.bAdditive);
        DrawStraight(pSnap, number, looks.size, true);
        CheckGLErrors("points of all classes, straight");
        return;
    }

    CheckExact(looks.bExact, view);
    float flat[12];
    float facing[12];
    const bool bQuads = GetFlatCorners(flat);

    DrawProgress_cls progress(number);
    SequentialBatches_cls batches(mVBatch, looks, view, mLightNumber, mbMirrored);
    KeptLook_st kept(IsFaded());
    for (int i = 0; i < number; ++i) {
        const ArrayAndIndex_cls& entry = mspIndexAndZ[i];
        const unsigned type = looks.GetClass(*pSnap, entry.mIndex);
        const ClassLook_st& look = looks.look[type];
        const float* pPos = pSnap->mpPos[entry.mIndex];
        const float radius = look.bOneRadius ? look.radius : look.radius * pSnap->mpRadius[entry.mIndex];
        float cost = DrawProgress_cls::kCostVertex;
        if (look.drawType == DRAW_POINT) {
            TakeColor(kept, *pSnap, entry, type, look, radius, stepping);
            batches.AddPoint(pPos, kept.color, look);
            cost += look.size * look.size * DrawProgress_cls::kCostPixel;
        } else if (look.drawType == DRAW_BILLBOARD) {
            TakeColor(kept, *pSnap, entry, type, look, radius, stepping);
            if (!(kept.color[3] >= kFaint) || !bQuads) continue;
            if (look.quality != QUALITY_LOW) GetVertexArrayLookAtCamera(pPos, facing);
            batches.AddBillboard(pPos, look.quality != QUALITY_LOW ? facing : flat, radius, kept.color, look);
            cost += view.GetArea(pPos, radius) * DrawProgress_cls::kCostPixel;
        } else if (look.drawType == DRAW_SPHERE) {
            TakeMaterial(kept, entry, type, look, radius, stepping);
            cost += batches.AddSphere(pPos, radius, kept.material, look);
        }
        if (!progress.AddCost(cost)) continue;
        batches.Flush();
        if (!progress.Report(i + 1)) break;
    }
    batches.Flush();
    CheckGLErrors("particles of all classes");
}
