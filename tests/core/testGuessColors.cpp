// The colours that a guess gives to types of particles can be told apart.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "PDATA/GuessOffer.h"

namespace {

using Rgb = std::array<double, 3>;

// Lightness and the two axes of colour, in which a distance of about 2 is just seen.
Rgb ToLab(const Rgb& linear) {
    const auto curve = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116.0; };
    const auto& [r, g, b] = linear;
    const double x = curve((0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.9505);
    const double y = curve(0.2126 * r + 0.7152 * g + 0.0722 * b);
    const double z = curve((0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.089);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

} // namespace

// As eyes without one kind of cones see them, by matrices on linear light (Machado, Oliveira and Fernandes
// 2009, severity 1), and without any colour.
TEST(GuessColors, DifferToEveryEye) {
    const double eyes[][3][3] = {
        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}},
        {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}},
        {{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}},
        {{0.2126, 0.7152, 0.0722}, {0.2126, 0.7152, 0.0722}, {0.2126, 0.7152, 0.0722}}};
    for (const auto& eye : eyes) {
        std::vector<Rgb> seen;
        for (const auto& color : kGuessColors) {
            Rgb light, through{};
            for (size_t c = 0; c < 3; ++c)
                light[c] = std::pow((static_cast<double>(color[c]) + 0.055) / 1.055, 2.4);
            for (size_t row = 0; row < 3; ++row) {
                for (size_t c = 0; c < 3; ++c)
                    through[row] += eye[row][c] * light[c];
                through[row] = std::clamp(through[row], 0.0, 1.0);
            }
            seen.push_back(ToLab(through));
        }
        for (size_t a = 0; a < seen.size(); ++a) {
            EXPECT_GT(seen[a][0], 35) << "bright enough on black";
            for (size_t b = 0; b < a; ++b)
                EXPECT_GT(
                    std::hypot(seen[a][0] - seen[b][0], seen[a][1] - seen[b][1], seen[a][2] - seen[b][2]), 18)
                    << a << " and " << b;
        }
    }
}
