// Particles of a batch, located and sorted by the tiles that they touch.
#include "GL/DRAW/CPU/clsTileDraw.h"

#include <algorithm>

#include "GL/DRAW/CPU/TileBatch.h"

namespace {

float Bound(float v) { return v > 0.0f ? v < 1.0f ? v : 1.0f : 0.0f; }

uint32_t Pack(float a, float b) {
    const auto bits = [](float v) { return static_cast<uint32_t>(Bound(v) * 65535.0f + 0.5f); };
    return bits(a) | bits(b) << 16;
}

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

bool IsUnseen(const TileSeen_st& seen, int i) { return seen.x1[i] < seen.x0[i] || seen.y1[i] < seen.y0[i]; }

} // namespace

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
    batch.touched = Batch_st::kNowhere;
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
