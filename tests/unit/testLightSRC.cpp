#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <vector>

#include "GroupValue.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

class LightSRC : public ::testing::Test {
protected:
    ~LightSRC() override { GCUndoList.Clear(); }

    /// As a project would: block by block, then what follows.
    static wxString Read(LightSRCCtrl_cls& lights, const wxString& text) {
        std::wistringstream stream(text.ToStdWstring());
        std::wstring line, rest;
        while (std::getline(stream, line)) {
            lights.ReadStrLine(stream, line);
            if (line != L"---AllLightSource") rest += line + L"\n";
        }
        return rest;
    }
    static void SetConstant(ParamGroup_cls* group, std::vector<double> values) {
        group->SetKeyFrame(values.data(), true, ParamGroup_cls::kCurrent);
    }
    static float Strength(LightSRCCtrl_cls& lights, int i) {
        float color[4];
        lights.GetLight(i).GetLightColor(0.0, color);
        return color[0];
    }
    LightSRCCtrl_cls mLights;
};

TEST_F(LightSRC, TwoLightsShineAtFirst) {
    EXPECT_EQ(mLights.GetLightNumber(), 2);
    EXPECT_EQ(mLights.GetNumberLightVisible(), 2);
    EXPECT_EQ(mLights.GetNumberLightWithShadow(), 2);
    for (int i = 0; i < LightSRCCtrl_cls::kLightNumber; ++i) {
        LightSRC_cls& light = mLights.GetLight(i);
        EXPECT_FLOAT_EQ(Strength(mLights, i), i == 1 ? 0.1f : 1.0f);
        EXPECT_EQ(light.mCType.mValue, int(LightSRC_cls::TYPE_PARALLEL));
        EXPECT_EQ(light.mPickName, i + 10);
        EXPECT_EQ(light.mpCObjectGroup->mName, wxString::Format("LightSRC%d", i));
        EXPECT_EQ(light.mpCObjectGroup->mbVisible, i < 2) << "on the time lines";
    }
}

TEST_F(LightSRC, TheFillLightComesFromTheOtherSide) {
    for (int i = 0; i < 2; ++i) {
        float from[4];
        float angles[2];
        mLights.GetLightInfo(0.0, from, angles, i, true, nullptr);
        const float sign = i == 0 ? 1.0f : -1.0f;
        EXPECT_NEAR(from[0], sign * 0.5f, 1e-4f);
        EXPECT_NEAR(from[1], sign * 0.5f, 1e-4f);
        EXPECT_NEAR(from[2], sign * std::sqrt(0.5f), 1e-4f);
        EXPECT_EQ(from[3], 0.0f) << "a direction";
        mLights.GetLightInfo(0.0, from, angles, i, false, nullptr);
        EXPECT_NEAR(from[2], sign * 1.41421356f, 1e-5f);
        EXPECT_EQ(from[3], 1.0f) << "a place";
    }
}

TEST_F(LightSRC, TheHeightHasAPiOfItsOwn) {
    float place[4];
    float angles[2];
    mLights.GetLightInfo(0.0, place, angles, 0, false, nullptr);
    EXPECT_NEAR(double(angles[0]), std::atan2(1.0, 1.0) * 180.0 / 3.14159 + 180.0, 1e-4);
    EXPECT_NEAR(double(angles[1]), std::atan2(1.41421356, std::sqrt(2.0)) * 180.0 / 3.14149, 1e-4);
}

TEST_F(LightSRC, CountsLookAtFlagsOfTheLightsInUse) {
    mLights.GetLight(0).mCCastShadow.mValue = false;
    EXPECT_EQ(mLights.GetFirstShadowedLight(), 1);
    EXPECT_EQ(mLights.GetNumberLightWithShadow(), 1);
    mLights.GetLight(1).mCVisible.mValue = false;
    EXPECT_EQ(mLights.GetFirstShadowedLight(), 0) << "none is 0, not -1";
    EXPECT_EQ(mLights.GetFirstValidLight(), 0);
    EXPECT_EQ(mLights.GetNumberLightWithShadow(), 1) << "whether it shines or not";
    mLights.GetLight(0).mCVisible.mValue = false;
    EXPECT_EQ(mLights.GetFirstValidLight(), -1) << "the third is visible but not in use";
    for (const int number : {-4, 99}) {
        mLights.mCLightNumber.mValue = number;
        EXPECT_EQ(mLights.GetLightNumber(), number < 0 ? 0 : LightSRCCtrl_cls::kLightNumber);
    }
}

