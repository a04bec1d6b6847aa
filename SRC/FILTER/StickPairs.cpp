#include "FILTER/StickPairs.h"

#include <algorithm>
#include <array>
#include <memory>

#include "FILTER/clsFilterCommand.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterStick.h"
#include "PARAM/clsUndoManager.h"

namespace {

std::unique_ptr<FilterStick_cls> MakeLike(FilterStickData_cls& like, const StickPair_st& pair) {
    auto filter = std::make_unique<FilterStick_cls>();
    FilterStickData_cls& data = *filter->GetPCData();
    data.InitNew();
    // The list gives it its number.
    const wxString name = data.mCName.mStrValue + wxString::Format(" (%d-%d)", pair.mTypeA, pair.mTypeB);
    data.CopySettings(like);
    data.mCName.mStrValue = name;
    data.mCValid.mValue = true;
    data.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    data.mCSpecType.mValue = STICK_TYPES_A_B;
    data.mCSpecA.mValue = pair.mTypeA;
    data.mCSpecB.mValue = pair.mTypeB;
    data.mCCritA.mValue = pair.mA;
    (data.mCCritType.mValue == STICK_STEP ? data.mCKeepUntil : data.mCCritB).mValue = pair.mSecond;
    return filter;
}

int FindPosition(const FilterCtrl_cls& list, const FilterBase_cls& filter) {
    int position = 0;
    while (position < list.GetCount() && list.GetPCFilter(position) != &filter)
        ++position;
    return position;
}

} // namespace

std::vector<TypeCount_st> CountTypes(const unsigned char* pType, long long number) {
    std::array<long long, 256> counts = {};
    for (long long i = 0; i < number; ++i)
        ++counts[pType[i]];
    std::vector<TypeCount_st> types;
    for (int type = 0; type < int(counts.size()); ++type)
        if (counts[size_t(type)] > 0) types.push_back({type, counts[size_t(type)]});
    return types;
}

std::vector<StickPair_st> ListStickPairs(std::vector<TypeCount_st> types, const FilterStickData_cls& data) {
    if (types.size() > kMostPairTypes) {
        std::stable_sort(types.begin(), types.end(),
                         [](const TypeCount_st& a, const TypeCount_st& b) { return a.mCount > b.mCount; });
        types.resize(kMostPairTypes);
        std::sort(types.begin(), types.end(),
                  [](const TypeCount_st& a, const TypeCount_st& b) { return a.mType < b.mType; });
    }
    const bool bStep = data.mCCritType.mValue == STICK_STEP;
    const float second = bStep ? data.mCKeepUntil.mValue : data.mCCritB.mValue;
    std::vector<StickPair_st> pairs;
    for (size_t a = 0; a < types.size(); ++a)
        for (size_t b = a; b < types.size(); ++b)
            pairs.push_back({types[a].mType, types[b].mType, data.mCCritA.mValue, second});
    return pairs;
}

void AddStickPairs(FilterStick_cls& filter, const std::vector<StickPair_st>& pairs, bool bInPlace) {
    if (std::none_of(pairs.begin(), pairs.end(), [](const StickPair_st& pair) { return pair.mbOn; })) return;
    FilterCtrl_cls& list = *filter.mpCFilterCtrl;
    int position = FindPosition(list, filter);
    const UndoBlock_cls block;
    if (bInPlace)
        CommandFilterMake_cls::PushRemove(list, position); // the undo list has it from now on
    else
        ++position;
    for (const StickPair_st& pair : pairs)
        if (pair.mbOn) CommandFilterMake_cls::PushAdd(list, MakeLike(*filter.GetPCData(), pair), position++);
}
