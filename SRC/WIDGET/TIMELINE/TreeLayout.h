// Where the parts of a row lie in the tree left of the strips.
#pragma once

#include <wx/gdicmn.h>

class wxWindow;

/// What of a row is under the mouse.
enum class TreeZone {
    NONE,
    FOLD,  ///< triangle of a group
    CHECK, ///< a curve's time dependence
    NAME,
    LINK,
    SHY,
    VALUE,
    PREVIOUS,
    KEY,
    NEXT
};

/// Columns from the left: triangle or check box behind the indent, name, value (a group's switches), and the
/// three of the keys. All in pixels; every row has the same columns.
struct TreeLayout {
    TreeLayout(const wxWindow* pWindow, int width, int rowHeight);

    wxRect GetRect(TreeZone zone, int y, int depth) const;
    TreeZone HitTest(int x, int depth, bool bGroup) const;

    int mWidth;
    int mRow;
    int mIndent; ///< a level
    int mIcon;   ///< width of an icon's column
    int mValue;  ///< width of the value's column
    int mNav;    ///< width of one of the three of the keys
    int mPad;
};
