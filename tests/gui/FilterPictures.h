// For tests of what filters do to pictures: filters of the program's own lists, set without steps.
#pragma once

#include <array>
#include <utility>

#include "APP/clsMain.h"
#include "FILTER/clsFilterBoolean.h"
#include "FILTER/clsFilterLists.h"

/// Edits within the scope are no steps; its filters go with it.
class FilterScope_cls {
public:
    using Values = std::array<double, 3>;

    explicit FilterScope_cls(FilterLists_cls& lists)
        : mLists(lists), mbUndo(std::exchange(Parameters_cls::msbUndoCommandMake, false)) {}
    ~FilterScope_cls() {
        mLists.ClearFilters();
        Parameters_cls::msbUndoCommandMake = mbUndo;
    }
    FilterScope_cls(const FilterScope_cls&) = delete;
    FilterScope_cls& operator=(const FilterScope_cls&) = delete;

    template <class FILTER>
    FILTER& Add(int type) {
        auto& filter = static_cast<FILTER&>(*mLists.Get(GetFilterKind(type).mList).AddFilter(type));
        Set(filter.mpCData->mpCScale, {1, 1, 1});
        return filter;
    }
    FilterBooleanData_cls& AddCut(unsigned op, unsigned region, float border, const Values& centre,
                                  const Values& scale) {
        FilterBooleanData_cls& data = *Add<FilterBoolean_cls>(FILTER_BOOLEAN).GetPCData();
        data.mCOperatorType.mValue = op;
        data.mCRegionType.mValue = region;
        data.mCBorderFactor.mValue = border;
        Set(data.mpCTranslate, centre);
        Set(data.mpCScale, scale);
        return data;
    }
    static void Set(ParamGroup_cls* pGroup, const Values& values) {
        pGroup->SetKeyFrame(values.data(), true, SceneObj_cls::kCurrent);
    }

private:
    FilterLists_cls& mLists;
    bool mbUndo;
};
