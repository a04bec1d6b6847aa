#include "GL/DRAW/CPU/clsTileDraw.h"

#include <algorithm>
#include <cmath>
#include <thread>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "COMMON/OnThreads.h"
#include "GL/DRAW/CPU/TileBatch.h"

/// Some of the list on its way into the picture.
struct TileDraw_cls::Round_st {
    const TileSource_cls& source;
    TileCanvas_cls& canvas;
    Report report;
    void* pWho;
    TileGoal_cls* pGoal;
    std::chrono::milliseconds every;
    long long first, end; ///< of the list
    int batches = 0;
    std::atomic<long long> records{0};
    std::atomic<int> binned{0};     ///< batches
    std::atomic<long long> work{0}; ///< of drawing: a particle in a tile each
    std::atomic<long long> drawn{0};
    std::chrono::steady_clock::time_point pause{}; ///< when the caller wants to hear of it
    bool bLast = false;                            ///< tiles that are drawn are done
    int handed = 0;                                ///< rows of tiles, of those that were taken

    bool IsPaused() const { return report && std::chrono::steady_clock::now() >= pause; }
    bool Tell() {
        if (!report) return true;
        // Binning is about as much work as drawing.
        const double share = 0.5 * std::min(1.0, static_cast<double>(binned.load()) / std::max(batches, 1)) +
                             0.5 * std::min(1.0, static_cast<double>(drawn.load()) /
                                                     std::max(static_cast<double>(work.load()), 1.0));
        const bool bGoOn =
            report(pWho, first + static_cast<long long>(share * static_cast<double>(end - first)));
        pause = std::chrono::steady_clock::now() + every;
        return bGoOn;
    }
};

namespace {

void Normalize(float* v) {
    const float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    for (int k = 0; k < 3 && length > 0.0f; ++k)
        v[k] /= length;
}

/// Directions of length 1; a far light's `along` leads half way to the viewer.
void PrepareLight(TileLight_st& light) {
    const bool bFar = light.place[3] == 0.0f;
    if (bFar) Normalize(light.place);
    Normalize(light.along);
    if (!bFar || light.bSpot) return;
    std::copy_n(light.place, 3, light.along);
    light.along[2] += 1.0f;
    Normalize(light.along);
}

/// Numbers next to zero count as zero: a processor takes a hundred times as long for them.
class NoTinyScope_cls {
public:
#ifdef __SSE2__
    NoTinyScope_cls() : mBefore(_mm_getcsr()) { _mm_setcsr(mBefore | 0x8040u); }
    ~NoTinyScope_cls() { _mm_setcsr(mBefore); }
#else
    NoTinyScope_cls() = default;
    ~NoTinyScope_cls() {}
#endif
    NoTinyScope_cls(const NoTinyScope_cls&) = delete;
    NoTinyScope_cls& operator=(const NoTinyScope_cls&) = delete;

private:
    unsigned mBefore = 0;
};

} // namespace

TileDraw_cls::TileDraw_cls(int threads, const TileKernels_st& kernels) : mKernels(kernels) {
    const int cores = std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
    for (int k = 0; k < (threads > 0 ? threads : std::min(cores, 32)); ++k)
        mVWorkers.push_back(std::make_unique<Worker_st>());
}

TileDraw_cls::~TileDraw_cls() = default;

// From time to time all threads lay down their work, and the caller hears how far it is.
bool TileDraw_cls::OnAll(Round_st& round, int jobs, Job job) {
    mVDone.assign(static_cast<size_t>(jobs), 0);
    for (;;) {
        std::atomic<int> next{0};
        std::atomic<bool> bLeft{false};
        const int threads = std::min(static_cast<int>(mVWorkers.size()), jobs);
        OnThreads(threads, [&](int k) {
            const NoTinyScope_cls noTiny;
            while (!round.IsPaused()) {
                const int number = next.fetch_add(1);
                if (number >= jobs) return;
                (this->*job)(round, number, *mVWorkers[static_cast<size_t>(k)]);
                if (k == 0 && round.bLast) HandOver(round);
            }
            bLeft.store(true);
        });
        if (!bLeft.load()) return true;
        if (!round.Tell()) return false;
    }
}

