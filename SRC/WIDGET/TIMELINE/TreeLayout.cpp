#include "WIDGET/TIMELINE/TreeLayout.h"

#include <algorithm>

#include <wx/window.h>

TreeLayout::TreeLayout(const wxWindow* pWindow, int width, int rowHeight)
    : mWidth(width), mRow(rowHeight), mIndent(pWindow->FromDIP(10)), mIcon(pWindow->FromDIP(18)),
      mValue(pWindow->FromDIP(64)), mNav(pWindow->FromDIP(14)), mPad(pWindow->FromDIP(3)) {}

wxRect TreeLayout::GetRect(TreeZone zone, int y, int depth) const {
    const int first = mPad + depth * mIndent;
    const int nav = mWidth - mPad - 3 * mNav;
    const int value = nav - mPad - mValue;
    switch (zone) {
    case TreeZone::FOLD:
    case TreeZone::CHECK:
        return wxRect(first, y, mIcon, mRow);
    case TreeZone::NAME:
        return wxRect(first + mIcon, y, std::max(value - first - mIcon - mPad, 0), mRow);
    case TreeZone::VALUE:
        return wxRect(value, y, mValue, mRow);
    case TreeZone::LINK:
        return wxRect(value + mValue - 2 * mIcon, y, mIcon, mRow);
    case TreeZone::SHY:
        return wxRect(value + mValue - mIcon, y, mIcon, mRow);
    case TreeZone::PREVIOUS:
        return wxRect(nav, y, mNav, mRow);
    case TreeZone::KEY:
        return wxRect(nav + mNav, y, mNav, mRow);
    case TreeZone::NEXT:
        return wxRect(nav + 2 * mNav, y, mNav, mRow);
    default:
        return wxRect(0, y, mWidth, mRow);
    }
}

TreeZone TreeLayout::HitTest(int x, int depth, bool bGroup) const {
    static constexpr TreeZone kOfGroup[] = {TreeZone::FOLD,     TreeZone::LINK, TreeZone::SHY,
                                            TreeZone::PREVIOUS, TreeZone::KEY,  TreeZone::NEXT};
    static constexpr TreeZone kOfCurve[] = {TreeZone::CHECK, TreeZone::VALUE, TreeZone::PREVIOUS,
                                            TreeZone::KEY, TreeZone::NEXT};
    const TreeZone* begin = bGroup ? kOfGroup : kOfCurve;
    const TreeZone* end = bGroup ? std::end(kOfGroup) : std::end(kOfCurve);
    for (const TreeZone* zone = begin; zone != end; ++zone)
        if (GetRect(*zone, 0, depth).Contains(x, 0)) return *zone;
    return x >= 0 && x < mWidth ? TreeZone::NAME : TreeZone::NONE;
}
