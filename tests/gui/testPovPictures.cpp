// POV-Ray's picture of a frame is the view's.
#include <cmath>
#include <random>

#include "COLORCURVE/clsColorCurve.h"
#include "PovTest.h"

namespace {

class PovPictures : public PovTest {};

TEST_F(PovPictures, PerspectiveOfSquareAndWideAndTallPictures) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}, {-1, 0.2f, 0.6f, 0.08f}});
    LookFrom({-4, 0.3, 0.2}, {1, -0.05, -0.03});
    ExpectAlike(128, 128, 4);
    ExpectAlike(160, 96, 4);
    ExpectAlike(96, 128, 4);
}

TEST_F(PovPictures, OrthographicPicturesFromTheCameraAndAlongAxes) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}, {-1, 0.2f, 0.6f, 0.08f}});
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC);
    ExpectAlike(128, 128, 4);
    ExpectAlike(160, 96, 4);
}

TEST_F(PovPictures, FisheyePictures) {
    ShowBalls({{0, 0, 0, 0.4f}, {-4, 3, 0, 0.4f}, {-4, 0, 3, 0.4f}, {-2, -2, -2, 0.3f}});
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_FISHEYE);
    Canvas(0)->mGLPersAngle.mValue = 180.0f;
    ExpectAlike(128, 128, 4);
}

TEST_F(PovPictures, LitSpheresAreAsBright) {
    SetMaterial(0.2f, 0.7f, 0);
    ShowBalls({{0, 0.5f, 0, 0.35f}, {0, -0.5f, 0, 0.35f}});
    for (const int type : {LightSRC_cls::TYPE_PARALLEL, LightSRC_cls::TYPE_POINT, LightSRC_cls::TYPE_SPOT,
                           LightSRC_cls::TYPE_CYLINDER}) {
        for (const int fade : {0, 1, 2}) {
            LightSRC_cls& light = SetOneLight(type, {-4, 0.5, 1}, {0, 15, 0}, 0.8);
            light.mCFade.mValue = fade;
            light.mCFadeDistance.mValue = 3.0f;
            light.mCSpotAngle.mValue = 60;
            const wxImage view = Draw(96, 96);
            Write();
            const wxImage rendered = Render(96, 96);
            ASSERT_TRUE(rendered.IsOk());
            for (const double x : {34.0, 61.0})
                EXPECT_NEAR(GreyAt(view, x, 48), GreyAt(rendered, x, 48), 8)
                    << "type " << type << " fade " << fade;
            Keep(view, std::to_string(type) + std::to_string(fade) + "view");
            Keep(rendered, std::to_string(type) + std::to_string(fade) + "pov");
        }
    }
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
