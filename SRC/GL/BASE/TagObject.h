// A label that stands at a place of the scene. What draws a scene gathers them; they are written over it
// last.
#pragma once

#include <vector>

#include <wx/string.h>

struct TagObject_cls {
    wxString mText;
    float mPos[3];                 ///< in the scene
    double mWindow[3] = {0, 0, 0}; ///< pixels from the lower left corner, and depth 0 to 1 in sight
};

using Tags = std::vector<TagObject_cls>;

/// The tags that are in sight, with their places in the window. The camera stands in OpenGL's present
/// matrices.
Tags FindInWindow(const Tags& tags);
