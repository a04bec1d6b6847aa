#include "GL/DRAW/clsGLSphereBatch.h"

#include <algorithm>
#include <cstddef>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsSphere.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsDrawProgress.h"

namespace {

constexpr int kMaterial = 4; // floats before the material
constexpr float kMeshCorners[3] = {42.0f, 162.0f, 642.0f};
constexpr unsigned kMaterialAttributes[3] = {
    ShaderCtrl_cls::ATTRIBUTE_AMBIENT, ShaderCtrl_cls::ATTRIBUTE_DIFFUSE, ShaderCtrl_cls::ATTRIBUTE_SPECULAR};

/// Arrays of four floats a sphere.
void EnableAttribute(unsigned place, const float* pFirst, int stride, unsigned divisor) {
    glEnableVertexAttribArray(place);
    glVertexAttribPointer(place, 4, GL_FLOAT, GL_FALSE, stride * GLsizei(sizeof(float)), pFirst);
    if (divisor != 0) glVertexAttribDivisor(place, divisor);
}

void DisableAttribute(unsigned place, bool bDivisor) {
    glDisableVertexAttribArray(place);
    if (bDivisor) glVertexAttribDivisor(place, 0);
}

/// One material for all spheres of a shader that expects each to bring its own.
void SetConstantMaterial() {
    constexpr GLenum kNames[3] = {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR};
    for (size_t k = 0; k < 3; ++k) {
        float color[4];
        glGetMaterialfv(GL_FRONT, kNames[k], color);
        glVertexAttrib4fv(kMaterialAttributes[k], color);
    }
}

} // namespace

GLSphereBatch_cls::GLSphereBatch_cls(std::vector<float>& storage, const SphereStyle_st& style,
                                     const ViewScale_cls& view)
    : mLevel(static_cast<int>(std::min(style.mQuality, 2u)) + 1),
      mStride(style.mbMaterials ? kMaxStride : kMaterial), mStyle(style), mView(view) {
    if (style.mbEachBlends) glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    if (style.mQuality >= kExact && view.IsPlain()) {
        mExact.emplace(storage, style.mShaderType, style.mLightNumber, style.mbMaterials, style.mbEachBlends,
                       view);
        if (mExact->IsMade()) {
            mForm = Form::Exact;
            return;
        }
        mExact.reset();
    }
    const size_t room = static_cast<size_t>(kMeshCapacity) * kMaxStride;
    if (storage.size() < room) storage.resize(room); // and never smaller: new room is filled
    mpData = storage.data();
    BeginMesh();
}

GLSphereBatch_cls::~GLSphereBatch_cls() {
    Flush();
    glEnable(GL_BLEND);
    if (mForm == Form::Exact) return;
    if (mForm == Form::Instances) {
        DisableAttribute(ShaderCtrl_cls::ATTRIBUTE_SPHERE, true);
        for (const unsigned place : kMaterialAttributes)
            DisableAttribute(place, true);
    }
    GpCSphere->EndArrays();
    glUseProgram(0);
}

bool GLSphereBatch_cls::HasExact(const ViewScale_cls& view) {
    return view.IsPlain() && GLAttribute_cls::mspCShaderCtrl && GLAttribute_cls::mspCShaderCtrl->HasExact();
}

void GLSphereBatch_cls::BeginMesh() {
    GpCSphere->BeginArrays(mLevel);
    ShaderCtrl_cls* pShader = GLAttribute_cls::mspCShaderCtrl;
    if (!pShader || !pShader->BeginSpheres(mStyle.mShaderType, mStyle.mLightNumber, mStyle.mbEachBlends)) {
        mForm = Form::Fixed;
        if (pShader) pShader->BeginShader(mStyle.mShaderType, mStyle.mLightNumber);
        return;
    }
    mForm = Sphere_cls::HasInstances() ? Form::Instances : Form::Single;
    if (!mStyle.mbMaterials) SetConstantMaterial();
    if (mForm == Form::Single) return;
    EnableAttribute(ShaderCtrl_cls::ATTRIBUTE_SPHERE, mpData, mStride, 1);
    for (size_t k = 0; mStyle.mbMaterials && k < 3; ++k)
        EnableAttribute(kMaterialAttributes[k], mpData + kMaterial + 4 * k, mStride, 1);
}

