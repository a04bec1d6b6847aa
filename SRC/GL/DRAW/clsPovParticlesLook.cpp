// What particles look like: the attributes' colours and opacity, each way of drawing by its own rules.
#include "GL/DRAW/clsPovParticles.h"

#include <algorithm>
#include <cmath>

#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/clsArrayAndIndex.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"

namespace {

// Points and billboards have one colour, which is shared out to how a solid shows it.
constexpr float kUnlitAmbient = 0.2f;
constexpr float kUnlitDiffuse = 0.8f;

float ToShare(float value) { return value >= 0.0f ? std::min(value, 1.0f) : 0.0f; }

unsigned char ToByte(float value) { return static_cast<unsigned char>(std::lrint(ToShare(value) * 255.0f)); }

unsigned short ToThousandths(float value) {
    return static_cast<unsigned short>(std::lrint(ToShare(value) * 1000.0f));
}

} // namespace

void PovParticles_cls::TakeSet(Set_st& set, GLAttribute_cls& attribute) {
    const unsigned type = attribute.mDrawType.mValue;
    set.mbDrawn = type <= DRAW_BOTH;
    if (!set.mbDrawn) return;
    set.mbConstantRadius = attribute.mRadiusType.mValue == RADIUS_CONSTANT;
    set.mRadius = std::fabs(attribute.GetRadiusFactor()) *
                  static_cast<float>(GLDrawData_cls::GetSteppingRadiusFactorUnlimited(mList.mStep));
    set.mAlphaFactor = attribute.mAlphaFactor.mValue;
    set.mbAlphaByRadius = attribute.mAlphaType.mValue == ALPHA_BY_RADIUS;
    set.mAlphaBase = attribute.mAlphaDependBase.mValue * attribute.mAlphaDependBase.mValue;
    set.mAlphaMax = attribute.mAlphaMax.mValue;
    ColorCurve_cls* const curves[3] = {&attribute.mAmbient, &attribute.mDiffuse, &attribute.mSpecular};
    bool bCurves = false;
    for (size_t k = 0; k < 3; ++k) {
        curves[k]->PreCalcScaleFactor();
        curves[k]->GetColor4fScaled(set.mSurface.mColors[k], 0.0f);
        set.mSurface.mColors[k][3] = std::clamp(set.mAlphaFactor, 0.0f, 1.0f);
        bCurves = bCurves || !curves[k]->IsConstant();
    }
    set.mbConstantColor = !bCurves && !mList.mbFaded;
    if (!mOptions.mbColorByParticle) return;
    set.mbUnlit = type == DRAW_POINT || type == DRAW_BILLBOARD;
    TakeViewAlpha(set, attribute);
    set.mbOwnColors = set.mbUnlit ? mSnap.mpColor != nullptr : bCurves || set.mbAlphaByRadius;
    if (set.mbOwnColors && !set.mbUnlit) set.mLook = SphereLook_cls(attribute, mSnap);
}

// Each way of drawing has rules of its own.
void PovParticles_cls::TakeViewAlpha(Set_st& set, GLAttribute_cls& attribute) {
    using Draw = GLDrawData_cls;
    const int step = mList.mStep;
    const bool bUnlimited = set.mbUnlit && !mList.mbClasses;
    set.mDrawType = attribute.mDrawType.mValue;
    set.mStepping = static_cast<float>(bUnlimited ? Draw::GetSteppingAlphaFactorUnlimited(step)
                                                  : Draw::GetSteppingAlphaFactor(step));
    if (!bUnlimited)
        set.mViewRadius = static_cast<float>(Draw::GetSteppingRadiusFactor(step) /
                                             Draw::GetSteppingRadiusFactorUnlimited(step));
    if (!set.mbUnlit) {
        if (!mList.mbClasses) set.mbAlphaByRadius = false;
        // Of a lit material the diffuse colour's alpha counts.
        float diffuse[4];
        attribute.mDiffuse.GetColor4fScaled(diffuse, 0.0f);
        for (auto& color : set.mSurface.mColors)
            color[3] = ToShare(diffuse[3] * set.mAlphaFactor * set.mStepping);
        return;
    }
    attribute.mColor.PreCalcScaleFactor();
    set.mCurve = ColorSegments_cls(attribute.mColor);
    set.mbConstantCurve = attribute.mColor.IsConstant();
    set.mbOwnRadius = set.mDrawType == DRAW_BILLBOARD && bUnlimited && mList.mNumber > kManyBillboards;
    set.mpValues = mSnap.GetDrivingValues(attribute.mColor.mDependType.mValue);
}

