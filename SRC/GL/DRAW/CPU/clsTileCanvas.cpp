#include "GL/DRAW/CPU/clsTileCanvas.h"

#include <algorithm>

void TileCanvas_cls::Clear(int width, int height) {
    mWidth = std::max(width, 0);
    mHeight = std::max(height, 0);
    const size_t pixels = static_cast<size_t>(mWidth) * static_cast<size_t>(mHeight);
    if (mVDepth.size() < pixels) {
        mVDepth.resize(pixels);
        mVColor.resize(4 * pixels);
    }
    mVFilled.assign(static_cast<size_t>(GetTiles()), 0);
}

void TileCanvas_cls::SetFilled() { std::fill(mVFilled.begin(), mVFilled.end(), uint8_t{1}); }

TileCanvas_cls::Rect_st TileCanvas_cls::GetTileRect(int tile) const {
    const int across = GetTilesAcross();
    Rect_st rect;
    rect.left = tile % across * kTileW;
    rect.bottom = tile / across * kTileH;
    rect.width = std::min(kTileW, mWidth - rect.left);
    rect.height = std::min(kTileH, mHeight - rect.bottom);
    return rect;
}

void TileCanvas_cls::ClearTile(int tile) {
    const Rect_st rect = GetTileRect(tile);
    for (int row = rect.bottom; row < rect.bottom + rect.height; ++row) {
        const size_t first =
            static_cast<size_t>(row) * static_cast<size_t>(mWidth) + static_cast<size_t>(rect.left);
        std::fill_n(mVColor.data() + 4 * first, 4 * rect.width, uint16_t{0});
        std::fill_n(mVDepth.data() + first, rect.width, 0xffffff00u);
    }
}

TileCanvas_cls::Rect_st TileCanvas_cls::FillBounds() {
    const int across = GetTilesAcross();
    int low[2] = {across, GetTilesUp()};
    int high[2] = {0, 0};
    for (int tile = 0; tile < GetTiles(); ++tile) {
        if (!IsFilled(tile)) continue;
        const int at[2] = {tile % across, tile / across};
        for (int k = 0; k < 2; ++k) {
            low[k] = std::min(low[k], at[k]);
            high[k] = std::max(high[k], at[k] + 1);
        }
    }
    Rect_st bounds;
    if (low[0] >= high[0]) return bounds;
    for (int y = low[1]; y < high[1]; ++y)
        for (int x = low[0]; x < high[0]; ++x) {
            const int tile = y * across + x;
            if (!IsFilled(tile)) ClearTile(tile), MarkFilled(tile);
        }
    bounds.left = low[0] * kTileW;
    bounds.bottom = low[1] * kTileH;
    bounds.width = std::min(high[0] * kTileW, mWidth) - bounds.left;
    bounds.height = std::min(high[1] * kTileH, mHeight) - bounds.bottom;
    return bounds;
}