void TileDraw_cls::Prepare(const TileScene_st& scene, const TileCanvas_cls& canvas) {
    mScene = scene;
    if (mScene.lights.size() > 8) mScene.lights.resize(8); // as OpenGL has
    for (TileLight_st& light : mScene.lights)
        PrepareLight(light);
    mScene.bPlainLight = mScene.fog.mode == TileFog_st::NONE;
    for (const TileLight_st& light : mScene.lights)
        mScene.bPlainLight &= light.place[3] == 0.0f && !light.bSpot;
    mbMaterials = false;
    for (const TileLook_st& look : scene.look)
        mbMaterials |= look.kind == TileLook_st::SPHERE && look.bMaterials;
    mbDots = true;
    for (const TileLook_st& look : scene.look)
        mbDots &= look.kind == TileLook_st::HIDDEN || (look.kind == TileLook_st::POINT && look.size < 2.0f);
    mLimits = canvas.GetLimits();
    mAcross = canvas.GetTilesAcross();
    mTiles = canvas.GetTiles();
}

bool TileDraw_cls::Draw(const TileScene_st& scene, const TileSource_cls& source, TileCanvas_cls& canvas,
                        Report report, void* pWho, TileGoal_cls* pGoal) {
    Prepare(scene, canvas);
    Round_st round = {source, canvas, report, pWho, pGoal, mPause, 0, 0};
    round.pause = std::chrono::steady_clock::now() + mPause;
    const long long number = source.GetNumber();
    for (; round.first < number; round.first = round.end) {
        round.end = std::min(round.first + (mbDots ? kDotRound : kRound), number);
        round.batches = static_cast<int>((round.end - round.first + kBatch - 1) / kBatch);
        round.binned = 0, round.records = 0, round.work = 0, round.drawn = 0;
        while (static_cast<int>(mVBatches.size()) < round.batches)
            mVBatches.push_back(std::make_unique<Batch_st>());
        if (!OnAll(round, round.batches, &TileDraw_cls::BinBatch)) return false;
        round.batches = static_cast<int>(std::find(mVDone.begin(), mVDone.end(), 0) - mVDone.begin());
        round.end = std::min(round.first + static_cast<long long>(round.batches) * kBatch, round.end);
        mVpMaterials.clear();
        for (const auto& batch : mVBatches)
            mVpMaterials.push_back(batch->materials.data());
        canvas.Take(FindTouched(round.batches));
        if (pGoal && round.end == number) StartHandingOver(round);
        if (!OnAll(round, mTiles, &TileDraw_cls::DrawTile)) return false;
    }
    return true;
}

// The caller's thread hands over while the others draw; what it hands over is still in the caches.
void TileDraw_cls::StartHandingOver(Round_st& round) {
    const int rows = round.canvas.GetTilesUp();
    if (mRows < rows) mpLeft = std::make_unique<std::atomic<int>[]>(static_cast<size_t>(mRows = rows));
    for (int y = 0; y < rows; ++y)
        mpLeft[static_cast<size_t>(y)] = mAcross;
    round.handed = round.canvas.GetTakenTiles().y0;
    round.bLast = true;
}

void TileDraw_cls::HandOver(Round_st& round) const {
    const int from = round.handed, end = round.canvas.GetTakenTiles().y1;
    while (round.handed < end && mpLeft[static_cast<size_t>(round.handed)] == 0)
        ++round.handed;
    if (round.handed > from) round.pGoal->TakeUpTo(round.canvas, round.handed);
}

TileCanvas_cls::Range_st TileDraw_cls::FindTouched(int batches) const {
    TileCanvas_cls::Range_st all = Batch_st::kNowhere;
    for (int k = 0; k < batches; ++k) {
        const TileCanvas_cls::Range_st& own = mVBatches[static_cast<size_t>(k)]->touched;
        if (own.IsEmpty()) continue;
        all = {std::min(all.x0, own.x0), std::min(all.y0, own.y0), std::max(all.x1, own.x1),
               std::max(all.y1, own.y1)};
    }
    return all;
}

void TileDraw_cls::BinBatch(Round_st& round, int batch, Worker_st& worker) {
    int& done = mVDone[static_cast<size_t>(batch)];
    if (done != 0 || round.records > (mbDots ? kMostDots : kMostRecords)) return;
    const long long from = round.first + static_cast<long long>(batch) * kBatch;
    const int count = static_cast<int>(std::min<long long>(kBatch, round.end - from));
    Bin(round.source, from, count, worker, *mVBatches[static_cast<size_t>(batch)]);
    done = 1;
    const Batch_st& binned = *mVBatches[static_cast<size_t>(batch)];
    round.records += binned.starts.back();
    round.work += binned.starts.back() + static_cast<long long>(binned.large.size()) * mTiles;
    ++round.binned;
}

