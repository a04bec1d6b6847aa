// POV-Ray's picture of particles is the view's: brightness, colours, opacity, and what data may be like.
#include <cmath>
#include <random>
#include <set>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/Globals.h"
#include "PovTest.h"

namespace {

class PovPictures : public PovTest {};

TEST_F(PovPictures, LitSpheresAreAsBright) {
    SetMaterial(0.2f, 0.7f, 0);
    ShowBalls({{0, 0.5f, 0, 0.35f}, {0, -0.5f, 0, 0.35f}});
    std::vector<std::string> names, scenes;
    std::vector<wxImage> views;
    for (const int type : {LightSRC_cls::TYPE_PARALLEL, LightSRC_cls::TYPE_POINT, LightSRC_cls::TYPE_SPOT,
                           LightSRC_cls::TYPE_CYLINDER}) {
        for (const int fade : {0, 1, 2}) {
            if (fade > 0 && type == LightSRC_cls::TYPE_PARALLEL) continue; // which a thousand units take away
            LightSRC_cls& light = SetOneLight(type, {-4, 0.5, 1}, {0, 15, 0}, 0.8);
            light.mCFade.mValue = fade;
            light.mCFadeDistance.mValue = 3.0f;
            light.mCSpotAngle.mValue = 60;
            names.push_back("type " + std::to_string(type) + " fade " + std::to_string(fade));
            views.push_back(Draw(96, 96));
            scenes.push_back(Write());
        }
    }
    const std::vector<wxImage> rendered = RenderAll(scenes, 96, 96);
    for (size_t i = 0; i < names.size(); ++i) {
        for (const double x : {34.0, 61.0})
            EXPECT_NEAR(GreyAt(views[i], x, 48), GreyAt(rendered[i], x, 48), 8) << names[i];
        Keep(views[i], names[i] + " view");
        Keep(rendered[i], names[i] + " pov");
    }
}

// A sphere of POV-Ray has a back, too, so that the numbers are compared instead of the pictures.
TEST_F(PovPictures, OpacityIsTheViews) {
    SetMaterial(0.8f, 0, 0);
    SetBackground(0, 0, 0);
    Pov().mColorByParticle.mValue = true;
    GLAttribute_cls& first = *Drawing().mpCGLAttribute[0];
    const float factor = first.mAlphaFactor.mValue;
    ShowBalls({{0, 0, 0, 0.5f}});
    const int whole = GreyAt(Draw(64, 64), 32, 32);
    first.mAlphaFactor.mValue = 0.5f;
    first.mDiffuse.mConstantColor.mValue[3] = 0.5f;
    GbSnapDataRefresh = true;
    EXPECT_NEAR(GreyAt(Draw(64, 64), 32, 32), whole / 4, 6);
    mScene = Write();
    EXPECT_NE(mScene.find("rgbt <0.8000,0.8000,0.8000,0.7500>"), std::string::npos);
    first.mAlphaFactor.mValue = factor;
}

TEST_F(PovPictures, ColoursOfACurveAndGroupsOfMaterials) {
    SetMaterial(0.1f, 0.8f, 0);
    std::vector<Ball_st> balls;
    for (int i = 0; i < 9; ++i)
        balls.push_back({0, -0.8f + 0.2f * float(i), 0.3f * std::sin(float(i)), 0.12f, 0, float(i) / 8});
    ShowBalls(balls);
    ColorCurve_cls& curve = Drawing().mpCGLAttribute[0]->mDiffuse;
    curve.mbUseColorCurve.mValue = true;
    curve.SetKeys({{0, 0.9, 0.1, 0.1, 1}, {1, 0.1, 0.3, 0.9, 1}});
    curve.mScalingMin.mValue = 0;
    curve.mScalingMax.mValue = 1;
    GbSnapDataRefresh = true;
    const wxImage view = Draw(128, 128);
    std::vector<std::string> scenes;
    for (int way = 0; way < 4; ++way) {
        Pov().mColorByParticle.mValue = way < 2;
        Pov().mGroupMaterials.mValue = way % 2 == 0;
        scenes.push_back(Write());
    }
    mScene = scenes.back();
    const std::vector<wxImage> rendered = RenderAll(scenes, 128, 128);
    for (size_t way = 0; way < 4; ++way)
        Keep(rendered[way], std::to_string(way));
    Keep(view, "view");
    EXPECT_GE(GetSimilarity(rendered[0], rendered[1]), 0.999) << "in groups or one by one";
    EXPECT_GE(GetSimilarity(rendered[2], rendered[3]), 0.999);
    EXPECT_NE(mScene.find("#macro SP0(VPos,Radi,FilterAlpha)\nsphere{ VPos, Radi\n"), std::string::npos);
    const std::vector<Spot_st> spots = FindSpots(view, 30);
    ASSERT_FALSE(spots.empty());
    int compared = 0;
    for (int x = 8; x < 120; x += 4)
        for (int y = 40; y < 88; y += 4) {
            if (GreyAt(view, x, y) < 60 || GreyAt(rendered[0], x, y) < 60) continue;
            EXPECT_NEAR(view.GetRed(x, y), rendered[0].GetRed(x, y), 16) << x << ", " << y;
            EXPECT_NEAR(view.GetBlue(x, y), rendered[0].GetBlue(x, y), 16) << x << ", " << y;
            ++compared;
        }
    EXPECT_GT(compared, 20);
}

// Spheres are shaded, and points are as transparent as they are small: their hue is the same.
TEST_F(PovPictures, PointsAndBillboardsHaveTheirColours) {
    SetBackground(0, 0, 0);
    Pov().mColorByParticle.mValue = true;
    ShowBalls({{0, 0.6f, 0, 0.3f, 0, 0}, {0, 0, 0, 0.3f, 0, 0.5f}, {0, -0.6f, 0, 0.3f, 0, 1}});
    GLAttribute_cls& first = *Drawing().mpCGLAttribute[0];
    ColorCurve_cls& curve = first.mColor;
    curve.mbUseColorCurve.mValue = true;
    curve.SetKeys({{0, 0.9, 0.1, 0.1, 1}, {1, 0.1, 0.3, 0.9, 1}});
    curve.mScalingMin.mValue = 0;
    curve.mScalingMax.mValue = 1;
    std::vector<wxImage> views;
    std::vector<std::string> scenes;
    std::set<long> seen;
    for (const unsigned type : {DRAW_POINT, DRAW_BILLBOARD}) {
        first.mDrawType.mValue = type;
        first.mPointSize.mValue = 7;
        GbSnapDataRefresh = true;
        views.push_back(Draw(96, 96));
        scenes.push_back(Write());
    }
    const std::vector<wxImage> rendered = RenderAll(scenes, 96, 96);
    for (size_t i = 0; i < views.size(); ++i) {
        Keep(views[i], std::to_string(i) + "view");
        Keep(rendered[i], std::to_string(i) + "pov");
        const std::vector<Spot_st> spots = FindSpots(views[i], 12);
        EXPECT_EQ(spots.size(), 3u) << i;
        for (const Spot_st& spot : spots) {
            const int x = int(spot.mX), y = int(spot.mY);
            const auto getHue = [x, y](const wxImage& image) {
                return double(image.GetRed(x, y)) / (image.GetRed(x, y) + image.GetBlue(x, y));
            };
            EXPECT_NEAR(getHue(views[i]), getHue(rendered[i]), 0.03) << i << " at " << x;
            seen.insert(std::lround(10 * getHue(views[i])));
        }
    }
    EXPECT_EQ(seen.size(), 3u) << "each has its own";
}

TEST_F(PovPictures, BadParticlesCostNoOthers) {
    const float kNaN = std::nanf("");
    ShowBalls({{0, 0.5f, 0},
               {kNaN, 0, 0},
               {0, 0, 0, kNaN},
               {1e30f, 0, 0},
               {0, -1e30f, 1e30f},
               {0, -0.5f, 0},
               {0, 0, 0.5f, 0},
               {0, 0, -0.5f, -0.1f}, // as large as above 0
               {0, 0, 0.2f, 0.1f, 3}});
    Drawing().mpCGLAttribute[3]->mDrawType.mValue = DRAW_HIDE;
    Draw(96, 96);
    std::vector<std::string> scenes;
    for (const bool bNone : {false, true}) {
        for (const bool bGroup : {false, true}) {
            Pov().mGroupMaterials.mValue = bGroup;
            scenes.push_back(mScene = Write());
            EXPECT_EQ(mScene.find("nan"), std::string::npos);
            EXPECT_EQ(mScene.find("#macro SP3"), std::string::npos) << "hidden";
        }
        if (bNone) break;
        ShowBalls({});
        Draw(96, 96);
    }
    // Without particles the decimals are those that are asked for.
    Canvas(0)->mShowData.mValue = false;
    scenes.push_back(Write());
    Pov().mDigits.mValue = 8;
    scenes.push_back(Write());
    Canvas(0)->mShowData.mValue = true;
    EXPECT_GT(scenes.back().size(), scenes[scenes.size() - 2].size());
    const std::vector<wxImage> rendered = RenderAll(scenes, 96, 96);
    for (size_t i = 0; i < rendered.size(); ++i)
        EXPECT_EQ(FindSpots(rendered[i]).size(), i < 2 ? 3u : 0u) << i;
}

TEST_F(PovPictures, ManySpheresAreSimilar) {
    SetMaterial(0.2f, 0.8f, 0);
    std::mt19937 random(5);
    std::uniform_real_distribution<float> side(-1, 1);
    std::vector<Ball_st> balls;
    for (int i = 0; i < 50; ++i)
        balls.push_back({side(random), side(random), side(random), 0.15f + 0.05f * side(random)});
    ShowBalls(balls);
    const wxImage view = Draw(160, 160);
    Write();
    const wxImage rendered = Render(160, 160);
    ASSERT_TRUE(rendered.IsOk());
    Keep(view, "view");
    Keep(rendered, "pov");
    EXPECT_GE(GetSimilarity(view, rendered), 0.9);
}

} // namespace
