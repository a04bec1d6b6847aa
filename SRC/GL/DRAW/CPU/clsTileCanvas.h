// A picture in memory as an off-screen buffer has it: half-float RGBA, and depth of 24 bits above stencil of
// 8. It is worked on tile by tile; which tiles hold anything is known, so that a cleared picture costs
// nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class TileCanvas_cls {
public:
    static constexpr int kTileW = 64; ///< pixels; a tile's planes stay in the second-level cache
    static constexpr int kTileH = 32;

    /// Pixels from left, bottom on.
    struct Rect_st {
        int left = 0, bottom = 0, width = 0, height = 0;
    };

    /// All black and clear, at far depth. Memory is kept for the next time.
    void Clear(int width, int height);
    /// The same size, but what the buffer holds is in GetColor and GetDepth now.
    void SetFilled();

    int GetWidth() const { return mWidth; }
    int GetHeight() const { return mHeight; }
    int GetTilesAcross() const { return (mWidth + kTileW - 1) / kTileW; }
    int GetTilesUp() const { return (mHeight + kTileH - 1) / kTileH; }
    int GetTiles() const { return GetTilesAcross() * GetTilesUp(); }
    Rect_st GetTileRect(int tile) const;

    /// Rows from below; four halves a pixel; depth * 256 + stencil. Of tiles that nothing was drawn into
    /// there is nothing in it.
    uint16_t* GetColor() { return mVColor.data(); }
    uint32_t* GetDepth() { return mVDepth.data(); }
    bool IsFilled(int tile) const { return mVFilled[static_cast<size_t>(tile)] != 0; }
    void MarkFilled(int tile) { mVFilled[static_cast<size_t>(tile)] = 1; }
    /// The smallest rectangle of tiles with all that hold something; those in it that don't are cleared.
    Rect_st FillBounds();

private:
    void ClearTile(int tile);

    int mWidth = 0;
    int mHeight = 0;
    std::vector<uint16_t> mVColor;
    std::vector<uint32_t> mVDepth;
    std::vector<uint8_t> mVFilled; ///< a tile each; written by the thread that has the tile
};
