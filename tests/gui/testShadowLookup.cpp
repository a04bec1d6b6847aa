// Shadows of many small spheres, which pixels look up: against the same drawn as volumes.
#include <random>

#include "GL/BASE/DisplayMode.h"
#include "GL/BASE/DrawWay.h"
#include "GL/DRAW/clsShadowLookup.h"
#include "ShadowTest.h"

namespace {

class ShadowLookup : public ShadowTest {
protected:
    void SetUp() override {
        ShadowTest::SetUp();
        Shared().msCFBOSizeIndex.mValue = 1;
    }
    void TearDown() override {
        ShadowLookup_cls::msbUsed = true;
        SetDrawWay(DrawWay::Auto);
        Canvas(0)->SetGeometry(0);
        ShadowTest::TearDown();
    }
    void ShowCloud(int number, double radius) {
        std::mt19937 random(3);
        std::uniform_real_distribution<double> side(-2.0, 2.0);
        std::vector<Vector> cloud;
        for (int i = 0; i < number; ++i)
            cloud.push_back({10 + side(random), side(random), side(random)});
        Show(cloud, radius);
    }
    /// A silhouette's sides shift its edge by less than a pixel: few pixels differ, but some do.
    void ExpectSame(const std::string& what, int differ = 1, int share = 12) {
        const Picture_st lit = Draw(0);
        const Picture_st seen = Draw(1);
        SetDrawWay(DrawWay::GL);
        const Picture_st shader = Draw(1);
        SetDrawWay(DrawWay::Auto);
        ShadowLookup_cls::msbUsed = false;
        const Picture_st volumes = Draw(1);
        ShadowLookup_cls::msbUsed = true;
        const int dark = CountDifferent(lit, volumes, 10);
        const int wrong = CountDifferent(seen, volumes, 10);
        EXPECT_GT(dark, 1000) << what;
        EXPECT_GE(wrong, differ) << what << ": was it looked up?";
        EXPECT_LT(wrong, dark / share) << what;
        EXPECT_LT(CountDifferent(seen, shader, 10), dark / 50) << what << ": the shader and the processor";
        if (HasFailure()) Snap("lookup_" + what);
    }
};

TEST_F(ShadowLookup, IsWhatVolumesAre) {
    ShowCloud(3000, 0.08);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, {-0.6, 0.5, 0.6}, 0.9);
    ExpectSame("far");
    SetLooks(2, ShaderCtrl_cls::TYPE_PHONG);
    ExpectSame("meshes");
    SetLooks(3, ShaderCtrl_cls::TYPE_PHONG);
    ShadowVolume_cls::GetSettings().mLength.mValue = 2.0f;
    ExpectSame("short", 1, 8); // more ends than sides
    ShadowVolume_cls::SetToDefault();
    Canvas(0)->mGLDepthMax.mValue = 10.0f;
    ExpectSame("cut by the far plane");
    Canvas(0)->mGLDepthMax.mValue = 5000.0f;
    for (const Vector& place : {Vector{10, 0, 0}, Vector{-200, 50, 90}}) {
        SetLight(0, LightSRC_cls::TYPE_POINT, place, 0.9);
        ExpectSame("near " + std::to_string(place[0]) + ", with a far one behind the first");
        SetLight(1, LightSRC_cls::TYPE_PARALLEL, {-0.6, -0.5, 0.6}, 0.4);
    }
}

TEST_F(ShadowLookup, TakesEveryViewAndBox) {
    ShowCloud(700, 0.12);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, {-0.6, 0.5, 0.6}, 0.9);
    Canvas(0)->SetGeometry(1);
    ExpectSame("parallel view", 0);
    for (const int geometry : {2, 3}) {
        Canvas(0)->SetGeometry(geometry);
        ExpectSame("geometry " + std::to_string(geometry), 0);
    }
    Canvas(0)->SetGeometry(0);
    FilterDataBoxData_cls& box = *mFilters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
    const Vector far = {-0.6, 0.5, 0.6}, near = {4, 1, 3}, mirrored = {0.8, -0.8, 0.8},
                 uneven = {0.9, 0.6, 1.2};
    for (const auto& [scale, type, from] :
         {std::tuple(mirrored, LightSRC_cls::TYPE_PARALLEL, far), {uneven, LightSRC_cls::TYPE_POINT, near}}) {
        FilterScope_cls::Set(box.mpCScale, scale);
        SetLight(0, type, from, 0.9);
        ExpectSame("box " + std::to_string(scale[1]));
    }
}

// Sizes far apart: what is too large for the table stays a volume.
TEST_F(ShadowLookup, MayStandBesideLargeOnes) {
    mRadii.assign(500, 0.05f);
    for (size_t i = 0; i < 500; i += 50)
        mRadii[i] = i == 0 ? 0.5f : 0.2f;
    ShowCloud(3000, 0.08);
    for (GLAttribute_cls* a : Drawing().mpCGLAttribute)
        a->mRadiusType.mValue = RADIUS_OF_DATA;
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, {-0.6, 0.5, 0.6}, 0.9);
    ExpectSame("sizes");
    SetLight(0, LightSRC_cls::TYPE_POINT, {5, 1, 3}, 0.9);
    ExpectSame("sizes, near");
}

} // namespace
