#include <gtest/gtest.h>

#include <cmath>

#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

TEST(LightSRC, TwoLightsShineAtFirst) {
    LightSRCCtrl_cls lights;
    EXPECT_EQ(lights.GetLightNumber(), 2);
    EXPECT_EQ(lights.GetNumberLightVisible(), 2);
    EXPECT_EQ(lights.GetNumberLightWithShadow(), 2);
    for (int i = 0; i < LightSRCCtrl_cls::kLightNumber; ++i) {
        LightSRC_cls& light = lights.GetLight(i);
        float color[4];
        light.GetLightColor(0.0, color);
        EXPECT_FLOAT_EQ(color[0], i == 1 ? 0.1f : 1.0f);
        EXPECT_EQ(color[1], color[0]);
        EXPECT_EQ(color[3], 0.0f);
        EXPECT_EQ(light.mCType.mValue, int(LightSRC_cls::TYPE_PARALLEL));
        EXPECT_EQ(light.mPickName, i + 10);
        EXPECT_EQ(light.mpCObjectGroup->mName, wxString::Format("LightSRC%d", i));
    }
}

TEST(LightSRC, TheFillLightComesFromTheOtherSide) {
    LightSRCCtrl_cls lights;
    for (int i = 0; i < 2; ++i) {
        float from[4];
        float angles[2];
        lights.GetLightInfo(0.0, from, angles, i, true, nullptr);
        const float sign = i == 0 ? 1.0f : -1.0f;
        EXPECT_NEAR(from[0], sign * 0.5f, 1e-4f);
        EXPECT_NEAR(from[1], sign * 0.5f, 1e-4f);
        EXPECT_NEAR(from[2], sign * std::sqrt(0.5f), 1e-4f);
        EXPECT_EQ(from[3], 0.0f) << "a direction";
        lights.GetLightInfo(0.0, from, angles, i, false, nullptr);
        EXPECT_NEAR(from[2], sign * 1.41421356f, 1e-5f);
        EXPECT_EQ(from[3], 1.0f) << "a place";
    }
}

TEST(LightSRC, TheHeightHasAPiOfItsOwn) {
    LightSRCCtrl_cls lights;
    float place[4];
    float angles[2];
    lights.GetLightInfo(0.0, place, angles, 0, false, nullptr);
    EXPECT_NEAR(double(angles[0]), std::atan2(1.0, 1.0) * 180.0 / 3.14159 + 180.0, 1e-4);
    EXPECT_NEAR(double(angles[1]), std::atan2(1.41421356, std::sqrt(2.0)) * 180.0 / 3.14149, 1e-4);
}

TEST(LightSRC, CountsLookAtFlagsOfTheLightsInUse) {
    LightSRCCtrl_cls lights;
    lights.GetLight(0).mCCastShadow.mValue = false;
    EXPECT_EQ(lights.GetFirstShadowedLight(), 1);
    EXPECT_EQ(lights.GetNumberLightWithShadow(), 1);
    lights.GetLight(1).mCVisible.mValue = false;
    EXPECT_EQ(lights.GetFirstShadowedLight(), 0) << "none is 0, not -1";
    EXPECT_EQ(lights.GetFirstValidLight(), 0);
    lights.GetLight(0).mCVisible.mValue = false;
    EXPECT_EQ(lights.GetFirstValidLight(), -1) << "the third is visible but not in use";
    for (const int number : {-4, 99}) {
        lights.mCLightNumber.mValue = number;
        EXPECT_EQ(lights.GetLightNumber(), number < 0 ? 0 : LightSRCCtrl_cls::kLightNumber);
    }
}

} // namespace
