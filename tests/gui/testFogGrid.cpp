// Fog and grids in a view, by closed forms.
#include <cmath>
#include <fstream>

#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PictureTest.h"

namespace {

constexpr int kSide = 400;
constexpr int kTolerance = 2; // of 255

class FogGrid : public PictureTest {
protected:
    void TearDown() override {
        Hub()->ClearFilters();
        PictureTest::TearDown();
    }
    void ShowAlongX(const std::vector<Point>& points, int size = 40) {
        ShowParticles(points, size);
        ASSERT_TRUE(SizeView(kSide, kSide));
        LookAlongX();
    }
    template <class FILTER>
    static auto* Add(FilterType type) {
        FilterCtrl_cls& list = Hub()->mpCFilters->Get(GetFilterKind(type).mList);
        list.AddFilterCommand(type);
        return static_cast<FILTER*>(list.GetPCFilter(list.GetCount() - 1))->GetPCData();
    }
    static void SetColor(ColorCurve_cls& curve, float r, float g, float b) {
        const float color[4] = {r, g, b, 1.0f};
        std::copy_n(color, 4, curve.mConstantColor.mValue);
    }
    static void SetParam(FilterFogData_cls* pFog, double density, double alpha) {
        const double values[2] = {density, alpha};
        pFog->mpCFogParam->SetKeyFrame(values, true, 0.0);
    }
    /// Pixel of a point in a view that looks along x, with x as depth.
    static std::array<int, 2> PixelOf(const Point& p) {
        const double scale = kSide / 2.0 / std::tan(35.0 / 2.0 * M_PI / 180.0);
        return {int(kSide / 2.0 - scale * p[1] / p[0]), int(kSide / 2.0 - scale * p[2] / p[0])};
    }
    static void ExpectColor(const Picture_st& picture, const Point& p, const std::array<double, 3>& wanted) {
        const auto [x, y] = PixelOf(p);
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(Channel(picture, x, y, c), 255.0 * wanted[size_t(c)], kTolerance)
                << "depth " << p[0] << " channel " << c;
    }
    /// Does light of this channel lie within two pixels?
    static bool IsLit(const Picture_st& picture, const Point& p) {
        const auto [x, y] = PixelOf(p);
        for (int dy = -2; dy <= 2; ++dy)
            for (int dx = -2; dx <= 2; ++dx)
                if (Channel(picture, x + dx, y + dy, 1) > 60) return true;
        return false;
    }
};

TEST_F(FogGrid, FogFollowsTheFixedPipeline) {
    const std::vector<Point> points = {{5, 0.5, 0.5}, {12, -1.5, 1}, {30, 3, -4}};
    ShowAlongX(points);
    auto* fog = Add<FilterFog_cls>(FILTER_FOG);
    const std::array<float, 3> color = {0.2f, 0.4f, 0.8f};
    SetColor(*fog->mpCColor, color[0], color[1], color[2]);
    SetBackground(0.5f, 0.1f, 0.9f);
    fog->mCFogStart.mValue = 4.0f;
    fog->mCFogEnd.mValue = 40.0f;
    for (const unsigned type : {FilterFogData_cls::EXP, FilterFogData_cls::EXP_2, FilterFogData_cls::LINEAR})
        for (const double alpha : {1.0, 0.5, 0.0}) {
            SCOPED_TRACE(testing::Message() << type << " " << alpha);
            fog->mCFogType.mValue = type;
            SetParam(fog, 0.06, alpha);
            Repaint();
            const Picture_st picture = Grab(0);
            for (const Point& p : points) {
                const double reach = 0.06 * alpha * p[0];
                const double clear = type == FilterFogData_cls::EXP     ? std::exp(-reach)
                                     : type == FilterFogData_cls::EXP_2 ? std::exp(-reach * reach)
                                                                        : (40.0 - p[0]) / 36.0;
                std::array<double, 3> wanted;
                for (size_t c = 0; c < 3; ++c)
                    wanted[c] = clear + (1.0 - clear) * double(color[c]);
                ExpectColor(picture, p, wanted);
            }
            std::array<double, 3> back;
            for (size_t c = 0; c < 3; ++c)
                back[c] = double(color[c]) * alpha + (1.0 - alpha) * 0.5; // the background's red
            ExpectColor(picture, {10, 2.9, -2.9}, back);
        }
    // A new one clears the background to its colour and hides nothing; one that is off does nothing.
    SetParam(fog, 0.0, 1.0);
    fog->mCFogType.mValue = FilterFogData_cls::EXP;
    Repaint();
    ExpectColor(Grab(0), points[2], {1, 1, 1});
    fog->mCValid.mValue = false;
    Add<FilterFog_cls>(FILTER_FOG); // only the first one counts
    Repaint();
    ExpectColor(Grab(0), {10, 2.9, -2.9}, {0.5, 0.1, 0.9});
}

// Whatever is drawn in front of the eye: as far away as its nearest point, and otherwise as without fog.
TEST_F(FogGrid, FogIsTheSameOnAllThatIsDrawn) {
    ShowAlongX({{10, 0, 0}, {10, -1.5, 0}, {10, 1.5, 0}}, 21);
    auto* fog = Add<FilterFog_cls>(FILTER_FOG);
    SetColor(*fog->mpCColor, 0.1f, 0.5f, 0.9f);
    SetParam(fog, 0.05, 1.0);
    fog->mCFogStart.mValue = 5.0f;
    fog->mCFogEnd.mValue = 30.0f;
    const auto expectFogged = [&](const char* what, double depth) {
        SCOPED_TRACE(what);
        for (const unsigned type :
             {FilterFogData_cls::EXP, FilterFogData_cls::EXP_2, FilterFogData_cls::LINEAR}) {
            fog->mCFogType.mValue = type;
            fog->mCValid.mValue = false;
            Repaint();
            const Picture_st plain = Grab(0);
            fog->mCValid.mValue = true;
            Repaint();
            const double reach = 0.05 * depth;
            const double clear = type == FilterFogData_cls::EXP     ? std::exp(-reach)
                                 : type == FilterFogData_cls::EXP_2 ? std::exp(-reach * reach)
                                                                    : (30.0 - depth) / 25.0;
            std::array<double, 3> wanted;
            const double color[3] = {0.1, 0.5, 0.9};
            int light = 0;
            for (int c = 0; c < 3; ++c) {
                const int bare = Channel(plain, kSide / 2, kSide / 2, c);
                light += bare;
                wanted[size_t(c)] = clear * bare / 255.0 + (1.0 - clear) * color[c];
            }
            EXPECT_GT(light, 40) << "something is there";
            const Picture_st picture = Grab(0);
            for (int c = 0; c < 3; ++c)
                EXPECT_NEAR(Channel(picture, kSide / 2, kSide / 2, c), 255.0 * wanted[size_t(c)], kTolerance)
                    << "type " << type << " channel " << c;
        }
    };
    GLAttribute_cls& looks =
        *GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()).mpCGLAttribute[0];
    expectFogged("points", 10);
    looks.mDrawType.mValue = DRAW_BILLBOARD;
    looks.mRadiusType.mValue = 1;
    looks.mRadiusFactorForConst.mValue = 0.5f;
    expectFogged("sprites", 10);
    looks.mDrawType.mValue = DRAW_SPHERE;
    for (const unsigned quality : {QUALITY_LOW, QUALITY_HIGH, QUALITY_EXACT})
        for (const unsigned shader : {0u, 1u, 2u, 3u}) {
            looks.mDrawQuality.mValue = quality;
            looks.mShaderType.mValue = shader;
            expectFogged(("spheres " + std::to_string(quality) + " " + std::to_string(shader)).c_str(), 9.5);
        }
    looks.mDrawType.mValue = DRAW_HIDE;
    auto* sticks = Add<FilterStick_cls>(FILTER_STICK);
    sticks->mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    sticks->mCCritA.mValue = 2.0f;
    expectFogged("lines", 10);
    sticks->mCStickType.mValue = FilterStickData_cls::CYLINDER;
    expectFogged("cylinders", 9.5);
    sticks->mCValid.mValue = false;
    auto* object = Add<FilterObject_cls>(FILTER_OBJECT);
    const double place[3] = {8, 0, 0};
    object->mpCTranslate->SetKeyFrame(place, true, 0.0);
    for (const unsigned type : {FilterObjectData_cls::BOX, FilterObjectData_cls::SPHERE})
        for (const unsigned shader : {0u, 1u, 2u, 3u}) {
            object->mCObjectType.mValue = type;
            object->mCTexture.mCShaderType.mValue = shader;
            expectFogged(("object " + std::to_string(type) + " " + std::to_string(shader)).c_str(), 7.5);
        }
    std::ofstream(mDir / "plate.obj") << "v 0 -1 -1\nv 0 1 -1\nv 0 1 1\nv 0 -1 1\nf 1 4 3 2\n";
    object->mCObjectType.mValue = FilterObjectData_cls::IMPORT;
    object->mCImportPath.mStrValue = mDir / "plate.obj";
    for (const unsigned shader : {0u, 1u, 2u, 3u}) {
        object->mCTexture.mCShaderType.mValue = shader;
        expectFogged(("mesh " + std::to_string(shader)).c_str(), 8);
    }
    looks.mDrawType.mValue = DRAW_POINT;
}

