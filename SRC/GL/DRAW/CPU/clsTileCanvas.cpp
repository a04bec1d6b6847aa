#include "GL/DRAW/CPU/clsTileCanvas.h"

#include <algorithm>

void TileCanvas_cls::Clear(int width, int height, TileOrigin_cls* pOrigin) {
    mWidth = std::max(width, 0);
    mHeight = std::max(height, 0);
    const size_t pixels = static_cast<size_t>(mWidth) * static_cast<size_t>(mHeight);
    if (mVDepth.size() < pixels) {
        mVDepth.resize(pixels);
        mVColor.resize(4 * pixels);
    }
    mVFilled.assign(static_cast<size_t>(GetTiles()), 0);
    mpOrigin = pOrigin;
    std::fill_n(mBlankColor, 4, uint16_t{0});
    mBlankDepth = kFarDepth;
    mLimits = {0, 0, GetTilesAcross(), GetTilesUp()};
    mTaken = {};
}

void TileCanvas_cls::SetBlank(const uint16_t* pColor, uint32_t depth) {
    std::copy_n(pColor, 4, mBlankColor);
    mBlankDepth = depth;
}

void TileCanvas_cls::FillTaken() {
    for (int y = mTaken.y0; y < mTaken.y1; ++y)
        for (int x = mTaken.x0; x < mTaken.x1; ++x) {
            const int tile = y * GetTilesAcross() + x;
            if (!IsFilled(tile)) Fill(tile);
        }
}

void TileCanvas_cls::Fill(int tile) {
    const Rect_st rect = GetTileRect(tile);
    for (int row = rect.bottom; row < rect.bottom + rect.height; ++row) {
        const size_t at =
            static_cast<size_t>(row) * static_cast<size_t>(mWidth) + static_cast<size_t>(rect.left);
        for (size_t k = 0; k < static_cast<size_t>(rect.width); ++k)
            std::copy_n(mBlankColor, 4, mVColor.data() + 4 * (at + k));
        std::fill_n(mVDepth.data() + at, rect.width, mBlankDepth);
    }
    MarkFilled(tile);
}

void TileCanvas_cls::SetLimits(const Rect_st& limits) {
    mLimits.x0 = std::max(limits.left, 0) / kTileW;
    mLimits.y0 = std::max(limits.bottom, 0) / kTileH;
    mLimits.x1 = std::min((limits.left + limits.width + kTileW - 1) / kTileW, GetTilesAcross());
    mLimits.y1 = std::min((limits.bottom + limits.height + kTileH - 1) / kTileH, GetTilesUp());
}

TileCanvas_cls::Rect_st TileCanvas_cls::GetRect(const Range_st& tiles) const {
    if (tiles.IsEmpty()) return {};
    const int left = tiles.x0 * kTileW, bottom = tiles.y0 * kTileH;
    return {left, bottom, std::min(tiles.x1 * kTileW, mWidth) - left,
            std::min(tiles.y1 * kTileH, mHeight) - bottom};
}

TileCanvas_cls::Rect_st TileCanvas_cls::GetTileRect(int tile) const {
    const int x = tile % GetTilesAcross(), y = tile / GetTilesAcross();
    return GetRect({x, y, x + 1, y + 1});
}

void TileCanvas_cls::Read(const Range_st& tiles) {
    if (tiles.IsEmpty() || !mpOrigin) return;
    mpOrigin->Read(*this, GetRect(tiles));
    for (int y = tiles.y0; y < tiles.y1; ++y)
        for (int x = tiles.x0; x < tiles.x1; ++x)
            MarkFilled(y * GetTilesAcross() + x);
}

// What was taken is a rectangle: it grows by what lies below and above of it, then by what lies beside.
void TileCanvas_cls::Take(const Range_st& tiles) {
    if (tiles.IsEmpty()) return;
    const Range_st old = mTaken.IsEmpty() ? Range_st{tiles.x0, tiles.y0, tiles.x0, tiles.y0} : mTaken;
    const Range_st all = {std::min(old.x0, tiles.x0), std::min(old.y0, tiles.y0), std::max(old.x1, tiles.x1),
                          std::max(old.y1, tiles.y1)};
    Read({all.x0, all.y0, all.x1, old.y0});
    Read({all.x0, old.y1, all.x1, all.y1});
    Read({all.x0, old.y0, old.x0, old.y1});
    Read({old.x1, old.y0, all.x1, old.y1});
    mTaken = all;
}
