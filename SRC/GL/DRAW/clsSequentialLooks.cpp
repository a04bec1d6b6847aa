#include "GL/DRAW/clsSequentialLooks.h"

#include <algorithm>

#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSphereBatch.h"

namespace {

ClassLook_st TakeLook(GLAttribute_cls& attribute, SnapData_cls& snap, bool bOccurs, float widening) {
    ClassLook_st look;
    look.drawType = attribute.mDrawType.mValue;
    look.bConstantColor = attribute.mColor.IsConstant();
    look.bAdditive = attribute.mBlendType.mValue == 1;
    look.size = static_cast<float>(std::max(attribute.mPointSize.mValue, 1));
    look.radius = attribute.GetRadiusFactor() * widening;
    look.bOneRadius = attribute.mRadiusType.mValue == 1;
    look.bAlphaByRadius = attribute.mAlphaType.mValue == 1;
    look.alphaMax = attribute.mAlphaMax.mValue;
    look.alphaBase = attribute.mAlphaDependBase.mValue * attribute.mAlphaDependBase.mValue;
    look.alphaFactor = attribute.mAlphaFactor.mValue;
    look.quality = attribute.mDrawQuality.mValue;
    look.shaderType = attribute.mShaderType.mValue;
    if (bOccurs && look.drawType == 2) look.spheres = SphereLook_cls(attribute, snap);
    if (look.drawType == 2 && !GLAttribute_cls::mspCShaderCtrl) look.drawType = 4; // before any view
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
        looks.bBillboards |= look.drawType == 1;
        if (look.drawType == 1 || look.drawType == 2)
            bBlends[look.drawType - 1][look.bAdditive ? 1 : 0] = true;
        if (look.drawType == 2) {
            ++sphereClasses;
            bVaried |= !look.spheres.IsConstant() || look.bAlphaByRadius;
        }
        looks.bExact |= look.drawType == 2 && look.quality >= GLSphereBatch_cls::kExact;
        if (look.drawType != 0) {
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
