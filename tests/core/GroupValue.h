// What a group of animated values is at a time, as one thing to compare.
#pragma once

#include <vector>

#include "PARAM/clsParamGroup.h"

inline std::vector<double> GetGroupValue(ParamGroup_cls* pGroup, double time) {
    std::vector<double> values(size_t(pGroup->GetDimension()));
    pGroup->GetInterpolatedValue(values.data(), time, ParamGroup_cls::kCurrent);
    return values;
}
