#include "FILTER/clsFilterCopy.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <epoxy/gl.h>

#include "FILTER/clsFilterCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "POVRAY/TEXT/clsPovSerialize.h"

FilterCopyData_cls::FilterCopyData_cls() : FilterData_cls(false, true) {
    for (int axis = 0; axis < 3; ++axis) {
        mCConfItemList.Add(&mCMin[axis], wxString::Format("CopyArrayMin%d=", axis), "0");
        mCConfItemList.Add(&mCMax[axis], wxString::Format("CopyArrayMax%d=", axis), "1");
    }
}

long long FilterCopy_cls::GetNumber() const {
    if (!GetPCData()->mCValid.mValue) return 1;
    constexpr auto kMost = std::numeric_limits<long long>::max();
    const double about = double(GetCount(0)) * double(GetCount(1)) * double(GetCount(2));
    if (about == 0.0) return 0;
    if (std::fabs(about) >= 9.2e18) return about < 0.0 ? -kMost : kMost;
    return GetCount(0) * GetCount(1) * GetCount(2);
}

// Two axes that run backward make a positive number of copies: their cells lie on the other side.
int FilterCopy_cls::GetSign(int axis) const {
    int sign = 1;
    for (int k = 0; k < axis; ++k)
        sign = GetCount(k) < 0 ? -sign : sign;
    return sign;
}

FilterCopy_cls::Steps_st FilterCopy_cls::GetSteps(long long copy) const {
    Steps_st steps = {{0, 0, 0}};
    for (int axis = 0; axis < 3; ++axis) {
        const long long count = std::llabs(GetCount(axis));
        if (count == 0) return {{0, 0, 0}}; // no copy is there
        steps.mStep[axis] = GetSign(axis) * (axis < 2 ? copy % count : copy);
        copy /= count;
    }
    return steps;
}

int FilterCopy_cls::GetBitBoundary(long long copy) const {
    if (!GetPCData()->mCValid.mValue) return 0;
    const Steps_st steps = GetSteps(copy);
    int mask = 0;
    for (int axis = 0; axis < 3; ++axis)
        if (steps.mStep[axis] != GetCount(axis) - 1) mask |= 1 << axis;
    return mask;
}

void FilterCopy_cls::GetVector(int k, float out[3]) const {
    const PeriodicBoundary_cls* periodic = mpCFilterCtrl ? mpCFilterCtrl->GetPCPeriodic() : nullptr;
    std::fill_n(out, 3, 0.0f);
    if (periodic) periodic->GetBoundaryVector(out, k);
}

std::vector<float> FilterCopy_cls::GetVTranslate(long long copy) const {
    if (!GetPCData()->mCValid.mValue) return {};
    const Steps_st steps = GetSteps(copy);
    std::vector<float> place(3, 0.0f);
    for (int axis = 0; axis < 3; ++axis) {
        float vector[3];
        GetVector(axis, vector);
        const auto cell = static_cast<float>(steps.mStep[axis] + GetPCData()->mCMin[axis].mValue);
        for (size_t i = 0; i < 3; ++i)
            place[i] += cell * vector[i];
    }
    return place;
}

std::array<int, 3> FilterCopy_cls::GetCell(long long copy) const {
    std::array<int, 3> cell = {0, 0, 0};
    if (!GetPCData()->mCValid.mValue) return cell;
    const Steps_st steps = GetSteps(copy);
    for (size_t axis = 0; axis < 3; ++axis)
        cell[axis] = static_cast<int>(steps.mStep[axis] + GetPCData()->mCMin[axis].mValue);
    return cell;
}

void FilterCopy_cls::GetCellPlace(const std::array<int, 3>& cell, float out[3]) const {
    std::fill_n(out, 3, 0.0f);
    for (int axis = 0; axis < 3; ++axis) {
        float vector[3];
        GetVector(axis, vector);
        for (int i = 0; i < 3; ++i)
            out[i] += static_cast<float>(cell[static_cast<size_t>(axis)]) * vector[i];
    }
}

bool FilterCopy_cls::HasCell(const std::array<int, 3>& cell) const {
    for (int axis = 0; axis < 3; ++axis) {
        const Cells_st cells = GetCells(axis);
        const double at = cell[static_cast<size_t>(axis)];
        if (at < cells.mFirst || at > cells.mLast) return false;
    }
    return GetNumber() > 0;
}

std::string FilterCopy_cls::GetStrPovTranslate(long long copy, int decimals) const {
    const std::vector<float> place = GetVTranslate(copy);
    return place.empty() ? std::string() : PovSerialize_cls::PovOut3f("translate", place.data(), decimals);
}

void FilterCopy_cls::GLTranslate(long long copy) const {
    const std::vector<float> place = GetVTranslate(copy);
    if (!place.empty()) glTranslatef(place[0], place[1], place[2]);
}

FilterCopy_cls::Cells_st FilterCopy_cls::GetCells(int axis) const {
    if (!GetPCData()->mCValid.mValue) return {0.0, 0.0};
    const double from = GetPCData()->mCMin[axis].mValue;
    const double way = GetSign(axis) * std::max(std::fabs(double(GetCount(axis))) - 1.0, 0.0);
    return {std::min(from, from + way), std::max(from, from + way)};
}