// What touches many tiles comes in between by its place in the order.
void TileDraw_cls::DrawBatch(int tile, int number, Worker_st& worker, bool& bLoaded,
                             TileCanvas_cls& canvas) const {
    const Batch_st& batch = *mVBatches[static_cast<size_t>(number)];
    const size_t start = batch.starts[static_cast<size_t>(tile)];
    const size_t end = batch.starts[static_cast<size_t>(tile) + 1];
    worker.pixels.bTogether = mbDots;
    if (mbDots && start < end) {
        if (!bLoaded) mKernels.pLoad(canvas, tile, worker.pixels);
        bLoaded = true;
        mKernels.pDrawDots(mScene, worker.pixels, batch.dots.data() + start, batch.dots.data() + end);
    }
    if (mbDots) return;
    const TileRecord_st* p = batch.records.data() + start;
    const TileRecord_st* const pEnd = batch.records.data() + end;
    const auto draw = [&](const TileRecord_st* pFirst, const TileRecord_st* pLast) {
        if (pFirst == pLast) return;
        if (!bLoaded) mKernels.pLoad(canvas, tile, worker.pixels);
        bLoaded = true;
        mKernels.pDraw(mScene, worker.pixels, pFirst, pLast, mVpMaterials.data(),
                       static_cast<uint32_t>(number));
    };
    const int tx = tile % mAcross, ty = tile / mAcross;
    for (const Batch_st::Large_st& large : batch.large) {
        if (tx < large.x0 || tx > large.x1 || ty < large.y0 || ty > large.y1) continue;
        const uint32_t order = large.record.what >> TileRecord_st::kOrderShift;
        const TileRecord_st* pBefore = p;
        while (pBefore < pEnd && (pBefore->what >> TileRecord_st::kOrderShift) < order)
            ++pBefore;
        draw(p, pBefore);
        draw(&large.record, &large.record + 1);
        p = pBefore;
    }
    draw(p, pEnd);
}

// Each batch has what a tile needs of it in one piece, which the processor can't guess. A piece of more lines
// it comes to know on the way.
void TileDraw_cls::Expect(int tile, int number) const {
    constexpr size_t kLine = 64, kMostLines = 16;
    const Batch_st& batch = *mVBatches[static_cast<size_t>(number)];
    const size_t start = batch.starts[static_cast<size_t>(tile)];
    const size_t size = mbDots ? sizeof(TileDot_st) : sizeof(TileRecord_st);
    const size_t bytes = (batch.starts[static_cast<size_t>(tile) + 1] - start) * size;
    const char* const p = (mbDots ? reinterpret_cast<const char*>(batch.dots.data())
                                  : reinterpret_cast<const char*>(batch.records.data())) +
                          start * size;
    for (size_t at = 0; at < std::min(bytes, kLine * kMostLines); at += kLine)
        __builtin_prefetch(p + at);
}

// A tile can be laid down between two batches. The clock is only asked where there was work.
void TileDraw_cls::DrawTile(Round_st& round, int tile, Worker_st& worker) {
    constexpr size_t kWork = 2048;
    int& done = mVDone[static_cast<size_t>(tile)];
    if (done == round.batches) return;
    bool bLoaded = false;
    size_t work = 0;
    long long all = 0;
    while (done < round.batches) {
        if (done + 1 < round.batches) Expect(tile, done + 1);
        const Batch_st& batch = *mVBatches[static_cast<size_t>(done)];
        DrawBatch(tile, done++, worker, bLoaded, round.canvas);
        const size_t now = batch.starts[static_cast<size_t>(tile) + 1] -
                           batch.starts[static_cast<size_t>(tile)] + batch.large.size();
        work += now;
        all += static_cast<long long>(now);
        if (work < kWork) continue;
        if (round.IsPaused()) break;
        work = 0;
    }
    round.drawn += all;
    if (bLoaded) {
        mKernels.pDraw(mScene, worker.pixels, nullptr, nullptr, mVpMaterials.data(), 0);
        mKernels.pStore(round.canvas, worker.pixels);
        round.canvas.MarkFilled(tile);
    }
    if (!round.bLast || done < round.batches) return;
    const int x = tile % mAcross, y = tile / mAcross;
    const TileCanvas_cls::Range_st& taken = round.canvas.GetTakenTiles();
    const bool bTaken = x >= taken.x0 && x < taken.x1 && y >= taken.y0 && y < taken.y1;
    if (bTaken && !round.canvas.IsFilled(tile)) round.canvas.Fill(tile);
    --mpLeft[static_cast<size_t>(y)];
}
