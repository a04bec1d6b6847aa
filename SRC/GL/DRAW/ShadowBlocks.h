// Which block of a table of shadows (clsShadowGrid.h) is which place in it. GL/ShadowLookup.frag has the
// same.
#pragma once

#include <cstddef>
#include <cstdint>

#include "GL/DRAW/clsShadowGrid.h"

namespace ShadowBlocks {

constexpr float kFarthest = 1e9f; ///< blocks from the origin

/// Downwards; what is no number goes to an end.
inline int32_t ToBlock(float value) {
    const float limited = value > -kFarthest ? (value < kFarthest ? value : kFarthest) : -kFarthest;
    const auto whole = static_cast<int32_t>(limited);
    return whole - (limited < static_cast<float>(whole) ? 1 : 0);
}

/// Of three numbers.
inline uint32_t GetFarBlock(const int32_t* pBlock) {
    constexpr auto kSize = ShadowGrid_cls::kFarSize;
    return static_cast<uint32_t>(((pBlock[2] & (kSize[2] - 1)) * kSize[1] + (pBlock[1] & (kSize[1] - 1))) *
                                     kSize[0] +
                                 (pBlock[0] & (kSize[0] - 1)));
}

/// Of three numbers of a direction and that of a distance.
inline uint32_t GetNearBlock(const int32_t* pBlock) {
    uint32_t sum = 0;
    for (size_t i = 0; i < 4; ++i)
        sum += static_cast<uint32_t>(pBlock[i]) * ShadowGrid_cls::kScatter[i];
    return sum & (ShadowGrid_cls::kNearSize - 1);
}

} // namespace ShadowBlocks
