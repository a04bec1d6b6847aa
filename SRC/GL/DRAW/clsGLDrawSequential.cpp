// All classes of particles in one pass, in the order of the list.
#include "GL/DRAW/clsGLDrawData.h"

#include <algorithm>
#include <optional>

#include <epoxy/gl.h>

#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsCpuDraw.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLBillboardBatch.h"
#include "GL/DRAW/clsGLSphereBatch.h"
#include "GL/DRAW/clsSequentialLooks.h"
#include "GL/DRAW/clsSequentialPoints.h"
#include "GL/DRAW/clsSnapData.h"

namespace {

// An alpha that can't change a pixel of eight bits.
constexpr float kFaint = 0.0035f;

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

// What is kept from one particle to the next while class and settings allow it.
struct Kept {
    explicit Kept(bool bEachFaded) : bFaded(bEachFaded) {}
    bool bFaded; ///< no particle is sure to be as opaque as the one before
    unsigned type = kSequentialClasses;
    float color[4] = {0, 0, 0, 0};
    SphereMaterial_st material;
};

// Colours of points and billboards come from the snapshot, "AlphaFactro=" worked in.
void TakeColor(Kept& kept, const SnapData_cls& snap, const ArrayAndIndex_cls& entry, unsigned type,
               const ClassLook_st& look, float radius, float stepping) {
    const bool bByRadius = look.drawType == DRAW_BILLBOARD && look.bAlphaByRadius;
    if (type == kept.type && look.bConstantColor && !bByRadius && !kept.bFaded) return;
    const float* pColor = snap.mpColor[entry.mIndex];
    std::copy_n(pColor, 4, kept.color);
    if (bByRadius) kept.color[3] = AlphaByRadius(pColor[3], radius, 1.0f, look.alphaMax);
    kept.color[3] *= entry.mAlpha * stepping;
    kept.type = type;
}

void TakeMaterial(Kept& kept, const ArrayAndIndex_cls& entry, unsigned type, const ClassLook_st& look,
                  float radius, float stepping) {
    if (type == kept.type && look.spheres.IsConstant() && !look.bAlphaByRadius && !kept.bFaded) return;
    look.spheres.Get(entry.mIndex, kept.material);
    const float factor = entry.mAlpha * stepping;
    kept.material.ChangeAlpha([&](float alpha) {
        const float own = look.bAlphaByRadius ? AlphaByRadius(alpha, radius, look.alphaBase, look.alphaMax)
                                              : alpha * look.alphaFactor;
        return std::min(own * factor, 1.0f);
    });
    kept.type = type;
}

/// The list for the processor: the same particles with the same looks.
class SequentialSource_cls : public TileSource_cls {
public:
    SequentialSource_cls(const SnapData_cls& snap, const ArrayAndIndex_cls* pList, int number,
                         const SequentialLooks_st& looks, float stepping, bool bFaded)
        : mSnap(snap), mpList(pList), mNumber(number), mLooks(looks), mStepping(stepping), mbFaded(bFaded) {}
    long long GetNumber() const override { return mNumber; }
    void Fill(long long first, int count, TileRun_st& out) const override {
        Kept kept(mbFaded);
        int n = 0;
        for (const ArrayAndIndex_cls* p = mpList + first; p < mpList + first + count; ++p)
            n += Add(*p, kept, out, n) ? 1 : 0;
        out.count = n;
    }
    /// That of all spheres where they are alike.
    void GetMaterial(const ArrayAndIndex_cls& entry, unsigned type, SphereMaterial_st& out) const {
        Kept kept(mbFaded);
        TakeMaterial(kept, entry, type, mLooks.look[type], 1.0f, mStepping);
        out = kept.material;
    }

private:
    bool Add(const ArrayAndIndex_cls& entry, Kept& kept, TileRun_st& out, int n) const {
        const unsigned type = GetSequentialClass(mSnap, entry.mIndex);
        const ClassLook_st& look = mLooks.look[type];
        if (look.drawType != DRAW_POINT && look.drawType != DRAW_BILLBOARD && look.drawType != DRAW_SPHERE)
            return false;
        const float* pPos = mSnap.mpPos[entry.mIndex];
        const float radius = look.bOneRadius ? look.radius : look.radius * mSnap.mpRadius[entry.mIndex];
        if (!IsDrawable(pPos, look.drawType == DRAW_POINT ? 1.0f : radius)) return false;
        if (look.drawType == DRAW_SPHERE) {
            if (out.pMaterial) {
                TakeMaterial(kept, entry, type, look, radius, mStepping);
                std::copy_n(kept.material.mAmbient, 4, out.pMaterial[n]);
                std::copy_n(kept.material.mDiffuse, 4, out.pMaterial[n] + 4);
                std::copy_n(kept.material.mSpecular, 4, out.pMaterial[n] + 8);
            }
        } else {
            TakeColor(kept, mSnap, entry, type, look, radius, mStepping);
            if (look.drawType == DRAW_BILLBOARD && !(kept.color[3] >= kFaint)) return false;
            std::copy_n(kept.color, 4, out.color[n]);
        }
        out.x[n] = pPos[0], out.y[n] = pPos[1], out.z[n] = pPos[2];
        out.radius[n] = radius;
        out.look[n] = static_cast<uint8_t>(type);
        return true;
    }

