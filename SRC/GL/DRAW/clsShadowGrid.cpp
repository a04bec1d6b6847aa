#include "GL/DRAW/clsShadowGrid.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <thread>
#include <utility>

#include "COMMON/OnThreads.h"
#include "COMMON/clsMyVector.h"
#include "GL/DRAW/ShadowBlocks.h"

namespace {

constexpr size_t kMostBlocks = 128; // of one shadow
constexpr float kAcross = 4.0f;     // edges of blocks, radii of the sphere in the middle by size
constexpr float kAlong = 1.0f;      // the same along a far light's direction, lengths of its shadow
constexpr float kShell = 2.0f;      // the same of a near light: fewer and longer lists are read faster there
constexpr float kCone = 5.0f;       // edges of blocks of directions, angular radii of that sphere
constexpr float kNarrowest = 1e-4f; // what directions as floats still tell apart well
constexpr float kNextToLight = 0.999f; // radius over distance of a sphere whose cone is nearly flat
constexpr size_t kSample = 999;
constexpr int kMostThreads = 8;    // each has a table of counts
constexpr uint32_t kLeftOut = ~0u; // in place of a count

using namespace ShadowBlocks;

} // namespace

/// A run of spheres, worked on by one thread, with what it lists.
struct ShadowGrid_cls::Run_st {
    size_t first = 0, last = 0;   ///< spheres
    std::vector<uint32_t> blocks; ///< of all of them
    std::vector<int32_t> next;    ///< of each block of the table: how many, then the place of the next
};

struct ShadowGrid_cls::Memory_st {
    std::vector<float> places; ///< as the spheres, in the table's coordinates
    std::vector<float> entries;
    std::vector<uint32_t> counts; ///< blocks of each sphere
    std::vector<int32_t> starts;
    std::vector<Run_st> runs;
};

// New memory of that size takes longer than what is then done with it.
std::unique_ptr<ShadowGrid_cls::Memory_st>& ShadowGrid_cls::GetSpare() {
    static std::unique_ptr<Memory_st> spSpare;
    return spSpare;
}

ShadowGrid_cls::ShadowGrid_cls(const ShadowShape_st& shape)
    : mShape(shape), mTurned(shape), mpMemory(std::move(GetSpare())) {
    if (!mpMemory) mpMemory = std::make_unique<Memory_st>();
}

ShadowGrid_cls::~ShadowGrid_cls() { GetSpare() = std::move(mpMemory); }

void ShadowGrid_cls::Clear() { mvBalls.clear(); }

const std::vector<int32_t>& ShadowGrid_cls::GetStarts() const { return mpMemory->starts; }

const std::vector<float>& ShadowGrid_cls::GetEntries() const { return mpMemory->entries; }

void ShadowGrid_cls::GetTurn(double (*pRows)[3]) const {
    for (int row = 0; row < 3; ++row)
        for (int i = 0; i < 3; ++i)
            pRows[row][i] = mShape.bNear ? (row == i ? 1.0 : 0.0) : double(mShape.axes[(row + 1) % 3][i]);
}

size_t ShadowGrid_cls::GetSize() const {
    return mShape.bNear ? size_t{kNearSize} : size_t{kFarSize[0]} * size_t{kFarSize[1]} * size_t{kFarSize[2]};
}

