#include "GL/DRAW/clsZSort.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <thread>

#include "COMMON/DataLoops.h"

namespace {

using Entry = ArrayAndIndex_cls;

constexpr int kMaxThreads = 4;
constexpr int kThreadShare = 50000; // entries below which another thread doesn't pay
constexpr int kFewEntries = 3000;   // below, the comparison sort is faster
constexpr int kBits = 11;           // of a digit: its counters fit the first-level cache
constexpr uint32_t kDigits = 1u << kBits;
constexpr uint32_t kSign = 0x80000000u;

int ThreadsFor(int number) {
    const int cores = std::max(int(std::thread::hardware_concurrency()), 1);
    return std::clamp(number / kThreadShare, 1, std::min(cores, kMaxThreads));
}

/// job(k) for k from 0 to count - 1, each on a thread of its own.
void OnThreads(int count, const std::function<void(int)>& job) {
    std::vector<std::thread> threads;
    for (int k = 1; k < count; ++k)
        threads.emplace_back(job, k);
    job(0);
    for (std::thread& thread : threads)
        thread.join();
}

/// First entry of the k-th of `count` even shares.
int ShareBegin(int number, int k, int count) { return int(int64_t(number) * k / count); }

uint32_t BitsOf(float key) {
    uint32_t bits;
    std::memcpy(&bits, &key, sizeof bits);
    return bits;
}

float FloatOf(uint32_t bits) {
    float key;
    std::memcpy(&key, &bits, sizeof key);
    return key;
}

/// Unsigned numbers in the order of the floats: both zeros alike, what is no number above all.
uint32_t OrderOf(float key) {
    const uint32_t bits = BitsOf(key);
    if ((bits & ~kSign) > 0x7f800000u) return std::numeric_limits<uint32_t>::max();
    if (bits == kSign) return kSign;
    return bits ^ ((0u - (bits >> 31)) | kSign);
}

float KeyOf(uint32_t order) {
    if (order == std::numeric_limits<uint32_t>::max()) return std::numeric_limits<float>::quiet_NaN();
    return FloatOf(order ^ (((order >> 31) - 1) | kSign));
}

uint32_t DigitOf(uint32_t order, int pass) { return (order >> (kBits * pass)) & (kDigits - 1); }

using Counts = std::array<uint32_t, kDigits>;

// One sort: from the list to the scratch buffer and back, digit by digit. Every thread counts and moves one
// share.
class RadixSort_cls {
public:
    RadixSort_cls(DrawList_t& list, DrawList_t& scratch)
        : mList(list), mScratch(scratch), mNumber(int(list.size())), mThreads(ThreadsFor(mNumber)),
          mCounts(size_t(mThreads)) {
        mScratch.resize(mList.size());
    }

    void Run() {
        Entry* pFrom = mList.data();
        Entry* pTo = mScratch.data();
        Pass<0>(pFrom, pTo);
        Pass<1>(pTo, pFrom);
        Pass<2>(pFrom, pTo);
        mList.swap(mScratch);
    }

private:
    /// Between the passes an entry's key holds the bits of OrderOf.
    template <int PASS>
    static uint32_t OrderBefore(float key) {
        return PASS == 0 ? OrderOf(key) : BitsOf(key);
    }

    template <int PASS>
    void Pass(const Entry* pFrom, Entry* pTo) {
        OnThreads(mThreads, [&](int k) { Count<PASS>(k, pFrom); });
        CountsToPlaces();
        OnThreads(mThreads, [&](int k) { Move<PASS>(k, pFrom, pTo); });
    }

    int Begin(int k) const { return ShareBegin(mNumber, k, mThreads); }

    template <int PASS>
    void Count(int k, const Entry* pFrom) {
        Counts& counts = mCounts[size_t(k)];
        counts.fill(0);
        const Entry* pEnd = pFrom + Begin(k + 1);
        for (const Entry* p = pFrom + Begin(k); p < pEnd; ++p)
            ++counts[DigitOf(OrderBefore<PASS>(p->mKey), PASS)];
    }

    /// Number of entries of a share with a digit to where the first of them goes.
    void CountsToPlaces() {
        uint32_t place = 0;
        for (size_t digit = 0; digit < kDigits; ++digit) {
            for (Counts& counts : mCounts) {
                const uint32_t number = counts[digit];
                counts[digit] = place;
                place += number;
            }
        }
    }

    template <int PASS>
    void Move(int k, const Entry* pFrom, Entry* pTo) {
        Counts places = mCounts[size_t(k)]; // a copy that no other thread's cache line touches
        const Entry* pEnd = pFrom + Begin(k + 1);
        for (const Entry* p = pFrom + Begin(k); p < pEnd; ++p) {
            const uint32_t order = OrderBefore<PASS>(p->mKey);
            Entry& to = pTo[places[DigitOf(order, PASS)]++];
            to.mIndex = p->mIndex;
            to.mKey = PASS == 2 ? KeyOf(order) : FloatOf(order);
            to.mAlpha = p->mAlpha;
        }
    }

    DrawList_t& mList;
    DrawList_t& mScratch;
    int mNumber;
    int mThreads;
    std::vector<Counts> mCounts; ///< of each share; then where its entries go
};

void SortFew(DrawList_t& list) {
    std::stable_sort(list.begin(), list.end(),
                     [](const Entry& a, const Entry& b) { return OrderOf(a.mKey) < OrderOf(b.mKey); });
}

struct Eye {
    double mX, mY, mZ;
};

MORENTIS_DATA_LOOP void PlaneKeys(Entry* pList, int first, int end, int step, const float (*pPos)[3],
                                  Eye dir) {
    for (int i = first; i < end; ++i) {
        const float* p = pPos[size_t(i) * size_t(step)];
        const double depth = p[0] * dir.mX + p[1] * dir.mY + p[2] * dir.mZ;
        pList[i] = {i * step, float(-depth), 1.0f};
    }
}

MORENTIS_DATA_LOOP void DistanceKeys(Entry* pList, int first, int end, int step, const float (*pPos)[3],
                                     Eye eye) {
    for (int i = first; i < end; ++i) {
        const float* p = pPos[size_t(i) * size_t(step)];
        const double x = p[0] - eye.mX;
        const double y = p[1] - eye.mY;
        const double z = p[2] - eye.mZ;
        pList[i] = {i * step, float(-(x * x + y * y + z * z)), 1.0f};
    }
}

} // namespace

int ZSort_cls::ZSortPrepare(ArrayAndIndex_cls* pList, int count, int step, const float (*pPos)[3],
                            const double* cameraPos, const double* cameraDir, int mode) {
    const int number = count / step;
    const int threads = ThreadsFor(number);
    const double* from = mode == PLANE_DEPTH ? cameraDir : cameraPos;
    const Eye eye = {from[0], from[1], from[2]};
    OnThreads(threads, [=](int k) {
        const int first = ShareBegin(number, k, threads);
        const int end = ShareBegin(number, k + 1, threads);
        if (mode == PLANE_DEPTH)
            PlaneKeys(pList, first, end, step, pPos, eye);
        else
            DistanceKeys(pList, first, end, step, pPos, eye);
    });
    return number;
}

void ZSort_cls::ZSortParallel(DrawList_t& list) {
    // Kept from paint to paint: fresh pages cost as much as a pass.
    static DrawList_t sScratch;
    if (list.size() < size_t(kFewEntries))
        SortFew(list);
    else
        RadixSort_cls(list, sScratch).Run();
}
