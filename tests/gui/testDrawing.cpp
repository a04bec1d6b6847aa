// Points and billboards of a few particles: blending and alpha by closed forms, the order of drawing,
// downsizing, textures, abort; and a picture of each way to draw.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <random>
#include <set>
#include <thread>

#include "APP/clsMain.h"
#include "COMMON/Globals.h"
#include "COMMON/PictureFault.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "DrawTest.h"
#include "GL/BASE/DrawWay.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GoldenPicture.h"

namespace {

class Drawing : public DrawTest {
protected:
    /// A red square at z and a green one nearer, covering the middle; in file order.
    std::vector<Particle_st> Pair(bool bRedFirst) {
        MakePlainTexture();
        SetAll(1);
        SetColor(mAttribute[0]->mColor, 1, 0, 0, 0.5f);
        SetColor(mAttribute[1]->mColor, 0, 1, 0, 0.25f);
        for (auto& attribute : mAttribute)
            attribute->mBlendType.mValue = 0;
        const Particle_st red = {{0, 0, -0.5f}, 0.5f, 0};
        const Particle_st green = {{0, 0, 0.5f}, 0.5f, 1};
        return bRedFirst ? std::vector<Particle_st>{red, green} : std::vector<Particle_st>{green, red};
    }
    void ExpectMiddle(float r, float g, float b, const char* what) {
        const Pixel_st pixel = Middle();
        EXPECT_NEAR(pixel.r, r, 0.002f) << what;
        EXPECT_NEAR(pixel.g, g, 0.002f) << what;
        EXPECT_NEAR(pixel.b, b, 0.002f) << what;
    }
    /// The middle's red of one billboard of class 0 with this radius; its curve is 1 0 0 with an alpha of
    /// 0.2.
    float AlphaOf(float radius) {
        Draw({{{0, 0, 0}, radius}});
        return Middle().r;
    }
};

TEST_F(Drawing, TwoSpritesBlendInTheOrderOfTheList) {
    const auto expectRedBehind = [&](const char* what) { ExpectMiddle(0.5f * 0.75f, 0.25f, 0, what); };
    const auto expectGreenBehind = [&](const char* what) { ExpectMiddle(0.5f, 0.25f * 0.5f, 0, what); };
    for (const bool bRedFirst : {true, false}) {
        const auto pair = Pair(bRedFirst);
        mOption.mSortOrder.mValue = 0;
        Draw(pair);
        bRedFirst ? expectRedBehind("file order") : expectGreenBehind("file order");
        mOption.mSortOrder.mValue = 1;
        Draw(pair);
        expectRedBehind("far to near");
        mOption.mSortOrder.mValue = 2;
        Draw(pair);
        expectGreenBehind("near to far");
        for (auto& attribute : mAttribute)
            attribute->mBlendType.mValue = 1;
        Draw(pair);
        ExpectMiddle(0.5f, 0.25f, 0, "light adds up in any order");
    }
}

TEST_F(Drawing, BothWaysOfBlendingMix) {
    const auto pair = Pair(true);
    mAttribute[0]->mBlendType.mValue = 1;
    Draw(pair);
    ExpectMiddle(0.5f * 0.75f, 0.25f, 0, "light below a cover");
    mAttribute[0]->mBlendType.mValue = 0;
    mAttribute[1]->mBlendType.mValue = 1;
    Draw(pair);
    ExpectMiddle(0.5f, 0.25f, 0, "light on a cover");
}

TEST_F(Drawing, SpheresHideWhatIsBehindAndSpritesDoNot) {
    MakePlainTexture();
    mAttribute[0]->mDrawType.mValue = 1;
    mAttribute[1]->mDrawType.mValue = 2;
    SetColor(mAttribute[0]->mColor, 0, 0, 1, 1);
    GLAttribute_cls& red = *mAttribute[1];
    for (ColorCurve_cls* pCurve : {&red.mAmbient, &red.mDiffuse, &red.mSpecular})
        SetColor(*pCurve, 0.8f, 0, 0, 1);
    for (const unsigned quality : {0u, 3u}) {
        mAttribute[1]->mDrawQuality.mValue = quality;
        // A sphere, then a sprite behind it and a point beside.
        Draw({{{0, 0, 0.5f}, 0.3f, 1}, {{0, 0, -0.5f}, 0.6f, 0}});
        EXPECT_GT(Middle().r, 0.1f);
        EXPECT_EQ(Middle().b, At(2, 2).b) << "the sprite is hidden";
        EXPECT_NEAR(At(mSize / 2 + int(0.5 * PixelsPerUnit() * 8 / 9), mSize / 2).b, 1.0f, 0.002f);
        // A sprite in front writes no depth: the sphere behind it comes over it.
        Draw({{{0, 0, 0.5f}, 0.6f, 0}, {{0, 0, -0.5f}, 0.3f, 1}});
        EXPECT_GT(Middle().r, 0.1f);
        EXPECT_LT(Middle().b, 0.5f);
    }
}

TEST_F(Drawing, AlphaRulesOfOneAttribute) {
    MakePlainTexture();
    SetAll(1);
    mOption.mClassify.mValue = 0;
    GLAttribute_cls& a = *mAttribute[0];
    SetColor(a.mColor, 1, 0, 0, 0.2f);
    a.mAlphaFactor.mValue = 0.5f;
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.5f, 1e-3f) << "a constant colour takes the factor once";
    mOption.mDownSizing.mValue = 2;
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.5f, 1e-3f) << "and nothing for downsizing";
    mOption.mDownSizing.mValue = 1;
    a.mColor.mbUseColorCurve.mValue = true;
    a.mColor.SetKeys({{0, 1, 0, 0, 0.2}, {1, 1, 0, 0, 0.2}});
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.5f * 0.5f, 1e-3f) << "one by value takes it twice";
    mOption.mDownSizing.mValue = 2;
    const float stronger = float(GLDrawData_cls::GetSteppingAlphaFactor(2));
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.5f * 0.5f * stronger, 1e-3f);
    mOption.mDownSizing.mValue = 1;
    // By the radius: base^2 / r^2 at most the limit.
    a.mAlphaType.mValue = 1;
    a.mAlphaDependBase.mValue = 0.25f;
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.25f, 1e-3f);
    a.mAlphaMax.mValue = 0.03f;
    EXPECT_NEAR(AlphaOf(0.5f), 0.03f, 1e-3f);
    a.mAlphaMax.mValue = 1.0f;
    a.mRadiusType.mValue = 1;
    a.mRadiusFactorForConst.mValue = 0.4f;
    EXPECT_NEAR(AlphaOf(77.0f), 0.2f * 0.0625f / 0.16f, 1e-3f) << "the radius that is drawn";
    a.mAlphaDependBase.mValue = 0.05f;
    EXPECT_EQ(AlphaOf(1.0f), 0.0f) << "too faint to be drawn";
    a.mRadiusFactorForConst.mValue = 0.0f;
    EXPECT_EQ(AlphaOf(1.0f), 0.0f);
    // Points know no radius of their own: what is common to all of them counts.
    a.mDrawType.mValue = 0;
    a.mRadiusFactorForConst.mValue = 2.0f;
    EXPECT_NEAR(AlphaOf(1.0f), 0.2f / 4 * 0.5f, 1e-3f);
    mOption.mDownSizing.mValue = 2;
    const float larger = float(GLDrawData_cls::GetSteppingRadiusFactor(2));
    EXPECT_NEAR(AlphaOf(1.0f), 0.2f / (4 * larger * larger) * 0.5f * stronger, 1e-3f);
    a.mAlphaMax.mValue = 0.02f;
    EXPECT_NEAR(AlphaOf(1.0f), 0.02f * 0.5f * stronger, 1e-3f);
    mOption.mDownSizing.mValue = 1;
}

