#include "IMAGE/HalfFloat.h"

#include <array>
#include <cmath>

namespace {

constexpr std::uint16_t kOne = 0x3c00;      // 1.0; larger bit patterns are larger numbers
constexpr std::uint16_t kInfinity = 0x7c00; // above it are the NaNs
constexpr std::uint16_t kSign = 0x8000;

/// 0.0 to below 1.0.
float ToFloat(std::uint16_t half) {
    const int exponent = half >> 10;
    const int fraction = half & 0x3ff;
    return exponent == 0 ? std::ldexp(float(fraction), -24)
                         : std::ldexp(float(fraction + 0x400), exponent - 25);
}

std::array<unsigned char, 0x10000> MakeTable() {
    std::array<unsigned char, 0x10000> table{};
    for (std::uint16_t half = 0; half < kOne; ++half)
        table[half] = static_cast<unsigned char>(std::lround(ToFloat(half) * 255.0f));
    for (std::uint16_t half = kOne; half <= kInfinity; ++half)
        table[half] = 255;
    static_assert(kInfinity < kSign);
    return table;
}

} // namespace

void ConvertHalfToBytes(const std::uint16_t* pHalf, unsigned char* pBytes, size_t count) {
    static const std::array<unsigned char, 0x10000> sTable = MakeTable();
    for (size_t i = 0; i < count; ++i)
        pBytes[i] = sTable[pHalf[i]];
}

void ConvertHalfPixels(const std::uint16_t* pHalf, unsigned char* pBytes, size_t count) {
    for (size_t i = 0; i < count; ++i)
        ConvertHalfToBytes(pHalf + 4 * i, pBytes + 3 * i, 3);
}
