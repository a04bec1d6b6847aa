#include "PDATA/ParticleName.h"

#include <algorithm>

#include "PDATA/clsPDataBlock.h"

namespace {

bool HasIDs(const PDataBlock_cls& block) { return block.mbHasID && block.mpID; }

} // namespace

bool ParticleName_st::operator==(const ParticleName_st& other) const {
    return mbID == other.mbID && mID == other.mID && mIndex == other.mIndex && mCell == other.mCell;
}

ParticleName_st NameParticle(const PDataBlock_cls& block, int index, const std::array<int, 3>& cell) {
    ParticleName_st name;
    if (!block.mbAllocated || index < 0 || index >= block.mParticleNumber) return name;
    name.mIndex = index;
    name.mCell = cell;
    name.mbID = HasIDs(block);
    if (name.mbID) name.mID = block.mpID[index];
    return name;
}

int FindParticle(const PDataBlock_cls& block, const ParticleName_st& name) {
    if (name.IsNone() || !block.mbAllocated) return -1;
    const bool bInside = name.mIndex < block.mParticleNumber;
    if (!name.mbID || !HasIDs(block)) return bInside ? name.mIndex : -1;
    if (bInside && block.mpID[name.mIndex] == name.mID) return name.mIndex;
    const int* begin = block.mpID;
    const int* end = begin + std::max(block.mParticleNumber, 0);
    const int* found = std::find(begin, end, name.mID);
    return found == end ? -1 : static_cast<int>(found - begin);
}
