// Floats as unsigned numbers that sort like them.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>

constexpr uint32_t kFloatSign = 0x80000000u;

inline uint32_t BitsOfFloat(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

inline float FloatOfBits(uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// Unsigned numbers in the order of the floats: both zeros alike, what is no number above all.
inline uint32_t OrderOfFloat(float value) {
    const uint32_t bits = BitsOfFloat(value);
    if ((bits & ~kFloatSign) > 0x7f800000u) return std::numeric_limits<uint32_t>::max();
    if (bits == kFloatSign) return kFloatSign;
    return bits ^ ((0u - (bits >> 31)) | kFloatSign);
}

/// The float of OrderOfFloat's number.
inline float FloatOfOrder(uint32_t order) {
    if (order == std::numeric_limits<uint32_t>::max()) return std::numeric_limits<float>::quiet_NaN();
    return FloatOfBits(order ^ (((order >> 31) - 1) | kFloatSign));
}
