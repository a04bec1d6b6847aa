// What a particle is known by from one snapshot to the next.
#pragma once

#include <array>

class PDataBlock_cls;

struct ParticleName_st {
    bool mbID = false; ///< its file numbers the particles; else its place in the file is all there is
    int mID = 0;
    int mIndex = -1; ///< its place in the file when it was named; -1: no particle
    /// Where the copy of it stands that is meant, steps of the periodic box along its vectors; zeros: where
    /// the data are.
    std::array<int, 3> mCell = {0, 0, 0};

    bool IsNone() const { return mIndex < 0; }
    bool operator==(const ParticleName_st& other) const;
    bool operator!=(const ParticleName_st& other) const { return !(*this == other); }
};

/// The name of a block's particle.
ParticleName_st NameParticle(const PDataBlock_cls& block, int index, const std::array<int, 3>& cell);

/// Where a block has a particle; -1: it isn't there, or the block has no arrays. Of several that bear its ID
/// it is the one at its old place, else the first.
int FindParticle(const PDataBlock_cls& block, const ParticleName_st& name);