TEST_F(Drawing, AlphaRulesOfAllAttributes) {
    MakePlainTexture();
    SetAll(1);
    GLAttribute_cls& a = *mAttribute[0];
    SetColor(a.mColor, 1, 0, 0, 0.2f);
    a.mAlphaFactor.mValue = 0.5f;
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.5f, 1e-3f);
    mOption.mDownSizing.mValue = 3;
    const float stronger = float(GLDrawData_cls::GetSteppingAlphaFactor(3));
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.5f * stronger, 1e-3f) << "constant colours too";
    a.mAlphaType.mValue = 1;
    a.mAlphaDependBase.mValue = 0.25f;
    const float wide = float(GLDrawData_cls::GetSteppingRadiusFactor(3));
    EXPECT_NEAR(AlphaOf(0.5f), 0.2f * 0.25f / (wide * wide) * stronger, 1e-3f);
    a.mAlphaMax.mValue = 0.01f;
    EXPECT_NEAR(AlphaOf(0.5f), 0.01f * stronger, 1e-3f) << "the limit comes before what downsizing adds";
    // Spheres: at most opaque.
    mOption.mDownSizing.mValue = 1;
    SetAll(2, 0);
    a.mAlphaMax.mValue = 5.0f;
    for (ColorCurve_cls* pCurve : {&a.mAmbient, &a.mDiffuse, &a.mSpecular})
        SetColor(*pCurve, 1, 1, 1, 1);
    EXPECT_NEAR(AlphaOf(0.1f), 1.0f, 1e-3f);
    a.mAlphaDependBase.mValue = 0.125f;
    EXPECT_NEAR(AlphaOf(0.5f), 0.0625f, 1e-3f) << "a white sphere in full light shows its alpha";
}

