// One key of a curve.
#pragma once

#include <wx/string.h>

/// How a curve runs from a key to the next one.
enum InterpKind : unsigned int {
    INTERP_LINEAR = 0,
    INTERP_HERMITE_AUTO = 1,     ///< both tangent fields are overwritten after every edit
    INTERP_HERMITE_SEMIAUTO = 2, ///< the slope is overwritten, the ease factor kept; their product counts
    INTERP_HERMITE = 3,          ///< the slope as the user set it
    INTERP_STEP = 4              ///< holds the value
};

/// A plain value, copied freely. Positions are double indices: 0 the first frame of the film, 1 the last.
class KeyFrame_cls {
public:
    static constexpr int INTERP_COUNT = 5;
    /// Names of the kinds as the user reads them; FillInterpNames translates them.
    static wxString msAstrInterp[INTERP_COUNT];
    static void FillInterpNames();

    void Set(double doubleIndex, unsigned int interpType, double value, double d1, double d2, bool bSelected);
    void SetValue(double value, double d1, double d2);
    /// Compares positions alone.
    bool operator>(const KeyFrame_cls& other) const { return mDoubleIndex > other.mDoubleIndex; }

    /// One line: position, kind, value, slope, second field, each with a blank behind it.
    wxString Serialize() const;
    /// Takes such a line; where it stops making sense the fields that follow keep what they had.
    void ReadStrLine(const wxString& line);

    bool mbSelected = false; ///< on the time line; not stored in files
    unsigned int mInterpType = INTERP_LINEAR;
    double mDoubleIndex = 0.0;
    double mValue = 0.0;
    double mValueD1 = 0.0; ///< slope, value per unit of double index
    double mValueD2 = 0.0; ///< kind 2: ease factor; kind 1: the slope once more
};
