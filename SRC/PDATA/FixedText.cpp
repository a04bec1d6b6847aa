#include "PDATA/FixedText.h"

#include <charconv>
#include <cstdint>
#include <cstring>

namespace {

constexpr uint64_t kMillion = 1000000;
constexpr int kMantissaBits = 23;
constexpr int kBias = 150; // of an exponent that counts from the mantissa's last bit

char* PutDigits(char* pOut, uint64_t number) { return std::to_chars(pOut, pOut + 20, number).ptr; }

char* PutSlowly(char* pOut, float value) {
    return std::to_chars(pOut, pOut + kLongestFixed, value, std::chars_format::fixed, 6).ptr;
}

// All six, zeros included.
void PutSix(char* pOut, unsigned number) {
    for (int k = 5; k >= 0; --k, number /= 10)
        pOut[k] = char('0' + number % 10);
}

/// mantissa / 2^shift in millionths, ties to even.
uint64_t Millionths(uint64_t mantissa, int shift) {
    const uint64_t exact = mantissa * kMillion; // below 2^44
    if (shift == 0) return exact;
    if (shift > 45) return 0; // less than half of one
    uint64_t number = exact >> shift;
    const uint64_t rest = exact & ((uint64_t(1) << shift) - 1);
    const uint64_t half = uint64_t(1) << (shift - 1);
    if (rest > half || (rest == half && (number & 1) != 0)) ++number;
    return number;
}

} // namespace

// A float is a whole number of 24 bits times a power of two: in millionths it is exact in 64 bits.
char* PutFixed(char* pOut, float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    const int exponent = int(bits >> kMantissaBits & 0xff);
    if (exponent > kBias) return PutSlowly(pOut, value); // 2^24 and more, infinity, no number
    uint64_t mantissa = bits & ((1u << kMantissaBits) - 1);
    if (exponent > 0) mantissa |= 1u << kMantissaBits;
    const uint64_t number = Millionths(mantissa, kBias - (exponent > 0 ? exponent : 1));
    if (bits >> 31) *pOut++ = '-';
    pOut = PutDigits(pOut, number / kMillion);
    *pOut++ = '.';
    PutSix(pOut, unsigned(number % kMillion));
    return pOut + 6;
}

char* PutInteger(char* pOut, int value) { return std::to_chars(pOut, pOut + kLongestFixed, value).ptr; }
