// The usual sizes of films. Number 0 is "Custom", any other size.
#pragma once

#include <vector>

#include <wx/string.h>

class ImgSizeTemplate_cls {
public:
    /// Labels of all sizes, "Custom" first.
    static std::vector<wxString> GetLabels();
    /// False when it filled the size; true for "Custom" and numbers that there aren't.
    static bool SetGeometry(int index, int* pW, int* pH);
    /// The number of a size, 0 when it isn't one of the usual ones.
    static int SetIndexFromGeometry(int w, int h);
};
