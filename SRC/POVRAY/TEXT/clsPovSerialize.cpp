#include "POVRAY/TEXT/clsPovSerialize.h"

#include <algorithm>
#include <cmath>

#include "POVRAY/TEXT/PovNumber.h"

namespace {

template <class T>
std::string Append(std::string text, const T* p, int count, int decimals) {
    for (int i = 0; i < count; ++i) {
        text += i == 0 ? '<' : ',';
        AppendFixed(&text, static_cast<double>(p[i]), decimals);
    }
    text += '>';
    return text;
}

/// Is the matrix as flat as double's digits can tell?
bool IsFlat(const double (*m)[3]) {
    double product = 1.0;
    for (int k = 0; k < 3; ++k)
        product *= std::hypot(m[k][0], m[k][1], m[k][2]);
    const double volume = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                          m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                          m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    return !(std::fabs(volume) > 1e-14 * product); // of nothing, too
}

} // namespace

// A multiple of the unit matrix makes it whole, unless it is one of three numbers at most.
std::string PovSerialize_cls::PovOutRows(std::string text, const double (*rows)[3], int decimals) {
    const double step = std::pow(0.1, decimals);
    double m[3][3];
    for (int k = 0; k < 3; ++k)
        for (int i = 0; i < 3; ++i)
            m[k][i] = std::isfinite(rows[k][i]) ? std::round(rows[k][i] / step) * step : rows[k][i];
    for (int k = 0; k < 8 && IsFlat(m); ++k)
        for (int i = 0; i < 3; ++i)
            m[i][i] += step;
    for (const double(&row)[3] : m)
        for (const double x : row) {
            AppendFixed(&text, x, decimals);
            text += ',';
        }
    return text;
}

std::string PovSerialize_cls::PovOutScale(std::string text, const double* factors, int decimals) {
    const double step = std::pow(0.1, decimals);
    double shown[3];
    for (int i = 0; i < 3; ++i) {
        const double size = std::isnan(factors[i]) ? 0.0 : std::fabs(factors[i]);
        shown[i] = size < 0.6 * step ? std::copysign(step, factors[i]) : factors[i];
    }
    return PovOut3d(std::move(text), shown, decimals);
}

std::string PovSerialize_cls::PovOut3d(std::string text, const double* p, int decimals) {
    return Append(std::move(text), p, 3, decimals);
}

std::string PovSerialize_cls::PovOut3f(std::string text, const float* p, int decimals) {
    return Append(std::move(text), p, 3, decimals);
}

std::string PovSerialize_cls::PovOut4f(std::string text, const float* p, int decimals) {
    return Append(std::move(text), p, 4, decimals);
}

std::string PovSerialize_cls::PovOut4fRGBTfromRGBA(std::string text, const float* pColor, int decimals) {
    const float rgbt[4] = {pColor[0], pColor[1], pColor[2], 1.0f - pColor[3]};
    return PovOut4f(std::move(text), rgbt, decimals);
}

std::string PovSerialize_cls::PovOut3dS(std::string text, const double* p, int decimals) {
    for (int i = 0; i < 3; ++i) {
        text += i == 0 ? '<' : ',';
        text += GetCutoffString(p[i], decimals);
    }
    return text + '>';
}

std::string PovSerialize_cls::GetCutoffString(double value, int decimals) {
    std::string text = PovOutF(value, decimals);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

std::string PovSerialize_cls::PovOutF(double value, int decimals) {
    std::string text;
    AppendFixed(&text, value, decimals);
    return text;
}

std::string PovSerialize_cls::PovOutG(double value) {
    std::string text;
    AppendGeneral(&text, value);
    return text;
}
