// Draws the particles of a list into a picture in memory, in the order of the list, on all cores. The result
// doesn't depend on how many those are.
//
// Batches of the list are located and sorted by the tiles that they touch, each on one thread; then each tile
// is drawn by one thread from all batches, in their order. Memory is kept from one picture to the next.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "GL/DRAW/CPU/TileKernels.h"

class TileDraw_cls {
public:
    /// `threads` 0: as many as there are cores.
    explicit TileDraw_cls(int threads = 0, const TileKernels_st& kernels = GetTileKernels());
    ~TileDraw_cls();
    TileDraw_cls(const TileDraw_cls&) = delete;
    TileDraw_cls& operator=(const TileDraw_cls&) = delete;

    /// Called on the caller's thread, some ten times a second, while no other one works, so that it may
    /// change what the source reads; with about how many particles are done. False ends the drawing.
    using Report = bool (*)(void* pWho, long long done);

    /// The canvas is as large as the view. False: was told to stop; the canvas holds what was drawn. `pGoal`
    /// hears on the caller's thread of what is done while others still draw; not of all in the end.
    bool Draw(const TileScene_st& scene, const TileSource_cls& source, TileCanvas_cls& canvas,
              Report report = nullptr, void* pWho = nullptr, TileGoal_cls* pGoal = nullptr);

    /// Another pause between two reports.
    void TellEvery(std::chrono::milliseconds pause) { mPause = pause; }

    static constexpr int kBatch = 1 << TilePixels_st::kMaterialBits; ///< particles
    static constexpr long long kRound = 1LL << 22;     ///< particles that are sorted by tiles at a time
    static constexpr long long kDotRound = 1LL << 24;  ///< the same of points of one pixel
    static constexpr long long kMostRecords = 6000000; ///< about, 32 bytes each; a round ends there
    static constexpr long long kMostDots = 12000000;   ///< about, 16 bytes each
    static constexpr int kManyTiles = 64;              ///< what touches more isn't sorted by tiles

private:
    struct Batch_st;
    struct Worker_st;
    struct Round_st;
    using Job = void (TileDraw_cls::*)(Round_st& round, int job, Worker_st& worker);

    void Prepare(const TileScene_st& scene, const TileCanvas_cls& canvas);
    void BinBatch(Round_st& round, int batch, Worker_st& worker);
    void Bin(const TileSource_cls& source, long long first, int count, Worker_st& worker, Batch_st& batch);
    void TakeRun(const TileRun_st& run, const TileSeen_st& seen, int& order, Worker_st& worker,
                 Batch_st& batch) const;
    void TakeDots(Worker_st& worker, Batch_st& batch) const;
    void ScatterDots(Worker_st& worker, Batch_st& batch) const;
    void Scatter(Worker_st& worker, Batch_st& batch) const;
    void DrawTile(Round_st& round, int tile, Worker_st& worker);
    void Expect(int tile, int number) const;
    void DrawBatch(int tile, int number, Worker_st& worker, bool& bLoaded, TileCanvas_cls& canvas) const;
    TileCanvas_cls::Range_st FindTouched(int batches) const;
    bool OnAll(Round_st& round, int jobs, Job job);
    void StartHandingOver(Round_st& round);
    void HandOver(Round_st& round) const;

    const TileKernels_st& mKernels;
    std::chrono::milliseconds mPause{100};
    TileScene_st mScene; ///< with lights as the kernels want them
    TileCanvas_cls::Range_st mLimits;
    int mAcross = 0;
    int mTiles = 0;
    bool mbMaterials = false;
    bool mbDots = false; ///< nothing but points of one pixel
    std::vector<std::unique_ptr<Worker_st>> mVWorkers;
    std::vector<std::unique_ptr<Batch_st>> mVBatches;
    std::vector<const float*> mVpMaterials; ///< of each batch
    std::vector<int> mVDone; ///< of each job of a round: nothing, or all, or of a tile how many batches
    std::unique_ptr<std::atomic<int>[]> mpLeft; ///< of each row of tiles: those that aren't done
    int mRows = 0;                              ///< that there is room for
};
