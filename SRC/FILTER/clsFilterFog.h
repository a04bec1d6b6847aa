// Fades the scene with distance, and tints the background.
#pragma once

#include <memory>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class FilterFogData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { EXP = 0, EXP_2 = 1, LINEAR = 2 };

    FilterFogData_cls();
    ~FilterFogData_cls() override;

    void UpdateCurrentObj(double time) override;

    ConfItemUINT_cls mCFogType;
    ConfItemFLOAT_cls mCFogStart; ///< near and far distance of LINEAR
    ConfItemFLOAT_cls mCFogEnd;
    const std::unique_ptr<ParamGroup_cls> mpCFogParam; ///< density and alpha
};

class FilterFog_cls final : public FilterOf_cls<FilterFogData_cls, FILTER_FOG> {};
