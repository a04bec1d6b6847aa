#include "COLORCURVE/EDITOR/clsTics.h"

#include <algorithm>
#include <cmath>

#include <wx/dc.h>
#include <wx/pen.h>

namespace {

constexpr int kLeastGap = 6;          // pixels between two labels
constexpr int kTicPixels = 24;        // between two lines at least
constexpr double kMostExponent = 5.0; // larger and smaller numbers are written with an exponent
constexpr double kLeastExponent = -4.0;

double Step(double span, int most) {
    const double rough = span / std::max(most, 1);
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (power * factor >= rough * (1.0 - 1e-9)) return power * factor;
    return power * 10.0;
}

wxString Label(double value, double step) {
    const double largest = std::max(std::fabs(value), step);
    if (std::log10(largest) > kMostExponent || std::log10(step) < kLeastExponent) {
        // Digits that tell neighbours apart, then the exponent.
        const double magnitude = value == 0.0 ? 0.0 : std::floor(std::log10(std::fabs(value)) + 1e-9);
        const double digits = std::clamp(magnitude - std::floor(std::log10(step) + 1e-9), 0.0, 9.0);
        return value == 0.0 ? wxString("0") : wxString::Format("%.*e", static_cast<int>(digits), value);
    }
    const double decimals = std::clamp(-std::floor(std::log10(step) + 1e-9), 0.0, 9.0);
    return wxString::Format("%.*f", static_cast<int>(decimals), value);
}

} // namespace

std::vector<Tics_cls::Tic_st> Tics_cls::GetTics(int most) const {
    std::vector<Tic_st> tics;
    const double low = std::min(mLow, mHigh);
    const double high = std::max(mLow, mHigh);
    const double span = high - low;
    if (!std::isfinite(span) || !(span > std::max(std::fabs(low), std::fabs(high)) * 1e-12) || span < 1e-290)
        return tics;
    const double step = Step(span, most);
    const double first = std::ceil(low / step - 1e-6);
    for (double k = first; k * step <= high + step * 1e-6 && k < first + 1000.0; ++k) {
        const double value = k == 0.0 ? 0.0 : k * step; // never a negative zero
        tics.push_back({value, Label(value, step)});
    }
    return tics;
}

double Tics_cls::ToX(double value) const { return (value - mLow) / (mHigh - mLow) * (mWidth - 1); }

void Tics_cls::DrawOnDC(wxDC& dc, int x, int y, const wxColour& line, const wxColour& text) const {
    const std::vector<Tic_st> tics = GetTics(std::max(mWidth / kTicPixels, 1));
    const int tall = std::max(mHeight / 4, 2);
    dc.SetPen(wxPen(line));
    for (const Tic_st& tic : tics) {
        const int at = x + static_cast<int>(std::lround(ToX(tic.mValue)));
        dc.DrawLine(at, y, at, y + tall);
    }
    // Fewer labels where they are long.
    dc.SetTextForeground(text);
    for (int most = std::max(mWidth / kTicPixels, 1); most > 0; most = most * 2 / 3) {
        const std::vector<Tic_st> labels = GetTics(most);
        int widest = 0;
        for (const Tic_st& tic : labels)
            widest = std::max(widest, dc.GetTextExtent(tic.mLabel).x);
        // The outer labels are pushed inwards by up to half their width.
        if (most > 1 && labels.size() > 1 &&
            std::fabs(ToX(labels[1].mValue) - ToX(labels[0].mValue)) < 1.5 * widest + kLeastGap)
            continue;
        for (const Tic_st& tic : labels) {
            const wxSize size = dc.GetTextExtent(tic.mLabel);
            const int middle = x + static_cast<int>(std::lround(ToX(tic.mValue)));
            // The outer ones stay within the axis.
            const int left = std::clamp(middle - size.x / 2, x, std::max(x + mWidth - size.x, x));
            dc.DrawText(tic.mLabel, left, y + tall);
        }
        return;
    }
}
