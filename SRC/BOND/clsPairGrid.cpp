#include "BOND/clsPairGrid.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "COMMON/OnThreads.h"

namespace {

// A little more than the reach, as places are divided by the edge with an error. Where that error counts,
// 2^30 cubes and more from the origin, floats stand so far apart that only equal ones are near.
constexpr double kEdge = 1.0001;
constexpr double kFarthest = 2305843009213693952.0; // 2^61 cubes; beyond, all share one
constexpr size_t kCubesMore = 64;

bool IsFinite(const float* p) {
    const float sum = (p[0] - p[0]) + (p[1] - p[1]) + (p[2] - p[2]);
    return sum == 0.0f;
}

int64_t Wrap(int64_t place, int64_t size) {
    if (place >= 0 && place < size) return place;
    const int64_t rest = place % size;
    return rest < 0 ? rest + size : rest;
}

} // namespace

void PairGrid_cls::Near_st::Reserve(size_t more) {
    const size_t needed = static_cast<size_t>(number) + more + kBlock;
    if (index.size() >= needed) return;
    const size_t size = std::max(needed, 2 * index.size());
    for (std::vector<float>* pColumn : {&x, &y, &z})
        pColumn->resize(size);
    index.resize(size);
}

PairGrid_cls::PairGrid_cls(const StickParticles_st& particles, const StickRule_st& rule, double reach,
                           int threads)
    : mpPos(particles.mpPos), mReach(reach) {
    Choose(particles, rule);
    MakeCubes(threads);
    SortByCube(threads);
}

void PairGrid_cls::Choose(const StickParticles_st& particles, const StickRule_st& rule) {
    const bool bTypes = rule.mSpecType == STICK_TYPES_A_B;
    const int step = std::max(particles.mStep, 1);
    mvChosen.reserve(static_cast<size_t>(std::max(particles.mCount / step + 1, 0)));
    std::fill_n(mLow, 3, HUGE_VALF);
    std::fill_n(mHigh, 3, -HUGE_VALF);
    for (int i = 0; mpPos && i < particles.mCount; i += std::min(step, particles.mCount - i)) {
        const int type = particles.mpType ? particles.mpType[i] : 0;
        if (bTypes && type != rule.mSpecA && type != rule.mSpecB) continue;
        const float* p = mpPos[i];
        if (!IsFinite(p)) continue;
        for (int k = 0; k < 3; ++k) {
            mLow[k] = std::min(mLow[k], p[k]);
            mHigh[k] = std::max(mHigh[k], p[k]);
        }
        mvChosen.push_back(static_cast<unsigned>(i));
    }
    mNumber = static_cast<int>(mvChosen.size());
}

int64_t PairGrid_cls::GetPlace(double x) const {
    const double place = std::clamp(x * mPerEdge, -kFarthest, kFarthest);
    const int64_t whole = static_cast<int64_t>(place);
    return whole - (static_cast<double>(whole) > place);
}

uint32_t PairGrid_cls::GetCubeAt(const int64_t* pPlace) const {
    const int64_t x = Wrap(pPlace[0] - mFirst[0], mSize[0]);
    const int64_t y = Wrap(pPlace[1] - mFirst[1], mSize[1]);
    const int64_t z = Wrap(pPlace[2] - mFirst[2], mSize[2]);
    return static_cast<uint32_t>((x * mSize[1] + y) * mSize[2] + z);
}

void PairGrid_cls::MakeCubes(int threads) {
    const double edge = std::max(mReach, 1e-300) * kEdge;
    mPerEdge = std::isfinite(edge) ? 1.0 / edge : 0.0; // all in one
    for (int k = 0; mNumber > 0 && k < 3; ++k) {
        mFirst[k] = GetPlace(static_cast<double>(mLow[k])) - 1;
        mSize[k] = std::max<int64_t>(3, GetPlace(static_cast<double>(mHigh[k])) + 2 - mFirst[k]);
    }
    // Not many more cubes than particles.
    const double most = 2.0 * mNumber + static_cast<double>(kCubesMore);
    const auto product = [this] {
        return static_cast<double>(mSize[0]) * static_cast<double>(mSize[1]) * static_cast<double>(mSize[2]);
    };
    while (product() > most) {
        int64_t& longest = *std::max_element(mSize, mSize + 3);
        longest = std::max<int64_t>(3, longest / 2);
    }
    mvCubeChosen.resize(mvChosen.size());
    OnThreads(threads, [&](int part) {
        const size_t begin = mvChosen.size() * static_cast<size_t>(part) / static_cast<size_t>(threads);
        const size_t end = mvChosen.size() * static_cast<size_t>(part + 1) / static_cast<size_t>(threads);
        for (size_t k = begin; k < end; ++k) {
            const float* p = mpPos[mvChosen[k]];
            const int64_t place[3] = {GetPlace(static_cast<double>(p[0])),
                                      GetPlace(static_cast<double>(p[1])),
                                      GetPlace(static_cast<double>(p[2]))};
            mvCubeChosen[k] = GetCubeAt(place);
        }
    });
}

