#include "GL/DRAW/CPU/clsTileDraw.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "COMMON/OnThreads.h"

/// What a batch of the list becomes.
struct TileDraw_cls::Batch_st {
    std::vector<TileRecord_st> records; ///< by tiles, in each in the order of the list
    std::vector<TileDot_st> dots;       ///< in place of them where all are dots
    std::vector<uint32_t> starts;       ///< of each tile's, and the end
    /// What touches many tiles, in the order of the list.
    struct Large_st {
        TileRecord_st record;
        int16_t x0, y0, x1, y1; ///< tiles
    };
    std::vector<Large_st> large;
    std::vector<float> materials; ///< 12 a sphere
    TileCanvas_cls::Range_st touched;
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
    TileDots_st dots;                  ///< of a run
    std::vector<TileDot_st> batchDots; ///< of a batch
    std::vector<uint32_t> dotTiles;
    std::vector<Found_st> found; ///< room for a batch
    size_t count = 0;            ///< of those
    std::vector<uint32_t> next;  ///< free place of each tile
    std::vector<float> material;
};

/// Some of the list on its way into the picture.
struct TileDraw_cls::Round_st {
    const TileSource_cls& source;
    TileCanvas_cls& canvas;
    Report report;
    void* pWho;
    long long first, end; ///< of the list
    int batches = 0;
    std::atomic<long long> records{0};
    std::atomic<int> binned{0};     ///< batches
    std::atomic<long long> work{0}; ///< of drawing: a particle in a tile each
    std::atomic<long long> drawn{0};
    std::chrono::steady_clock::time_point pause{}; ///< when the caller wants to hear of it