// As fits the sphere in the middle by size.
void ShadowGrid_cls::ChooseBlocks() {
    const size_t number = GetNumber();
    const size_t step = number / kSample + 1;
    for (int i = 0; i < 3; ++i) {
        mOrigin[i] = double(GetBall(0)[i]);
        mTurned.light[i] = static_cast<float>(double(mShape.light[i]) - mOrigin[i]);
    }
    const auto getMiddle = [number, step](const auto& getSize) {
        std::vector<float> sizes;
        for (size_t i = 0; i < number; i += step)
            sizes.push_back(getSize(i));
        const auto middle = sizes.begin() + static_cast<ptrdiff_t>(sizes.size() / 2);
        std::nth_element(sizes.begin(), middle, sizes.end());
        return *middle;
    };
    const float radius = std::max(getMiddle([this](size_t i) { return GetBall(i)[3]; }), 1e-30f);
    const float along = std::max(kAcross, (mShape.bNear ? kShell : kAlong) * (mShape.length - mShape.start));
    if (!mShape.bNear) {
        for (int i = 0; i < 3; ++i)
            mPerBlock[i] = 1.0f / (radius * (i < 2 ? kAcross : along));
        return;
    }
    const float angle = getMiddle([this](size_t i) {
        float away[3];
        for (int k = 0; k < 3; ++k)
            away[k] = GetBall(i)[k] - mShape.light[k];
        return GetBall(i)[3] / std::max(MyVector::GetNorm(away), GetBall(i)[3]);
    });
    mPerBlock[0] = mPerBlock[1] = 1.0f / std::clamp(kCone * angle, kNarrowest, 1.0f);
    mPerBlock[2] = 1.0f / (radius * along);
}

// False: too many.
bool ShadowGrid_cls::ListBox(const float* pLow, const float* pHigh, std::vector<uint32_t>& listed) const {
    int32_t first[3], last[3];
    for (int i = 0; i < 3; ++i) {
        // What the way from the screen back rounds.
        const float slack = 1e-6f * std::max(std::fabs(pLow[i]), std::fabs(pHigh[i]));
        const float low = (pLow[i] - slack) * mPerBlock[i];
        const float high = (pHigh[i] + slack) * mPerBlock[i];
        if (!(low > -kFarthest && high < kFarthest && high - low < float(kMostBlocks))) return false;
        first[i] = ToBlock(low);
        last[i] = ToBlock(high);
    }
    if (size_t(last[0] - first[0] + 1) * size_t(last[1] - first[1] + 1) * size_t(last[2] - first[2] + 1) >
        kMostBlocks)
        return false;
    for (int32_t z = first[2]; z <= last[2]; ++z)
        for (int32_t y = first[1]; y <= last[1]; ++y)
            for (int32_t x = first[0]; x <= last[0]; ++x) {
                const int32_t block[3] = {x, y, z};
                listed.push_back(GetFarBlock(block));
            }
    return true;
}

