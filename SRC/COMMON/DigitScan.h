// Digits of big texts, many times faster than one by one.
#pragma once

#include <cstdint>
#include <cstring>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__,
              "ScanDigits takes a text's first character for the lowest");

/// Bytes behind a text's end (a NUL or a line feed) that may be looked at.
constexpr int kScanPad = 8;

/// Pass the digits at `p` and hang them on to the number in `digits`, modulo 2^64. Returns what stands behind
/// them.
//
// Eight characters at a time, so that a number's length costs no mispredicted branch: how many of them are
// digits tells the first byte that isn't one, and the digits in front of it are shifted to the end, where
// three multiplications put pairs, fours and eights together.
inline const char* ScanDigits(const char* p, uint64_t& digits) {
    static constexpr uint64_t kPower[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    for (;;) {
        uint64_t eight;
        std::memcpy(&eight, p, sizeof eight);
        eight ^= 0x3030303030303030; // digits become 0 to 9
        const uint64_t others = (eight | (eight + 0x7676767676767676)) & 0x8080808080808080;
        const int number = others == 0 ? 8 : __builtin_ctzll(others) / 8;
        if (number == 0) return p;
        eight <<= 8 * (8 - number);
        eight = 10 * eight + (eight >> 8);
        eight = ((eight & 0x000000ff000000ff) * 0x000f424000000064 +
                 ((eight >> 16) & 0x000000ff000000ff) * 0x0000271000000001) >>
                32;
        digits = kPower[number] * digits + eight;
        p += number;
        if (number < 8) return p;
    }
}
