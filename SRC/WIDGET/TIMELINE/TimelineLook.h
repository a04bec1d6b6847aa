// Sizes, colours and marks of the time line, one set for tree, strips and header.
#pragma once

#include <array>

#include <wx/bitmap.h>
#include <wx/colour.h>
#include <wx/font.h>

#include "PARAM/clsKeyFrame.h"
#include "WIDGET/TIMELINE/TimelineIcons.h"

class wxDC;
class wxWindow;

enum class MarkLook { PLAIN, SELECTED, SUMMARY, COUNT };

struct TimelineLook {
    static constexpr int kTreeWidth = 228; ///< logical pixels left of all strips

    /// From the theme, for the scale of a window; cheap when nothing changed.
    void Update(const wxWindow* pWindow);
    void DrawMark(wxDC& dc, double x, int y, unsigned kind, MarkLook look) const;
    void DrawIcon(wxDC& dc, TimelineIcon icon, int x, int y, bool bFaint) const;

    int mRow = 20;  ///< height of a row, pixels
    int mMark = 13; ///< side of a key's bitmap
    int mIcon = 16;
    wxColour mBack, mGroupBack, mSelectedBack, mOutside, mLine, mGrid;
    wxColour mText, mFaint, mAccent, mHold, mTime;
    wxFont mFont, mCaption;

private:
    double mScale = 0.0;
    wxColour mMadeBack, mMadeText, mMadeAccent;
    std::array<std::array<wxBitmap, size_t(MarkLook::COUNT)>, KeyFrame_cls::INTERP_COUNT> mMarks;
    std::array<std::array<wxBitmap, 2>, size_t(TimelineIcon::COUNT)> mIcons;
};
