#include "PDATA/FixedText.h"

#include <charconv>
#include <cstdint>
#include <cstring>

namespace {

constexpr uint64_t kMillion = 1000000;
constexpr int kMantissaBits = 23;
constexpr int kBias = 150; // of an exponent that counts from the mantissa's last bit

/// "00" to "99".
struct Pairs_st {
    constexpr Pairs_st() {
        for (int i = 0; i < 100; ++i) {
            mDigits[2 * i] = char('0' + i / 10);
            mDigits[2 * i + 1] = char('0' + i % 10);
        }
    }
    char mDigits[200] = {};
};
constexpr Pairs_st kPairs;

void PutPair(char* pOut, unsigned number) { std::memcpy(pOut, kPairs.mDigits + 2 * number, 2); }

char* PutDigits(char* pOut, uint32_t number) {
    if (number >= 10000) return std::to_chars(pOut, pOut + 10, number).ptr;
    const unsigned high = number / 100;
    const unsigned low = number % 100;
    if (high >= 10) {
        PutPair(pOut, high);
        pOut += 2;
    } else if (high > 0) {
        *pOut++ = char('0' + high);
    } else if (low < 10) {
        *pOut++ = char('0' + low);
        return pOut;
    }
    PutPair(pOut, low);
    return pOut + 2;
}

char* PutSlowly(char* pOut, float value) {
    return std::to_chars(pOut, pOut + kLongestFixed, value, std::chars_format::fixed, 6).ptr;
}

// All six, zeros included.
void PutSix(char* pOut, unsigned number) {
    PutPair(pOut, number / 10000);
    PutPair(pOut + 2, number / 100 % 100);
    PutPair(pOut + 4, number % 100);
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
    pOut = PutDigits(pOut, uint32_t(number / kMillion)); // below 2^24
    *pOut++ = '.';
    PutSix(pOut, unsigned(number % kMillion));
    return pOut + 6;
}

char* PutInteger(char* pOut, int value) {
    if (value < 0) *pOut++ = '-';
    return PutDigits(pOut, value < 0 ? 0u - uint32_t(value) : uint32_t(value));
}