// The snapshot's alpha has the factor in it, or the base of that by radius; the curve's hasn't.
float PovParticles_cls::GetUnlitAlpha(const Set_st& set, int particle, float radius) const {
    const bool bBillboard = set.mDrawType == DRAW_BILLBOARD;
    const float snapshot = mSnap.mpColor[particle][3];
    const float own = set.mbOwnRadius ? set.mRadius * mSnap.mpRadius[particle] : radius;
    const float shown = own * set.mViewRadius;
    if (mList.mbClasses) {
        const bool bByRadius = bBillboard && set.mbAlphaByRadius;
        return (bByRadius ? AlphaByRadius(snapshot, shown, 1.0f, set.mAlphaMax) : snapshot) * set.mStepping;
    }
    const bool bConstant = set.mbConstantCurve || !set.mpValues;
    float color[4];
    set.mCurve.Get(color, bConstant ? 0.0f : set.mpValues[particle]);
    if (!bBillboard) {
        const bool bByRadius = set.mbAlphaByRadius && !bConstant;
        const float alpha = bByRadius ? AlphaByRadius(color[3], set.mRadius, 1.0f, set.mAlphaMax) : color[3];
        return alpha * set.mAlphaFactor * set.mStepping;
    }
    if (set.mbAlphaByRadius) return AlphaByRadius(snapshot, shown, set.mStepping, set.mAlphaMax);
    return bConstant ? color[3] * set.mAlphaFactor : snapshot * set.mStepping * set.mAlphaFactor;
}

PovMaterial_st PovParticles_cls::GetMaterial(int index, const ArrayAndIndex_cls& entry, float radius) const {
    const Set_st& set = mSets[index];
    PovMaterial_st material;
    material.mSet = static_cast<unsigned char>(index);
    if (!set.mbOwnColors) {
        material.mAlpha = set.mbConstantColor ? 1000 : ToThousandths(entry.mAlpha);
        return material;
    }
    SphereMaterial_st colors;
    float alpha;
    if (set.mbUnlit) {
        const float* const color = mSnap.mpColor[entry.mIndex];
        for (int c = 0; c < 3; ++c) {
            colors.mAmbient[c] = color[c] * kUnlitAmbient;
            colors.mDiffuse[c] = color[c] * kUnlitDiffuse;
        }
        std::copy_n(set.mSurface.mColors[2], 3, colors.mSpecular);
        alpha = GetUnlitAlpha(set, entry.mIndex, radius);
    } else {
        set.mLook.Get(entry.mIndex, colors);
        alpha = set.mbAlphaByRadius ? AlphaByRadius(colors.mDiffuse[3], radius * set.mViewRadius,
                                                    set.mAlphaBase, set.mAlphaMax)
                                    : colors.mDiffuse[3] * set.mAlphaFactor;
        alpha *= set.mStepping;
    }
    for (int c = 0; c < 3; ++c) {
        material.mColors[c] = ToByte(colors.mAmbient[c]);
        material.mColors[3 + c] = ToByte(colors.mDiffuse[c]);
        material.mColors[6 + c] = ToByte(colors.mSpecular[c]);
    }
    material.mAlpha = ToThousandths(alpha * entry.mAlpha);
    return material;
}

PovText_cls::Surface_st PovParticles_cls::GetSurface(const PovMaterial_st& material) const {
    PovText_cls::Surface_st surface = mSets[material.mSet].mSurface;
    const float alpha = static_cast<float>(material.mAlpha) / 1000.0f;
    const bool bOwn = mSets[material.mSet].mbOwnColors;
    if (!bOwn) surface.mSpecularFactor = alpha;
    for (int layer = 0; layer < 3; ++layer) {
        float* const color = surface.mColors[layer];
        for (int c = 0; c < 3 && bOwn; ++c)
            color[c] = static_cast<float>(material.mColors[3 * layer + c]) / 255.0f;
        color[3] = bOwn ? alpha : color[3] * alpha;
    }
    return surface;
}
