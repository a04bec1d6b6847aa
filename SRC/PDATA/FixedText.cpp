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

uint32_t GetPair(unsigned number) {
    uint16_t pair;
    std::memcpy(&pair, kPairs.mDigits + 2 * number, 2);
    return pair;
}

void PutPair(char* pOut, unsigned number) { std::memcpy(pOut, kPairs.mDigits + 2 * number, 2); }

// Without branches up to four digits: how many there are can't be foretold.
char* PutDigits(char* pOut, uint32_t number) {
    if (number >= 10000) return std::to_chars(pOut, pOut + 10, number).ptr;
    const size_t zeros = size_t(number < 10) + size_t(number < 100) + size_t(number < 1000);
    const uint32_t four = (GetPair(number / 100) | GetPair(number % 100) << 16) >> 8 * zeros; // little-endian
    std::memcpy(pOut, &four, 4);
    return pOut + 4 - zeros;
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
    const uint64_t half = uint64_t(1) << (shift - 1);
    return (exact + half - 1 + (exact >> shift & 1)) >> shift;
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
    *pOut = '-';
    pOut += bits >> 31;
    pOut = PutDigits(pOut, uint32_t(number / kMillion)); // below 2^24
    *pOut++ = '.';
    PutSix(pOut, unsigned(number % kMillion));
    return pOut + 6;
}

char* PutInteger(char* pOut, int value) {
    if (value < 0) *pOut++ = '-';
    return PutDigits(pOut, value < 0 ? 0u - uint32_t(value) : uint32_t(value));
}
