// How the four classes of particles look when all are drawn in one pass.
#pragma once

#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/DRAW/clsSphereLook.h"
#include "PDATA/ParticleArrays.h"

constexpr unsigned kSequentialClasses = kParticleClasses;

struct ClassLook_st {
    unsigned drawType = DRAW_HIDE;
    bool bConstantColor = true; ///< of points and billboards
    bool bAdditive = false;
    float size = 1.0f;   ///< of points, pixels
    float radius = 1.0f; ///< constant, or factor on the data's; what downsizing adds is in it
    bool bOneRadius = false;
    bool bAlphaByRadius = false;
    float alphaMax = 1.0f;
    float alphaBase = 1.0f;   ///< squared
    float alphaFactor = 1.0f; ///< of spheres
    bool bTested = true;      ///< of points: hidden by what is nearer
    bool bHides = false;      ///< of points: they hide what is farther
    unsigned quality = 0;
    unsigned shaderType = 0;
    SphereLook_cls spheres;
};

/// Types past the last class count as the first.
inline unsigned GetSequentialClass(const SnapData_cls& snap, int index) {
    return snap.mpType ? static_cast<unsigned>(GetParticleClass(snap.mpType[index])) : 0u;
}

/// The classes, and what those that occur among the particles have in common.
struct SequentialLooks_st {
    ClassLook_st look[kSequentialClasses];
    bool bOccurs[kSequentialClasses] = {}; ///< in the snapshot
    bool bAllPoints = true;
    bool bBillboards = false;
    bool bMixedBillboards = false; ///< some cover, some add
    bool bMixedSpheres = false;    ///< some cover, some add
    bool bExact = false;
    bool bOneMaterial = false; ///< of all spheres
    bool bOneClass = false;    ///< all particles count as the first
    // Of points.
    bool bMixedSize = false;
    bool bMixedBlend = false;
    float size = 1.0f;
    bool bAdditive = false;

    unsigned GetClass(const SnapData_cls& snap, int index) const {
        return bOneClass ? 0u : GetSequentialClass(snap, index);
    }
};

/// `widening` is what downsizing does to radii.
SequentialLooks_st GatherSequentialLooks(SnapData_cls& snap, GLAttribute_cls** ppAttribute, float widening);
/// Of one attribute for all particles; the spheres' alpha follows one rule whatever their radius is.
SequentialLooks_st GatherOneLook(SnapData_cls& snap, GLAttribute_cls& attribute, float widening);
