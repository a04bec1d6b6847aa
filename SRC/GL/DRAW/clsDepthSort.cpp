#include "GL/DRAW/clsDepthSort.h"

#include <algorithm>
#include <atomic>

#include "COMMON/OnThreads.h"

namespace {

using Entry = ArrayAndIndex_cls;

constexpr size_t kSample = 16384;
constexpr size_t kTail = 256;         // the outermost share of the sample on either side has one cell alone
constexpr size_t kBucketShare = 4096; // entries that a bucket is worth
constexpr size_t kMaxBuckets = 512;   // as many places as memory takes entries for at the same time
constexpr size_t kCached = 32768;     // entries that fit the second-level cache

} // namespace

DepthBuckets_cls::DepthBuckets_cls(const DrawList_t& list, size_t number)
    : mNumber(number), mVBuckets(kCells) {
    std::vector<uint32_t> sample(std::min(list.size(), kSample));
    for (size_t i = 0; i < sample.size(); ++i)
        sample[i] = OrderOfFloat(list[i * list.size() / sample.size()].mKey);
    if (sample.empty()) return;
    // A few far outliers, or keys that are no numbers, leave the rest their cells.
    const auto pLow = sample.begin() + static_cast<std::ptrdiff_t>(sample.size() / kTail);
    const auto pHigh = sample.end() - 1 - static_cast<std::ptrdiff_t>(sample.size() / kTail);
    std::nth_element(sample.begin(), pLow, sample.end());
    mLowest = *pLow;
    std::nth_element(pLow, pHigh, sample.end());
    while ((*pHigh - mLowest) >> mShift >= kCells)
        ++mShift;
    std::vector<uint32_t> counts(kCells);
    for (const uint32_t order : sample)
        ++counts[GetCell(order)];
    size_t below = 0;
    for (size_t cell = 0; cell < kCells; ++cell) {
        mVBuckets[cell] = static_cast<uint16_t>(below * mNumber / (sample.size() + 1));
        below += counts[cell];
    }
}

// As few passes as the differing bits allow, or all of them, which need no scratch of their own.
unsigned RadixSort_cls::ChoosePasses(const Entry* pFrom, size_t number) {
    const uint32_t first = BitsOfFloat(pFrom[0].mKey);
    uint32_t differing = 0;
    for (size_t i = 0; i < number; ++i)
        differing |= BitsOfFloat(pFrom[i].mKey) ^ first;
    mShift = 0;
    if (differing == 0) return 1;
    while (!(differing >> mShift & 1))
        ++mShift;
    unsigned passes = 1;
    while (passes < kMaxPasses && differing >> mShift >> (kBits * passes))
        ++passes;
    return passes == 2 && number > kCached ? kMaxPasses : passes;
}

template <unsigned PASSES>
void RadixSort_cls::CountDigits(const Entry* pFrom, size_t number) {
    for (unsigned pass = 0; pass < PASSES; ++pass)
        mPlaces[pass].fill(0);
    const unsigned shift = mShift;
    for (size_t i = 0; i < number; ++i) {
        const uint32_t order = BitsOfFloat(pFrom[i].mKey) >> shift;
        for (unsigned pass = 0; pass < PASSES; ++pass)
            ++mPlaces[pass][(order >> (kBits * pass)) % kDigits];
    }
    for (unsigned pass = 0; pass < PASSES; ++pass) {
        uint32_t place = 0;
        for (uint32_t& one : mPlaces[pass]) {
            const uint32_t count = one;
            one = place;
            place += count;
        }
    }
}

template <bool LAST>
void RadixSort_cls::Move(unsigned pass, const Entry* pFrom, Entry* pTo, size_t number) {
    const unsigned shift = mShift + kBits * pass;
    uint32_t* pPlaces = mPlaces[pass].data();
    for (const Entry* p = pFrom; p < pFrom + number; ++p) {
        const uint32_t order = BitsOfFloat(p->mKey);
        const uint32_t digit = shift < 32 ? (order >> shift) % kDigits : 0;
        Entry& to = pTo[pPlaces[digit]++];
        to.mIndex = p->mIndex;
        to.mKey = LAST ? FloatOfOrder(order) : p->mKey;
        to.mAlpha = p->mAlpha;
    }
}

