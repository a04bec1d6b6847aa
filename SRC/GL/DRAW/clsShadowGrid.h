// Shadows of many small spheres, sorted by blocks of space: whether a point lies in one of them is found by
// looking at those that touch the point's block. Blocks far apart may share a place in the table, so what
// lies far out costs no memory.
//
// Blocks of a far light are boxes along its direction. Those of a near one are shells of directions away from
// it, as there a shadow is a short piece of a narrow cone.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "GL/DRAW/ShadowShape.h"

class ShadowGrid_cls {
public:
    /// Blocks of the table: along each axis of a far light, across it and along it; of a near light, whose
    /// blocks' numbers are scattered by these factors. GL/ShadowLookup.frag has the same.
    static constexpr std::array<int, 3> kFarSize = {128, 128, 16};
    static constexpr uint32_t kNearSize = 1u << 18;
    static constexpr std::array<uint32_t, 4> kScatter = {1, 601, 360001, 215640599};
    static constexpr size_t kMostEntries = size_t{4} << 20; ///< of the table
    static constexpr size_t kSpareEntries = 3;              ///< behind them

    /// One after another take over each other's memory: for one thread alone.
    explicit ShadowGrid_cls(const ShadowShape_st& shape);
    ~ShadowGrid_cls();
    ShadowGrid_cls(const ShadowGrid_cls&) = delete;
    ShadowGrid_cls& operator=(const ShadowGrid_cls&) = delete;

    void Add(const float* pPos, float radius) {
        mvBalls.insert(mvBalls.end(), {pPos[0], pPos[1], pPos[2], radius});
    }
    size_t GetNumber() const { return mvBalls.size() / 4; }
    /// Centre and radius of a sphere, as added.
    const float* GetBall(size_t i) const { return mvBalls.data() + 4 * i; }
    void Clear();

    /// Make the table of what has been added. The spheres left out, by number, are those whose shadows reach
    /// through more blocks than is worth it, and what there is no room for. `threads` 0: as many as are worth
    /// it; the table is the same.
    std::vector<size_t> Sort(int threads = 0);

    // The table's own coordinates: across a far light's direction and along it, or those of the spheres; from
    // the origin.
    /// Its light stands in the table's coordinates.
    const ShadowShape_st& GetShape() const { return mTurned; }
    const double* GetOrigin() const { return mOrigin; }
    void GetTurn(double (*pRows)[3]) const; ///< rows that lead from the spheres' coordinates to the table's
    /// 1 / edge along each axis; of a near light: of directions, as parts of the unit sphere's radius, twice,
    /// and of distances.
    const float* GetPerBlock() const { return mPerBlock; }
    /// A point that is looked up.
    struct Point_st {
        float place[3]; ///< in the table's coordinates
        float ray[3];   ///< unit vector from a near light
        uint32_t block; ///< place in the table of the block that holds it
    };
    void Locate(Point_st& point) const; ///< all but its place
    /// Does a located point lie in a shadow? Of those that are in the table.
    bool IsInShadow(const Point_st& point) const;
    /// Of each block, and one past the last: the first of those in it, into GetEntries.
    const std::vector<int32_t>& GetStarts() const;
    /// Four numbers each: centre in the table's coordinates, and radius. Behind the last one are some more
    /// that throw none.
    const std::vector<float>& GetEntries() const;

private:
    struct Run_st;
    struct Memory_st;

    static std::unique_ptr<Memory_st>& GetSpare();

    void ChooseBlocks();
    bool ListBlocks(const float* pPlace, float radius, std::vector<uint32_t>& listed) const;
    bool ListBox(const float* pLow, const float* pHigh, std::vector<uint32_t>& listed) const;
    bool ListCone(const float* pPlace, float radius, std::vector<uint32_t>& listed) const;
    void ListRun(const double (*pTurn)[3], Run_st& run);
    void LimitRuns(std::vector<Run_st>& runs);
    void FindStarts(std::vector<Run_st>& runs);
    void FillRun(Run_st& run);
    size_t GetSize() const;

    ShadowShape_st mShape;
    ShadowShape_st mTurned; ///< its near light from the origin
    std::vector<float> mvBalls;
    double mOrigin[3] = {0, 0, 0};
    float mPerBlock[3] = {1, 1, 1};
    std::unique_ptr<Memory_st> mpMemory; ///< the table, and what it is made with
};
