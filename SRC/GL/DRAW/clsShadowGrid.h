// Shadows of many small spheres, sorted by blocks of space: whether a point lies in one of them is found by
// looking at those that touch the point's block. Blocks far apart may share a place in the table, so what
// lies far out costs no memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "GL/DRAW/ShadowShape.h"

class ShadowGrid_cls {
public:
    /// Blocks of the table along each axis of a far light, across it and along it; of a near light.
    /// GL/ShadowLookup.frag has the same.
    static constexpr std::array<int, 3> kFarSize = {128, 128, 16};
    static constexpr std::array<int, 3> kNearSize = {64, 64, 64};
    static constexpr size_t kMostEntries = size_t{4} << 20; ///< of the table

    explicit ShadowGrid_cls(const ShadowShape_st& shape) : mShape(shape), mTurned(shape) {}

    void Add(const float* pPos, float radius) {
        mvBalls.insert(mvBalls.end(), {pPos[0], pPos[1], pPos[2], radius});
    }
    size_t GetNumber() const { return mvBalls.size() / 4; }
    /// Centre and radius of a sphere, as added.
    const float* GetBall(size_t i) const { return mvBalls.data() + 4 * i; }
    void Clear();

    /// Make the table of what has been added. The spheres left out, by number, are those whose shadows reach
    /// through more blocks than is worth it, and what there is no room for.
    std::vector<size_t> Sort();

    // The table's own coordinates: across a far light's direction and along it, or those of the spheres; from
    // the origin.
    /// Its light stands in the table's coordinates.
    const ShadowShape_st& GetShape() const { return mTurned; }
    const double* GetOrigin() const { return mOrigin; }
    void GetTurn(double (*pRows)[3]) const; ///< rows that lead from the spheres' coordinates to the table's
    const float* GetPerBlock() const { return mPerBlock; } ///< 1 / edge
    /// The table's place of a block.
    uint32_t GetBlock(const int32_t* pPlace) const;
    /// Of each block, and one past the last: the first of those in it, into GetEntries.
    const std::vector<int32_t>& GetStarts() const { return mvStarts; }
    /// Four numbers each: centre in the table's coordinates, and radius.
    const std::vector<float>& GetEntries() const { return mvEntries; }

private:
    void ChooseBlocks();
    bool ListBlocks(const float* pPlace, float radius);
    bool ListBox(const float* pLow, const float* pHigh);

    ShadowShape_st mShape;
    ShadowShape_st mTurned; ///< its near light from the origin
    std::vector<float> mvBalls;
    double mOrigin[3] = {0, 0, 0};
    float mPerBlock[3] = {1, 1, 1};
    int mSegments = 1;              ///< pieces that are looked at one by one, as they lie askew
    std::vector<uint32_t> mvListed; ///< blocks of the sphere at hand
    int32_t mFirst[3] = {0, 0, 0}, mLast[3] = {0, 0, 0}; ///< of the box listed last
    std::vector<int32_t> mvStarts;
    std::vector<float> mvEntries;
};
