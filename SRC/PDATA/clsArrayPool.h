// Memory for the arrays of snapshots. Fresh pages cost three to four times a buffer that was used
// before, so released arrays are kept, up to a limit, for the next snapshot. UI thread only.
//
// Big arrays are mapped with huge pages. No two arrays that are allocated in turn begin at the same
// offset in a page: ten streams at one offset would evict each other from the first-level cache.
#pragma once

#include <cstddef>
#include <vector>

#include "PDATA/ParticleArrays.h"

class ArrayPool_cls {
public:
    /// cacheLimit: bytes of released arrays that are kept at most.
    explicit ArrayPool_cls(size_t cacheLimit = size_t(512) << 20) : mCacheLimit(cacheLimit) {}
    ~ArrayPool_cls() { Trim(); }
    ArrayPool_cls(const ArrayPool_cls&) = delete;
    ArrayPool_cls& operator=(const ArrayPool_cls&) = delete;

    /// The one that the store uses.
    static ArrayPool_cls& Shared();

    /// At least `bytes` bytes (over 0), aligned to 64. `*pbZero`: they are all zero; else they hold
    /// what their last user left. Null when memory is short.
    void* Allocate(size_t bytes, bool* pbZero);
    /// Give an array back; null is fine.
    void Free(void* pArray);
    /// All arrays of `number` particles (over 0), or none and false when memory is short. mZeroBits
    /// tells the reader which it need not clear.
    bool AllocateParticles(size_t number, bool bHasID, ParticleArrays_st* pArrays);
    /// Gives the arrays back and nulls them.
    void FreeParticles(ParticleArrays_st* pArrays);

    /// Give all kept memory back to the system.
    void Trim();
    size_t GetCachedBytes() const { return mCachedBytes; }

private:
    struct Head_st;
    Head_st* TakeCached(size_t bytes);
    Head_st* MakeMapped(size_t bytes);
    Head_st* MakeSmall(size_t bytes);
    static void Release(Head_st* pHead);

    size_t NextStagger();

    size_t mCacheLimit;
    size_t mCachedBytes = 0;
    unsigned mTurn = 0;
    std::vector<Head_st*> mCached; ///< oldest first
};
