#include "WIDGET/NumberText.h"

#include <charconv>
#include <cmath>
#include <string>

#include <wx/intl.h>

namespace {

constexpr double kNoLimit = 1e29; // limits beyond are as good as none
constexpr double kRelativePerPixel = 0.01;

template <class T>
wxString Shortest(T value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return wxString::FromAscii(buffer, static_cast<size_t>(result.ptr - buffer));
}

/// Dragging and stepping add up steps: without this 0.1 becomes 0.30000000000000004.
double OnGrid(double value, double step) {
    if (step <= 0.0) return value;
    const double steps = std::round(value / step * 100.0) / 100.0;
    const double inverse = 1.0 / step;
    return inverse >= 1.0 ? steps / inverse : steps * step;
}

double ThreeDigits(double value) {
    char buffer[64];
    const auto written =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, 2);
    double rounded = value;
    std::from_chars(buffer, written.ptr, rounded);
    return rounded;
}

} // namespace

NumSpec RangeSpec(double low, double high, double step) {
    NumSpec spec;
    spec.mMin = low;
    spec.mMax = high;
    spec.mStep = step;
    return spec;
}

NumSpec IntegerSpec(int low, int high) {
    NumSpec spec;
    spec.mMin = low;
    spec.mMax = high;
    spec.mbInteger = true;
    return spec;
}

bool ParseNumber(const wxString& text, const NumSpec& spec, double* pValue) {
    wxString trimmed = text;
    trimmed.Trim(true).Trim(false);
    std::string ascii;
    for (const wxUniChar c : trimmed) {
        if (!c.IsAscii()) return false;
        ascii += static_cast<char>(c);
    }
    if (ascii.find('.') == std::string::npos && ascii.find(',') != std::string::npos)
        ascii[ascii.find(',')] = '.';
    if (ascii.size() > 1 && ascii[0] == '+' && ascii[1] != '-') ascii.erase(0, 1);
    double value = 0.0;
    const auto result = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
    if (result.ec != std::errc() || result.ptr != ascii.data() + ascii.size()) return false;
    if (!std::isfinite(value)) return false;
    if (spec.mbInteger && value != std::floor(value)) return false;
    *pValue = value;
    return true;
}

wxString FormatNumber(double value, const NumSpec& spec) {
    if (spec.mbInteger) return wxString::Format("%.0f", value);
    if (value == 0.0) return "0"; // never "-0"
    if (spec.mbDouble) return Shortest(value);
    return Shortest(static_cast<float>(value));
}

double ClampNumber(double value, const NumSpec& spec) {
    if (!(value >= spec.mMin)) return spec.mMin;
    if (value > spec.mMax) return spec.mMax;
    return spec.mbInteger ? std::round(value) : value;
}

double StepNumber(double value, int ticks, const NumSpec& spec) {
    return ClampNumber(OnGrid(value + ticks * spec.mStep, spec.mStep), spec);
}

double DragNumber(double start, int pixels, double factor, const NumSpec& spec) {
    const double moved = pixels * factor;
    if (spec.mbRelative && start != 0.0) {
        const double value = start * std::exp(moved * kRelativePerPixel);
        if (!std::isfinite(value)) return ClampNumber(value, spec);
        // Three digits are as fine as a hand drags.
        return ClampNumber(ThreeDigits(value), spec);
    }
    return ClampNumber(OnGrid(start + moved * spec.mStep, spec.mStep), spec);
}

wxString DescribeRange(const NumSpec& spec) {
    const bool bLow = spec.mMin > -kNoLimit;
    const bool bHigh = spec.mMax < kNoLimit;
    const wxString low = FormatNumber(spec.mMin, spec);
    const wxString high = FormatNumber(spec.mMax, spec);
    if (bLow && bHigh) return wxString::Format(_("%s to %s"), low, high);
    if (bLow) return wxString::Format(_("at least %s"), low);
    if (bHigh) return wxString::Format(_("at most %s"), high);
    return wxString();
}
