#include "GL/DRAW/clsSphereLook.h"

#include <epoxy/gl.h>

#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"

SphereLook_cls::SphereLook_cls(GLAttribute_cls& attribute, SnapData_cls& snap) {
    ColorCurve_cls* const curves[3] = {&attribute.mAmbient, &attribute.mDiffuse, &attribute.mSpecular};
    for (int which = 0; which < 3; ++which) {
        ColorCurve_cls& curve = *curves[which];
        curve.PreCalcScaleFactor();
        mCurve[which] = ColorSegments_cls(curve);
        if (curve.IsConstant()) continue;
        mbConstant = false;
        snap.SetPValue1(&mpValue[which], &attribute, which + 1);
    }
}

void SphereLook_cls::GetAtZero(SphereMaterial_st& out) const {
    mCurve[0].Get(out.mAmbient, 0.0f);
    mCurve[1].Get(out.mDiffuse, 0.0f);
    mCurve[2].Get(out.mSpecular, 0.0f);
}

void SetGLMaterial(const SphereMaterial_st& material) {
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, material.mAmbient);
    glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, material.mDiffuse);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, material.mSpecular);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, SphereLook_cls::kShininess);
}
