// The periodic box as sticks see it: vectors from a cell to its neighbours, and the ways in which a stick can
// leave its cell.
#pragma once

#include <vector>

/// The settings of the box.
struct StickCell_st {
    unsigned mType = 0; ///< 0 nothing is periodic, 1 along the vectors 0 and 1, 2 along all three
    float mSize[3] = {1, 1, 1};
    float mBase[3][3] = {{10, 0, 0}, {0, 10, 0}, {0, 0, 10}};

    /// Vector k times factor k: the way of lists that come from files.
    void GetStickVector(int k, float* pOut) const;
    /// Each coordinate times the factor of that coordinate: as copies of the data are placed.
    void GetCopyVector(int k, float* pOut) const;
};
bool operator==(const StickCell_st& a, const StickCell_st& b);

/// Sums of three vectors: entry m for the crossing mask m. Without `bWhole` entry 7 lacks vector 0, as lists
/// from files have always been drawn.
void MakeStickOffsets(const float (*pVectors)[3], bool bWhole, float (*pOut)[3]);

/// A way out of a cell: from a cell's corner at which both ends' cells meet, the first end stands in the
/// neighbour of mask mFirst and the second in that of mSecond. One of them is 0, unless the way goes forth
/// along one vector and back along another.
struct StickCrossing_st {
    unsigned char mFirst;
    unsigned char mSecond;
};

/// The ways through the faces of a cell to different neighbours, each once and not also the way back: 4 in a
/// plane, 13 in space. A vector that is zero or no number makes none.
std::vector<StickCrossing_st> GetStickCrossings(const StickCell_st& cell);
