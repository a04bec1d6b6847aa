// Round numbers along an axis, with their labels.
#pragma once

#include <vector>

#include <wx/colour.h>
#include <wx/font.h>
#include <wx/string.h>

class wxDC;

class Tics_cls {
public:
    struct Tic_st {
        double mValue;
        wxString mLabel;
    };

    /// A horizontal axis of these pixels, from `low` at its left end to `high` at its right one, which may
    /// be the smaller one.
    Tics_cls(int width, int height, double low, double high)
        : mWidth(width), mHeight(height), mLow(low), mHigh(high) {}

    /// Multiples of 1, 2 or 5 times a power of ten, ascending, with as many digits as tell them apart;
    /// none for a range that is empty or no range of numbers.
    std::vector<Tic_st> GetTics(int most) const;
    /// Pixels from the axis' left end.
    double ToX(double value) const;
    /// Lines of the upper edge's third, labels below; labels that would touch are left out.
    void DrawOnDC(wxDC& dc, int x, int y, const wxColour& line, const wxColour& text) const;

private:
    int mWidth;
    int mHeight;
    double mLow;
    double mHigh;
};
