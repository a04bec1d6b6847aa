// The chain of filters that weigh particles, and the draw list without those that weigh nothing.
#include <algorithm>
#include <atomic>
#include <thread>

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

constexpr size_t kBlock = 8 * WeighedList_st::kMost; ///< records that a thread takes at a time

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
        for (size_t i = 0; i < piece; ++i) {
            pOut[kept] = {pList[first + i].mIndex, pList[first + i].mKey, weight[i]};
            kept += weight[i] > 0.0f ? 1 : 0;
        }
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
        ArrayAndIndex_cls kept[kBlock];
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
