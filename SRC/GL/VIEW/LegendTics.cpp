#include "GL/VIEW/LegendTics.h"

#include <algorithm>
#include <cmath>

namespace {

/// The smallest of 1, 2, 5, 10 times a power of ten that isn't below `least`.
double GetRoundStep(double least) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * (1.0 - 1e-9)) return factor * power;
    return 10.0 * power;
}

} // namespace

std::vector<LegendTic_st> MakeLegendTics(double low, double high, int most) {
    std::vector<LegendTic_st> tics;
    const double length = high - low;
    if (most < 2 || !std::isfinite(length) || length == 0.0) return tics;
    const double step = GetRoundStep(std::fabs(length) / (most - 1));
    const double first = std::ceil(std::min(low, high) / step - 1e-6);
    if (!(step > 0.0) || !std::isfinite(first)) return tics;
    for (int i = 0; i < most; ++i) {
        const double number = first + i;
        const double value = number * step;
        const double place = (value - low) / length;
        if (place < -1e-6 || place > 1.0 + 1e-6) break;
        tics.push_back({place, number == 0.0 ? wxString("0") : wxString::Format("%.6g", value)});
        if (number + 1.0 == number) break; // a range far from zero and too short for its own digits
    }
    return tics;
}
