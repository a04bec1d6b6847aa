#include "GL/DRAW/clsStencilCover.h"

#include <algorithm>

namespace {

/// The part of the screen that a place lies in, or the nearest; numbers without sense count as the edge.
int TileOf(float place) {
    const float tile = (place + 1.0f) * (0.5f * float(StencilCover_cls::kTiles));
    return static_cast<int>(std::min(std::max(tile, 0.0f), float(StencilCover_cls::kTiles - 1)));
}

} // namespace

bool StencilCover_cls::Add(float left, float bottom, float right, float top) {
    const int first = TileOf(left);
    const int last = TileOf(right);
    int most = 0;
    for (int row = TileOf(bottom); row <= TileOf(top); ++row) {
        uint8_t* pRow = mCount.data() + row * kTiles;
        for (int column = first; column <= last; ++column)
            most = std::max<int>(most, ++pRow[column]);
    }
    return most >= kMost;
}
