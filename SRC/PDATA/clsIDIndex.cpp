#include "PDATA/clsIDIndex.h"

#include <algorithm>
#include <array>
#include <new>

namespace {

constexpr unsigned kDigitBits = 11;
constexpr unsigned kDigits = 3; // of 32 bits
constexpr size_t kDigitNumber = size_t(1) << kDigitBits;
constexpr unsigned kMostShares = 1u << 16;

/// Sorts by the upper halves and leaves equal ones in their order.
void SortByID(std::vector<uint64_t>& entries, std::vector<uint64_t>& spare) {
    std::vector<std::array<unsigned, kDigitNumber>> counts(kDigits);
    for (const uint64_t entry : entries)
        for (unsigned d = 0; d < kDigits; ++d)
            ++counts[d][entry >> (32 + d * kDigitBits) & (kDigitNumber - 1)];
    for (unsigned d = 0; d < kDigits; ++d) {
        const auto digit = [d](uint64_t entry) {
            return entry >> (32 + d * kDigitBits) & (kDigitNumber - 1);
        };
        std::array<unsigned, kDigitNumber>& next = counts[d];
        if (next[digit(entries.front())] == entries.size()) continue; // the same in all of them
        unsigned place = 0;
        for (unsigned& count : next) {
            const unsigned here = count;
            count = place;
            place += here;
        }
        for (const uint64_t entry : entries)
            spare[next[digit(entry)]++] = entry;
        entries.swap(spare);
    }
}

} // namespace

IDIndex_cls::Entry IDIndex_cls::MakeEntry(int id, int place) {
    return static_cast<Entry>(static_cast<uint32_t>(id) ^ 0x80000000u) << 32 | static_cast<uint32_t>(place);
}

bool IDIndex_cls::Make(const int* pID, int number) {
    mVEntries.clear();
    mVFirst.clear();
    if (number <= 0) return true;
    try {
        std::vector<Entry> spare(static_cast<size_t>(number));
        mVEntries.resize(static_cast<size_t>(number));
        for (int i = 0; i < number; ++i)
            mVEntries[static_cast<size_t>(i)] = MakeEntry(pID[i], i);
        SortByID(mVEntries, spare);
        mLow = mVEntries.front() >> 32;
        const Entry range = (mVEntries.back() >> 32) - mLow;
        for (mShift = 0; range >> mShift >= kMostShares;)
            ++mShift;
        mVFirst.assign(static_cast<size_t>(range >> mShift) + 2, 0);
        for (const Entry entry : mVEntries)
            ++mVFirst[static_cast<size_t>(((entry >> 32) - mLow) >> mShift) + 1];
        for (size_t k = 1; k < mVFirst.size(); ++k)
            mVFirst[k] += mVFirst[k - 1];
    } catch (const std::bad_alloc&) {
        mVEntries.clear();
        mVFirst.clear();
        return false;
    }
    return true;
}

const IDIndex_cls::Entry* IDIndex_cls::Find(Entry entry) const {
    const Entry* pAll = mVEntries.data();
    const Entry* pEnd = pAll + mVEntries.size();
    if (mVEntries.empty() || entry >> 32 < mLow) return pAll;
    const Entry share = ((entry >> 32) - mLow) >> mShift;
    if (share + 1 >= mVFirst.size()) return pEnd;
    const size_t k = static_cast<size_t>(share);
    return std::lower_bound(pAll + mVFirst[k], pAll + mVFirst[k + 1], entry);
}

int IDIndex_cls::FindBetween(int id, int begin, int end) const {
    if (begin >= end) return -1;
    const Entry* pFound = Find(MakeEntry(id, begin));
    const bool bFound =
        pFound != mVEntries.data() + mVEntries.size() && IsOf(*pFound, id) && GetPlace(*pFound) < end;
    return bFound ? GetPlace(*pFound) : -1;
}

int IDIndex_cls::FindOnly(int id) const {
    const Entry* pEnd = mVEntries.data() + mVEntries.size();
    const Entry* pFound = Find(MakeEntry(id, 0));
    if (pFound == pEnd || !IsOf(*pFound, id)) return -1;
    return pFound + 1 != pEnd && IsOf(pFound[1], id) ? kSeveral : GetPlace(*pFound);
}