void RadixSort_cls::Sort(Entry* pFrom, Entry* pTo, size_t number) {
    if (number == 0) return;
    const unsigned passes = ChoosePasses(pFrom, number);
    if (passes == 1) {
        CountDigits<1>(pFrom, number);
        Move<true>(0, pFrom, pTo, number);
    } else if (passes == 2) {
        CountDigits<2>(pFrom, number);
        if (mVScratch.size() < number) mVScratch.resize(number);
        Move<false>(0, pFrom, mVScratch.data(), number);
        Move<true>(1, mVScratch.data(), pTo, number);
    } else {
        CountDigits<kMaxPasses>(pFrom, number);
        Move<false>(0, pFrom, pTo, number);
        Move<false>(1, pTo, pFrom, number);
        Move<true>(2, pFrom, pTo, number);
    }
}

namespace {

/// A copy whose key holds the bits of OrderOfFloat.
void TakeByOrder(const Entry& from, uint32_t order, Entry& to) {
    to.mIndex = from.mIndex;
    to.mKey = FloatOfBits(order);
    to.mAlpha = from.mAlpha;
}

// Every thread counts and deals one share of the list; then each takes bucket after bucket.
class Deal_cls {
public:
    Deal_cls(DrawList_t& list, DrawList_t& scratch, int threads)
        : mList(list), mScratch(scratch), mThreads(size_t(threads)),
          mBuckets(list, std::clamp(list.size() / kBucketShare, size_t{1}, kMaxBuckets)),
          mVPlaces(mThreads, std::vector<uint32_t>(mBuckets.GetNumber())),
          mVBegins(mBuckets.GetNumber() + 1) {}

    void Run() {
        OnThreads(int(mThreads), [this](int k) { Count(size_t(k)); });
        CountsToPlaces();
        OnThreads(int(mThreads), [this](int k) { Move(size_t(k)); });
        OnThreads(int(mThreads), [this](int) { SortBuckets(); });
    }

private:
    size_t Begin(size_t k) const { return mList.size() * k / mThreads; }

    void Count(size_t k) {
        const DepthBuckets_cls buckets = mBuckets; // the compiler sees that nothing below changes it
        uint32_t* pCounts = mVPlaces[k].data();
        const Entry* pList = mList.data();
        const size_t end = Begin(k + 1);
        for (size_t i = Begin(k); i < end; ++i)
            ++pCounts[buckets.Find(OrderOfFloat(pList[i].mKey))];
    }

    /// From the number of a share's entries in a bucket to where the first of them goes.
    void CountsToPlaces() {
        uint32_t place = 0;
        for (size_t bucket = 0; bucket < mBuckets.GetNumber(); ++bucket) {
            mVBegins[bucket] = place;
            for (std::vector<uint32_t>& places : mVPlaces) {
                const uint32_t number = places[bucket];
                places[bucket] = place;
                place += number;
            }
        }
        mVBegins.back() = place;
    }

    void Move(size_t k) {
        const DepthBuckets_cls buckets = mBuckets;
        std::vector<uint32_t> places = mVPlaces[k]; // a copy that no other thread's cache line touches
        uint32_t* pPlaces = places.data();
        const Entry* pList = mList.data();
        Entry* pScratch = mScratch.data();
        const size_t end = Begin(k + 1);
        for (size_t i = Begin(k); i < end; ++i) {
            const Entry& from = pList[i];
            const uint32_t order = OrderOfFloat(from.mKey);
            TakeByOrder(from, order, pScratch[pPlaces[buckets.Find(order)]++]);
        }
    }

    void SortBuckets() {
        RadixSort_cls sort;
        for (size_t bucket; (bucket = mNext++) < mBuckets.GetNumber();) {
            const size_t begin = mVBegins[bucket];
            sort.Sort(mScratch.data() + begin, mList.data() + begin, mVBegins[bucket + 1] - begin);
        }
    }

    DrawList_t& mList;
    DrawList_t& mScratch;
    size_t mThreads;
    DepthBuckets_cls mBuckets;
    std::vector<std::vector<uint32_t>> mVPlaces; ///< of each share; first the numbers, then where they go
    std::vector<uint32_t> mVBegins;
    std::atomic<size_t> mNext{0};
};

} // namespace

void DepthSort_cls::Sort(DrawList_t& list, int threads) {
    // Kept from paint to paint: fresh pages cost as much as dealing.
    static DrawList_t sScratch;
    sScratch.resize(list.size());
    if (threads > 1) {
        Deal_cls(list, sScratch, threads).Run();
        return;
    }
    // So few fit the cache as they are.
    for (size_t i = 0; i < list.size(); ++i)
        TakeByOrder(list[i], OrderOfFloat(list[i].mKey), sScratch[i]);
    RadixSort_cls().Sort(sScratch.data(), list.data(), list.size());
}
