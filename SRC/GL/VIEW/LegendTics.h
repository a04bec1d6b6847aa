// Round values along an axis, for labels under a legend.
#pragma once

#include <vector>

#include <wx/string.h>

struct LegendTic_st {
    double mPlace; ///< 0 at the low end of the axis, 1 at the high end
    wxString mLabel;
};

/// Multiples of 1, 2 or 5 times a power of ten between `low` and `high`, which may be the larger one; `most`
/// of them at most. None for an axis without a finite length.
std::vector<LegendTic_st> MakeLegendTics(double low, double high, int most);
