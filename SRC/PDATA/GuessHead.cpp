// The header of a text file, put into the sixteen items that a format has.
#include <algorithm>

#include <wx/intl.h>

#include "PDATA/GuessParts.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr size_t kMaxItem = GrammerBase_cls::kMaxItem;

bool IsValue(int code) { return code == HEAD_TIME || code == HEAD_NUMBER; }

/// How a head is cut down: so many dummies before the last value are widened, and the rest stands behind.
struct Cut_st {
    size_t mThrees = 0, mTens = 0;
    size_t mBehind = 0; ///< lines
    size_t Items(size_t before) const { return before + mBehind / 10 + mBehind % 10 / 3 + mBehind % 10 % 3; }
    size_t Widened() const { return mThrees + mTens; }
};

// The cut that widens fewest dummies and fits, of these the one with the fewest items.
Cut_st FindCut(size_t before, size_t dummies, size_t behind) {
    Cut_st best;
    best.mBehind = behind;
    const auto isBetter = [before, &best](const Cut_st& cut) {
        const bool bFits = cut.Items(before) <= kMaxItem, bBestFits = best.Items(before) <= kMaxItem;
        if (bFits != bBestFits) return bFits;
        if (cut.Widened() != best.Widened()) return cut.Widened() < best.Widened();
        return cut.Items(before) < best.Items(before);
    };
    for (size_t tens = 0; tens <= dummies && 9 * tens <= behind; ++tens)
        for (size_t threes = 0; tens + threes <= dummies && 9 * tens + 2 * threes <= behind; ++threes) {
            const Cut_st cut{threes, tens, behind - 9 * tens - 2 * threes};
            if (isBetter(cut)) best = cut;
        }
    return best;
}

} // namespace

std::vector<int> PackHead(const std::vector<int>& lines, GrammarGuess_st* pGuess) {
    if (lines.size() <= kMaxItem) return lines;
    const auto last = std::find_if(lines.rbegin(), lines.rend(), IsValue);
    const size_t before = static_cast<size_t>(lines.rend() - last);
    const auto values = std::count_if(lines.begin(), lines.end(), IsValue);
    if (before > kMaxItem) return lines; // the last value has no place
    Cut_st cut = FindCut(before, before - static_cast<size_t>(values), lines.size() - before);
    std::vector<int> items(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
    if (cut.Widened() > 0)
        pGuess->mReasons.push_back(wxString::Format(
            _("The header's %zu lines take fewer items with wide dummies: down to the count an item is a "
              "line, and all lines together tell where the particles begin."),
            lines.size()));
    for (size_t i = before; i-- > 0 && cut.Widened() > 0;) {
        if (items[i] != HEAD_DUMMY) continue;
        size_t& rest = cut.mThrees > 0 ? cut.mThrees : cut.mTens;
        items[i] = cut.mThrees > 0 ? HEAD_DUMMY3 : HEAD_DUMMY10;
        --rest;
    }
    items.insert(items.end(), cut.mBehind / 10, HEAD_DUMMY10);
    items.insert(items.end(), cut.mBehind % 10 / 3, HEAD_DUMMY3);
    items.insert(items.end(), cut.mBehind % 10 % 3, HEAD_DUMMY);
    return items;
}

wxString CheckItemCounts(const GrammarGuess_st& guess) {
    const auto& head = guess.mHead;
    const auto last = std::find_if(head.rbegin(), head.rend(), IsValue);
    if (head.size() > kMaxItem && static_cast<size_t>(head.rend() - last) > kMaxItem)
        return wxString::Format(
            _("Time or particle count stands in line %zu: a format can reach the first 16 "
              "lines. Take lines away before it."),
            static_cast<size_t>(head.rend() - last));
    if (head.size() > kMaxItem || guess.mBody.size() > kMaxItem)
        return _("The header or the lines have more items than the 16 that a format can hold.");
    return wxString();
}
