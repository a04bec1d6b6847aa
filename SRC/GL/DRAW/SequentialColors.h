// Colours and materials of particles in the order of a list.
#pragma once

#include "GL/DRAW/clsArrayAndIndex.h"
#include "GL/DRAW/clsSequentialLooks.h"

/// What is kept from one particle to the next while class and settings allow it.
struct KeptLook_st {
    explicit KeptLook_st(bool bEachFaded) : bFaded(bEachFaded) {}
    bool bFaded; ///< no particle is sure to be as opaque as the one before
    unsigned type = kSequentialClasses;
    float color[4] = {0, 0, 0, 0};
    SphereMaterial_st material;
};

/// Of points and billboards: RGBA into `kept`. `stepping` is what downsizing does to alpha.
void TakeColor(KeptLook_st& kept, const SnapData_cls& snap, const ArrayAndIndex_cls& entry, unsigned type,
               const ClassLook_st& look, float radius, float stepping);
/// Of spheres.
void TakeMaterial(KeptLook_st& kept, const ArrayAndIndex_cls& entry, unsigned type, const ClassLook_st& look,
                  float radius, float stepping);