TEST_F(Drawing, BillboardsInThePlaneOrFacingTheEye) {
    MakePlainTexture();
    mSize = 300;
    SetColor(mAttribute[0]->mColor, 1, 1, 1, 1);
    const Particle_st aside = {{1.0f, 0, 0}, 0.2f};
    SetAll(1, 0);
    Draw({aside});
    const auto flat = LitInRow(mSize / 2);
    EXPECT_NEAR(flat[1] - flat[0], 0.4 * PixelsPerUnit(), 1.0);
    EXPECT_NEAR((flat[1] + flat[0]) / 2.0, mSize / 2 + PixelsPerUnit(), 1.0);
    SetAll(1, 1);
    Draw({aside});
    const auto facing = LitInRow(mSize / 2);
    // Its edges lie on the line through the particle that stands upright on the line of sight.
    const double far = std::sqrt(17.0);
    const auto edge = [&](double side) {
        const double x = 1.0 + side * 0.2 * 4.0 / far;
        const double depth = kEye - side * 0.2 * 1.0 / far;
        return mSize / 2.0 + PixelsPerUnit() * kEye * x / depth;
    };
    EXPECT_NEAR(facing[0], std::min(edge(1), edge(-1)), 1.5);
    EXPECT_NEAR(facing[1], std::max(edge(1), edge(-1)), 1.5);
    // One attribute alone draws them in the plane whatever the quality.
    mOption.mClassify.mValue = 0;
    Draw({aside});
    EXPECT_EQ(LitInRow(mSize / 2), flat);
    SetAll(1, 1);
    mOption.mClassify.mValue = 1;
    Draw({{{0, 0, float(kEye)}, 0.2f}});
    EXPECT_EQ(CountLit(), 0) << "in the eye itself";
}

TEST_F(Drawing, TypesThatDrawNothing) {
    for (const unsigned classify : {0u, 1u})
        for (const unsigned type : {3u, 4u, 77u}) {
            mOption.mClassify.mValue = classify;
            SetAll(type);
            Draw({{{0, 0, 0}, 0.5f}});
            EXPECT_EQ(CountLit(), 0) << type;
        }
    // Only attribute 0 counts without classes.
    mOption.mClassify.mValue = 0;
    SetAll(4);
    mAttribute[0]->mDrawType.mValue = 0;
    Draw({{{0, 0, 0}, 0.5f, 3}});
    EXPECT_GT(CountLit(), 0);
}

// What all threads worked, as time on the wall says little on a busy machine.
double SecondsOfWork() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

TEST_F(Drawing, AbortEndsALongDrawing) {
    MakePlainTexture();
    mSize = 512;
    struct Way_st {
        unsigned drawType, quality;
        float radius;
    };
    for (const Way_st& way :
         {Way_st{1, 0, 1.2f}, Way_st{2, 0, 0.4f}, Way_st{2, 3, 0.4f}, Way_st{2, 3, 0.03f}}) {
        SetAll(way.drawType, way.quality);
        const std::vector<Particle_st> particles(way.radius < 0.1f ? 3000000 : 400000,
                                                 {{0, 0, 0}, way.radius});
        std::atomic<double> asked{0.0};
        std::atomic<int> percent{0};
        std::atomic<bool> bDone{false};
        std::thread hand([&] {
            const auto pause = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
            while (!bDone.load() && GDrawingPercentage.load() == 100)
                pause();
            // In the middle of it: the beginning clears what came before.
            for (const double start = SecondsOfWork(); !bDone.load() && SecondsOfWork() < start + 0.2;)
                pause();
            if (bDone.load()) return;
            asked.store(SecondsOfWork());
            percent.store(GDrawingPercentage.load());
            GbAbort.store(true);
        });
        Draw(particles);
        const double seconds = SecondsOfWork() - asked.load();
        bDone.store(true);
        hand.join();
        ASSERT_NE(asked.load(), 0.0) << "drawn before anybody could ask";
        std::printf("Abort: type %u quality %u radius %g: %.0f ms of work\n", way.drawType, way.quality,
                    double(way.radius), seconds * 1e3);
        EXPECT_LT(seconds, 0.5) << way.drawType << way.quality;
        EXPECT_FALSE(GbAbort.load());
        // The processor finds what to draw where before it begins, which is half of it.
        if (percent.load() > 50 || !IsDrawnByProcessor()) {
            EXPECT_GT(CountLit(), 10) << "what was drawn stays";
        }
    }
}

