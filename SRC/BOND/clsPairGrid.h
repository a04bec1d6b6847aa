// Particles sorted by cubes of space, so that whoever stands near a place is found at once. Cubes far apart
// may share a place in the table: far outliers and boxes that are nearly empty cost no memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "BOND/StickList.h"

class PairGrid_cls {
public:
    static constexpr size_t kBlock = 8; ///< what loops over particles near a place take at a time
    /// Particles near a place, in columns that are whole blocks: the rest of the last one is no numbers.
    struct Near_st {
        std::vector<float> x, y, z;
        std::vector<int> index;
        int number = 0;

        /// Room for so many more, and a block behind them.
        void Reserve(size_t more);
    };

    /// Sorts the particles that may have a stick: their place is a number, and with types A and B they are of
    /// one of them. `reach`: how far apart two can be whose distance counts, at least 0. Throws bad_alloc.
    PairGrid_cls(const StickParticles_st& particles, const StickRule_st& rule, double reach, int threads);

    int GetNumber() const { return mNumber; }
    /// Particle at place k of the order by cubes.
    unsigned GetIndex(int k) const { return mvIndex[size_t(k)]; }
    /// And where it is.
    void GetPos(int k, float* pOut) const {
        pOut[0] = mvX[size_t(k)], pOut[1] = mvY[size_t(k)], pOut[2] = mvZ[size_t(k)];
    }
    /// The cube of the particle at place k.
    uint32_t GetCube(int k) const { return mvCube[size_t(k)]; }
    /// The cube of any place, which a particle within reach of it may touch; false where there can be none.
    bool GetCubeOf(const double* pPos, uint32_t* pCube) const;
    /// All particles of a cube and of the cubes around it.
    void Gather(uint32_t cube, Near_st* pNear) const;

private:
    void Choose(const StickParticles_st& particles, const StickRule_st& rule);
    void MakeCubes(int threads);
    void SortByCube(int threads);
    int64_t GetPlace(double x) const;
    uint32_t GetCubeAt(const int64_t* pPlace) const;
    void Take(uint32_t row, int64_t z, int count, Near_st* pNear) const;

    const float (*mpPos)[3];
    double mReach;
    double mPerEdge = 0.0; ///< 1 / edge of a cube
    int mNumber = 0;
    float mLow[3] = {0, 0, 0};
    float mHigh[3] = {0, 0, 0};
    int64_t mFirst[3] = {0, 0, 0};  ///< cube of the table's first row, column and layer
    int64_t mSize[3] = {3, 3, 3};   ///< cubes of the table; never fewer, so that neighbours differ
    std::vector<unsigned> mvChosen; ///< in the order of the list
    std::vector<uint32_t> mvCubeChosen;
    std::vector<unsigned> mvIndex; ///< sorted by cube, within one as in the list
    std::vector<uint32_t> mvCube;
    std::vector<uint32_t> mvStart;    ///< of each cube, and one past the last
    std::vector<float> mvX, mvY, mvZ; ///< with a block more, as mvIndex
};
