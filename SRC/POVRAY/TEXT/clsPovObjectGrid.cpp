#include "POVRAY/TEXT/clsPovObjectGrid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "POVRAY/TEXT/clsPovText.h"

namespace {

using Span = PovObjectGrid_cls::Span_st;
using Point = std::array<double, 3>;
constexpr int kMostFlat = 10000; // lines, as views have them at most
constexpr int kMostCubic = 256;
constexpr double kSlack = 0.000001; // the last line is meant, however the steps add up

std::vector<double> GetSteps(const Span& span, int most) {
    std::vector<double> steps;
    if (!std::isfinite(span.mMin) || !std::isfinite(span.mMax)) return steps;
    const double range = span.mMax - span.mMin;
    const double step = span.mNumber <= 0 || range == 0.0 ? 1.0 : range / span.mNumber;
    const double count = range / step * (1.0 + kSlack) + kSlack;
    for (int i = 0; i <= most && i <= count; ++i)
        steps.push_back(span.mMin + i * step);
    return steps;
}

/// A line along an axis through a point.
void AddBox(std::string* pText, const Span& span, size_t axis, const Point& through) {
    Point low = through, high = through;
    for (size_t k = 0; k < 3; ++k) {
        low[k] = k == axis ? span.mMin : through[k] - span.mWidth;
        high[k] = k == axis ? span.mMax : through[k] + span.mWidth;
    }
    *pText += PovSerialize_cls::PovOut3dS("\tbox{", low.data(), span.mDecimals);
    *pText += PovSerialize_cls::PovOut3dS(",", high.data(), span.mDecimals) + "}\n";
}

/// Lines in a plane that a coordinate axis stands on.
std::string GetFlat(const Span& span, size_t normal, double position, const std::string& ending) {
    const size_t first = normal == 0 ? 1 : 0;
    const size_t second = normal == 2 ? 1 : 2;
    const std::vector<double> steps = GetSteps(span, kMostFlat);
    std::string text = "union {\n";
    for (const size_t along : {first, second}) {
        const size_t across = along == first ? second : first;
        for (const double step : steps) {
            Point through;
            through[normal] = position;
            through[across] = step;
            through[along] = 0.0;
            AddBox(&text, span, along, through);
        }
    }
    return text + ending + "}\n";
}

} // namespace

std::string PovObjectGrid_cls::GetStrPovBasicGridX(const Span_st& span, double position,
                                                   const std::string& ending) {
    return GetFlat(span, 0, position, ending);
}

std::string PovObjectGrid_cls::GetStrPovBasicGridY(const Span_st& span, double position,
                                                   const std::string& ending) {
    return GetFlat(span, 1, position, ending);
}

std::string PovObjectGrid_cls::GetStrPovBasicGridZ(const Span_st& span, double position,
                                                   const std::string& ending) {
    return GetFlat(span, 2, position, ending);
}

std::string PovObjectGrid_cls::GetStrPovBasicGridCubic(const Span_st& span, const std::string& ending) {
    const std::vector<double> steps = GetSteps(span, kMostCubic);
    std::string text = "union {\n";
    for (size_t along = 0; along < 3; ++along)
        for (const double a : steps)
            for (const double b : steps) {
                Point through = {a, a, a};
                through[along == 2 ? 1 : 2] = b;
                AddBox(&text, span, along, through);
            }
    return text + ending + "}\n";
}

std::string PovObjectGrid_cls::GetStrPovGridCircular(const Span_st& span, const std::string& ending) {
    std::string text = "union {\n";
    for (const double radius : GetSteps(span, kMostFlat)) {
        if (radius < span.mMin) continue;
        text += "\ttorus{" + PovOutG(radius) + "," + PovOutG(span.mWidth) + "}\n";
    }
    return text + "\trotate <90, 0, 0>\n" + ending + "}\n";
}

std::string PovObjectGrid_cls::GetStrPovTexture(const float* color) {
    PovText_cls::Surface_st surface;
    for (auto& layer : surface.mColors)
        std::copy_n(color, 4, layer);
    return PovText_cls::GetStrPovTextureGLColor("\t", surface, false) + "\tno_shadow\n";
}