// The light looks at the sphere along a cone; its directions lie on a cap of the unit sphere, and of the
// blocks around the cap only those count that it touches. False: too many.
bool ShadowGrid_cls::ListCone(const float* pPlace, float radius, std::vector<uint32_t>& listed) const {
    ShadowShape_st::Ends_st ends;
    if (!mTurned.GetEnds(pPlace, radius, ends)) return true; // throws none
    float away[3], to[3];
    for (int i = 0; i < 3; ++i) {
        away[i] = pPlace[i] - mTurned.light[i];
        to[i] = ends.place[1][i] - mTurned.light[i];
    }
    const float far = MyVector::GetNorm(away);
    if (radius > kNextToLight * far) return false;
    const float last = MyVector::GetNorm(to);
    const float nearest = last - radius * (mShape.length - mShape.start);
    const float farthest = std::sqrt(last * last + ends.radius[1] * ends.radius[1]);
    // What the way from the screen back rounds, here of distances.
    const float rounded =
        2e-6f * std::max({far, std::fabs(pPlace[0]), std::fabs(pPlace[1]), std::fabs(pPlace[2])});
    const float shells[2] = {std::max(nearest - rounded - 1e-6f * farthest, 0.0f) * mPerBlock[2],
                             (farthest * 1.000002f + rounded) * mPerBlock[2]};
    // Twice the sine of half the cone's angle is what the cap reaches.
    const float ratio = ends.radius[1] / last;
    const float cosine = 1.0f / std::sqrt(1.0f + ratio * ratio);
    const float reach = ratio * cosine / std::sqrt(0.5f * (1.0f + cosine)) + 2e-6f +
                        2.0f * rounded / std::max(nearest, radius);
    if (!(shells[1] < kFarthest && shells[1] - shells[0] < float(kMostBlocks))) return false;
    const int32_t shell = ToBlock(shells[0]), lastShell = ToBlock(shells[1]);
    int32_t first[3];
    int number[3];
    for (int i = 0; i < 3; ++i) {
        away[i] /= far;
        const float low = (away[i] - reach) * mPerBlock[0];
        const float high = (away[i] + reach) * mPerBlock[0];
        if (!(high - low < 16.0f)) return false;
        first[i] = ToBlock(low);
        number[i] = ToBlock(high) - first[i] + 1;
    }
    // Of each axis and block: its nearest and farthest squares from the cap's middle and from the light.
    float off[3][17], inner[3][17], outer[3][17];
    const float edge = 1.0f / mPerBlock[0];
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < number[i]; ++k) {
            const float low = edge * float(first[i] + k), high = low + edge;
            const float way = std::max({low - away[i], away[i] - high, 0.0f});
            const float in = std::max({low, -high, 0.0f}), out = std::max(-low, high);
            off[i][k] = way * way;
            inner[i][k] = in * in;
            outer[i][k] = out * out;
        }
    constexpr float kRound = 1e-5f;
    for (int z = 0; z < number[2]; ++z)
        for (int y = 0; y < number[1]; ++y)
            for (int x = 0; x < number[0]; ++x) {
                if (off[0][x] + off[1][y] + off[2][z] > reach * reach * (1.0f + kRound) ||
                    inner[0][x] + inner[1][y] + inner[2][z] > 1.0f + kRound ||
                    outer[0][x] + outer[1][y] + outer[2][z] < 1.0f - kRound)
                    continue;
                const int32_t block[4] = {first[0] + x, first[1] + y, first[2] + z, shell};
                const uint32_t inFirst = GetNearBlock(block);
                for (int32_t k = 0; k <= lastShell - shell; ++k)
                    listed.push_back((inFirst + static_cast<uint32_t>(k) * kScatter[3]) & (kNearSize - 1));
                if (listed.size() > kMostBlocks) return false;
            }
    return true;
}

// False: too many blocks.
bool ShadowGrid_cls::ListBlocks(const float* pPlace, float radius, std::vector<uint32_t>& listed) const {
    listed.clear();
    if (mShape.bNear) return ListCone(pPlace, radius, listed);
    float low[3], high[3];
    for (int i = 0; i < 3; ++i) {
        const bool bAlong = i == 2;
        low[i] = pPlace[i] + radius * (bAlong ? mShape.start : -1.0f);
        high[i] = pPlace[i] + radius * (bAlong ? mShape.length : 1.0f);
    }
    return ListBox(low, high, listed);
}

// Into the table's coordinates, and the blocks of each.
void ShadowGrid_cls::ListRun(const double (*pTurn)[3], Run_st& run) {
    std::vector<uint32_t> listed; // blocks of the sphere at hand
    run.next.assign(GetSize(), 0);
    run.blocks.clear();
    run.blocks.reserve((run.last - run.first) * 9);
    for (size_t n = run.first; n < run.last; ++n) {
        const float* pBall = GetBall(n);
        float* pPlace = mpMemory->places.data() + 4 * n;
        double way[3];
        for (int i = 0; i < 3; ++i)
            way[i] = double(pBall[i]) - mOrigin[i];
        for (int i = 0; i < 3; ++i)
            pPlace[i] =
                static_cast<float>(pTurn[i][0] * way[0] + pTurn[i][1] * way[1] + pTurn[i][2] * way[2]);
        pPlace[3] = pBall[3];
        if (!ListBlocks(pPlace, pBall[3], listed)) {
            mpMemory->counts[n] = kLeftOut;
            continue;
        }
        mpMemory->counts[n] = static_cast<uint32_t>(listed.size());
        run.blocks.insert(run.blocks.end(), listed.begin(), listed.end());
        for (const uint32_t block : listed)
            ++run.next[block];
    }
}

