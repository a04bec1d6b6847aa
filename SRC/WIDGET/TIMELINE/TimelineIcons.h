// Small drawings of the time line in the theme's own colours, made once and then only copied.
#pragma once

#include <wx/bitmap.h>
#include <wx/colour.h>

enum class TimelineIcon {
    GRAPH,
    SHY,
    FOLD_ALL,
    UNFOLD_ALL,
    ZOOM_IN,
    ZOOM_OUT,
    ZOOM_FILM,
    ZOOM_WORK,
    PREVIOUS_KEY,
    TOGGLE_KEY,
    NEXT_KEY,
    DELETE_KEY,
    LINKED,
    UNLINKED,
    OPEN,
    CLOSED,
    TICKED,
    UNTICKED,
    HOLLOW_KEY,
    COUNT
};

constexpr int kIconSize = 16; // logical pixels
constexpr int kMarkSize = 13; // of a key's mark: odd, so that it has a middle

/// `scale`: physical pixels a logical one.
wxBitmap MakeTimelineIcon(TimelineIcon icon, const wxColour& colour, double scale);
/// The mark of a key, whose shape tells its kind: diamond straight line, circle automatic curve, ring
/// half-automatic curve, hourglass free curve, square step.
wxBitmap MakeKeyBitmap(unsigned kind, const wxColour& fill, const wxColour& edge, double scale);
