// The sort behind ZSort_cls: many entries are dealt to buckets of neighbouring keys, which fit a core's own
// cache, and each bucket is sorted by radix there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "GL/DRAW/FloatOrder.h"
#include "GL/DRAW/clsArrayAndIndex.h"

/// Which bucket a key belongs to. The limits come from a sample of the keys, so that the buckets hold about
/// as many entries each however the keys are spread; keys in their order never go down a bucket.
class DepthBuckets_cls {
public:
    /// `number` is 1 to 65536 buckets.
    DepthBuckets_cls(const DrawList_t& list, size_t number);

    size_t GetNumber() const { return mNumber; }
    /// Of a key's OrderOfFloat.
    size_t Find(uint32_t order) const { return mVBuckets[GetCell(order)]; }

private:
    size_t GetCell(uint32_t order) const {
        const uint32_t cell = (order < mLowest ? 0 : order - mLowest) >> mShift;
        return cell < kCells ? cell : kCells - 1;
    }

    static constexpr uint32_t kCells = 1u << 15; // the table of them stays in the second-level cache
    size_t mNumber;
    uint32_t mLowest = 0;
    unsigned mShift = 0; ///< order numbers a cell, as a power of two
    std::vector<uint16_t> mVBuckets;
};

/// Sorts entries whose keys hold the bits of OrderOfFloat, and turns the keys back into floats. Equal ones
/// keep their order. One thread's own.
class RadixSort_cls {
public:
    /// From `pFrom`, which serves as scratch, to `pTo`.
    void Sort(ArrayAndIndex_cls* pFrom, ArrayAndIndex_cls* pTo, size_t number);

private:
    static constexpr unsigned kBits = 11; // of a digit: its counters fit the first-level cache
    static constexpr uint32_t kDigits = 1u << kBits;
    static constexpr unsigned kMaxPasses = 3;

    unsigned ChoosePasses(const ArrayAndIndex_cls* pFrom, size_t number);
    template <unsigned PASSES>
    void CountDigits(const ArrayAndIndex_cls* pFrom, size_t number);
    template <bool LAST>
    void Move(unsigned pass, const ArrayAndIndex_cls* pFrom, ArrayAndIndex_cls* pTo, size_t number);

    unsigned mShift = 0; ///< lowest bit in which two keys differ
    std::array<std::array<uint32_t, kDigits>, kMaxPasses> mPlaces;
    DrawList_t mVScratch;
};

class DepthSort_cls {
public:
    /// Ascending by key; equal keys keep their order, keys that are no numbers come last.
    static void Sort(DrawList_t& list, int threads);
};
