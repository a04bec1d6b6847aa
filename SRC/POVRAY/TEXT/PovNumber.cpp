#include "POVRAY/TEXT/PovNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

constexpr double kPowers[kMostDecimals + 1] = {1e0, 1e1, 1e2, 1e3,  1e4,  1e5, 1e6,
                                               1e7, 1e8, 1e9, 1e10, 1e11, 1e12};
constexpr double kLargest = static_cast<double>(std::numeric_limits<float>::max());

/// "00" to "99", one behind the other.
constexpr std::array<char, 200> MakePairs() {
    std::array<char, 200> pairs{};
    for (size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> kPairs = MakePairs();

double Tame(double value) {
    if (std::isnan(value)) return 0.0;
    return std::isinf(value) ? std::copysign(kLargest, value) : value;
}

/// Digits of a whole number, the last one at pEnd[-1]; where they begin.
char* PutBackwards(char* pEnd, uint64_t value) {
    while (value >= 100) {
        pEnd -= 2;
        std::memcpy(pEnd, &kPairs[2 * (value % 100)], 2);
        value /= 100;
    }
    if (value >= 10) {
        pEnd -= 2;
        std::memcpy(pEnd, &kPairs[2 * value], 2);
        return pEnd;
    }
    *--pEnd = static_cast<char>('0' + value);
    return pEnd;
}

char* PutWhole(char* p, uint64_t value) {
    if (value < 10) { // what most coordinates have in front of the point
        *p = static_cast<char>('0' + value);
        return p + 1;
    }
    char digits[20];
    char* const end = digits + sizeof digits;
    const char* const begin = PutBackwards(end, value);
    const auto length = static_cast<size_t>(end - begin);
    std::memcpy(p, begin, length);
    return p + length;
}

char* PutFraction(char* p, uint64_t value, int decimals) {
    char* const end = p + decimals;
    for (char* q = end; q > p;) {
        if (q - p == 1) {
            *p = static_cast<char>('0' + value % 10);
            break;
        }
        q -= 2;
        std::memcpy(q, &kPairs[2 * (value % 100)], 2);
        value /= 100;
    }
    return end;
}

template <uint64_t POWER>
char* PutParts(char* p, uint64_t scaled, int decimals) {
    p = PutWhole(p, scaled / POWER);
    *p++ = '.';
    return PutFraction(p, scaled % POWER, decimals);
}

char* PutLong(char* p, double value, int decimals) {
    return std::to_chars(p, p + kMostFixed, value, std::chars_format::fixed, decimals).ptr;
}

} // namespace

// A float has 24 bits, and 10^12 is an odd number of 28 bits times a power of two: the product is exact in a
// double, so that rounding it to even rounds the number as printf does.
char* PutFixed(char* p, float number, int decimals) {
    const double value = Tame(static_cast<double>(number));
    if (std::signbit(value)) *p++ = '-';
    const double magnitude = std::fabs(value);
    const double product = magnitude * kPowers[decimals];
    if (!(product < 9e15)) return PutLong(p, magnitude, decimals);
    const auto scaled = static_cast<uint64_t>(std::llrint(product));
    if (decimals == 3) return PutParts<1000>(p, scaled, 3);
    if (decimals == 0) return PutWhole(p, scaled);
    const auto power = static_cast<uint64_t>(kPowers[decimals]);
    p = PutWhole(p, scaled / power);
    *p++ = '.';
    return PutFraction(p, scaled % power, decimals);
}

char* PutUnsigned(char* p, unsigned value) { return PutWhole(p, value); }

void AppendFixed(std::string* pText, double value, int decimals) {
    constexpr size_t kMostOfDouble = 312; // sign, 309 digits, point
    const size_t at = pText->size();
    pText->resize(at + kMostOfDouble + static_cast<size_t>(decimals));
    char* const begin = pText->data() + at;
    const std::to_chars_result result =
        std::to_chars(begin, pText->data() + pText->size(), Tame(value), std::chars_format::fixed, decimals);
    pText->resize(at + static_cast<size_t>(result.ptr - begin));
}

void AppendGeneral(std::string* pText, double value) {
    char digits[32];
    const std::to_chars_result result =
        std::to_chars(digits, digits + sizeof digits, Tame(value), std::chars_format::general, 6);
    pText->append(digits, static_cast<size_t>(result.ptr - digits));
}

int GetNeededDecimals(double smallestRadius, double extent) {
    double step = 1e-3;
    int decimals = 3;
    const auto isCoarse = [&](double size) { return std::isfinite(size) && size > 0.0 && step > size; };
    while (decimals < kMostDecimals && (isCoarse(smallestRadius / 100.0) || isCoarse(extent / 100000.0))) {
        ++decimals;
        step = 1.0 / kPowers[decimals];
    }
    return decimals;
}
