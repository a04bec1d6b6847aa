// Ray-cast spheres gathered for OpenGL: points where a point can stand for the sphere's square on the screen,
// squares elsewhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "GL/DRAW/clsNearLights.h"
#include "GL/DRAW/clsSphereLook.h"
#include "GL/DRAW/clsViewScale.h"

class GLExactBatch_cls {
public:
    /// `shaderType` is a ShaderCtrl_cls::Type; with `bMaterials` each sphere has its own material, else that
    /// of glMaterial. `bEachBlends`: see ShaderCtrl_cls::BeginSpheres. `storage` is the caller's, for the
    /// next use.
    GLExactBatch_cls(std::vector<float>& storage, unsigned shaderType, int lightNumber, bool bMaterials,
                     bool bEachBlends, const ViewScale_cls& view);
    ~GLExactBatch_cls();
    GLExactBatch_cls(const GLExactBatch_cls&) = delete;
    GLExactBatch_cls& operator=(const GLExactBatch_cls&) = delete;

    /// False: the shader isn't to be had, and nothing may be added.
    bool IsMade() const { return mbMade; }
    bool IsFull() const { return mCount >= mCapacity; }
    bool IsEmpty() const { return mCount == 0; }

    /// Only while it isn't full.
    void Add(const float* pPos, float radius, const SphereMaterial_st& material) {
        float* p = mpData + mCount++ * mStride;
        p[0] = pPos[0], p[1] = pPos[1], p[2] = pPos[2], p[3] = radius;
        if (mbMaterials) CopyMaterial(material, p + 4);
    }
    /// Draw what has been gathered. Where the order doesn't show, as spheres hide what they cover,
    /// neighbours on the screen are drawn together.
    void Flush(bool bOrdered);

private:
    // Points that are small beside their distance to the lights; others; squares; those around the eye.
    enum class Kind { SmallPoints, Points, Squares, NearSquares };
    struct Run_st {
        Kind kind;
        size_t end;
    };

    static void CopyMaterial(const SphereMaterial_st& material, float* pOut);
    void Locate();
    void TakeInOrder();
    void TakeByPlace();
    void Take(size_t from, size_t to);
    Kind GetPoints() const { return mLights ? Kind::SmallPoints : Kind::Points; }
    bool UseProgram(Kind kind);
    void BindArrays(const float* pFirst, size_t stride, bool bCorners);
    void DrawPoints(size_t first, size_t end);
    void DrawSquares(size_t first, size_t end);

    float* mpData;
    float* mpTaken; ///< in the order of drawing, without what isn't seen
    float* mpSquares;
    size_t mStride; ///< floats a sphere
    size_t mCapacity;
    size_t mCount = 0;
    unsigned mShaderType;
    int mLightNumber;
    bool mbMaterials;
    bool mbEachBlends;
    bool mbMade = false;
    bool mbCulled = false;                 ///< before
    Kind mProgram = Kind::Points;          ///< whose program is in use
    std::optional<NearLights_cls> mLights; ///< where it matters how small spheres are
    float mMaxPoint = 1.0f;                ///< pixels
    const ViewScale_cls& mView;
    std::vector<uint32_t> mVKeys; ///< part of the screen of each sphere, or why it is no point
    std::vector<Run_st> mVRuns;   ///< of what is taken
};
