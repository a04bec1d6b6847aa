#include "IMAGE/HalfFloat.h"

#include <cmath>
#include <cstring>

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

HalfBytes MakeTable() {
    HalfBytes table{};
    for (std::uint16_t half = 0; half < kOne; ++half)
        table[half] = static_cast<unsigned char>(std::lround(ToFloat(half) * 255.0f));
    for (std::uint16_t half = kOne; half <= kInfinity; ++half)
        table[half] = 255;
    static_assert(kInfinity < kSign);
    return table;
}

} // namespace

const HalfBytes& GetPlainBytes() {
    static const HalfBytes sTable = MakeTable();
    return sTable;
}

// Most pixels are as their neighbour: the background.
void ConvertHalfPixels(const std::uint16_t* pHalf, unsigned char* pBytes, size_t count,
                       const HalfBytes& table) {
    std::uint64_t last = 0;
    unsigned char rgb[3] = {table[0], table[0], table[0]};
    for (size_t i = 0; i < count; ++i, pHalf += 4, pBytes += 3) {
        std::uint64_t pixel;
        std::memcpy(&pixel, pHalf, sizeof pixel);
        if (pixel != last) {
            for (size_t c = 0; c < 3; ++c)
                rgb[c] = table[pHalf[c]];
            last = pixel;
        }
        std::memcpy(pBytes, rgb, 3);
    }
}

// Where all four are one as well, nothing is to be added.
void HalveHalfPixels(const std::uint16_t* pRow, const std::uint16_t* pNext, unsigned char* pBytes,
                     size_t count, const HalfBytes& table) {
    std::uint64_t last = 0;
    unsigned char rgb[3] = {table[0], table[0], table[0]};
    for (size_t i = 0; i < count; ++i, pRow += 8, pNext += 8, pBytes += 3) {
        std::uint64_t upper[2], lower[2];
        std::memcpy(upper, pRow, sizeof upper);
        std::memcpy(lower, pNext, sizeof lower);
        const bool bOne = ((upper[0] ^ upper[1]) | (lower[0] ^ lower[1]) | (upper[0] ^ lower[0])) == 0;
        if (!bOne) {
            for (size_t c = 0; c < 3; ++c)
                pBytes[c] = static_cast<unsigned char>(
                    (table[pRow[c]] + table[pRow[4 + c]] + table[pNext[c]] + table[pNext[4 + c]]) >> 2);
            continue;
        }
        if (upper[0] != last)
            for (size_t c = 0; c < 3; ++c)
                rgb[c] = table[pRow[c]];
        last = upper[0];
        std::memcpy(pBytes, rgb, 3);
    }
}
