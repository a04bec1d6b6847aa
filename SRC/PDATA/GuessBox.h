// The simulation's box, as far as the header of a text snapshot tells it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

struct GuessBox_st {
    std::array<std::array<double, 3>, 3> mVector = {}; ///< base vectors, in the unit of the positions
    std::array<bool, 3> mbPeriodic = {};               ///< along each of them
    bool mbTold = false;                               ///< the header says which are periodic
    /// Not along the axes.
    bool IsSlanted() const;
};

/// Knows "ITEM: BOX BOUNDS" sections (upright, slanted by "xy xz yz", or with three vectors and an origin:
/// "abc origin") and the lattice of an extended XYZ comment (Lattice="nine numbers", pbc="T T F"). None
/// where the header has no box, or one without volume.
std::optional<GuessBox_st> FindGuessBox(const std::vector<std::string>& headLines);
