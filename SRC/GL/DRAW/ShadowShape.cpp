#include "GL/DRAW/ShadowShape.h"

#include <algorithm>
#include <cmath>

#include "COMMON/clsMyVector.h"

namespace {
constexpr float kSteepest = 0.9995f; // radius over distance of a sphere that nearly touches the light
} // namespace

void ShadowShape_st::SetLight(bool bHasPlace, const double* pLight) {
    bNear = bHasPlace;
    for (int i = 0; i < 3; ++i) {
        light[i] = static_cast<float>(pLight[i]);
        axes[0][i] = -light[i];
    }
    if (!bNear) MakeAcross(axes[0], axes[1], axes[2]);
}

// The light touches the sphere along a circle; a near one's lies before the middle.
bool ShadowShape_st::GetEnds(const float* pPos, float radius, Ends_st& ends) const {
    float away[3] = {axes[0][0], axes[0][1], axes[0][2]};
    float sine = 0.0f;
    float cosine = 1.0f;
    if (bNear) {
        for (int i = 0; i < 3; ++i)
            away[i] = pPos[i] - light[i];
        const float far = MyVector::GetNorm(away);
        if (!(far > radius)) return false;
        for (float& a : away)
            a /= far;
        sine = std::min(radius / far, kSteepest);
        cosine = std::sqrt(1.0f - sine * sine);
    }
    for (int end = 0; end < 2; ++end) {
        const float way = end == 0 ? start : length;
        for (int i = 0; i < 3; ++i)
            ends.place[end][i] = pPos[i] + radius * (way - sine) * away[i];
        ends.radius[end] = radius * (cosine + way * sine / cosine);
    }
    return true;
}

void ShadowShape_st::MakeAcross(const float* pAway, float* pSide, float* pUp) {
    const float other[3] = {std::fabs(pAway[2]) < 0.9f ? 0.0f : 1.0f, 0.0f,
                            std::fabs(pAway[2]) < 0.9f ? 1.0f : 0.0f};
    MyVector::GetCrossedVector(pAway, other, pSide);
    const float length = MyVector::GetNorm(pSide);
    for (int i = 0; i < 3; ++i)
        pSide[i] /= length;
    MyVector::GetCrossedVector(pAway, pSide, pUp);
}
