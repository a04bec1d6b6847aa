// The material of the spheres of one attribute: three colour curves, evaluated for each particle.
#pragma once

#include "COLORCURVE/clsColorSegments.h"

class GLAttribute_cls;
class SnapData_cls;

/// RGBA each.
struct SphereMaterial_st {
    float mAmbient[4] = {0, 0, 0, 1};
    float mDiffuse[4] = {0, 0, 0, 1};
    float mSpecular[4] = {0, 0, 0, 1};

    /// The same alpha rule for all three.
    template <class RULE>
    void ChangeAlpha(RULE rule) {
        for (float* pColor : {mAmbient, mDiffuse, mSpecular})
            pColor[3] = rule(pColor[3]);
    }
};

class SphereLook_cls {
public:
    static constexpr float kShininess = 20.0f;

    /// Hides nothing.
    SphereLook_cls() = default;
    /// Prepares the attribute's curves, and the values in the snapshot that drive them.
    SphereLook_cls(GLAttribute_cls& attribute, SnapData_cls& snap);

    /// All particles are alike.
    bool IsConstant() const { return mbConstant; }
    /// The curves' colours for a particle.
    void Get(int index, SphereMaterial_st& out) const {
        GetOne(0, index, out.mAmbient);
        GetOne(1, index, out.mDiffuse);
        GetOne(2, index, out.mSpecular);
    }
    /// The same where the values are 0.
    void GetAtZero(SphereMaterial_st& out) const;

private:
    void GetOne(int which, int index, float* pOut) const {
        mCurve[which].Get(pOut, mpValue[which] ? mpValue[which][index] : 0.0f);
    }

    bool mbConstant = true;
    ColorSegments_cls mCurve[3]; ///< ambient, diffuse, specular
    float* mpValue[3] = {nullptr, nullptr, nullptr};
};

/// Hand a material to the fixed pipeline, for both sides of a face.
void SetGLMaterial(const SphereMaterial_st& material);
