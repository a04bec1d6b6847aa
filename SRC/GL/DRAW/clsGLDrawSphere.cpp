// Lit spheres of one attribute.
#include "GL/DRAW/clsGLDrawData.h"

#include <epoxy/gl.h>

#include <wx/intl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/DrawByProcessor.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSphereBatch.h"
#include "GL/DRAW/clsShadowStencil.h"
#include "GL/DRAW/clsShadowVolume.h"
#include "GL/DRAW/clsSnapData.h"

wxString GLDrawData_cls::msStrMessage;

namespace {

void SetSphereState(const GLAttribute_cls& attribute) {
    glEnable(GL_LIGHTING);
    glEnable(GL_NORMALIZE);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_COLOR_MATERIAL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA,
                attribute.mBlendType.mValue == BLEND_ADDITIVE ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_TRUE);
}

} // namespace

void GLDrawData_cls::CheckExact(bool bWanted, const ViewScale_cls& view) {
    if (!bWanted || GLSphereBatch_cls::HasExact(view)) return;
    const wxString text =
        view.IsPlain() ? _("\"Exact\" spheres are drawn as \"High\": this OpenGL can't cast rays.")
                       : _("\"Exact\" spheres are drawn as \"High\": the view or a DataBox stretches them.");
    if (msStrMessage.Find(text) == wxNOT_FOUND) msStrMessage += text + "\n";
}

void GLDrawData_cls::DrawShadows(int number, unsigned quality, const SnapData_cls& snap,
                                 const std::function<float(int)>& radius) {
    ShadowStencil_cls* pStencil = ShadowStencil_cls::Current();
    if (!pStencil) return;
    DrawProgress_cls progress(number);
    const bool bExact = GLSphereBatch_cls::HasExact(ViewScale_cls());
    ShadowVolume_cls volumes(mLight, ShadowVolume_cls::GetStart(quality, bExact), *pStencil);
    for (int i = 0; i < number; ++i) {
        const int index = mspIndexAndZ[i].mIndex;
        if (!progress.AddCost(volumes.Add(snap.mpPos[index], radius(index)))) continue;
        volumes.Flush();
        if (!progress.Report(i + 1)) break;
    }
    volumes.Flush();
    CheckGLErrors("shadows");
}

void GLDrawData_cls::GLDrawSphereAll(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute) {
    const int number = ZSort(face, pSnap, pAttribute);
    if (number == 0) return;
    if (!GLAttribute_cls::mspCShaderCtrl) return;
    const int step = pAttribute->mpCDrawOption->GetDownSizing();
    const float scale = static_cast<float>(GetSteppingRadiusFactor(step)) * pAttribute->GetRadiusFactor();
    const float alphaFactor =
        pAttribute->mAlphaFactor.mValue * static_cast<float>(GetSteppingAlphaFactor(step));
    const bool bOneRadius = pAttribute->mRadiusType.mValue == RADIUS_CONSTANT;
    if (mbShadowPass) {
        DrawShadows(number, pAttribute->mDrawQuality.mValue, *pSnap,
                    [&](int i) { return bOneRadius ? scale : scale * pSnap->mpRadius[i]; });
        return;
    }

    const GLAttribScope_cls attributes;
    const ViewScale_cls view;
    SequentialLooks_st looks =
        GatherOneLook(*pSnap, *pAttribute, static_cast<float>(GetSteppingRadiusFactor(step)));
    if (IsFaded()) looks.bOneMaterial = false;
    if (DrawByProcessor({*pSnap, mspIndexAndZ, number, looks,
                         static_cast<float>(GetSteppingAlphaFactor(step)), IsFaded(), mLightNumber, true,
                         false},
                        view))
        return;
    SetSphereState(*pAttribute);
    const SphereLook_cls look(*pAttribute, *pSnap);
    SphereMaterial_st material;
    look.GetAtZero(material);
    material.ChangeAlpha([&](float alpha) { return alpha * alphaFactor; });
    SetGLMaterial(material);

    const SphereStyle_st style = {pAttribute->mShaderType.mValue, pAttribute->mDrawQuality.mValue,
                                  mLightNumber, !look.IsConstant() || IsFaded(),
                                  pAttribute->mBlendType.mValue == BLEND_ADDITIVE};
    CheckExact(style.mQuality >= GLSphereBatch_cls::kExact, view);
    DrawProgress_cls progress(number);
    GLSphereBatch_cls batch(mVBatch, style, view);
    for (int i = 0; i < number; ++i) {
        const ArrayAndIndex_cls& entry = mspIndexAndZ[i];
        const float* pPos = pSnap->mpPos[entry.mIndex];
        const float radius = bOneRadius ? scale : scale * pSnap->mpRadius[entry.mIndex];
        if (style.mbMaterials) {
            look.Get(entry.mIndex, material);
            const float factor = alphaFactor * entry.mAlpha;
            material.ChangeAlpha([factor](float alpha) { return alpha * factor; });
        }
        if (!progress.AddCost(batch.Add(pPos, radius, material))) continue;
        batch.Flush();
        if (!progress.Report(i + 1)) break;
    }
    batch.Flush();
    CheckGLErrors("spheres");
}
