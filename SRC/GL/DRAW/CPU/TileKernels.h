// The loops over particles and pixels, in two forms with the same results: for any processor, and for one
// with registers of 32 bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "GL/DRAW/CPU/TileScene.h"
#include "GL/DRAW/CPU/clsTileCanvas.h"

/// A particle as the tiles that it touches draw it.
struct TileRecord_st {
    // The middle, eye coordinates; of a point: left and bottom pixel, and depth.
    float x, y, z;
    float radius;      ///< eye coordinates; of a point: edge in pixels
    uint32_t color[2]; ///< RGB, 16 bits each; of a sphere the first is the number of its material
    float alpha;       ///< 0 to 1; a sum of many faint ones needs all its bits
    uint32_t what;     ///< look, then kNear, then place in the order of its batch

    static constexpr uint32_t kLookMask = 3;
    static constexpr uint32_t kNear = 4; ///< a sphere around the eye, or cut by the near or far plane
    static constexpr uint32_t kOrderShift = 3;
};

/// A point of one pixel, where all of the list are such: half of a TileRecord_st.
struct TileDot_st {
    uint32_t place;    ///< depth in 24 bits, then the tile's column in 6 and the look in 2
    uint32_t color[2]; ///< RGB, 16 bits each, then the tile's row
    float alpha;
};
static_assert(TileCanvas_cls::kTileW <= 64 && TileScene_st::kLooks <= 4, "what TileDot_st has room for");

/// The dots of a run on their way into tiles.
struct TileDots_st {
    int count = 0;
    TileDot_st dot[TileRun_st::kRoom + 1]; ///< one may be begun behind the last
    uint32_t tile[TileRun_st::kRoom + 1];
};

/// Where on the screen the particles of a run may show, pixels; none where x1 < x0.
struct TileSeen_st {
    int x0[TileRun_st::kRoom], y0[TileRun_st::kRoom], x1[TileRun_st::kRoom], y1[TileRun_st::kRoom];
    uint8_t bNear[TileRun_st::kRoom];
    // As in TileRecord_st.
    float x[TileRun_st::kRoom], y[TileRun_st::kRoom], z[TileRun_st::kRoom], radius[TileRun_st::kRoom];
};

/// The pixels of one tile while it is worked on, a plane a channel.
struct alignas(64) TilePixels_st {
    static constexpr int kStride = TileCanvas_cls::kTileW;
    static constexpr int kRoom = kStride * (TileCanvas_cls::kTileH + 1) + 4; ///< written in blocks of 4 x 2
    float c[4][kRoom];
    bool bTogether;   ///< of dots alone: all channels of a pixel behind each other, from c[0] on
    int32_t z[kRoom]; ///< 24 bits
    int32_t nearest;  ///< none in the tile is nearer
    uint8_t stencil[kRoom];
    // Of opaque spheres whose light waits: where they face, and which material they have (batch, then
    // number).
    static constexpr float kNoNormal = 2.0f; ///< as z: none waits in this pixel
    static constexpr int kMaterialBits = 16;
    float normal[3][kRoom];
    int32_t material[kRoom];
    int waiting; ///< of which look; -1: of none
    int left, bottom, width, height;
};

struct TileKernels_st {
    /// Where the particles of a run show; points and sprites take the fog into their colours here where it
    /// is the same for all of one.
    void (*pLocate)(const TileScene_st& scene, TileRun_st& run, TileSeen_st& seen);
    /// Behind pLocate: those within the limits, of a canvas with so many tiles across.
    void (*pMakeDots)(const TileRun_st& run, const TileSeen_st& seen, const TileCanvas_cls::Range_st& limits,
                      int across, TileDots_st& out);
    void (*pDrawDots)(const TileScene_st& scene, TilePixels_st& pixels, const TileDot_st* pFirst,
                      const TileDot_st* pEnd);
    /// Take a tile of the picture, or begin it anew; and give it back.
    void (*pLoad)(TileCanvas_cls& canvas, int tile, TilePixels_st& pixels);
    void (*pStore)(TileCanvas_cls& canvas, const TilePixels_st& pixels);
    /// Records of a batch; `ppMaterials`: of each batch, 12 numbers a sphere. The last call for a tile has
    /// none, and lights what waits.
    void (*pDraw)(const TileScene_st& scene, TilePixels_st& pixels, const TileRecord_st* pFirst,
                  const TileRecord_st* pEnd, const float* const* ppMaterials, uint32_t batch);
};

/// Those that this processor runs fastest.
const TileKernels_st& GetTileKernels();
/// Those that every processor runs.
const TileKernels_st& GetPlainTileKernels();