TEST_F(Drawing, ThePercentageMovesWhileDrawing) {
    MakePlainTexture();
    SetAll(1);
    mSize = 512;
    std::vector<int> told;
    const std::function<void()> own =
        UpdateStatusBar_cls::Connect([&told] { told.push_back(GDrawingPercentage.load()); });
    // All over the picture, and so large that they take a good part of a second here. Counted by the 100,000.
    std::vector<Particle_st> particles(700000);
    for (size_t i = 0; i < particles.size(); ++i)
        particles[i] = {{float(i % 101) / 50.0f - 1.0f, float(i % 97) / 48.0f - 1.0f, 0}, 0};
    const auto parts = [&told] { return std::set<int>(told.begin(), told.end()).size(); };
    for (float radius = 0.03f; radius < 0.3f && parts() < 3; radius *= 1.8f) {
        told.clear();
        for (Particle_st& particle : particles)
            particle.radius = radius;
        Draw(particles);
    }
    UpdateStatusBar_cls::Connect(own);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GE(parts(), 3u);
}

TEST_F(Drawing, DataMayBeClosedWhileTheyAreDrawn) {
    MakePlainTexture();
    SetAll(1);
    mSize = 512;
    bool bClosed = false;
    const std::function<void()> own = UpdateStatusBar_cls::Connect([&bClosed] {
        Hub()->CloseData(); // in place of a user who chooses the menu
        bClosed = true;
    });
    Draw(std::vector<Particle_st>(1500, {{0, 0, 0}, 1.2f}));
    UpdateStatusBar_cls::Connect(own);
    EXPECT_TRUE(bClosed) << "a long drawing lets events through";
    EXPECT_GT(CountLit(), 1000);
}

TEST_F(Drawing, PicturesOfAllWays) {
    std::mt19937 random(5);
    std::vector<Particle_st> particles;
    const auto side = [&random] { return float(random() % 2001) / 1000.0f - 1.0f; };
    for (int i = 0; i < 40; ++i)
        particles.push_back({{side(), side(), side()},
                             0.15f + 0.1f * std::fabs(side()),
                             static_cast<unsigned char>(i % 4),
                             float(i) / 40.0f});
    const float colors[4][3] = {{1, 0.8f, 0.2f}, {0.3f, 0.6f, 1}, {1, 0.3f, 0.2f}, {0.4f, 0.9f, 0.4f}};
    for (size_t i = 0; i < 4; ++i) {
        GLAttribute_cls& a = *mAttribute[i];
        const float* c = colors[i];
        SetColor(a.mColor, c[0], c[1], c[2], 0.8f);
        SetColor(a.mAmbient, 0.2f * c[0], 0.2f * c[1], 0.2f * c[2], 1);
        SetColor(a.mDiffuse, c[0], c[1], c[2], 1);
        a.mPointSize.mValue = 4 + int(i) * 2;
    }
    const auto keep = [&](const std::string& name) {
        Draw(particles);
        EXPECT_TRUE(IsGolden("draw_" + name, Picture()));
    };
    const auto blend = [&](unsigned type) {
        for (auto& a : mAttribute)
            a->mBlendType.mValue = type;
    };
    SetAll(0);
    keep("points");
    blend(1);
    keep("points_additive");
    blend(0);
    SetAll(1);
    keep("billboards");
    mOption.mSortOrder.mValue = 1;
    keep("billboards_sorted");
    mOption.mSortOrder.mValue = 2;
    keep("billboards_near_first");
    mOption.mSortOrder.mValue = 0;
    blend(1);
    keep("billboards_additive");
    SetAll(2, 1, 0);
    keep("spheres_additive");
    blend(0);
    SetAll(2, 0, 0);
    keep("spheres_low");
    SetAll(2, 2, 1);
    keep("spheres_gouraud");
    SetAll(2, 2, 2);
    keep("spheres_phong");
    SetAll(2, 2, 3);
    keep("spheres_toon");
    SetAll(2, 3, 2);
    keep("spheres_exact");
    SetAll(2, 3, 3);
    keep("spheres_exact_toon");
    SetAll(2, 3, 2);
    for (auto& a : mAttribute)
        a->mDiffuse.mConstantColor.mValue[3] = 0.4f;
    mOption.mSortOrder.mValue = 1;
    keep("spheres_clear_sorted");
    mOption.mSortOrder.mValue = 0;
    // Each class in its own way, and every third particle.
    for (unsigned i = 0; i < 4; ++i)
        mAttribute[i]->mDrawType.mValue = i % 3;
    mOption.mDownSizing.mValue = 3;
    keep("mixed_downsized");
}

TEST_F(Drawing, ABufferThatOpenGLHasNotGotIsAFaultOfThePicture) {
    ASSERT_TRUE(Canvas(0)->SetCurrent(*Canvas(0)->GetContext()));
    TakePictureFault();
    FBO_cls huge(1 << 20, 1 << 20);
    huge.MakeFBO(false);
    huge.Begin(true);
    huge.End();
    while (glGetError() != GL_NO_ERROR) {
    }
    EXPECT_TRUE(TakePictureFault().Contains("1048576 x 1048576"));
}

} // namespace
