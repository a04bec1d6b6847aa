// Shadows in the views, against where they lie by plain geometry.
#include "BOND/StickList.h"
#include "FILTER/clsFilterStick.h"
#include "GL/DRAW/clsGLSticks.h"
#include "GL/DRAW/clsShadowStencil.h"
#include "ShadowTest.h"

namespace {

using Shadows = ShadowTest;

TEST_F(Shadows, LieWhereTheyAreThrownOnEverySphere) {
    Show(Pair(), 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, kFromFront, 0.9);
    ExpectShadows("off", 0, 0);
    for (const int quality : {0, 1, 2}) {
        ShadowVolume_cls::GetSettings().mQuality.mValue = quality;
        ExpectShadows("quality " + std::to_string(quality), 50);
    }
    for (const unsigned classify : {0u, 1u}) {
        Option().mClassify.mValue = classify;
        for (const unsigned shader : {0u, 1u, 2u}) {
            SetLooks(3, shader);
            ExpectShadows("ray-cast, shader " + std::to_string(shader), 50);
        }
        SetLooks(2, ShaderCtrl_cls::TYPE_PHONG);
        ExpectShadows("mesh", 50); // its surface lies a little below
    }
    // As far as they reach.
    ShadowVolume_cls::GetSettings().mLength.mValue = 1.5f;
    const Picture_st near = Draw(1);
    EXPECT_EQ(CountDifferent(near, Draw(0), 2), 0);
}

TEST_F(Shadows, ComeFromEveryKindOfLight) {
    Show({{10, 0, 0}, {8, 0.5, 1.2}, {9, -2, 0.6}}, 0.7);
    for (const int type : {LightSRC_cls::TYPE_POINT, LightSRC_cls::TYPE_SPOT, LightSRC_cls::TYPE_CYLINDER}) {
        SetLight(0, type, {5.5, 1.2, 2.5}, 0.9);
        ExpectShadows("type " + std::to_string(type), 40);
        SetLooks(2, ShaderCtrl_cls::TYPE_PHONG);
        ExpectShadows("mesh, type " + std::to_string(type), 40);
        SetLooks(3, ShaderCtrl_cls::TYPE_PHONG);
    }
    // A light in a sphere: that one throws none.
    SetLight(0, LightSRC_cls::TYPE_POINT, {8, 0.5, 1.2}, 0.9);
    mSpheres = {{10, 0, 0}};
    const Picture_st inside = Draw(1);
    EXPECT_EQ(CountDifferent(inside, Draw(0), 2), 0);
}

TEST_F(Shadows, SeveralLightsEachThrowTheirOwn) {
    Show({{10, 0, 0}, Plus({10, 0.7, -0.4}, Unit(kFromFront), 3.0), {8.5, -1.6, 0.9}}, 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, kFromFront, 0.4);
    SetLight(1, LightSRC_cls::TYPE_PARALLEL, {-0.8, -0.5, 0.3}, 0.25);
    ExpectShadows("two", 80);
    SetLight(2, LightSRC_cls::TYPE_POINT, {4, 0, -3}, 0.2).mCCastShadow.mValue = false;
    ExpectShadows("and one without", 80);
    Lights().GetLight(0).mCVisible.mValue = false;
    ExpectShadows("one off", 10);
    Lights().GetLight(0).mCVisible.mValue = true;
    ShadowVolume_cls::GetSettings().mDarkness.mValue = 0.4f;
    ExpectShadows("darkness of two", 80);
    Lights().mCLightNumber.mValue = 1;
    ExpectShadows("darkness of one", 50);
    // None that throws: nothing changes.
    Lights().mCLightNumber.mValue = 3;
    for (int i = 0; i < 3; ++i)
        Lights().GetLight(i).mCCastShadow.mValue = false;
    const Picture_st none = Draw(1);
    EXPECT_EQ(CountDifferent(none, Draw(0), 0), 0);
    Lights().mCLightNumber.mValue = 0;
    EXPECT_EQ(CountDifferent(Draw(1), Draw(0), 0), 0);
}

// Lights that are added one after another give what they give together, unlit things included.
TEST_F(Shadows, WhatLiesInNoneLooksTheSame) {
    Show({{10, 0, 0}, {10, 3, 0}}, 1.0);
    SetBackground(0.1f, 0.3f, 0.2f);
    for (const int lights : {1, 3}) {
        for (int i = 0; i < lights; ++i)
            SetLight(i, i == 2 ? LightSRC_cls::TYPE_SPOT : LightSRC_cls::TYPE_PARALLEL, {-1, 0.3 * i, 0.4},
                     0.25);
        for (const unsigned drawType : {DRAW_SPHERE, DRAW_BILLBOARD, DRAW_POINT})
            for (const unsigned quality : {0u, 3u})
                for (const unsigned classify : {0u, 1u}) {
                    if (quality == 0 && classify == 1) continue;
                    Option().mClassify.mValue = classify;
                    SetLooks(quality, 0, drawType);
                    EXPECT_EQ(CountDifferent(Draw(1), Draw(0), 2), 0)
                        << lights << " lights, draw type " << drawType << ", quality " << quality;
                }
    }
    // Points and billboards throw none on what stands behind them, which is nowhere as bright as can be.
    for (int i = 0; i < 3; ++i)
        SetLight(i, LightSRC_cls::TYPE_PARALLEL, {-1, 0.3 * i, 0.4}, 0.08);
    mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData()->mCObjectType.mValue =
        FilterObjectData_cls::BOX;
    FilterObjectData_cls& box =
        *static_cast<FilterObject_cls&>(*Hub()->mpCFilters->GetObject().GetPCFilter(0)).GetPCData();
    FilterScope_cls::Set(box.mpCTranslate, {13, 1.5, 0});
    FilterScope_cls::Set(box.mpCScale, {1, 6, 6});
    for (const unsigned drawType : {DRAW_BILLBOARD, DRAW_POINT}) {
        SetLooks(0, 0, drawType);
        EXPECT_EQ(CountDifferent(Draw(1), Draw(0), 2), 0) << drawType;
    }
}

TEST_F(Shadows, ManyThatCoverAPixelLeaveNoHole) {
    for (const int many : {128, 256, 257, 512}) {
        std::vector<Vector> spheres = {{10, 0, 0}};
        for (int i = 0; i < many; ++i)
            spheres.push_back({10, 0.8, 3.5 + 0.01 * i});
        Show(spheres, 1.0);
        mSpheres = {spheres[0], spheres[1]};
        SetLight(0, LightSRC_cls::TYPE_PARALLEL, {0, 0, 1}, 0.9);
        SetLooks(0, ShaderCtrl_cls::TYPE_PHONG);
        SetLooks(3, ShaderCtrl_cls::TYPE_PHONG);
        mSpheres = {spheres[0], spheres[1]};
        ExpectShadows(std::to_string(many), 60);
    }
}

TEST_F(Shadows, TheEyeMayBeInThem) {
    // From behind the eye, over it and past the far plane.
    Show({{10, 0.9, 0}, {-4, 0, 0}, {-5, 0.1, 0}}, 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, {-1, 0, 0}, 0.8);
    ExpectShadows("eye inside", 60);
    Canvas(0)->mGLDepthMax.mValue = 11.5f;
    for (const bool bClamps : {true, false}) {
        ShadowStencil_cls::msbClamps = bClamps;
        const std::string how = bClamps ? "" : " without depth clamp";
        ShadowVolume_cls::GetSettings().mLength.mValue = 20.0f;
        SetLight(0, LightSRC_cls::TYPE_PARALLEL, {-1, 0, 0}, 0.8);
        ExpectShadows("cut by the far plane" + how, 60);
        ShadowVolume_cls::GetSettings().mLength.mValue = 1e5f;
        ExpectShadows("endless" + how, 60);
        SetLight(0, LightSRC_cls::TYPE_POINT, {-9, 0, 0}, 0.8);
        ExpectShadows("a near light" + how, 60);
    }
    ShadowStencil_cls::msbClamps = true;
    Canvas(0)->mGLDepthMax.mValue = 5000.0f;
    // A shadow towards the eye, which is dark to its end.
    Show({{10, 0, 0}, {6, 0.9, 0}}, 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, {1, 0, 0.02}, 0.8);
    ExpectShadows("towards the eye", 0);
}

TEST_F(Shadows, MoveWithTheirDataAndAreCopied) {
    Show(Pair(), 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, kFromFront, 0.9);
    FilterDataBoxData_cls& box = *mFilters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
    FilterScope_cls::Set(box.mpCTranslate, {1, 0.5, -0.2});
    const auto moved = [&](double scale, double mirror) {
        for (Vector& p : mSpheres)
            p = {scale * (p[0] + 1), mirror * scale * (p[1] + 0.5), scale * (p[2] - 0.2)};
        mRadius = scale;
    };
    for (const double mirror : {1.0, -1.0}) {
        mSpheres = Pair();
        mRadius = 1.0;
        FilterScope_cls::Set(box.mpCScale, {0.8, 0.8 * mirror, 0.8});
        moved(0.8, mirror);
        for (const int type : {LightSRC_cls::TYPE_PARALLEL, LightSRC_cls::TYPE_POINT}) {
            SetLight(0, type, type == LightSRC_cls::TYPE_PARALLEL ? kFromFront : Vector{4, 0.8 * mirror, 3},
                     0.9);
            ExpectShadows("box", type == LightSRC_cls::TYPE_PARALLEL && mirror > 0 ? 30 : 0);
        }
    }
    // Flat: nothing to see, nothing to throw.
    FilterScope_cls::Set(box.mpCScale, {1, 0, 1});
    Draw(1);
    Hub()->mpCFilters->ClearFilters();
    Show(Pair(), 1.0);
    Hub()->mpCPeriodicBoundary->ReadStrLine("PeriodicBaseVector1=0 3.5 0");
    FilterCopyData_cls& copies = *mFilters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData();
    copies.mCMin[1].mValue = -1;
    copies.mCMax[1].mValue = 1;
    for (int i = 0; i < 2; ++i)
        mSpheres.push_back(Plus(mSpheres[size_t(i)], {0, -3.5, 0}, 1.0));
    for (const int type : {LightSRC_cls::TYPE_PARALLEL, LightSRC_cls::TYPE_POINT}) {
        SetLight(0, type, type == LightSRC_cls::TYPE_PARALLEL ? kFromFront : Vector{4, 0, 4}, 0.9);
        ExpectShadows("copies", 60);
    }
}

// On the floor, under the light from straight above.
TEST_F(Shadows, FallOnObjects) {
    Show({{10, 0.5, 0}}, 1.0);
    FilterObjectData_cls& box = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    box.mCObjectType.mValue = FilterObjectData_cls::BOX;
    FilterScope_cls::Set(box.mpCTranslate, {10, 0, -2.5});
    FilterScope_cls::Set(box.mpCScale, {8, 8, 1});
    for (int k = 0; k < 3; ++k)
        SetColor(*box.mvpCColorCurve[size_t(k)], k == 0 ? 0.1f : k == 1 ? float(kDiffuse) : 0.0f);
    for (const int lights : {1, 2}) {
        for (int i = 0; i < lights; ++i)
            SetLight(i, LightSRC_cls::TYPE_PARALLEL, {0, 0, 1}, 0.4);
        const Picture_st with = Draw(1);
        const Picture_st without = Draw(0);
        int dark = 0;
        for (double dx = -2; dx <= 2; dx += 0.25)
            for (double dy = -2; dy <= 2; dy += 0.25) {
                const double far = std::hypot(dx, dy);
                const double at[3] = {10 + dx, 0.5 + dy, -2.0};
                double x = 0, y = 0;
                if (std::abs(far - 1.0) < 0.15 || !ProjectToWindow(0, at, &x, &y)) continue;
                const int seen = with.Brightness(int(x), int(y));
                if (far > 1.0) {
                    EXPECT_EQ(seen, without.Brightness(int(x), int(y))) << dx << " " << dy;
                    EXPECT_NEAR(seen, 255 * (kAmbient + kDiffuse * 0.4 * lights), 2.0) << dx << " " << dy;
                    continue;
                }
                ++dark;
                EXPECT_NEAR(seen, 255 * kAmbient, 3.0) << dx << " " << dy;
            }
        EXPECT_GT(dark, 20);
    }
}

// Between two particles, in the light from above the eye: its brightest line is seen half way up.
TEST_F(Shadows, FallOnSticks) {
    const Vector from = Unit({-1, 0, 1});
    mRadii = {0.1f, 0.1f, 0.6f};
    Show({{10, -2, 0}, {10, 2, 0}, Plus({10, 0, 0}, from, 3.0)}, 1.0);
    for (GLAttribute_cls* a : Drawing().mpCGLAttribute)
        a->mRadiusType.mValue = RADIUS_OF_DATA;
    FilterStickData_cls& stick = *mFilters.Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    stick.mCStickType.mValue = STICK_CYLINDER;
    stick.mCStickRadius.mValue = 0.3f;
    stick.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    stick.mCCritType.mValue = STICK_STEP_BETWEEN;
    stick.mCCritA.mValue = 3.9f;
    stick.mCCritB.mValue = 4.1f;
    for (const int type : {LightSRC_cls::TYPE_PARALLEL, LightSRC_cls::TYPE_POINT}) {
        const bool bNear = type == LightSRC_cls::TYPE_POINT;
        SetLight(0, type, bNear ? Plus({10, 0, 0}, from, 6.0) : from, 0.4);
        const double half = bNear ? 1.2 : 0.6; // of the shadow on the line, from twice as far
        const Picture_st with = Draw(1);
        const Picture_st without = Draw(0);
        int dark = 0, lit = 0;
        for (double y = -1.6; y <= 1.6; y += 0.1) {
            const double at[3] = {10 + 0.3 * from[0], y, 0.3 * from[2]};
            double x = 0, row = 0;
            if (std::abs(std::abs(y) - half) < 0.12 || !ProjectToWindow(0, at, &x, &row)) continue;
            const int seen = with.Brightness(int(x), int(row));
            const int bright = without.Brightness(int(x), int(row));
            EXPECT_GT(bright, 60) << y;
            if (std::abs(y) > half) {
                ++lit;
                EXPECT_EQ(seen, bright) << y;
            } else {
                ++dark;
                EXPECT_LT(seen, bright * 2 / 3) << y;
            }
        }
        EXPECT_GT(dark, 8);
        EXPECT_GE(lit, 4);
        if (HasFailure()) Snap("shadows_sticks");
    }
}

} // namespace