// What there is no room for is forgotten again, in the order of the spheres.
void ShadowGrid_cls::LimitRuns(std::vector<Run_st>& runs) {
    size_t all = 0;
    for (const Run_st& run : runs)
        all += run.blocks.size();
    if (all <= kMostEntries) return;
    size_t kept = 0;
    for (Run_st& run : runs) {
        size_t from = 0, to = 0;
        for (size_t n = run.first; n < run.last; ++n) {
            if (mpMemory->counts[n] == kLeftOut) continue;
            const size_t count = mpMemory->counts[n];
            const bool bKeep = kept + count <= kMostEntries;
            for (size_t k = 0; k < count; ++k)
                if (bKeep)
                    run.blocks[to++] = run.blocks[from + k];
                else
                    --run.next[run.blocks[from + k]];
            from += count;
            if (bKeep)
                kept += count;
            else
                mpMemory->counts[n] = kLeftOut;
        }
        run.blocks.resize(to);
    }
}

// Of each block, the spheres of the first run before those of the second.
void ShadowGrid_cls::FindStarts(std::vector<Run_st>& runs) {
    int32_t start = 0;
    for (size_t block = 0; block < GetSize(); ++block) {
        mpMemory->starts[block] = start;
        for (Run_st& run : runs) {
            const int32_t count = run.next[block];
            run.next[block] = start;
            start += count;
        }
    }
    mpMemory->starts[GetSize()] = start;
}

void ShadowGrid_cls::FillRun(Run_st& run) {
    constexpr size_t kAhead = 16;
    const uint32_t* pBlock = run.blocks.data();
    const uint32_t* const pLast = pBlock + run.blocks.size();
    float* const pEntries = mpMemory->entries.data();
    for (size_t n = run.first; n < run.last; ++n) {
        const uint32_t count = mpMemory->counts[n] != kLeftOut ? mpMemory->counts[n] : 0;
        const float* pPlace = mpMemory->places.data() + 4 * n;
        for (uint32_t k = 0; k < count; ++k, ++pBlock) {
            if (pLast - pBlock > static_cast<ptrdiff_t>(kAhead))
                __builtin_prefetch(pEntries + 4 * static_cast<size_t>(run.next[pBlock[kAhead]]), 1);
            std::copy_n(pPlace, 4, pEntries + 4 * static_cast<size_t>(run.next[*pBlock]++));
        }
    }
}

// How many threads there are changes nothing in the table.
std::vector<size_t> ShadowGrid_cls::Sort(int threads) {
    constexpr size_t kForThread = 5000;
    std::vector<size_t> out;
    const size_t number = GetNumber();
    if (number == 0) {
        mpMemory->starts.assign(GetSize() + 1, 0);
        mpMemory->entries.assign(4 * kSpareEntries, 0.0f);
        return out;
    }
    mpMemory->starts.resize(GetSize() + 1);
    ChooseBlocks();
    double turn[3][3];
    GetTurn(turn);
    mpMemory->places.resize(mvBalls.size());
    mpMemory->counts.resize(number);
    if (threads < 1)
        threads = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1,
                             std::min(kMostThreads, static_cast<int>(number / kForThread) + 1));
    std::vector<Run_st>& runs = mpMemory->runs;
    runs.resize(static_cast<size_t>(threads));
    const auto onAll = [&runs, threads](const auto& job) {
        OnThreads(threads, [&](int k) { job(runs[static_cast<size_t>(k)]); });
    };
    for (size_t k = 0; k < runs.size(); ++k) {
        runs[k].first = number * k / runs.size();
        runs[k].last = number * (k + 1) / runs.size();
    }
    onAll([&](Run_st& run) { ListRun(turn, run); });
    LimitRuns(runs);
    FindStarts(runs);
    const size_t listed = 4 * static_cast<size_t>(mpMemory->starts.back());
    mpMemory->entries.resize(listed + 4 * kSpareEntries);
    std::fill_n(mpMemory->entries.begin() + static_cast<ptrdiff_t>(listed), 4 * kSpareEntries, 0.0f);
    onAll([&](Run_st& run) { FillRun(run); });
    for (size_t n = 0; n < number; ++n)
        if (mpMemory->counts[n] == kLeftOut) out.push_back(n);
    return out;
}
