#include "GL/DRAW/DrawByProcessor.h"

#include <algorithm>

#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/SequentialColors.h"
#include "GL/DRAW/clsCpuDraw.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLBillboardBatch.h"
#include "GL/DRAW/clsGLSphereBatch.h"
#include "GL/DRAW/clsViewScale.h"

namespace {

/// The list for the processor: the same particles with the same looks.
class ListSource_cls : public TileSource_cls {
public:
    explicit ListSource_cls(const ProcessorPass_st& pass) : mPass(pass) {}
    long long GetNumber() const override { return mPass.number; }
    void Fill(long long first, int count, TileRun_st& out) const override {
        KeptLook_st kept(mPass.bFaded);
        int n = 0;
        for (const ArrayAndIndex_cls* p = mPass.pList + first; p < mPass.pList + first + count; ++p)
            n += Add(*p, kept, out, n) ? 1 : 0;
        out.count = n;
    }
    /// That of all spheres where they are alike.
    void GetMaterial(const ArrayAndIndex_cls& entry, unsigned type, SphereMaterial_st& out) const {
        KeptLook_st kept(mPass.bFaded);
        TakeMaterial(kept, entry, type, mPass.looks.look[type], 1.0f, mPass.stepping);
        out = kept.material;
    }

private:
    bool Add(const ArrayAndIndex_cls& entry, KeptLook_st& kept, TileRun_st& out, int n) const {
        const unsigned type = mPass.looks.GetClass(mPass.snap, entry.mIndex);
        const ClassLook_st& look = mPass.looks.look[type];
        if (look.drawType != DRAW_POINT && look.drawType != DRAW_BILLBOARD && look.drawType != DRAW_SPHERE)
            return false;
        const float* pPos = mPass.snap.mpPos[entry.mIndex];
        const float radius = look.bOneRadius ? look.radius : look.radius * mPass.snap.mpRadius[entry.mIndex];
        if (!IsDrawable(pPos, look.drawType == DRAW_POINT ? 1.0f : radius)) return false;
        if (look.drawType == DRAW_SPHERE)
            AddMaterial(entry, type, radius, kept, out, n);
        else if (!AddColor(entry, type, radius, kept, out.color[n]))
            return false;
        out.x[n] = pPos[0], out.y[n] = pPos[1], out.z[n] = pPos[2];
        out.radius[n] = radius;
        out.look[n] = static_cast<uint8_t>(type);
        return true;
    }

    void AddMaterial(const ArrayAndIndex_cls& entry, unsigned type, float radius, KeptLook_st& kept,
                     TileRun_st& out, int n) const {
        if (!out.pMaterial) return;
        TakeMaterial(kept, entry, type, mPass.looks.look[type], radius, mPass.stepping);
        std::copy_n(kept.material.mAmbient, 4, out.pMaterial[n]);
        std::copy_n(kept.material.mDiffuse, 4, out.pMaterial[n] + 4);
        std::copy_n(kept.material.mSpecular, 4, out.pMaterial[n] + 8);
    }

    bool AddColor(const ArrayAndIndex_cls& entry, unsigned type, float radius, KeptLook_st& kept,
                  float* pColor) const {
        if (mPass.color) return mPass.color(entry, pColor);
        const ClassLook_st& look = mPass.looks.look[type];
        TakeColor(kept, mPass.snap, entry, type, look, radius, mPass.stepping);
        if (look.drawType == DRAW_BILLBOARD && !(kept.color[3] >= kFaint)) return false;
        std::copy_n(kept.color, 4, pColor);
        return true;
    }

    const ProcessorPass_st& mPass;
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
        tile.bTest = look.bTested;
        tile.bWrite = look.bHides;
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
bool IsWorthHandingOver(const ProcessorPass_st& pass, const ViewScale_cls& view, long long pixels) {
    constexpr int kSome = 64;
    constexpr double kCostHandOver = 6.0; // ns a pixel
    const int step = std::max(pass.number / kSome, 1);
    double cost = 0.0;
    for (int i = 0; i < pass.number; i += step) {
        const int index = pass.pList[i].mIndex;
        const ClassLook_st& look = pass.looks.look[pass.looks.GetClass(pass.snap, index)];
        const float radius = look.bOneRadius ? look.radius : look.radius * pass.snap.mpRadius[index];
        const bool bPoint = look.drawType == DRAW_POINT;
        const float area = bPoint ? look.size * look.size : view.GetArea(pass.snap.mpPos[index], radius);
        const float perPixel =
            look.drawType == DRAW_SPHERE ? DrawProgress_cls::kCostExactPixel : DrawProgress_cls::kCostPixel;
        const double seen =
            area >= 0.0f ? std::min(static_cast<double>(area), static_cast<double>(pixels)) : 0.0;
        cost += step * (static_cast<double>(DrawProgress_cls::kCostVertex) * (bPoint ? 1.0 : 4.0) +
                        static_cast<double>(perPixel) * seen);
    }
    return cost > kCostHandOver * static_cast<double>(pixels);
}

} // namespace

bool DrawByProcessor(const ProcessorPass_st& pass, const ViewScale_cls& view) {
    const SequentialLooks_st& looks = pass.looks;
    CpuDraw_cls cpu(view);
    if (!cpu.IsPossible() || (looks.bBillboards && !pass.bFlat)) return false;
    if (GetDrawWay() == DrawWay::Auto && !IsWorthHandingOver(pass, view, cpu.GetPixels())) return false;
    if (looks.bExact && !GLSphereBatch_cls::HasExact(view)) return false;
    bool bOccurs[kSequentialClasses] = {};
    const ArrayAndIndex_cls* pFirst[kSequentialClasses] = {};
    auto missing = std::count(looks.bOccurs, looks.bOccurs + kSequentialClasses, true);
    for (const ArrayAndIndex_cls* p = pass.pList; p < pass.pList + pass.number && missing > 0; ++p) {
        const unsigned type = looks.GetClass(pass.snap, p->mIndex);
        if (bOccurs[type]) continue;
        pFirst[type] = p;
        bOccurs[type] = true;
        --missing;
    }
    const bool bOwnBlending = looks.bMixedBillboards && GLBillboardBatch_cls::HasOwnBlending();
    const ListSource_cls source(pass);
    for (unsigned type = 0; type < kSequentialClasses; ++type) {
        if (!bOccurs[type]) continue;
        if (pass.bShifted && looks.look[type].drawType == DRAW_BILLBOARD &&
            looks.look[type].quality != QUALITY_LOW)
            return false;
        if (!SetTileLook(cpu, type, looks, bOwnBlending, pass.lightNumber)) return false;
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
