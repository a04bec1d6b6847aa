// A picture in memory as an off-screen buffer has it: half-float RGBA, and depth of 24 bits above stencil of
// 8. It is worked on tile by tile; which tiles hold anything is known, so that a cleared picture costs
// nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "COMMON/BigAllocator.h"

class TileOrigin_cls;

class TileCanvas_cls {
public:
    static constexpr int kTileW = 64; ///< pixels; a tile's planes stay in the second-level cache
    static constexpr int kTileH = 32;
    static constexpr uint32_t kFarDepth = 0xffffff00; ///< no stencil

    /// Pixels from left, bottom on.
    struct Rect_st {
        int left = 0, bottom = 0, width = 0, height = 0;
        bool IsEmpty() const { return width <= 0 || height <= 0; }
    };
    /// Columns and rows of tiles, ends not counted.
    struct Range_st {
        int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
        bool IsEmpty() const { return x1 <= x0 || y1 <= y0; }
    };

    /// All black and clear, at far depth. Memory is kept for the next time. `pOrigin`: where what the picture
    /// holds comes from instead, as far as it is needed; it lives as long as the picture is worked on.
    void Clear(int width, int height, TileOrigin_cls* pOrigin = nullptr);
    /// After Clear: the picture was cleared with this pixel, four halves, and depth and stencil.
    void SetBlank(const uint16_t* pColor, uint32_t depth);
    const uint16_t* GetBlankColor() const { return mBlankColor; }
    uint32_t GetBlankDepth() const { return mBlankDepth; }
    /// Tiles that were taken, and nothing was drawn into, become blank.
    void FillTaken();
    /// One of them.
    void Fill(int tile);
    /// Nothing is drawn into tiles that lie wholly outside.
    void SetLimits(const Rect_st& limits);
    const Range_st& GetLimits() const { return mLimits; }
    /// These tiles are going to be drawn into.
    void Take(const Range_st& tiles);
    /// All that was taken.
    Rect_st GetTaken() const { return GetRect(mTaken); }
    const Range_st& GetTakenTiles() const { return mTaken; }

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

private:
    Rect_st GetRect(const Range_st& tiles) const;
    void Read(const Range_st& tiles);

    TileOrigin_cls* mpOrigin = nullptr;
    Range_st mLimits;
    Range_st mTaken;
    int mWidth = 0;
    int mHeight = 0;
    uint16_t mBlankColor[4] = {0, 0, 0, 0};
    uint32_t mBlankDepth = kFarDepth;
    std::vector<uint16_t, BigAllocator_cls<uint16_t>> mVColor;
    std::vector<uint32_t, BigAllocator_cls<uint32_t>> mVDepth;
    std::vector<uint8_t> mVFilled; ///< a tile each; written by the thread that has the tile
};

/// What a picture held before.
class TileOrigin_cls {
public:
    virtual ~TileOrigin_cls() = default;
    /// Put it into this part of the canvas.
    virtual void Read(TileCanvas_cls& canvas, const TileCanvas_cls::Rect_st& part) = 0;
};

/// Where a picture goes while it is still drawn.
class TileGoal_cls {
public:
    virtual ~TileGoal_cls() = default;
    /// The rows of tiles below `end` are done: nothing changes them any more.
    virtual void TakeUpTo(TileCanvas_cls& canvas, int end) = 0;
};