float GLSphereBatch_cls::AddMesh(const float* pPos, float radius, const SphereMaterial_st& material) {
    float* p = mpData + static_cast<size_t>(mCount++) * static_cast<size_t>(mStride);
    p[0] = pPos[0], p[1] = pPos[1], p[2] = pPos[2], p[3] = radius;
    if (mStyle.mbMaterials) {
        std::copy_n(material.mAmbient, 4, p + kMaterial);
        std::copy_n(material.mDiffuse, 4, p + kMaterial + 4);
        std::copy_n(material.mSpecular, 4, p + kMaterial + 8);
    }
    if (mCount >= kMeshCapacity) Flush();
    return kMeshCorners[mLevel - 1] * DrawProgress_cls::kCostVertex +
           mView.GetArea(pPos, radius) * DrawProgress_cls::kCostPixel;
}

float GLSphereBatch_cls::AddExact(const float* pPos, float radius, const SphereMaterial_st& material) {
    mExact->Add(pPos, radius, material);
    if (mExact->IsFull()) Flush();
    return DrawProgress_cls::kCostVertex + mView.GetArea(pPos, radius) * DrawProgress_cls::kCostExactPixel;
}

// Opaque spheres hide what they cover, blended or not; unblended is cheaper.
void GLSphereBatch_cls::Flush() {
    if (mCount == 0 && (!mExact || mExact->IsEmpty())) return;
    const bool bBlend = (mStyle.mbEachBlends ? mbAdds : mStyle.mbAdditive) || mMinAlpha < 1.0f;
    (bBlend ? glEnable : glDisable)(GL_BLEND);
    mMinAlpha = 1.0f;
    mbAdds = false;
    switch (mForm) {
    case Form::Exact:
        mExact->Flush(bBlend);
        break;
    case Form::Instances:
        GpCSphere->DrawInstances(mCount);
        break;
    case Form::Single:
        for (int i = 0; i < mCount; ++i)
            DrawSingle(mpData + static_cast<size_t>(i) * static_cast<size_t>(mStride));
        break;
    case Form::Fixed:
        for (int i = 0; i < mCount; ++i)
            DrawFixed(mpData + static_cast<size_t>(i) * static_cast<size_t>(mStride));
        break;
    }
    mCount = 0;
}

void GLSphereBatch_cls::DrawSingle(const float* p) {
    glVertexAttrib4fv(ShaderCtrl_cls::ATTRIBUTE_SPHERE, p);
    for (size_t k = 0; mStyle.mbMaterials && k < 3; ++k)
        glVertexAttrib4fv(kMaterialAttributes[k], p + kMaterial + 4 * k);
    GpCSphere->DrawArrays();
}

void GLSphereBatch_cls::DrawFixed(const float* p) {
    if (mStyle.mbMaterials) {
        SphereMaterial_st material;
        std::copy_n(p + kMaterial, 4, material.mAmbient);
        std::copy_n(p + kMaterial + 4, 4, material.mDiffuse);
        std::copy_n(p + kMaterial + 8, 4, material.mSpecular);
        SetGLMaterial(material);
        if (mStyle.mbEachBlends) // the fixed pipeline doesn't multiply by the alpha
            glBlendFunc(GL_SRC_ALPHA, material.mAmbient[3] == 0.0f ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA);
    }
    glPushMatrix();
    glTranslatef(p[0], p[1], p[2]);
    glScalef(p[3], p[3], p[3]);
    GpCSphere->DrawArrays();
    glPopMatrix();
}