TEST_F(LightSRC, AddingAndRemovingAreTakenBackToTheByte) {
    std::vector<wxString> texts = {mLights.Serialize()};
    const auto note = [&] { texts.push_back(mLights.Serialize()); };
    for (int i = 0; i < 5; ++i) {
        mLights.AddLight();
        EXPECT_EQ(mLights.GetLightNumber(), 3 + i);
        EXPECT_EQ(mLights.GetCurrentLight(), 2 + i);
        EXPECT_TRUE(mLights.GetLight(2 + i).mpCObjectGroup->mbVisible);
        note();
    }
    const unsigned steps = GCUndoList.GetCurrent();
    mLights.AddLight();
    EXPECT_EQ(mLights.GetLightNumber(), 7);
    EXPECT_EQ(GCUndoList.GetCurrent(), steps) << "seven are all, and no step is left";
    for (const int current : {6, 0, 3, 1, 1, 1}) {
        mLights.SelectLight(current);
        mLights.GetLight(current).mCType.mValue = current % 3;
        texts.back() = mLights.Serialize();
        const bool bLast = current == mLights.GetLightNumber() - 1;
        mLights.RemoveLight();
        EXPECT_EQ(mLights.GetCurrentLight(), bLast ? current - 1 : current);
        note();
    }
    EXPECT_EQ(mLights.GetLightNumber(), 1);
    EXPECT_FALSE(mLights.GetLight(1).mpCObjectGroup->mbVisible);
    for (int round = 0; round < 2; ++round) {
        for (size_t i = texts.size() - 1; i-- > 0;) {
            GCUndoList.UndoCurrent();
            // Types were changed on the way, by no step.
            EXPECT_EQ(mLights.Serialize().Length(), texts[i].Length()) << i;
        }
        EXPECT_FALSE(GCUndoList.IsUndoable());
        const wxString start = mLights.Serialize();
        for (size_t i = 1; i < texts.size(); ++i)
            GCUndoList.ExecCurrent();
        EXPECT_EQ(mLights.Serialize(), texts.back());
        while (GCUndoList.IsUndoable())
            GCUndoList.UndoCurrent();
        EXPECT_EQ(mLights.Serialize(), start);
        for (size_t i = 1; i < texts.size(); ++i)
            GCUndoList.ExecCurrent();
    }
}

TEST_F(LightSRC, TheNextLightMovesDownWithWhatIsItsPlaceAndLook) {
    mLights.AddLight();
    LightSRC_cls& second = mLights.GetLight(1);
    LightSRC_cls& third = mLights.GetLight(2);
    third.mCType.mValue = LightSRC_cls::TYPE_SPOT;
    third.mCFade.mValue = LightSRC_cls::FADE_POWER2;
    third.mCSpotAngle.mValue = 12;
    third.mCTarget.mValue = 2;
    third.mCVisible.mValue = false;
    third.mCFollowsCamera.mValue = true;
    third.mCFadeDistance.mValue = 7;
    third.mCCastShadow.mValue = false;
    third.mCLightArea.mValue = true;
    third.mCLightAreaSize.mValue = 3;
    third.mCLightAreaQuality.mValue = 9;
    SetConstant(third.mpCTranslate, {4, 5, 6});
    SetConstant(third.mpCRotate, {7, 8, 9});
    SetConstant(third.mpCStrength, {0.7});
    GCUndoList.Clear();
    mLights.SelectLight(1);
    const wxString before = mLights.Serialize();
    mLights.RemoveLight();
    EXPECT_EQ(mLights.GetLightNumber(), 2);
    EXPECT_EQ(mLights.GetCurrentLight(), 1);
    EXPECT_EQ(second.mCType.mValue, int(LightSRC_cls::TYPE_SPOT));
    EXPECT_EQ(second.mCFade.mValue, int(LightSRC_cls::FADE_POWER2));
    EXPECT_EQ(second.mCSpotAngle.mValue, 12);
    EXPECT_EQ(second.mCTarget.mValue, 2u);
    EXPECT_FALSE(second.mCVisible.mValue);
    EXPECT_TRUE(second.mCFollowsCamera.mValue) << "its place is one of the camera's";
    EXPECT_EQ(GetGroupValue(second.mpCTranslate, 0.0), (std::vector<double>{4, 5, 6}));
    EXPECT_EQ(GetGroupValue(second.mpCRotate, 0.0), (std::vector<double>{7, 8, 9}));
    EXPECT_FLOAT_EQ(Strength(mLights, 1), 0.7f);
    // These stay behind.
    EXPECT_EQ(second.mCFadeDistance.mValue, 1.0f);
    EXPECT_TRUE(second.mCCastShadow.mValue);
    EXPECT_FALSE(second.mCLightArea.mValue);
    EXPECT_FLOAT_EQ(second.mCLightAreaSize.mValue, 0.2f);
    EXPECT_EQ(second.mCLightAreaQuality.mValue, 5u);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mLights.Serialize(), before);
}