void PairGrid_cls::SortByCube(int threads) {
    const size_t cubes = static_cast<size_t>(mSize[0] * mSize[1] * mSize[2]);
    mvStart.assign(cubes + 1, 0);
    for (const uint32_t cube : mvCubeChosen)
        ++mvStart[cube];
    uint32_t next = 0;
    for (uint32_t& start : mvStart) {
        const uint32_t number = start;
        start = next;
        next += number;
    }
    mvIndex.resize(mvChosen.size() + kBlock);
    mvCube.resize(mvChosen.size());
    for (size_t k = 0; k < mvChosen.size(); ++k) {
        const uint32_t to = mvStart[mvCubeChosen[k]]++;
        mvIndex[to] = mvChosen[k];
        mvCube[to] = mvCubeChosen[k];
    }
    // Each start now stands at its end, which is the next one's start.
    std::copy_backward(mvStart.begin(), mvStart.end() - 1, mvStart.end());
    mvStart[0] = 0;
    for (std::vector<float>* pColumn : {&mvX, &mvY, &mvZ})
        pColumn->resize(mvIndex.size());
    OnThreads(threads, [&](int part) {
        const size_t begin = mvCube.size() * static_cast<size_t>(part) / static_cast<size_t>(threads);
        const size_t end = mvCube.size() * static_cast<size_t>(part + 1) / static_cast<size_t>(threads);
        for (size_t k = begin; k < end; ++k) {
            const float* p = mpPos[mvIndex[k]];
            mvX[k] = p[0], mvY[k] = p[1], mvZ[k] = p[2];
        }
    });
}

bool PairGrid_cls::GetCubeOf(const double* pPos, uint32_t* pCube) const {
    int64_t place[3];
    for (int k = 0; k < 3; ++k) {
        // Not so for what is no number, too.
        if (!(pPos[k] >= static_cast<double>(mLow[k]) - mReach &&
              pPos[k] <= static_cast<double>(mHigh[k]) + mReach))
            return false;
        place[k] = GetPlace(pPos[k]);
    }
    *pCube = GetCubeAt(place);
    return true;
}

void PairGrid_cls::Take(uint32_t row, int64_t z, int count, Near_st* pNear) const {
    const size_t cube = static_cast<size_t>(row) + static_cast<size_t>(z);
    const size_t begin = mvStart[cube];
    const size_t number = mvStart[cube + static_cast<size_t>(count)] - begin;
    if (number == 0) return;
    pNear->Reserve(number);
    const size_t to = static_cast<size_t>(pNear->number);
    // Runs are short: whole blocks at once, over which the next run is written.
    for (size_t k = 0; k < number; k += kBlock) {
        std::memcpy(&pNear->x[to + k], &mvX[begin + k], sizeof(float) * kBlock);
        std::memcpy(&pNear->y[to + k], &mvY[begin + k], sizeof(float) * kBlock);
        std::memcpy(&pNear->z[to + k], &mvZ[begin + k], sizeof(float) * kBlock);
        std::memcpy(&pNear->index[to + k], &mvIndex[begin + k], sizeof(int) * kBlock);
    }
    pNear->number += static_cast<int>(number);
}

void PairGrid_cls::Gather(uint32_t cube, Near_st* pNear) const {
    const uint32_t layers = static_cast<uint32_t>(mSize[2]), columns = static_cast<uint32_t>(mSize[1]);
    const int64_t z = cube % layers;
    const int64_t y = cube / layers % columns;
    const int64_t x = cube / layers / columns;
    pNear->number = 0;
    for (int dx = -1; dx <= 1; ++dx)
        for (int dy = -1; dy <= 1; ++dy) {
            const int64_t row = (Wrap(x + dx, mSize[0]) * mSize[1] + Wrap(y + dy, mSize[1])) * mSize[2];
            if (z > 0 && z + 1 < mSize[2]) {
                Take(static_cast<uint32_t>(row), z - 1, 3, pNear);
                continue;
            }
            for (int dz = -1; dz <= 1; ++dz)
                Take(static_cast<uint32_t>(row), Wrap(z + dz, mSize[2]), 1, pNear);
        }
    pNear->Reserve(0);
    std::fill_n(&pNear->x[static_cast<size_t>(pNear->number)], kBlock, NAN);
}
