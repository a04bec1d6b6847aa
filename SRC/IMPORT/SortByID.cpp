#include "IMPORT/SortByID.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "IMPORT/ParticleSource.h"

namespace {

template <class COLUMN>
void Reorder(const std::vector<unsigned>& order, size_t width, COLUMN* pColumn) {
    if (pColumn->empty()) return;
    COLUMN sorted(pColumn->size());
    auto out = sorted.begin();
    for (const unsigned from : order)
        out = std::copy_n(pColumn->begin() + static_cast<long>(from * width), width, out);
    pColumn->swap(sorted);
}

} // namespace

void SortByID(ImportSnapshot_st* pSnap) {
    const auto& ids = pSnap->mID;
    if (std::is_sorted(ids.begin(), ids.end())) return;
    std::vector<unsigned> order(ids.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(),
              [&ids](unsigned a, unsigned b) { return ids[a] != ids[b] ? ids[a] < ids[b] : a < b; });
    Reorder(order, 3, &pSnap->mPos);
    Reorder(order, 3, &pSnap->mVel);
    Reorder(order, 1, &pSnap->mRadius);
    Reorder(order, 1, &pSnap->mValue);
    Reorder(order, 1, &pSnap->mType);
    Reorder(order, 1, &pSnap->mID);
}
