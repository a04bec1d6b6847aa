// Repeats particles, meshes and sticks over cells of the periodic box.
#pragma once

#include <array>
#include <string>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class FilterCopyData_cls final : public FilterData_cls {
public:
    FilterCopyData_cls();

    ConfItemINT_cls mCMin[3]; ///< first cell along each cell vector
    ConfItemINT_cls mCMax[3]; ///< one past the last cell
};

/// Copies count from 0, along cell vector 0 first. An invalid filter has one, where the data are.
class FilterCopy_cls final : public FilterOf_cls<FilterCopyData_cls, FILTER_COPY> {
public:
    /// How many; none of them is drawn when that is 0 or negative. More than 64 bits hold: the most they do.
    long long GetNumber() const;
    /// Which neighbours a copy has: bit k for the one behind it along cell vector k.
    int GetBitBoundary(long long copy) const;
    /// Where a copy stands, data coordinates; empty when the filter is invalid. Cells may change with the
    /// frame.
    std::vector<float> GetVTranslate(long long copy) const;
    /// The cell it stands in, steps along the cell vectors; zeros when the filter is invalid.
    std::array<int, 3> GetCell(long long copy) const;
    /// Where such a cell is, data coordinates; whether a copy stands there.
    void GetCellPlace(const std::array<int, 3>& cell, float out[3]) const;
    bool HasCell(const std::array<int, 3>& cell) const;
    /// GetVTranslate as a transform of a scene for POV-Ray.
    std::string GetStrPovTranslate(long long copy, int decimals) const;
    /// Moves the current OpenGL matrix there.
    void GLTranslate(long long copy) const;

    /// First and last cell that copies stand in along a cell vector.
    struct Cells_st {
        double mFirst, mLast;
    };
    Cells_st GetCells(int axis) const;
    /// Cell vector k.
    void GetVector(int k, float out[3]) const;

private:
    struct Steps_st {
        long long mStep[3];
    };
    long long GetCount(int axis) const {
        return static_cast<long long>(GetPCData()->mCMax[axis].mValue) - GetPCData()->mCMin[axis].mValue;
    }
    Steps_st GetSteps(long long copy) const;
    int GetSign(int axis) const;
};
