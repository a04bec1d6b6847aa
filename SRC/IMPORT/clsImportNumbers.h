// IDs and types as our snapshots can hold them.
#pragma once

#include <unordered_map>

struct ImportSnapshot_st;

class ImportNumbers_cls {
public:
    static constexpr int kLastType = 3;

    /// IDs that don't fit into 31 bits get -1, -2, ... in the order in which they first appear.
    void MapIDs(ImportSnapshot_st* pSnap);
    /// Types 0 to kLastType; those of formats that count from 1 go down by one unless there is a 0 in the
    /// first snapshot that has particles.
    void MapTypes(ImportSnapshot_st* pSnap);

    bool HasNewIDs() const { return !mNewIDs.empty(); }
    bool HasTypesBeyond() const { return mbTypesBeyond; }
    /// Does what becomes of later types still depend on a body that wasn't seen?
    bool NeedsTypes(const ImportSnapshot_st& snap) const;
    int GetFirstType() const { return mFirstType > 0 ? mFirstType : 0; }

private:
    std::unordered_map<long long, int> mNewIDs;
    int mFirstType = -1; ///< not known yet
    bool mbTypesBeyond = false;
};
