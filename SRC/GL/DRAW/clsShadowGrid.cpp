#include "GL/DRAW/clsShadowGrid.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr size_t kMostBlocks = 128; // of one shadow
constexpr float kAcross = 3.0f;     // edges of blocks, radii of the sphere in the middle by size
constexpr float kLongest = 5.0f;    // a piece of a shadow that lies askew
constexpr float kEdge = 3.5f;       // edges of blocks that fit in the shadow of a near light
constexpr float kWidest = 6.0f;
constexpr size_t kSample = 999;
constexpr float kFarthest = 1e9f; // blocks from the origin

} // namespace

void ShadowGrid_cls::Clear() {
    mvBalls.clear();
    mvStarts.clear();
    mvEntries.clear();
}

void ShadowGrid_cls::GetTurn(double (*pRows)[3]) const {
    for (int row = 0; row < 3; ++row)
        for (int i = 0; i < 3; ++i)
            pRows[row][i] = mShape.bNear ? (row == i ? 1.0 : 0.0) : double(mShape.axes[(row + 1) % 3][i]);
}

uint32_t ShadowGrid_cls::GetBlock(const int32_t* pPlace) const {
    const auto& size = mShape.bNear ? kNearSize : kFarSize;
    return static_cast<uint32_t>(((pPlace[2] & (size[2] - 1)) * size[1] + (pPlace[1] & (size[1] - 1))) *
                                     size[0] +
                                 (pPlace[0] & (size[0] - 1)));
}

// As fits the sphere in the middle by size.
void ShadowGrid_cls::ChooseBlocks() {
    const size_t number = GetNumber();
    const size_t step = number / kSample + 1;
    std::vector<float> radii;
    for (size_t i = 0; i < number; i += step)
        radii.push_back(GetBall(i)[3]);
    const auto middle = radii.begin() + static_cast<ptrdiff_t>(radii.size() / 2);
    std::nth_element(radii.begin(), middle, radii.end());
    const float radius = std::max(*middle, 1e-30f);
    const float along = mShape.length - mShape.start;
    mSegments = mShape.bNear ? static_cast<int>(std::clamp(std::ceil(along / kLongest), 1.0f, 1e3f)) : 1;
    const float wide = std::clamp(along / kEdge, kAcross, kWidest);
    for (int i = 0; i < 3; ++i)
        mPerBlock[i] = 1.0f / (radius * (mShape.bNear ? wide : i < 2 ? kAcross : std::max(kAcross, along)));
    for (int i = 0; i < 3; ++i) {
        mOrigin[i] = double(GetBall(0)[i]);
        mTurned.light[i] = static_cast<float>(double(mShape.light[i]) - mOrigin[i]);
    }
}

// Without those of the box before, the piece's neighbour. False: too many.
bool ShadowGrid_cls::ListBox(const float* pLow, const float* pHigh) {
    int32_t first[3], last[3];
    for (int i = 0; i < 3; ++i) {
        // What the way from the screen back rounds.
        const float slack = 1e-6f * std::max(std::fabs(pLow[i]), std::fabs(pHigh[i]));
        const float low = std::floor((pLow[i] - slack) * mPerBlock[i]);
        const float high = std::floor((pHigh[i] + slack) * mPerBlock[i]);
        if (!(low > -kFarthest && high < kFarthest && high - low < float(kMostBlocks))) return false;
        first[i] = static_cast<int32_t>(low);
        last[i] = static_cast<int32_t>(high);
    }
    if (size_t(last[0] - first[0] + 1) * size_t(last[1] - first[1] + 1) * size_t(last[2] - first[2] + 1) >
        kMostBlocks)
        return false;
    const auto isIn = [this](int axis, int32_t at) { return at >= mFirst[axis] && at <= mLast[axis]; };
    for (int32_t z = first[2]; z <= last[2]; ++z)
        for (int32_t y = first[1]; y <= last[1]; ++y)
            for (int32_t x = first[0]; x <= last[0]; ++x) {
                const int32_t place[3] = {x, y, z};
                if (!isIn(0, x) || !isIn(1, y) || !isIn(2, z)) mvListed.push_back(GetBlock(place));
            }
    std::copy_n(first, 3, mFirst);
    std::copy_n(last, 3, mLast);
    return true;
}