TEST_F(LightSRC, TheTextHoldsTheLightsInUse) {
    const wxString text = mLights.Serialize();
    EXPECT_TRUE(
        text.StartsWith("---AllLightSource\nLightNumber=2\n---LightSRC 0\nType=3\nSpotAngle=35\nFade=0\n"
                        "FadeDistance=1.000000\nCastShadow=1\nLightArea=0\nLightAreaSize=0.200000\n"
                        "LightAreaQuality=5\nTarget=0\nVisible=1\n-ParamGroup=LightSRC0 Translate\n"))
        << text;
    EXPECT_TRUE(text.EndsWith("---AllLightSourceEnd\n"));
    EXPECT_FALSE(text.Contains("---LightSRC 2"));
    EXPECT_FALSE(text.Contains("Scale")) << "only three groups";
    EXPECT_FALSE(text.Contains("FollowsCamera")) << "off by default, and then not written";
    // Everything comes back.
    for (int i = 0; i < 3; ++i)
        mLights.AddLight();
    for (int i = 0; i < 5; ++i) {
        LightSRC_cls& light = mLights.GetLight(i);
        light.mCType.mValue = i % 4;
        light.mCFade.mValue = i % 3;
        light.mCSpotAngle.mValue = 10 * i;
        light.mCFadeDistance.mValue = 1.5f * float(i);
        light.mCFollowsCamera.mValue = i == 1;
        light.mCVisible.mValue = i != 3;
        SetConstant(light.mpCTranslate, {double(i), -double(i), 0.5});
        light.mpCStrength->SetTimeDependent(true);
        const double strength = i;
        light.mpCStrength->SetKeyFrame(&strength, true, 0.5);
    }
    const wxString changed = mLights.Serialize();
    EXPECT_TRUE(changed.Contains("Visible=1\nFollowsCamera=1\n-ParamGroup=LightSRC1"));
    LightSRCCtrl_cls other;
    other.GetLight(0).mCFollowsCamera.mValue = true; // which the text doesn't say
    EXPECT_EQ(Read(other, "before\n" + changed + "behind\n"), "before\nbehind\n");
    EXPECT_EQ(other.Serialize(), changed);
    other.SetToDefault();
    EXPECT_EQ(other.Serialize(), text);
}

TEST_F(LightSRC, LightsAreFilledInTheOrderOfTheFile) {
    EXPECT_EQ(Read(mLights, "---AllLightSource\nLightNumber=3\n---LightSRC 5\nType=1\n---LightSRC 0\nType=2\n"
                            "---AllLightSourceEnd\n---StereoGram\n"),
              "---StereoGram\n");
    EXPECT_EQ(mLights.GetLightNumber(), 3);
    EXPECT_EQ(mLights.GetLight(0).mCType.mValue, 1);
    EXPECT_EQ(mLights.GetLight(1).mCType.mValue, 2);
    EXPECT_EQ(mLights.GetLight(2).mCType.mValue, 3);
    EXPECT_EQ(mLights.GetLight(5).mCType.mValue, 3);
}

TEST_F(LightSRC, BadFilesLeaveLightsThatCanBeUsed) {
    for (const int number : {0, 8, 100, -3, 2147483647}) {
        LightSRCCtrl_cls lights;
        wxString text = wxString::Format("---AllLightSource\nLightNumber=%d\n", number);
        const int written = std::min(number, 100);
        for (int i = 0; i < written; ++i)
            text += wxString::Format("---LightSRC %d\nType=1\nSpotAngle=%d\n", i, 20 + i);
        EXPECT_EQ(Read(lights, text + "---AllLightSourceEnd\nrest\n"), "rest\n") << number;
        const int used = number < 0 ? 0 : std::min(number, 7);
        EXPECT_EQ(lights.GetLightNumber(), used);
        EXPECT_EQ(lights.GetCurrentLight(), used > 0 ? 0 : -1);
        EXPECT_EQ(lights.GetFirstValidLight(), used > 0 ? 0 : -1);
        EXPECT_EQ(lights.GetLight(6).mCSpotAngle.mValue, number > 6 ? 26 : 35);
        lights.RemoveLight();
        lights.AddLight();
        EXPECT_EQ(lights.GetLightNumber(), std::max(used, 1));
    }
    // Values that no field gives, and a block that ends in the middle.
    EXPECT_EQ(Read(mLights,
                   "---AllLightSource\nLightNumber=1\n---LightSRC 0\nType=9\nSpotAngle=-20\nFade=-1\n"
                   "FadeDistance=nan\nLightAreaSize=-inf\nTarget=7\nVisible=yes\n"
                   "-ParamGroup=LightSRC0 Translate\ndimension=900\nStart\nParameter_x\nitemnum 5\n"),
              "");
    LightSRC_cls& light = mLights.GetLight(0);
    EXPECT_EQ(light.mCType.mValue, 3);
    EXPECT_EQ(light.mCSpotAngle.mValue, 0);
    EXPECT_EQ(light.mCFade.mValue, 0);
    EXPECT_EQ(light.mCFadeDistance.mValue, 1.0f);
    EXPECT_FLOAT_EQ(light.mCLightAreaSize.mValue, 0.2f);
    EXPECT_EQ(light.mCTarget.mValue, 0u);
    EXPECT_FALSE(light.mCVisible.mValue);
}

