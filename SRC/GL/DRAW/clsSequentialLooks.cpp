#include "GL/DRAW/clsSequentialLooks.h"

#include <algorithm>
#include <cstring>

#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSphereBatch.h"

namespace {

ClassLook_st TakeLook(GLAttribute_cls& attribute, SnapData_cls& snap, bool bOccurs, float widening) {
    ClassLook_st look;
    look.drawType = attribute.mDrawType.mValue;
    look.bConstantColor = attribute.mColor.IsConstant();
    look.bAdditive = attribute.mBlendType.mValue == BLEND_ADDITIVE;
    look.size = static_cast<float>(std::max(attribute.mPointSize.mValue, 1));
    look.radius = attribute.GetRadiusFactor() * widening;
    look.bOneRadius = attribute.mRadiusType.mValue == RADIUS_CONSTANT;
    look.bAlphaByRadius = attribute.mAlphaType.mValue == ALPHA_BY_RADIUS;
    look.alphaMax = attribute.mAlphaMax.mValue;
    look.alphaBase = attribute.mAlphaDependBase.mValue * attribute.mAlphaDependBase.mValue;
    look.alphaFactor = attribute.mAlphaFactor.mValue;
    look.quality = attribute.mDrawQuality.mValue;
    look.shaderType = attribute.mShaderType.mValue;
    if (bOccurs && look.drawType == DRAW_SPHERE) look.spheres = SphereLook_cls(attribute, snap);
    if (look.drawType == DRAW_SPHERE && !GLAttribute_cls::mspCShaderCtrl)
        look.drawType = DRAW_HIDE; // before any view
    return look;
}

// Types are bytes, and there are often millions of one class.
void FindClasses(const SnapData_cls& snap, bool* pOccurs) {
    if (!snap.mpType) pOccurs[0] = snap.mNumber > 0;
    if (!snap.mpType || snap.mNumber <= 0) return;
    const auto number = static_cast<size_t>(snap.mNumber);
    for (unsigned c = 1; c < kSequentialClasses; ++c)
        pOccurs[c] = std::memchr(snap.mpType, static_cast<int>(c), number) != nullptr;
    pOccurs[0] = std::any_of(snap.mpType, snap.mpType + number,
                             [](unsigned char type) { return GetParticleClass(type) == 0; });
}

} // namespace

SequentialLooks_st GatherSequentialLooks(SnapData_cls& snap, GLAttribute_cls** ppAttribute, float widening) {
    SequentialLooks_st looks;
    bool* const bOccurs = looks.bOccurs;
    FindClasses(snap, bOccurs);
    bool bFirst = true;
    int sphereClasses = 0;
    bool bVaried = false;
    bool bBlends[2][2] = {}; // of billboards, spheres: cover, add
    for (unsigned c = 0; c < kSequentialClasses; ++c) {
        ClassLook_st& look = looks.look[c];
        look = TakeLook(*ppAttribute[c], snap, bOccurs[c], widening);
        if (!bOccurs[c]) continue;
        looks.bBillboards |= look.drawType == DRAW_BILLBOARD;
        if (look.drawType == DRAW_BILLBOARD || look.drawType == DRAW_SPHERE)
            bBlends[look.drawType - DRAW_BILLBOARD][look.bAdditive ? 1 : 0] = true;
        if (look.drawType == DRAW_SPHERE) {
            ++sphereClasses;
            bVaried |= !look.spheres.IsConstant() || look.bAlphaByRadius;
        }
        looks.bExact |= look.drawType == DRAW_SPHERE && look.quality >= GLSphereBatch_cls::kExact;
        if (look.drawType != DRAW_POINT) {
            looks.bAllPoints = false;
            continue;
        }
        if (bFirst) {
            looks.size = look.size;
            looks.bAdditive = look.bAdditive;
        }
        looks.bMixedSize |= look.size != looks.size;
        looks.bMixedBlend |= look.bAdditive != looks.bAdditive;
        bFirst = false;
    }
    looks.bMixedBillboards = bBlends[0][0] && bBlends[0][1];
    looks.bMixedSpheres = bBlends[1][0] && bBlends[1][1];
    looks.bOneMaterial = sphereClasses == 1 && !bVaried;
    return looks;
}

SequentialLooks_st GatherOneLook(SnapData_cls& snap, GLAttribute_cls& attribute, float widening) {
    SequentialLooks_st looks;
    ClassLook_st& look = looks.look[0];
    look = TakeLook(attribute, snap, true, widening);
    const bool bSphere = look.drawType == DRAW_SPHERE;
    if (bSphere) look.bAlphaByRadius = false;
    looks.bOneClass = looks.bOccurs[0] = true;
    looks.bAllPoints = look.drawType == DRAW_POINT;
    looks.bBillboards = look.drawType == DRAW_BILLBOARD;
    looks.bExact = bSphere && look.quality >= GLSphereBatch_cls::kExact;
    looks.bOneMaterial = look.spheres.IsConstant();
    looks.size = look.size;
    looks.bAdditive = look.bAdditive;
    return looks;
}
