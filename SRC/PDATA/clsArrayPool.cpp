#include "PDATA/clsArrayPool.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>

#include "PDATA/ParticleColumns.h"

/// Stands in the 64 bytes before each array.
struct alignas(64) ArrayPool_cls::Head_st {
    void* mpBase;     ///< what the system gave
    size_t mMapped;   ///< bytes mapped; 0: from the heap
    size_t mCapacity; ///< bytes of the array
};

namespace {

constexpr size_t kHugePage = size_t(2) << 20;
// Below this the heap serves: tens of thousands of small snapshots would use up the process's maps.
constexpr size_t kMappedFrom = size_t(1) << 20;
constexpr size_t kStaggerStep = 320; // five cache lines
constexpr unsigned kStaggerNumber = 12;
constexpr size_t kStaggerMax = kStaggerStep * kStaggerNumber;

} // namespace

ArrayPool_cls& ArrayPool_cls::Shared() {
    static ArrayPool_cls sPool;
    return sPool;
}

void* ArrayPool_cls::Allocate(size_t bytes, bool* pbZero) {
    static_assert(sizeof(Head_st) == 64, "arrays keep their alignment");
    *pbZero = false;
    if (Head_st* head = TakeCached(bytes)) return head + 1;
    const auto make = [&] { return bytes >= kMappedFrom ? MakeMapped(bytes) : MakeSmall(bytes); };
    Head_st* head = make();
    if (!head && !mCached.empty()) {
        Trim();
        head = make();
    }
    if (!head) return nullptr;
    *pbZero = true;
    return head + 1;
}

void ArrayPool_cls::Free(void* pArray) {
    if (!pArray) return;
    Head_st* head = static_cast<Head_st*>(pArray) - 1;
    // Small ones are the heap's business, which keeps them as well.
    if (head->mMapped == 0 || head->mMapped > mCacheLimit) {
        Release(head);
        return;
    }
    mCached.push_back(head);
    mCachedBytes += head->mMapped;
    while (mCachedBytes > mCacheLimit) {
        mCachedBytes -= mCached.front()->mMapped;
        Release(mCached.front());
        mCached.erase(mCached.begin());
    }
}

bool ArrayPool_cls::AllocateParticles(size_t number, bool bHasID, ParticleArrays_st* pArrays) {
    ParticleArrays_st& arrays = *pArrays;
    arrays = ParticleArrays_st();
    bool bComplete = true;
    ForEachColumn([&](const auto& column) {
        if (column.mBit == PARTICLE_ID && !bHasID) return;
        auto*& array = arrays.*column.mpArray;
        bool bZero = false;
        void* memory = number > SIZE_MAX / 64 ? nullptr : Allocate(number * sizeof(*array), &bZero);
        array = static_cast<std::remove_reference_t<decltype(array)>>(memory);
        if (bZero) arrays.mZeroBits |= column.mBit;
        if (!memory) bComplete = false;
    });
    if (!bComplete) FreeParticles(pArrays);
    return bComplete;
}

void ArrayPool_cls::FreeParticles(ParticleArrays_st* pArrays) {
    ForEachColumn([&](const auto& column) { Free(pArrays->*column.mpArray); });
    *pArrays = ParticleArrays_st();
}

void ArrayPool_cls::Trim() {
    for (Head_st* head : mCached)
        Release(head);
    mCached.clear();
    mCachedBytes = 0;
}

// The smallest kept array that fits without wasting more than a quarter of it.
ArrayPool_cls::Head_st* ArrayPool_cls::TakeCached(size_t bytes) {
    auto best = mCached.end();
    for (auto it = mCached.begin(); it != mCached.end(); ++it) {
        const size_t capacity = (*it)->mCapacity;
        if (capacity < bytes || capacity - bytes > capacity / 4 + kHugePage) continue;
        if (best == mCached.end() || capacity < (*best)->mCapacity) best = it;
    }
    if (best == mCached.end()) return nullptr;
    Head_st* head = *best;
    mCached.erase(best);
    mCachedBytes -= head->mMapped;
    return head;
}

size_t ArrayPool_cls::NextStagger() { return kStaggerStep * (mTurn++ % kStaggerNumber); }

// Begins at a multiple of a huge page; what was mapped too much in front goes back at once.
ArrayPool_cls::Head_st* ArrayPool_cls::MakeMapped(size_t bytes) {
    if (bytes > SIZE_MAX / 2) return nullptr;
    const size_t need = bytes + sizeof(Head_st) + kStaggerMax;
    const size_t mapped = (need + kHugePage - 1) / kHugePage * kHugePage;
    void* memory =
        mmap(nullptr, mapped + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return nullptr;
    char* start = static_cast<char*>(memory);
    const size_t front = (kHugePage - reinterpret_cast<uintptr_t>(start) % kHugePage) % kHugePage;
    if (front > 0) munmap(start, front);
    munmap(start + front + mapped, kHugePage - front);
    start += front;
    madvise(start, mapped, MADV_HUGEPAGE);
    Head_st* head = reinterpret_cast<Head_st*>(start + NextStagger());
    const size_t used = static_cast<size_t>(reinterpret_cast<char*>(head + 1) - start);
    *head = {start, mapped, mapped - used};
    return head;
}

ArrayPool_cls::Head_st* ArrayPool_cls::MakeSmall(size_t bytes) {
    const size_t stagger = bytes < 32768 ? 0 : NextStagger();
    char* start = static_cast<char*>(std::calloc(1, bytes + 2 * sizeof(Head_st) + stagger));
    if (!start) return nullptr;
    const size_t front = (64 - reinterpret_cast<uintptr_t>(start) % 64) % 64;
    Head_st* head = reinterpret_cast<Head_st*>(start + front + stagger);
    *head = {start, 0, bytes};
    return head;
}

void ArrayPool_cls::Release(Head_st* pHead) {
    if (pHead->mMapped > 0)
        munmap(pHead->mpBase, pHead->mMapped);
    else
        std::free(pHead->mpBase);
}