// Boxes around pieces of the volume. False: too many blocks.
bool ShadowGrid_cls::ListBlocks(const float* pPlace, float radius) {
    mvListed.clear();
    std::fill_n(mFirst, 3, 1); // no box before
    std::fill_n(mLast, 3, 0);
    float low[3], high[3];
    if (!mShape.bNear) {
        for (int i = 0; i < 3; ++i) {
            const bool bAlong = i == 2;
            low[i] = pPlace[i] + radius * (bAlong ? mShape.start : -1.0f);
            high[i] = pPlace[i] + radius * (bAlong ? mShape.length : 1.0f);
        }
        return ListBox(low, high);
    }
    ShadowShape_st::Ends_st ends;
    if (!mTurned.GetEnds(pPlace, radius, ends)) return true; // throws none
    for (int k = 0; k < mSegments; ++k) {
        const float part[2] = {float(k) / float(mSegments), float(k + 1) / float(mSegments)};
        for (int i = 0; i < 3; ++i) {
            const auto at = [&](int end, float sign) {
                const float f = part[end];
                return ends.place[0][i] + f * (ends.place[1][i] - ends.place[0][i]) +
                       sign * (ends.radius[0] + f * (ends.radius[1] - ends.radius[0]));
            };
            low[i] = std::min(at(0, -1.0f), at(1, -1.0f));
            high[i] = std::max(at(0, 1.0f), at(1, 1.0f));
        }
        if (!ListBox(low, high)) return false;
    }
    return mvListed.size() <= kMostBlocks;
}

std::vector<size_t> ShadowGrid_cls::Sort() {
    std::vector<size_t> out;
    const auto& size = mShape.bNear ? kNearSize : kFarSize;
    mvStarts.assign(
        static_cast<size_t>(size[0]) * static_cast<size_t>(size[1]) * static_cast<size_t>(size[2]) + 1, 0);
    mvEntries.clear();
    if (mvBalls.empty()) return out;
    ChooseBlocks();
    double turn[3][3];
    GetTurn(turn);
    // Into the table's coordinates, and the blocks of each.
    std::vector<float> places(mvBalls.size());
    std::vector<uint32_t> blocks;
    std::vector<uint32_t> counts(GetNumber());
    blocks.reserve(GetNumber() * 8);
    for (size_t n = 0; n < GetNumber(); ++n) {
        const float* pBall = GetBall(n);
        float* pPlace = places.data() + 4 * n;
        double way[3];
        for (int i = 0; i < 3; ++i)
            way[i] = double(pBall[i]) - mOrigin[i];
        for (int i = 0; i < 3; ++i)
            pPlace[i] = static_cast<float>(turn[i][0] * way[0] + turn[i][1] * way[1] + turn[i][2] * way[2]);
        pPlace[3] = pBall[3];
        if (!ListBlocks(pPlace, pBall[3]) || blocks.size() + mvListed.size() > kMostEntries) {
            out.push_back(n);
            continue;
        }
        counts[n] = static_cast<uint32_t>(mvListed.size());
        blocks.insert(blocks.end(), mvListed.begin(), mvListed.end());
    }
    for (const uint32_t block : blocks)
        ++mvStarts[block + 1];
    for (size_t k = 1; k < mvStarts.size(); ++k)
        mvStarts[k] += mvStarts[k - 1];
    std::vector<int32_t> next(mvStarts.begin(), mvStarts.end() - 1);
    mvEntries.resize(4 * blocks.size());
    size_t taken = 0;
    for (size_t n = 0; n < GetNumber(); ++n)
        for (uint32_t k = 0; k < counts[n]; ++k) {
            const int32_t slot = next[blocks[taken++]]++;
            std::copy_n(places.data() + 4 * n, 4, mvEntries.data() + 4 * static_cast<size_t>(slot));
        }
    return out;
}
