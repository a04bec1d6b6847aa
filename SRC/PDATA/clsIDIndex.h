// Where the IDs of a snapshot stand: answers a search without walking the array.
#pragma once

#include <cstdint>
#include <vector>

class IDIndex_cls {
public:
    /// False when memory is short; the index is empty then. IDs may repeat and be negative.
    bool Make(const int* pID, int number);
    bool IsEmpty() const { return mVEntries.empty(); }
    /// First place from `begin` to `end` (exclusive) that bears the ID, -1 none.
    int FindBetween(int id, int begin, int end) const;
    /// The place of an ID that stands once; -1 for none, kSeveral for one that repeats.
    int FindOnly(int id) const;
    static constexpr int kSeveral = -2;

private:
    /// ID, made to ascend as unsigned, in the upper half, the place in the lower one.
    using Entry = uint64_t;
    static Entry MakeEntry(int id, int place);
    static int GetPlace(Entry entry) { return static_cast<int>(entry & 0x7FFFFFFFu); }
    static bool IsOf(Entry entry, int id) { return entry >> 32 == MakeEntry(id, 0) >> 32; }
    /// First entry that isn't smaller.
    const Entry* Find(Entry entry) const;

    std::vector<Entry> mVEntries;  ///< ascending
    std::vector<unsigned> mVFirst; ///< first entry of each share of the IDs' range, and the end
    Entry mLow = 0;                ///< the smallest ID
    unsigned mShift = 0;           ///< an ID's share is its distance from the smallest one shifted by this
};
