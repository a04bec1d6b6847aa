// Numbers of exported text against those of printf.
#include "PDATA/FixedText.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string Fixed(float value) {
    char text[kLongestFixed];
    return std::string(text, PutFixed(text, value));
}

std::string Printf(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%f", static_cast<double>(value));
    return text;
}

TEST(FixedText, IsWhatPrintfMakes) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float none = std::numeric_limits<float>::quiet_NaN();
    for (const float value : {0.0f,
                              1.0f,
                              0.5e-6f,
                              1.5e-6f,
                              2.5e-6f,
                              0.4999999f,
                              0.9999995f,
                              0.99999994f,
                              9.9999995f,
                              16777215.0f,
                              16777216.0f,
                              33554432.0f,
                              8388607.5f,
                              1e10f,
                              3.4028235e38f,
                              1.1754944e-38f,
                              1e-45f,
                              0.0078125f,
                              0.00000762939453125f,
                              infinity,
                              none})
        for (const float sign : {1.0f, -1.0f})
            EXPECT_EQ(Fixed(std::copysign(value, sign)), Printf(std::copysign(value, sign)));
    // Multiples of 2^-7 end exactly between two millionths.
    for (int i = 1; i < 4096; ++i)
        ASSERT_EQ(Fixed(float(i) / 128.0f), Printf(float(i) / 128.0f));
}

TEST(FixedText, IsWhatPrintfMakesOfAnyBits) {
    std::mt19937 random(42);
    for (int i = 0; i < 400000; ++i) {
        auto bits = static_cast<uint32_t>(random());
        // Every other one near the numbers that simulations hold.
        if (i % 2 == 1) bits = (bits & 0x807fffffu) | ((105 + bits % 45) << 23);
        float value;
        std::memcpy(&value, &bits, sizeof value);
        ASSERT_EQ(Fixed(value), Printf(value)) << std::hex << bits;
    }
}

TEST(FixedText, IntegersAreWhole) {
    for (const int value : {0, 1, 9, 10, 99, 100, 101, 999, 1000, 1001, 9999, 10000, 123456789, 2147483647})
        for (const int number : {value, -value, -value - 1}) {
            char text[kLongestFixed];
            EXPECT_EQ(std::string(text, PutInteger(text, number)), std::to_string(number));
        }
}

} // namespace
