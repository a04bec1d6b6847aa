// What TileDraw_cls works with; for its own files.
#pragma once

#include <vector>

#include "COMMON/BigAllocator.h"
#include "GL/DRAW/CPU/clsTileDraw.h"

/// What a batch of the list becomes.
struct TileDraw_cls::Batch_st {
    std::vector<TileRecord_st, BigAllocator_cls<TileRecord_st>>
        records; ///< by tiles, in each in the order of the list
    std::vector<TileDot_st, BigAllocator_cls<TileDot_st>> dots; ///< in place of them where all are dots
    std::vector<uint32_t> starts;                               ///< of each tile's, and the end
    /// What touches many tiles, in the order of the list.
    struct Large_st {
        TileRecord_st record;
        int16_t x0, y0, x1, y1; ///< tiles
    };
    std::vector<Large_st> large;
    std::vector<float> materials; ///< 12 a sphere
    TileCanvas_cls::Range_st touched;
    static constexpr TileCanvas_cls::Range_st kNowhere = {1 << 20, 1 << 20, 0, 0};
};

/// What a thread works with.
struct TileDraw_cls::Worker_st {
    struct Found_st {
        TileRecord_st record;
        int16_t x0, y0, x1, y1; ///< tiles
    };
    TileRun_st run;
    TileSeen_st seen;
    TilePixels_st pixels;
    TileDots_st dots;                                                ///< of a run
    std::vector<TileDot_st, BigAllocator_cls<TileDot_st>> batchDots; ///< of a batch
    std::vector<uint32_t> dotTiles;
    std::vector<Found_st, BigAllocator_cls<Found_st>> found; ///< room for a batch
    size_t count = 0;                                        ///< of those
    std::vector<uint32_t> next;                              ///< free place of each tile
    std::vector<float> material;
};
