#include "GL/DRAW/clsSequentialLooks.h"

#include <algorithm>

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

} // namespace

SequentialLooks_st GatherSequentialLooks(SnapData_cls& snap, GLAttribute_cls** ppAttribute, float widening) {
    bool bOccurs[kSequentialClasses] = {};
    for (int i = 0; i < snap.mNumber; ++i)
        bOccurs[GetSequentialClass(snap, i)] = true;
    SequentialLooks_st looks;
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
