#include "GL/DRAW/clsNearLights.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "COMMON/DataLoops.h"

namespace {

constexpr float kSmall =
    1e-4f; // square of radius over distance, where direction and viewer are at right angles
constexpr float kEdge = 1.1f; // radii from the edge of a cone

using Balls_st = ViewScale_cls::Silhouettes_st;

MORENTIS_DATA_LOOP void FindUnder(const Balls_st& balls, int count, const float* pPlace, const float* pAlong,
                                  float edge, unsigned char* pSmall) {
    for (int i = 0; i < count; ++i) {
        const float x = pPlace[0] - balls.eyeX[i];
        const float y = pPlace[1] - balls.eyeY[i];
        const float z = pPlace[2] - balls.eyeZ[i];
        const float r = balls.radius[i];
        const float far = std::sqrt(x * x + y * y + z * z);
        const bool bFar = r * r < kSmall * far * (far + z);
        // How far the sphere is inside of the cone, times the distance.
        const float inside = -(x * pAlong[0] + y * pAlong[1] + z * pAlong[2]) - edge * far;
        const bool bOut = inside < -kEdge * r;
        const bool bIn = inside > kEdge * r;
        pSmall[i] = static_cast<unsigned char>(pSmall[i] & ((bFar & bIn) | bOut));
    }
}

} // namespace

NearLights_cls::NearLights_cls(int number) {
    for (int i = 0; i < number; ++i) {
        const GLenum light = GL_LIGHT0 + static_cast<GLenum>(i);
        float place[4], along[3];
        float cutoff = 180.0f;
        glGetLightfv(light, GL_POSITION, place);
        if (place[3] == 0.0f) continue;
        glGetLightfv(light, GL_SPOT_CUTOFF, &cutoff);
        glGetLightfv(light, GL_SPOT_DIRECTION, along);
        const float length = std::sqrt(along[0] * along[0] + along[1] * along[1] + along[2] * along[2]);
        Light_st one;
        for (int k = 0; k < 3; ++k) {
            one.place[k] = place[k] / place[3];
            one.along[k] = length > 0.0f ? along[k] / length : 0.0f;
        }
        one.edge = cutoff <= 90.0f ? static_cast<float>(std::cos(double(cutoff) * M_PI / 180.0)) : -2.0f;
        mVLights.push_back(one);
    }
}

void NearLights_cls::FindSmall(const Balls_st& balls, int count, unsigned char* pSmall) const {
    std::fill_n(pSmall, count, static_cast<unsigned char>(1));
    for (const Light_st& light : mVLights)
        FindUnder(balls, count, light.place, light.along, light.edge, pSmall);
}
