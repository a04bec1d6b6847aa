// Numbers of input fields to text and back, whatever the user's locale.
#pragma once

#include <wx/string.h>

/// What a number may be and how it moves.
struct NumSpec {
    double mMin = -1e30;
    double mMax = 1e30;
    double mStep = 1.0; ///< of the arrows and of a pixel of dragging
    bool mbInteger = false;
    bool mbDouble = false;   ///< written with a double's digits, else with a float's
    bool mbRelative = false; ///< dragging multiplies (1% a pixel): for factors over many magnitudes
};

/// Whole numbers of a range.
NumSpec IntegerSpec(int low, int high);
/// Any number of a range, and what an arrow adds.
NumSpec RangeSpec(double low, double high, double step);

/// The whole text as a number; blanks around it, a leading plus and a comma for the point are taken.
/// False for anything else, for infinity and NaN, and for a fraction where an integer is wanted.
bool ParseNumber(const wxString& text, const NumSpec& spec, double* pValue);

/// The shortest text that reads back as the same number.
wxString FormatNumber(double value, const NumSpec& spec);

/// Into the range, integers rounded; NaN becomes the lower end.
double ClampNumber(double value, const NumSpec& spec);

/// `ticks` arrow clicks on from `value`.
double StepNumber(double value, int ticks, const NumSpec& spec);

/// `pixels` of sideways dragging on from the value at the start of the drag; `factor` is 0.1 for fine
/// and 10 for coarse movement.
double DragNumber(double start, int pixels, double factor, const NumSpec& spec);

/// "0 to 65535", "at least 0", "at most 1" or empty: for tooltips.
wxString DescribeRange(const NumSpec& spec);
