#include "IMPORT/clsImportNumbers.h"

#include <algorithm>
#include <climits>

#include "IMPORT/ParticleSource.h"

void ImportNumbers_cls::MapIDs(ImportSnapshot_st* pSnap) {
    for (long long& id : pSnap->mID) {
        if (id >= 0 && id <= INT_MAX) continue;
        id = mNewIDs.emplace(id, -1 - static_cast<int>(mNewIDs.size())).first->second;
    }
}

bool ImportNumbers_cls::NeedsTypes(const ImportSnapshot_st& snap) const {
    return (snap.mColumns & IMPORT_TYPE) != 0 && snap.mbTypesFromOne && mFirstType < 0;
}

void ImportNumbers_cls::MapTypes(ImportSnapshot_st* pSnap) {
    if (pSnap->mType.empty()) return;
    if (mFirstType < 0)
        mFirstType = pSnap->mbTypesFromOne && *std::min_element(pSnap->mType.begin(), pSnap->mType.end()) > 0;
    for (int& type : pSnap->mType) {
        if (type > kLastType + mFirstType) mbTypesBeyond = true;
        type = std::clamp(type, mFirstType, kLastType + mFirstType) - mFirstType;
    }
}