    const SnapData_cls& mSnap;
    const ArrayAndIndex_cls* mpList;
    int mNumber;
    const SequentialLooks_st& mLooks;
    float mStepping;
    bool mbFaded;
};

/// How the processor draws a class; false: it can't.
bool SetTileLook(CpuDraw_cls& cpu, unsigned type, const SequentialLooks_st& looks, bool bOwnBlending,
                 int lightNumber) {
    const ClassLook_st& look = looks.look[type];
    TileLook_st& tile = cpu.GetLook(type);
    tile.blend = look.bAdditive ? TileLook_st::ADDS : TileLook_st::COVERS;
    if (look.drawType == DRAW_POINT) {
        tile.kind = TileLook_st::POINT;
        tile.size = look.size;
        tile.bMultiplied = looks.bMixedBlend && !cpu.HasFog();
    } else if (look.drawType == DRAW_BILLBOARD) {
        tile.kind = TileLook_st::SPRITE;
        tile.bFacing = look.quality != QUALITY_LOW;
        tile.bMultiplied = bOwnBlending;
    } else if (look.drawType == DRAW_SPHERE) {
        if (look.quality < GLSphereBatch_cls::kExact) return false; // meshes
        tile.kind = TileLook_st::SPHERE;
        tile.bWrite = true;
        tile.bMultiplied = looks.bMixedSpheres;
        tile.bCartoon = look.shaderType == ShaderCtrl_cls::TYPE_CARTOON;
        tile.bMaterials = !looks.bOneMaterial;
        return cpu.TakeLights(look.shaderType, lightNumber);
    }
    return true;
}

/// Do these take OpenGL longer than handing the buffer over? Asked of some of the list; a driver on the
/// processor is as slow as DrawProgress_cls takes OpenGL for.
bool IsWorthHandingOver(const SnapData_cls& snap, const ArrayAndIndex_cls* pList, int number,
                        const SequentialLooks_st& looks, const ViewScale_cls& view, long long pixels) {
    constexpr int kSome = 64;
    constexpr double kCostHandOver = 6.0; // ns a pixel
    const int step = std::max(number / kSome, 1);
    double cost = 0.0;
    for (int i = 0; i < number; i += step) {
        const int index = pList[i].mIndex;
        const ClassLook_st& look = looks.look[GetSequentialClass(snap, index)];
        const float radius = look.bOneRadius ? look.radius : look.radius * snap.mpRadius[index];
        const bool bPoint = look.drawType == DRAW_POINT;
        const float area = bPoint ? look.size * look.size : view.GetArea(snap.mpPos[index], radius);
        const float perPixel =
            look.drawType == DRAW_SPHERE ? DrawProgress_cls::kCostExactPixel : DrawProgress_cls::kCostPixel;
        const double seen =
            area >= 0.0f ? std::min(static_cast<double>(area), static_cast<double>(pixels)) : 0.0;
        cost += step * (static_cast<double>(DrawProgress_cls::kCostVertex) * (bPoint ? 1.0 : 4.0) +
                        static_cast<double>(perPixel) * seen);
    }
    return cost > kCostHandOver * static_cast<double>(pixels);
}

/// False: OpenGL must draw them.
bool DrawByProcessor(const SnapData_cls& snap, const ArrayAndIndex_cls* pList, int number,
                     const SequentialLooks_st& looks, float stepping, bool bFaded, const ViewScale_cls& view,
                     int lightNumber, bool bFlat, bool bShifted) {
    CpuDraw_cls cpu(view);
    if (!cpu.IsPossible() || (looks.bBillboards && !bFlat)) return false;
    if (GetDrawWay() == DrawWay::Auto &&
        !IsWorthHandingOver(snap, pList, number, looks, view, cpu.GetPixels()))
        return false;
    if (looks.bExact && !GLSphereBatch_cls::HasExact(view)) return false;
    bool bOccurs[kSequentialClasses] = {};
    const ArrayAndIndex_cls* pFirst[kSequentialClasses] = {};
    auto missing = std::count(looks.bOccurs, looks.bOccurs + kSequentialClasses, true);
    for (const ArrayAndIndex_cls* p = pList; p < pList + number && missing > 0; ++p) {
        const unsigned type = GetSequentialClass(snap, p->mIndex);
        if (bOccurs[type]) continue;
        pFirst[type] = p;
        bOccurs[type] = true;
        --missing;
    }
    const bool bOwnBlending = looks.bMixedBillboards && GLBillboardBatch_cls::HasOwnBlending();
    const SequentialSource_cls source(snap, pList, number, looks, stepping, bFaded);
    for (unsigned type = 0; type < kSequentialClasses; ++type) {
        if (!bOccurs[type]) continue;
        if (bShifted && looks.look[type].drawType == DRAW_BILLBOARD &&
            looks.look[type].quality != QUALITY_LOW)
            return false;
        if (!SetTileLook(cpu, type, looks, bOwnBlending, lightNumber)) return false;
        TileLook_st& tile = cpu.GetLook(type);
        if (tile.kind != TileLook_st::SPHERE || tile.bMaterials) continue;
        SphereMaterial_st material;
        source.GetMaterial(*pFirst[type], type, material);
        std::copy_n(material.mAmbient, 4, tile.ambient);
        std::copy_n(material.mDiffuse, 4, tile.diffuse);
        std::copy_n(material.mSpecular, 4, tile.specular);
    }
    if (looks.bBillboards) cpu.TakeTexture();
    cpu.Draw(source);
    return true;
}

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
            const ClassLook_st& look = looks.look[GetSequentialClass(*pSnap, index)];
            if (look.drawType != DRAW_SPHERE) return 0.0f;
            return look.bOneRadius ? look.radius : look.radius * pSnap->mpRadius[index];
        });
        return;
    }
    const ViewScale_cls view;

    if (looks.bBillboards) ppAttribute[0]->BindTexture(); // one for all classes
    if (DrawByProcessor(*pSnap, mspIndexAndZ, number, looks, stepping, IsFaded(), view, mLightNumber,
                        !mbPlaced, IsShifted()))
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
    Kept kept(IsFaded());
    for (int i = 0; i < number; ++i) {
        const ArrayAndIndex_cls& entry = mspIndexAndZ[i];
        const unsigned type = GetSequentialClass(*pSnap, entry.mIndex);
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
