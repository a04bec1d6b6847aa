#include "PDATA/NumberScan.h"

#include <cfloat>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace {

constexpr double kPower[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                             1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr uint64_t kExact = uint64_t(1) << 53; // integers up to here are doubles
constexpr int kMaxDigits = 19;                 // that 64 bits hold for sure

inline bool IsNumberEnd(char c) { return c == '\0' || IsBlank(c); }

// digits x 10^exponent, rounded once. One division or product of exact doubles is rounded exactly; the
// float of that is the right one unless the double lies right between two floats, where the true value
// may lie on either side, or outside the range of normal floats.
inline bool MakeFloat(uint64_t digits, int exponent, float& value) {
    if (digits > kExact || exponent < -22 || exponent > 22) return false;
    const double whole = static_cast<double>(digits);
    const double number = exponent < 0 ? whole / kPower[-exponent] : whole * kPower[exponent];
    if (digits != 0 && !(number >= static_cast<double>(FLT_MIN) && number <= static_cast<double>(FLT_MAX)))
        return false;
    uint64_t bits;
    std::memcpy(&bits, &number, sizeof bits);
    if ((bits & 0x1fffffff) == 0x10000000) return false;
    value = static_cast<float>(number);
    return true;
}

// What stands behind "e"; null when that is no number of up to four digits.
const char* ScanExponent(const char* p, int& exponent) {
    const bool bMinus = *p == '-';
    if (bMinus || *p == '+') ++p;
    uint64_t number = 0;
    const char* end = ScanDigits(p, number);
    if (end == p || end - p > 4) return nullptr;
    exponent += bMinus ? -static_cast<int>(number) : static_cast<int>(number);
    return end;
}

} // namespace

bool ScanFloat(const char*& cursor, float& value) {
    const char* p = cursor;
    const unsigned minus = *p == '-';
    p += minus | static_cast<unsigned>(*p == '+'); // signs are too random to branch on
    const char* const start = p;
    uint64_t digits = 0;
    p = ScanDigits(p, digits);
    long number = p - start;
    int exponent = 0;
    if (*p == '.') {
        const char* const fraction = ++p;
        p = ScanDigits(p, digits);
        number += p - fraction;
        if (number <= kMaxDigits) exponent = -static_cast<int>(p - fraction);
    }
    if (number == 0) return false;
    if (*p == 'e' || *p == 'E') {
        p = ScanExponent(p + 1, exponent);
        if (!p) return false;
    }
    if (!IsNumberEnd(*p)) return false;
    float result;
    if (number > kMaxDigits || !MakeFloat(digits, exponent, result)) {
        const auto scanned = std::from_chars(start, p, result);
        if (scanned.ec != std::errc() || scanned.ptr != p) return false;
    }
    uint32_t bits;
    std::memcpy(&bits, &result, sizeof bits);
    bits ^= minus << 31;
    std::memcpy(&value, &bits, sizeof bits);
    cursor = p;
    return true;
}

bool ScanInt(const char*& cursor, int& value) {
    const char* p = cursor;
    const bool bMinus = *p == '-';
    if (bMinus || *p == '+') ++p;
    const char* const start = p;
    uint64_t digits = 0;
    p = ScanDigits(p, digits);
    if (p == start || p - start > 9 || !IsNumberEnd(*p)) return false;
    value = bMinus ? -static_cast<int>(digits) : static_cast<int>(digits);
    cursor = p;
    return true;
}
