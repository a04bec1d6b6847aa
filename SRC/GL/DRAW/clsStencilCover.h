// How many shadow volumes may cover a pixel at most: bounds by parts of the screen.
#pragma once

#include <array>
#include <cstdint>

class StencilCover_cls {
public:
    static constexpr int kTiles = 32; ///< parts of the screen along each side
    /// Volumes over one pixel that a counter of seven bits tells from none.
    static constexpr int kMost = 127;

    /// Count a volume that lies within these bounds, -1 to 1 from edge to edge of the screen. True: one more
    /// might be too many for some pixel.
    bool Add(float left, float bottom, float right, float top);
    void Clear() { mCount.fill(0); }

private:
    std::array<uint8_t, size_t(kTiles)* kTiles> mCount = {};
};
