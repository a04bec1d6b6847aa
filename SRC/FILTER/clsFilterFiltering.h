// Shows, hides or forces on particles by their numbers.
#pragma once

#include <string_view>
#include <vector>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class FilterFilteringData_cls final : public FilterData_cls {
public:
    enum Operation : unsigned { SHOW = 0, HIDE = 1, FORCE = 2 };

    FilterFilteringData_cls();

    ConfItemUINT_cls mCFilteringType;
    ConfItemUINT_cls mCIndexType;      ///< 0 index, 1 ID: kept and shown, the check goes by the index
    ConfItemSTR_cls mCFilteringString; ///< such as "0-99,200"
};

class FilterFiltering_cls final : public FilterOf_cls<FilterFilteringData_cls, FILTER_FILTERING> {
public:
    void BeginWeigh(double time, long long particles) override;
    void Weigh(const WeighedList_st& list, float* pWeight) const override;

    // The list of numbers: blocks between commas, a block is a number or "first-last".
    /// Takes the next block off the rest.
    static std::wstring_view GetStringBlock(std::wstring_view* pRest);
    /// First number of a block; what is no number is 0.
    static long long GetIni(std::wstring_view block);
    /// Last number of a block; -1: it has none.
    static long long GetFin(std::wstring_view block);

private:
    struct Range_st {
        long long mFirst, mLast;
    };

    void MakeFilterList(long long particles);
    void ReadRanges(std::wstring_view rest);

    wxString mLastString;              ///< what the ranges were made of
    long long mFlagCount = 0;          ///< one past the last number that the list tells of
    std::vector<Range_st> mVRanges;    ///< ascending, none touches another
    std::vector<unsigned char> mVFlag; ///< of each particle that can be asked for; 1: listed
};
