// The particles of a drawn frame as text of a scene for POV-Ray: what the view has just drawn, filters,
// downsizing and order included.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "COLORCURVE/clsColorSegments.h"
#include "GL/DRAW/PovMaterial.h"
#include "GL/DRAW/clsSphereLook.h"
#include "PDATA/ParticleArrays.h"
#include "POVRAY/TEXT/clsPovText.h"

class GLAttribute_cls;
class SnapData_cls;
struct ArrayAndIndex_cls;

/// UI thread, right behind the picture: draw-time snapshot and list must stand as long as this does.
/// Particles whose place or radius is no finite number are left out, and those without any radius; a radius
/// below 0 is that above it.
class PovParticles_cls {
public:
    struct List_st {
        const ArrayAndIndex_cls* mpEntries = nullptr;
        int mNumber = 0;
        int mStep = 1;         ///< every how many particles of the data it has
        bool mbFaded = false;  ///< weights other than 1 may stand in it
        bool mbClasses = true; ///< a particle's type says which attribute it has; else all have the first
    };
    /// What GLDrawData_cls drew last.
    static List_st GetDrawnList(GLAttribute_cls* const* ppAttribute);

    /// `ppAttribute`: kParticleClasses of them.
    PovParticles_cls(SnapData_cls& snap, GLAttribute_cls* const* ppAttribute, const List_st& list,
                     const PovTextOptions_st& options);

    /// Decimals of coordinates and radii that the settings ask for, or the data (GetNeededDecimals), hidden
    /// ones included. `stickRadius`: of the thinnest sticks that are written among them, 0: none.
    int GetDecimals(float stickRadius = 0.0f) const;
    /// What POV-Ray takes to have them in memory, bytes, by measurement. Where no more than `enough` can come
    /// of it, hidden ones count, too, and shared textures don't.
    double GetPovBytes(double enough) const;
    /// Macros of the attributes, and the declaration of PARTICLES. `pPrint`: what is the same for the same
    /// particles in whichever order, and different for others. `bInPlace`: the particles themselves instead,
    /// which stand where they are wanted; POV-Ray copies what is declared.
    void Append(std::string* pText, const PovText_cls& pov, uint64_t* pPrint = nullptr,
                bool bInPlace = false) const;

private:
    /// An attribute.
    struct Set_st {
        bool mbDrawn = false;
        bool mbConstantColor = true; ///< else lines tell the weight
        bool mbConstantRadius = false;
        bool mbOwnColors = false; ///< particles have colours of their own
        bool mbUnlit = false;     ///< and those are of points and billboards
        float mRadius = 0.0f;     ///< constant, or factor on the data's; not negative
        float mViewRadius = 1.0f; ///< how much of it views have
        float mAlphaFactor = 1.0f;
        unsigned mDrawType = 0;
        bool mbAlphaByRadius = false;
        bool mbOwnRadius = false; ///< the particle's own counts there, whatever it is drawn with
        float mStepping = 1.0f;   ///< share of opacity that downsizing leaves
        float mAlphaBase = 1.0f;  ///< squared
        float mAlphaMax = 1.0f;
        PovText_cls::Surface_st mSurface;
        SphereLook_cls mLook;
        bool mbConstantCurve = true; ///< of points and billboards
        ColorSegments_cls mCurve;
        const float* mpValues = nullptr; ///< that drive it
    };
    /// Text of a run of the list; one a material where materials are grouped.
    struct Slice_st {
        std::vector<PovGroup_st> mGroups;
        bool mbPrint = false;
        uint64_t mPrint = 0;
    };
    static constexpr int kSlices = 4;

    void TakeSet(Set_st& set, GLAttribute_cls& attribute);
    void TakeViewAlpha(Set_st& set, GLAttribute_cls& attribute);
    float GetUnlitAlpha(const Set_st& set, int particle, float radius) const;
    /// Spheres that are written, and how many different materials they have.
    std::pair<size_t, size_t> CountDrawn() const;
    int GetClass(int particle) const;
    bool IsDrawn(const ArrayAndIndex_cls& entry, int* pClass, float* pRadius) const;
    std::string GetMacro(int index, const PovText_cls& pov) const;
    std::string GetColorMacro(int index, const PovText_cls& pov) const;
    PovMaterial_st GetMaterial(int index, const ArrayAndIndex_cls& entry, float radius) const;
    PovText_cls::Surface_st GetSurface(const PovMaterial_st& material) const;
    int GetRadiusDecimals(int index, int decimals) const;
    char* PutCall(char* p, int index, const ArrayAndIndex_cls& entry, float radius, int decimals) const;
    char* PutSphere(char* p, int index, const ArrayAndIndex_cls& entry, float radius, int decimals) const;
    static void AppendGroup(std::string* pText, const std::vector<const std::string*>& lines,
                            const std::string& texture);
    uint64_t AppendGroups(std::string* pText, const Slice_st (&slices)[kSlices],
                          const PovText_cls& pov) const;
    void WriteSlice(int first, int end, int decimals, Slice_st* pSlice) const;

    SnapData_cls& mSnap;
    const List_st mList;
    const PovTextOptions_st mOptions;
    Set_st mSets[kParticleClasses];
};
