#include "FILTER/clsFilterFiltering.h"

#include <algorithm>
#include <limits>

#include "GL/DRAW/clsArrayAndIndex.h"

namespace {

constexpr long long kLargest = std::numeric_limits<long long>::max() - 1;

std::wstring_view Trim(std::wstring_view text) {
    static const wchar_t* const kBlanks = L" \t\n\r\f\v";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Digits with an optional sign; `other` for what is no such number. What is too large is the largest.
long long ToNumber(std::wstring_view text, long long other) {
    text = Trim(text);
    const bool bMinus = !text.empty() && text[0] == L'-';
    if (!text.empty() && (bMinus || text[0] == L'+')) text.remove_prefix(1);
    if (text.empty()) return other;
    long long value = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9') return other;
        value = value > kLargest / 10 - 1 ? kLargest : value * 10 + (digit - L'0');
    }
    return bMinus ? -value : value;
}

} // namespace

FilterFilteringData_cls::FilterFilteringData_cls() : FilterData_cls(false, true) {
    mCConfItemList.Add(&mCFilteringType, "FilteringType=", "0");
    mCConfItemList.Add(&mCIndexType, "IndexType=", "0");
    mCConfItemList.Add(&mCFilteringString, "FilteringString=", "0");
}

std::wstring_view FilterFiltering_cls::GetStringBlock(std::wstring_view* pRest) {
    const size_t comma = pRest->find(L',');
    const std::wstring_view block = pRest->substr(0, comma);
    *pRest = comma == std::wstring_view::npos ? std::wstring_view() : pRest->substr(comma + 1);
    return block;
}

long long FilterFiltering_cls::GetIni(std::wstring_view block) {
    return ToNumber(block.substr(0, block.find(L'-')), 0);
}

long long FilterFiltering_cls::GetFin(std::wstring_view block) {
    const size_t dash = block.find(L'-');
    return dash == std::wstring_view::npos ? -1 : ToNumber(block.substr(dash + 1), -1);
}

// A range that ends before it begins lists nothing, but counts for how far the list tells.
void FilterFiltering_cls::ReadRanges(std::wstring_view rest) {
    mFlagCount = 0;
    mVRanges.clear();
    std::vector<Range_st> all;
    while (!rest.empty()) {
        const std::wstring_view block = GetStringBlock(&rest);
        const long long ini = GetIni(block);
        const long long fin = GetFin(block);
        const long long last = fin == -1 ? ini : fin;
        mFlagCount = std::max(mFlagCount, last + 1);
        if (last < ini) continue;
        // Long lists are mostly in order: what goes on where the one before ended costs nothing.
        if (!all.empty() && ini >= all.back().mFirst && ini <= all.back().mLast + 1)
            all.back().mLast = std::max(all.back().mLast, last);
        else
            all.push_back({ini, last});
    }
    std::sort(all.begin(), all.end(),
              [](const Range_st& a, const Range_st& b) { return a.mFirst < b.mFirst; });
    for (const Range_st& range : all)
        if (mVRanges.empty() || range.mFirst > mVRanges.back().mLast + 1)
            mVRanges.push_back(range);
        else
            mVRanges.back().mLast = std::max(mVRanges.back().mLast, range.mLast);
}

// Numbers beyond the particles need no flag, however many there are.
void FilterFiltering_cls::MakeFilterList(long long particles) {
    const wxString& text = GetPCData()->mCFilteringString.mStrValue;
    const bool bNew = text != mLastString;
    if (bNew) {
        ReadRanges(text.ToStdWstring());
        mLastString = text;
    }
    const long long needed = std::min(mFlagCount, std::max(particles, 0LL));
    if (!bNew && (long long)(mVFlag.size()) >= needed) return;
    mVFlag.assign(size_t(needed), 0);
    for (const Range_st& range : mVRanges) {
        if (range.mFirst >= needed) break;
        std::fill(mVFlag.begin() + range.mFirst, mVFlag.begin() + std::min(range.mLast + 1, needed), 1);
    }
}

void FilterFiltering_cls::BeginWeigh(double, long long particles) { MakeFilterList(particles); }

void FilterFiltering_cls::Weigh(const WeighedList_st& list, float* pWeight) const {
    const unsigned type = GetPCData()->mCFilteringType.mValue;
    const auto known = static_cast<long long>(mVFlag.size());
    for (int i = 0; i < list.mCount; ++i) {
        const int n = list.mpList[i].mIndex;
        const bool bKnown = n < known;
        const bool bListed = bKnown && mVFlag[size_t(n)] != 0;
        if (type == FilterFilteringData_cls::SHOW)
            pWeight[i] *= bListed ? 1.0f : 0.0f;
        else if (type == FilterFilteringData_cls::HIDE)
            pWeight[i] *= bListed ? 0.0f : 1.0f;
        else if (type == FilterFilteringData_cls::FORCE)
            pWeight[i] = !bKnown ? 0.0f : bListed ? 1.0f : pWeight[i]; // beyond the list is out, as ever
    }
}
