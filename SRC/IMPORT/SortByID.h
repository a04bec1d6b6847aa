// Particles of a snapshot in the order of their IDs.
#pragma once

#include <cstdint>

struct ImportSnapshot_st;

/// The snapshot's mOrder, by which all columns stand in ascending order of mID; mID itself is sorted. IDs
/// have 31 bits and a sign (ImportNumbers_cls::MapIDs). Equal ones keep their order. Takes 16 bytes a
/// particle for the while.
void SortByID(ImportSnapshot_st* pSnap);

/// What IDs, in their order, are the same as: compared from snapshot to snapshot.
class IDPrint_cls {
public:
    void Add(int id) {
        mbUnique = mbUnique && (mNumber == 0 || id > mLast);
        mLast = id;
        ++mNumber;
        mHash = (mHash ^ static_cast<unsigned>(id)) * 0x100000001b3u; // FNV-1a, a word at a time
    }
    /// Ascending, none twice.
    bool IsUnique() const { return mbUnique; }
    bool operator==(const IDPrint_cls& other) const {
        return mHash == other.mHash && mNumber == other.mNumber;
    }

private:
    uint64_t mHash = 0xcbf29ce484222325u;
    long long mNumber = 0;
    int mLast = 0;
    bool mbUnique = true;
};
