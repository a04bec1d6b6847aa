// The arrays of one snapshot as a reader fills them: parallel arrays, one index a particle.
#pragma once

/// Classes of particles: a particle's type is its class, and types past the last one count as class 0.
constexpr int kParticleClasses = 4;
inline int GetParticleClass(unsigned char type) { return type < kParticleClasses ? type : 0; }

/// Bits of ParticleArrays_st::mZeroBits.
enum ParticleArrayBit : unsigned {
    PARTICLE_POS = 1,
    PARTICLE_VEL = 2,
    PARTICLE_RADIUS = 4,
    PARTICLE_VALUE1 = 8,
    PARTICLE_TYPE = 16,
    PARTICLE_ID = 32,
    PARTICLE_DRADIUS = 64,
    PARTICLE_DVALUE1 = 128,
};

/// Owns nothing. Every array has one entry a particle. A reader leaves 0 in each entry that the file
/// has nothing for, the slopes included.
struct ParticleArrays_st {
    float (*mpPos)[3] = nullptr;
    float (*mpVel)[3] = nullptr;
    float* mpRadius = nullptr;
    float* mpValue1 = nullptr;
    unsigned char* mpType = nullptr;
    int* mpID = nullptr;        ///< may be null: IDs are skipped
    float* mpDRadius = nullptr; ///< slope of the radius; may be null
    float* mpDValue1 = nullptr; ///< slope of the value; may be null
    /// Arrays known to be all zero, which spares clearing them again.
    unsigned mZeroBits = 0;
};
