// The chain of filters that weigh particles, and the draw list without those that weigh nothing.
#include <algorithm>

#include "COMMON/OnThreads.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterData.h"

namespace {

using Filters = std::vector<const FilterBase_cls*>;

int GetThreadCount(size_t count) {
    return count <= 10000 ? 1 : count <= 100000 ? 2 : count <= 1000000 ? 3 : 4;
}

/// Weighs records, piece by piece while they are in the cache, each filter in the list's order. What weighs
/// anything moves to the front, in its order; its number.
size_t ThinSlice(const Filters& filters, ArrayAndIndex_cls* pList, size_t count, const float (*pPos)[3]) {
    constexpr size_t kPiece = WeighedList_st::kMost;
    float weight[kPiece];
    size_t kept = 0;
    for (size_t first = 0; first < count; first += kPiece) {
        const size_t piece = std::min(kPiece, count - first);
        std::fill_n(weight, piece, 1.0f);
        for (const FilterBase_cls* filter : filters)
            filter->Weigh({pList + first, pPos, int(piece)}, weight);
        for (size_t i = 0; i < piece; ++i) {
            pList[kept] = {pList[first + i].mIndex, pList[first + i].mKey, weight[i]};
            kept += weight[i] > 0.0f ? 1 : 0; // never ahead of what is read
        }
    }
    return kept;
}

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
    const int threads = GetThreadCount(list.size());
    const size_t chunk = list.size() / size_t(threads);
    std::vector<size_t> kept(static_cast<size_t>(threads));
    OnThreads(threads, [&](int k) {
        const size_t first = size_t(k) * chunk;
        const size_t end = k + 1 == threads ? list.size() : first + chunk;
        kept[size_t(k)] = ThinSlice(filters, list.data() + first, end - first, pPos);
    });
    size_t all = kept[0];
    for (size_t k = 1; k < kept.size(); ++k) {
        if (all != k * chunk) std::copy_n(list.data() + k * chunk, kept[k], list.data() + all);
        all += kept[k];
    }
    list.resize(all);
}
