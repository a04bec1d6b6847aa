// The table of a snapshot's arrays. Whatever is done with each of them goes through it; a new array is a
// member of ParticleArrays_st and a line here.
#pragma once

#include <tuple>

#include "PDATA/GrammarItems.h"
#include "PDATA/ParticleArrays.h"

/// One array, of an element type that all of its kind share.
template <class T>
struct ParticleColumn_st {
    T* ParticleArrays_st::*mpArray;
    ParticleArrayBit mBit;
    int mItem; ///< GrammerBodyCode of the item that fills it, kNoItem for slopes
};

constexpr int kNoItem = -1;

/// In the order in which they are allocated.
inline constexpr auto kParticleColumns =
    std::make_tuple(ParticleColumn_st<float[3]>{&ParticleArrays_st::mpPos, PARTICLE_POS, BODY_XYZ},
                    ParticleColumn_st<float[3]>{&ParticleArrays_st::mpVel, PARTICLE_VEL, BODY_VXYZ},
                    ParticleColumn_st<float>{&ParticleArrays_st::mpRadius, PARTICLE_RADIUS, BODY_RADIUS},
                    ParticleColumn_st<float>{&ParticleArrays_st::mpValue1, PARTICLE_VALUE1, BODY_VALUE1},
                    ParticleColumn_st<unsigned char>{&ParticleArrays_st::mpType, PARTICLE_TYPE, BODY_TYPE},
                    ParticleColumn_st<int>{&ParticleArrays_st::mpID, PARTICLE_ID, BODY_ID},
                    ParticleColumn_st<float>{&ParticleArrays_st::mpDRadius, PARTICLE_DRADIUS, kNoItem},
                    ParticleColumn_st<float>{&ParticleArrays_st::mpDValue1, PARTICLE_DVALUE1, kNoItem});

/// Call `visit` with each column in turn.
template <class VISIT>
void ForEachColumn(VISIT&& visit) {
    std::apply([&visit](const auto&... column) { (visit(column), ...); }, kParticleColumns);
}
