#include "BOND/StickCell.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Forth along one vector comes first, then slanted ways, then those that go forth and back.
constexpr StickCrossing_st kCrossings[13] = {{0, 1}, {0, 2}, {0, 4}, {0, 3}, {0, 5}, {0, 6}, {0, 7},
                                             {1, 2}, {1, 4}, {2, 4}, {1, 6}, {2, 5}, {3, 4}};

} // namespace

void StickCell_st::GetStickVector(int k, float* pOut) const {
    for (int i = 0; i < 3; ++i)
        pOut[i] = mSize[k] * mBase[k][i];
}

void StickCell_st::GetCopyVector(int k, float* pOut) const {
    for (int i = 0; i < 3; ++i)
        pOut[i] = mSize[i] * mBase[k][i];
}

bool operator==(const StickCell_st& a, const StickCell_st& b) {
    return a.mType == b.mType && std::memcmp(a.mSize, b.mSize, sizeof a.mSize) == 0 &&
           std::memcmp(a.mBase, b.mBase, sizeof a.mBase) == 0;
}

void MakeStickOffsets(const float (*pVectors)[3], bool bWhole, float (*pOut)[3]) {
    for (unsigned mask = 0; mask < 8; ++mask) {
        const unsigned used = mask == 7 && !bWhole ? 6 : mask;
        for (int i = 0; i < 3; ++i) {
            float sum = 0.0f;
            for (unsigned k = 0; k < 3; ++k)
                if (used & (1u << k)) sum += pVectors[k][i];
            pOut[mask][i] = sum;
        }
    }
}

std::vector<StickCrossing_st> GetStickCrossings(const StickCell_st& cell) {
    unsigned open = cell.mType == 1 ? 3u : cell.mType == 2 ? 7u : 0u;
    for (int k = 0; k < 3; ++k) {
        float v[3];
        cell.GetCopyVector(k, v);
        const float length = std::hypot(v[0], v[1], v[2]);
        if (!std::isfinite(length) || length == 0.0f) open &= ~(1u << k);
    }
    std::vector<StickCrossing_st> crossings;
    std::copy_if(std::begin(kCrossings), std::end(kCrossings), std::back_inserter(crossings),
                 [open](const StickCrossing_st& way) { return ((way.mFirst | way.mSecond) & ~open) == 0; });
    return crossings;
}