TEST_F(LightSRC, WhateverTheCurvesHoldNumbersComeOut) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    LightSRC_cls& light = mLights.GetLight(0);
    PositionAndDirection_cls camera;
    for (const bool bFollows : {false, true})
        for (const double bad : {kNaN, kInf, -kInf, 1e300}) {
            light.mCFollowsCamera.mValue = bFollows;
            camera.mPos[0] = bad;
            mLights.SetCamera(camera);
            SetConstant(light.mpCTranslate, {bad, 2, 3});
            SetConstant(light.mpCRotate, {0, bad, bad});
            SetConstant(light.mpCStrength, {bad});
            mLights.UpdateCurrentObj(0.0);
            EXPECT_TRUE(std::isfinite(Strength(mLights, 0)));
            for (const bool bDirection : {false, true}) {
                float from[4];
                float angles[2];
                mLights.GetLightInfo(0.0, from, angles, 0, bDirection, nullptr);
                double square = 0.0;
                for (int k = 0; k < 3; ++k) {
                    EXPECT_TRUE(std::isfinite(from[k])) << bad << bFollows << bDirection;
                    square += double(from[k] * from[k]);
                }
                EXPECT_TRUE(std::isfinite(square));
                if (bDirection) {
                    EXPECT_NEAR(square, 1.0, 1e-4);
                }
                EXPECT_TRUE(std::isfinite(angles[0]) && std::isfinite(angles[1]));
            }
        }
    SetConstant(light.mpCStrength, {-2.5});
    EXPECT_EQ(Strength(mLights, 0), -2.5f) << "takes light away";
}

TEST_F(LightSRC, OneThatFollowsTheCameraStandsInItsCoordinates) {
    LightSRC_cls& light = mLights.GetLight(0);
    light.mCFollowsCamera.mValue = true;
    SetConstant(light.mpCTranslate, {1, 2, 3});
    SetConstant(light.mpCRotate, {0, 0, 0});
    PositionAndDirection_cls camera; // looks along -z, up is y, right is x
    camera.Set(10, 20, 30);
    mLights.SetCamera(camera);
    float from[4];
    float angles[2];
    mLights.GetLightInfo(0.0, from, angles, 0, false, nullptr);
    const float place[4] = {10 - 2, 20 + 3, 30 - 1, 1};
    for (int k = 0; k < 4; ++k)
        EXPECT_FLOAT_EQ(from[k], place[k]) << k;
    mLights.GetLightInfo(0.0, from, angles, 0, true, nullptr);
    const float lamp[4] = {0, 0, 1, 0};
    for (int k = 0; k < 4; ++k)
        EXPECT_NEAR(from[k], lamp[k], 1e-5f) << "from where the camera is";
    // The origin is the scene's, wherever the camera goes.
    light.mCTarget.mValue = SceneObj_cls::TARGET_ORIGIN;
    mLights.GetLightInfo(0.0, from, angles, 0, true, nullptr);
    const float far = std::sqrt(place[0] * place[0] + place[1] * place[1] + place[2] * place[2]);
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(from[k], place[k] / far, 1e-5f) << k;
}

TEST_F(LightSRC, ABlockWithoutItsEndLeavesTheNextOneAlone) {
    EXPECT_EQ(Read(mLights, "---AllLightSource\nLightNumber=1\n---LightSRC 0\nType=1\n"
                            "---CameraPath\nCameraGeometry=1\n"),
              "---CameraPath\nCameraGeometry=1\n");
    EXPECT_EQ(mLights.GetLight(0).mCType.mValue, 1);
}

} // namespace