    bool IsPaused() const { return report && std::chrono::steady_clock::now() >= pause; }
    bool Tell() {
        if (!report) return true;
        // Binning is about as much work as drawing.
        const double share = 0.5 * std::min(1.0, static_cast<double>(binned.load()) / std::max(batches, 1)) +
                             0.5 * std::min(1.0, static_cast<double>(drawn.load()) /
                                                     std::max(static_cast<double>(work.load()), 1.0));
        const bool bGoOn =
            report(pWho, first + static_cast<long long>(share * static_cast<double>(end - first)));
        pause = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
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

float Bound(float v) { return v > 0.0f ? v < 1.0f ? v : 1.0f : 0.0f; }

uint32_t Pack(float a, float b) {
    const auto bits = [](float v) { return static_cast<uint32_t>(Bound(v) * 65535.0f + 0.5f); };
    return bits(a) | bits(b) << 16;
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

/// The tiles within the limits that a particle touches, which shows somewhere; false: none.
template <class FOUND>
bool Place(const TileSeen_st& seen, int i, const TileCanvas_cls::Range_st& limits, FOUND& out) {
    constexpr unsigned kW = TileCanvas_cls::kTileW, kH = TileCanvas_cls::kTileH;
    const auto first = [](int at, unsigned size) {
        return static_cast<int>(static_cast<unsigned>(at) / size);
    };
    const int x0 = std::max(first(seen.x0[i], kW), limits.x0),
              x1 = std::min(first(seen.x1[i], kW), limits.x1 - 1);
    const int y0 = std::max(first(seen.y0[i], kH), limits.y0),
              y1 = std::min(first(seen.y1[i], kH), limits.y1 - 1);
    out.x0 = static_cast<int16_t>(x0), out.x1 = static_cast<int16_t>(x1);
    out.y0 = static_cast<int16_t>(y0), out.y1 = static_cast<int16_t>(y1);
    return x0 <= x1 && y0 <= y1;
}

template <class FOUND>
void Widen(TileCanvas_cls::Range_st& range, const FOUND& found) {
    range.x0 = std::min<int>(range.x0, found.x0);
    range.y0 = std::min<int>(range.y0, found.y0);
    range.x1 = std::max(range.x1, found.x1 + 1);
    range.y1 = std::max(range.y1, found.y1 + 1);
}

constexpr TileCanvas_cls::Range_st kNowhere = {1 << 20, 1 << 20, 0, 0};

bool IsUnseen(const TileSeen_st& seen, int i) { return seen.x1[i] < seen.x0[i] || seen.y1[i] < seen.y0[i]; }

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
                        Report report, void* pWho) {
    Prepare(scene, canvas);
    Round_st round = {source, canvas, report, pWho, 0, 0};
    round.pause = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
    const long long number = source.GetNumber();
    for (; round.first < number; round.first = round.end) {
        round.end = std::min(round.first + kRound, number);
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
        if (!OnAll(round, mTiles, &TileDraw_cls::DrawTile)) return false;
    }
    return true;
}

TileCanvas_cls::Range_st TileDraw_cls::FindTouched(int batches) const {
    TileCanvas_cls::Range_st all = kNowhere;
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
    if (done != 0 || round.records > kMostRecords) return;
    const long long from = round.first + static_cast<long long>(batch) * kBatch;
    const int count = static_cast<int>(std::min<long long>(kBatch, round.end - from));
    Bin(round.source, from, count, worker, *mVBatches[static_cast<size_t>(batch)]);
    done = 1;
    const Batch_st& binned = *mVBatches[static_cast<size_t>(batch)];
    round.records += binned.starts.back();
    round.work += binned.starts.back() + static_cast<long long>(binned.large.size()) * mTiles;
    ++round.binned;
}

// Tiles count what they get; most particles lie in one.
void TileDraw_cls::TakeRun(const TileRun_st& run, const TileSeen_st& seen, int& order, Worker_st& worker,
                           Batch_st& batch) const {
    const TileCanvas_cls::Range_st limits = mLimits;
    const int across = mAcross;
    uint32_t* const pCounts = batch.starts.data() + 1;
    uint32_t materials = static_cast<uint32_t>(batch.materials.size() / 12);
    Worker_st::Found_st* pFound = worker.found.data() + worker.count;
    uint32_t place = static_cast<uint32_t>(order);
    order += run.count;
    for (int i = 0; i < run.count; ++i, ++place) {
        Worker_st::Found_st& found = *pFound;
        if (IsUnseen(seen, i) || !Place(seen, i, limits, found)) continue;
        const TileLook_st& look = mScene.look[run.look[i]];
        TileRecord_st& record = found.record;
        record.x = seen.x[i], record.y = seen.y[i], record.z = seen.z[i], record.radius = seen.radius[i];
        record.what = run.look[i] | place << TileRecord_st::kOrderShift;
        if (look.kind == TileLook_st::SPHERE) {
            if (seen.bNear[i]) record.what |= TileRecord_st::kNear;
            record.color[0] = materials;
            record.color[1] = 0, record.alpha = 1.0f;
            if (look.bMaterials) {
                batch.materials.insert(batch.materials.end(), run.pMaterial[i], run.pMaterial[i] + 12);
                ++materials;
            }
        } else {
            record.color[0] = Pack(run.color[i][0], run.color[i][1]);
            record.color[1] = Pack(run.color[i][2], 0.0f);
            record.alpha = Bound(run.color[i][3]);
        }
        if (found.x0 == found.x1 && found.y0 == found.y1) {
            ++pCounts[found.y0 * across + found.x0];
        } else if ((found.x1 - found.x0 + 1) * (found.y1 - found.y0 + 1) > kManyTiles) {
            batch.large.push_back({record, found.x0, found.y0, found.x1, found.y1});
            continue;
        } else {
            for (int y = found.y0; y <= found.y1; ++y)
                for (int x = found.x0; x <= found.x1; ++x)
                    ++pCounts[y * across + x];
        }
        ++pFound;
    }
    worker.count = static_cast<size_t>(pFound - worker.found.data());
}

void TileDraw_cls::Bin(const TileSource_cls& source, long long first, int count, Worker_st& worker,
                       Batch_st& batch) {
    if (!mbDots) worker.found.resize(static_cast<size_t>(kBatch) + 1); // one is begun behind the last
    if (mbDots) worker.batchDots.resize(kBatch), worker.dotTiles.resize(kBatch);
    worker.count = 0;
    batch.large.clear();
    batch.materials.clear();
    batch.starts.assign(static_cast<size_t>(mTiles) + 1, 0);
    TileRun_st& run = worker.run;
    if (mbMaterials) worker.material.resize(12 * static_cast<size_t>(TileRun_st::kRoom));
    run.pMaterial = mbMaterials ? reinterpret_cast<float(*)[12]>(worker.material.data()) : nullptr;
    int order = 0;
    for (int done = 0; done < count; done += TileRun_st::kRoom) {
        run.count = 0;
        source.Fill(first + done, std::min(TileRun_st::kRoom, count - done), run);
        if (run.count == 0) continue;
        mKernels.pLocate(mScene, run, worker.seen);
        if (mbDots)
            TakeDots(worker, batch);
        else
            TakeRun(run, worker.seen, order, worker, batch);
    }
    batch.touched = kNowhere;
    for (const Batch_st::Large_st& large : batch.large)
        Widen(batch.touched, large);
    uint32_t* pStarts = batch.starts.data();
    for (int y = 0, tile = 0; tile < mTiles; ++y)
        for (int x = 0; x < mAcross; ++x, ++tile) {
            if (pStarts[tile + 1] != 0)
                Widen(batch.touched, Batch_st::Large_st{{}, int16_t(x), int16_t(y), int16_t(x), int16_t(y)});
            pStarts[tile + 1] += pStarts[tile];
        }
    const size_t total = pStarts[mTiles];
    if (!mbDots && batch.records.size() < total) batch.records.resize(total);
    if (mbDots && batch.dots.size() < total) batch.dots.resize(total);
    worker.next.assign(batch.starts.begin(), batch.starts.end() - 1);
    if (mbDots)
        ScatterDots(worker, batch);
    else
        Scatter(worker, batch);
}

void TileDraw_cls::TakeDots(Worker_st& worker, Batch_st& batch) const {
    TileDots_st& dots = worker.dots;
    mKernels.pMakeDots(worker.run, worker.seen, mLimits, mAcross, dots);
    uint32_t* const pCounts = batch.starts.data() + 1;
    for (int i = 0; i < dots.count; ++i)
        ++pCounts[dots.tile[i]];
    std::copy_n(dots.dot, dots.count, worker.batchDots.data() + worker.count);
    std::copy_n(dots.tile, dots.count, worker.dotTiles.data() + worker.count);
    worker.count += static_cast<size_t>(dots.count);
}

void TileDraw_cls::ScatterDots(Worker_st& worker, Batch_st& batch) const {
    TileDot_st* const pDots = batch.dots.data();
    uint32_t* const pNext = worker.next.data();
    for (size_t i = 0; i < worker.count; ++i)
        pDots[pNext[worker.dotTiles[i]]++] = worker.batchDots[i];
}

void TileDraw_cls::Scatter(Worker_st& worker, Batch_st& batch) const {
    TileRecord_st* const pRecords = batch.records.data();
    uint32_t* const pNext = worker.next.data();
    const Worker_st::Found_st* const pEnd = worker.found.data() + worker.count;
    const int across = mAcross;
    for (const Worker_st::Found_st* p = worker.found.data(); p < pEnd; ++p) {
        if (p->x0 == p->x1 && p->y0 == p->y1) {
            pRecords[pNext[p->y0 * across + p->x0]++] = p->record;
            continue;
        }
        for (int y = p->y0; y <= p->y1; ++y)
            for (int x = p->x0; x <= p->x1; ++x)
                pRecords[pNext[y * across + x]++] = p->record;
    }
}

// What touches many tiles comes in between by its place in the order.
void TileDraw_cls::DrawBatch(int tile, int number, Worker_st& worker, bool& bLoaded,
                             TileCanvas_cls& canvas) const {
    const Batch_st& batch = *mVBatches[static_cast<size_t>(number)];
    const size_t start = batch.starts[static_cast<size_t>(tile)];
    const size_t end = batch.starts[static_cast<size_t>(tile) + 1];
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

// A tile can be laid down between two batches. The clock is only asked where there was work.
void TileDraw_cls::DrawTile(Round_st& round, int tile, Worker_st& worker) {
    constexpr size_t kWork = 2048;
    int& done = mVDone[static_cast<size_t>(tile)];
    bool bLoaded = false;
    size_t work = 0;
    long long all = 0;
    while (done < round.batches) {
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
    if (!bLoaded) return;
    mKernels.pDraw(mScene, worker.pixels, nullptr, nullptr, mVpMaterials.data(), 0);
    mKernels.pStore(round.canvas, worker.pixels);
    round.canvas.MarkFilled(tile);
}