TEST_F(FogGrid, GridsStandWhereTheirNumbersSay) {
    ShowAlongX({{500, 200, 200}}, 1);
    auto* grid = Add<FilterGrid_cls>(FILTER_GRID);
    grid->mCGridType.mValue = FilterGridData_cls::FLAT_YZ;
    grid->mCGridMin.mValue = -2.0f;
    grid->mCGridMax.mValue = 2.0f;
    grid->mCGridLineNum.mValue = 4;
    grid->mCGridCoord.mValue = false;
    SetColor(*grid->mpCColor, 0, 1, 0);
    const double place[3] = {10, 0.25, 0};
    grid->mpCTranslate->SetKeyFrame(place, true, 0.0);
    Repaint();
    const Picture_st plain = Grab(0);
    for (int i = -2; i <= 2; ++i) {
        EXPECT_TRUE(IsLit(plain, {10, i + 0.25, 0.5})) << i;
        EXPECT_TRUE(IsLit(plain, {10, 0.75, double(i)})) << i;
        EXPECT_FALSE(IsLit(plain, {10, i + 0.75, 0.5})) << i;
    }
    EXPECT_FALSE(IsLit(plain, {10, 0.25, 2.2}));
    // Labels stand beside the lower ends.
    grid->mCGridCoord.mValue = true;
    Repaint();
    EXPECT_NE(Grab(0).mRGB, plain.mRGB);
    grid->mCValid.mValue = false;
    Repaint();
    EXPECT_FALSE(IsLit(Grab(0), {10, 0.25, 0.5}));
}

// Whatever is asked for, the picture comes back.
TEST_F(FogGrid, OddGridsAndFogAreDrawnQuietly) {
    ShowAlongX({{5, 0, 0}});
    auto* grid = Add<FilterGrid_cls>(FILTER_GRID);
    auto* fog = Add<FilterFog_cls>(FILTER_FOG);
    const float nan = std::nanf("");
    for (const unsigned type : {0u, 1u, 2u, 3u, 4u, 5u, 77u})
        for (const int count : {0, -5, 1, 2000000000}) {
            grid->mCGridType.mValue = fog->mCFogType.mValue = type;
            grid->mCGridLineNum.mValue = count;
            grid->mCGridMin.mValue = count < 0 ? nan : -1.0f;
            fog->mCFogStart.mValue = fog->mCFogEnd.mValue = count < 0 ? nan : 3.0f;
            SetParam(fog, count < 0 ? -1.0 : double(count), 1.0);
            const double scale[3] = {count < 0 ? double(nan) : 1.0, 0.0, -1e30};
            grid->mpCScale->SetKeyFrame(scale, true, 0.0);
            Repaint();
            EXPECT_EQ(Grab(0).mW, kSide);
        }
}

} // namespace
