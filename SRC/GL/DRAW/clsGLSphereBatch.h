// Lit spheres gathered into batches for OpenGL, in the order in which they are added: a mesh repeated at
// many places, or spheres that are met by the rays of the pixels ("Exact").
#pragma once

#include <optional>
#include <vector>

#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/clsGLExactBatch.h"
#include "GL/DRAW/clsSphereLook.h"
#include "GL/DRAW/clsViewScale.h"

/// How the spheres of a batch are drawn.
struct SphereStyle_st {
    unsigned mShaderType = 0; ///< a ShaderCtrl_cls::Type
    unsigned mQuality = 0;    ///< 0 to 2: meshes of level quality + 1; 3: exact
    int mLightNumber = 0;
    bool mbMaterials = false;  ///< each sphere has its own material, else that of glMaterial
    bool mbAdditive = false;   ///< as the blend function is set, unless each sphere tells
    bool mbEachBlends = false; ///< the alpha of the ambient colour says 1: covers, or 0: adds; with materials

    bool operator==(const SphereStyle_st& o) const {
        return mShaderType == o.mShaderType && mQuality == o.mQuality && mLightNumber == o.mLightNumber &&
               mbMaterials == o.mbMaterials && mbAdditive == o.mbAdditive && mbEachBlends == o.mbEachBlends;
    }
};

class GLSphereBatch_cls {
public:
    static constexpr unsigned kExact = 3;      ///< quality
    static constexpr int kMeshCapacity = 2048; ///< spheres a call
    static constexpr int kMaxStride = 16;      ///< floats: place, radius, and unless all are alike material

    /// Lighting, depth state and, unless each sphere tells, blend function are the caller's; `storage` too,
    /// for the next use. An exact style that this OpenGL or this view doesn't allow becomes the finest mesh.
    GLSphereBatch_cls(std::vector<float>& storage, const SphereStyle_st& style, const ViewScale_cls& view);
    ~GLSphereBatch_cls();
    GLSphereBatch_cls(const GLSphereBatch_cls&) = delete;
    GLSphereBatch_cls& operator=(const GLSphereBatch_cls&) = delete;

    /// A negative radius counts as a positive one; a sphere whose place or radius is no number is left out.
    /// Returns the cost for DrawProgress_cls.
    float Add(const float* pPos, float radius, const SphereMaterial_st& material) {
        radius = radius < 0.0f ? -radius : radius;
        if (!IsDrawable(pPos, radius)) return 0.0f;
        mMinAlpha = material.mDiffuse[3] < mMinAlpha ? material.mDiffuse[3] : mMinAlpha;
        mbAdds |= mStyle.mbEachBlends && material.mAmbient[3] == 0.0f;
        return mForm == Form::Exact ? AddExact(pPos, radius, material) : AddMesh(pPos, radius, material);
    }
    /// Draw what has been gathered; needed before a change of state.
    void Flush();

    /// Ray casting is possible in this view.
    static bool HasExact(const ViewScale_cls& view);

private:
    // Single: one call a sphere with its attributes; Fixed: the same with the fixed pipeline alone.
    enum class Form { Exact, Instances, Single, Fixed };

    void BeginMesh();
    float AddMesh(const float* pPos, float radius, const SphereMaterial_st& material);
    float AddExact(const float* pPos, float radius, const SphereMaterial_st& material);
    void DrawSingle(const float* p);
    void DrawFixed(const float* p);

    float* mpData;
    int mCount = 0;
    int mLevel;
    int mStride;            ///< floats
    float mMinAlpha = 1.0f; ///< of what is gathered
    bool mbAdds = false;    ///< some of that
    SphereStyle_st mStyle;
    const ViewScale_cls& mView;
    Form mForm = Form::Fixed;
    std::optional<GLExactBatch_cls> mExact;
};
