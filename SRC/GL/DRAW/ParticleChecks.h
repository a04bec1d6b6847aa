// What of a particle can't be drawn: files hold anything.
#pragma once

#include <limits>

/// Place and radius are numbers, and the radius isn't zero.
inline bool IsDrawable(const float* pPos, float radius) {
    const float sum = pPos[0] + pPos[1] + pPos[2] + radius;
    return sum - sum == 0.0f && radius != 0.0f;
}

/// Of a billboard: an alpha that can't change a pixel of eight bits.
constexpr float kFaint = 0.0035f;

/// With more billboards than this of one look their opacity follows other rules (clsGLDrawBillboard.cpp).
constexpr int kManyBillboards = 600000;

/// alpha / radius^2 * scale, at most `limit`; the limit as well where the radius is too small to divide by.
inline float AlphaByRadius(float alpha, float radius, float scale, float limit) {
    const float value = alpha / (radius * radius) * scale;
    return value < limit ? value : limit;
}
