// The chain of filters that weigh particles, and the draw list without those that weigh nothing.
#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <thread>

#include <emmintrin.h>

#include "COMMON/OnThreads.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterData.h"

namespace {

using Filters = std::vector<const FilterBase_cls*>;

// No more than there are cores: who waits for his turn would stand in the way of who has it.
int GetThreadCount(size_t count) {
    const int wanted = count <= 10000 ? 1 : count <= 100000 ? 2 : count <= 1000000 ? 3 : 4;
    return std::min(wanted, std::max(1, int(std::thread::hardware_concurrency())));
}

constexpr size_t kBlock = 32 * WeighedList_st::kMost; ///< records that a thread takes at a time

static_assert(offsetof(ArrayAndIndex_cls, mAlpha) == 8 && sizeof(ArrayAndIndex_cls) == 12, "as Put has it");
constexpr size_t kAtOnce = 4;

/// For each choice of four records, how many bytes those that are chosen take up to each of them.
struct Places_st {
    unsigned char mBytes[kAtOnce];
};
constexpr std::array<Places_st, 16> MakePlaces() {
    std::array<Places_st, 16> places{};
    for (unsigned bits = 0; bits < 16; ++bits) {
        size_t bytes = 0;
        for (unsigned k = 0; k < kAtOnce; ++k) {
            bytes += (bits >> k & 1) * sizeof(ArrayAndIndex_cls);
            places[bits].mBytes[k] = static_cast<unsigned char>(bytes);
        }
    }
    return places;
}
constexpr std::array<Places_st, 16> kPlaces = MakePlaces();

/// A record with weight K of four. Writes four bytes behind it, too.
template <int K>
inline void Put(const ArrayAndIndex_cls& record, const __m128& weights, char* pOut) {
    const __m128 head = _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(&record)));
    _mm_storeu_ps(reinterpret_cast<float*>(pOut), _mm_shuffle_ps(head, weights, _MM_SHUFFLE(K, K, 1, 0)));
}

/// Those that weigh anything, with their weights; how many. Writes over the one behind them, too.
//
// Who is kept is too random to be guessed, so all are written, and those that aren't kept are written over.
size_t Keep(const ArrayAndIndex_cls* pList, const float* pWeight, size_t count, ArrayAndIndex_cls* pOut) {
    char* p = reinterpret_cast<char*>(pOut);
    size_t i = 0;
    for (; i + kAtOnce <= count; i += kAtOnce) {
        const __m128 weights = _mm_loadu_ps(pWeight + i);
        const Places_st& places =
            kPlaces[static_cast<size_t>(_mm_movemask_ps(_mm_cmpgt_ps(weights, _mm_setzero_ps())))];
        Put<0>(pList[i], weights, p);
        Put<1>(pList[i + 1], weights, p + places.mBytes[0]);
        Put<2>(pList[i + 2], weights, p + places.mBytes[1]);
        Put<3>(pList[i + 3], weights, p + places.mBytes[2]);
        p += places.mBytes[3];
    }
    for (; i < count; ++i) {
        Put<0>(pList[i], _mm_set_ss(pWeight[i]), p);
        p += pWeight[i] > 0.0f ? sizeof(ArrayAndIndex_cls) : 0;
    }
    return static_cast<size_t>(reinterpret_cast<ArrayAndIndex_cls*>(p) - pOut);
}

/// Weighs the records of a block, some by some while they are in the cache, each filter in the list's order.
/// Those that weigh anything go out with their weights; how many.
size_t WeighBlock(const Filters& filters, const ArrayAndIndex_cls* pList, size_t count,
                  const float (*pPos)[3], ArrayAndIndex_cls* pOut) {
    constexpr size_t kPiece = WeighedList_st::kMost;
    float weight[kPiece];
    size_t kept = 0;
    for (size_t first = 0; first < count; first += kPiece) {
        const size_t piece = std::min(kPiece, count - first);
        std::fill_n(weight, piece, 1.0f);
        for (const FilterBase_cls* filter : filters)
            filter->Weigh({pList + first, pPos, int(piece)}, weight);
        kept += Keep(pList + first, weight, piece, pOut + kept);
    }
    return kept;
}

/// Threads take blocks of a list by turns and put what stays of them back in the list's order, each record
/// read and written once. A block goes back when all before it have been read, so that it may cover them.
class ThinRun_cls {
public:
    ThinRun_cls(const Filters& filters, DrawList_t& list, const float (*pPos)[3])
        : mFilters(filters), mList(list), mpPos(pPos) {}

    void Work() {
        ArrayAndIndex_cls kept[kBlock + 1];
        while (true) {
            const size_t block = mNext.fetch_add(1);
            const size_t first = block * kBlock;
            if (first >= mList.size()) return;
            const size_t number = WeighBlock(mFilters, mList.data() + first,
                                             std::min(kBlock, mList.size() - first), mpPos, kept);
            while (mTurn.load(std::memory_order_acquire) != block)
                std::this_thread::yield();
            const size_t place = mKept;
            mKept += number;
            mTurn.store(block + 1, std::memory_order_release);
            std::copy_n(kept, number, mList.data() + place);
        }
    }
    /// When all threads are done.
    size_t GetKept() const { return mKept; }

private:
    const Filters& mFilters;
    DrawList_t& mList;
    const float (*mpPos)[3];
    std::atomic<size_t> mNext{0};
    std::atomic<size_t> mTurn{0}; ///< the block that may go back
    size_t mKept = 0;             ///< belongs to whose turn it is
};

} // namespace

bool FilterCtrl_cls::IsThinning() const {
    return std::any_of(mlpCFilter.begin(), mlpCFilter.end(),
                       [](const auto& filter) { return filter->mpCData->mCValid.mValue; });
}

void FilterCtrl_cls::Thin(DrawList_t& list, long long particles, const float (*pPos)[3], double time) {
    Filters filters;
    for (const auto& filter : mlpCFilter) {
        if (!filter->mpCData->mCValid.mValue) continue;
        filter->BeginWeigh(time, particles);
        filters.push_back(filter.get());
    }
    ThinRun_cls run(filters, list, pPos);
    OnThreads(GetThreadCount(list.size()), [&run](int) { run.Work(); });
    list.resize(run.GetKept());
}
