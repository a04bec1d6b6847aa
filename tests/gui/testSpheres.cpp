// Lit spheres: silhouette and depth by closed forms, ray-cast ones against fine meshes, what can't be drawn,
// and what happens without shaders.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <utility>

#include <epoxy/gl.h>

#include "COMMON/MsgBox.h"
#include "DrawTest.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsViewScale.h"
#include "GL/VIEW/clsMainGLCanvas.h"

namespace {

class Spheres : public DrawTest {
protected:
    void SetUp() override {
        DrawTest::SetUp();
        for (auto& a : mAttribute)
            SetColor(a->mAmbient, 0.3f, 0.2f, 0.1f, 1); // no part of a sphere is black
    }
    static double MeanDifference(const Picture_st& a, const Picture_st& b) {
        double sum = 0.0;
        for (size_t i = 0; i < a.mRGB.size(); ++i)
            sum += std::abs(int(a.mRGB[i]) - int(b.mRGB[i]));
        return sum / double(a.mRGB.size());
    }
    /// The edges of a sphere's picture along one axis, in pixels: `across` and `depth` are its middle in eye
    /// coordinates.
    std::array<double, 2> Edges(double across, double depth, double radius) const {
        const double scale = PixelsPerUnit() * kEye; // of tangents
        const double angle = std::atan2(across, depth);
        const double half = std::asin(radius / std::hypot(across, depth));
        return {mSize / 2.0 + scale * std::tan(angle - half), mSize / 2.0 + scale * std::tan(angle + half)};
    }
    /// A folder of shaders in which some are missing or broken becomes the working directory.
    std::string EnterBrokenFolder(const std::string& file, const std::string& text) {
        namespace fs = std::filesystem;
        mHome = fs::current_path();
        fs::create_directories(mDir / "GL");
        for (const auto& entry : fs::directory_iterator(Root() + "GL"))
            fs::copy_file(entry.path(), (mDir / "GL/") + entry.path().filename().string());
        std::ofstream(mDir / file, std::ios::trunc) << text;
        fs::current_path(mDir.mPath);
        return mDir / file;
    }
    void TearDown() override {
        if (!mHome.empty()) std::filesystem::current_path(mHome);
        DrawTest::TearDown();
    }
    std::filesystem::path mHome;
};

// Particles of all kinds of place: in front of each other, cut by the rim, near.
const std::vector<std::array<float, 5>> kScene = {
    {0.0f, 0.0f, 0.0f, 0.4f, 0},  {0.3f, 0.2f, 0.6f, 0.25f, 1},  {-0.5f, 0.4f, -1.0f, 0.5f, 2},
    {1.15f, 0.1f, 0.2f, 0.3f, 3}, {-0.6f, -0.7f, 1.2f, 0.2f, 0}, {0.1f, -1.2f, 0.0f, 0.3f, 1}};

TEST_F(Spheres, SilhouettesHaveTheirTrueSize) {
    mSize = 400;
    SetAll(2, 3);
    for (const double x : {0.0, 0.5, -0.6}) {
        const double radius = 0.45;
        Draw({{{float(x), 0, 0}, float(radius)}});
        const auto row = LitInRow(mSize / 2);
        const auto wanted = Edges(x, kEye, radius);
        EXPECT_NEAR(row[0], wanted[0], 1.0) << x;
        EXPECT_NEAR(row[1], wanted[1], 1.0) << x;
        const double middle = (wanted[0] + wanted[1]) / 2.0;
        const auto column = LitInColumn(int(middle));
        EXPECT_NEAR(column[0] + column[1], mSize, 1.0);
        // Across the direction of the view it keeps the true angle; off the middle the picture stretches.
        if (x == 0.0) {
            EXPECT_NEAR((column[1] - column[0]) / 2.0,
                        PixelsPerUnit() * kEye * radius / std::sqrt(kEye * kEye - radius * radius), 1.0);
        }
    }
    mbParallel = true;
    Draw({{{0.3f, -0.2f, 1.0f}, 0.5f}});
    const auto column = LitInColumn(int(mSize / 2 + 0.3 * PixelsPerUnit()));
    EXPECT_NEAR((column[1] - column[0]) / 2.0, 0.5 * PixelsPerUnit(), 1.0);
    EXPECT_NEAR((column[1] + column[0]) / 2.0, mSize / 2 - 0.2 * PixelsPerUnit(), 1.0);
}

TEST_F(Spheres, DepthIsThatOfTheSurface) {
    mSize = 201; // with a pixel in the very middle
    for (const bool bParallel : {false, true}) {
        mbParallel = bParallel;
        for (const unsigned quality : {2u, 3u}) {
            SetAll(2, quality);
            Draw({{{0, 0, 0}, 0.5f}});
            PositionAndDirection_cls camera;
            camera.Set(0, 0, kEye);
            const double anchor[3] = {0, 0, 0};
            camera.SetAncPos(anchor);
            const double top[3] = {0, 0, 0.5};
            double seen[3];
            ASSERT_TRUE(mPerspective.Project(camera, top, seen));
            EXPECT_NEAR(DepthAt(100, 100), (seen[2] + 1.0) / 2.0, 2e-6) << quality << bParallel;
            EXPECT_EQ(DepthAt(0, 0), 1.0f);
        }
    }
}

TEST_F(Spheres, ExactOnesLookLikeFineMeshesWithEveryShader) {
    mSize = 192;
    std::vector<Particle_st> particles;
    for (const auto& p : kScene)
        particles.push_back({{p[0], p[1], p[2]}, p[3], static_cast<unsigned char>(p[4]), p[0]});
    for (const bool bParallel : {false, true})
        for (const bool bByValue : {false, true})
            for (unsigned shader = 0; shader < 4; ++shader) {
                mbParallel = bParallel;
                mAttribute[0]->mDiffuse.mbUseColorCurve.mValue = bByValue;
                SetAll(2, 2, shader);
                Draw(particles);
                const Picture_st mesh = Picture();
                SetAll(2, 3, shader);
                Draw(particles);
                // Highlights of light at vertices are duller than true ones, and outlines lie at edges.
                EXPECT_LT(MeanDifference(mesh, Picture()), shader == 2 ? 0.6 : 1.2)
                    << "shader " << shader << (bByValue ? ", by value" : "")
                    << (bParallel ? ", parallel" : "");
                EXPECT_TRUE(GLDrawData_cls::msStrMessage.empty());
            }
}

TEST_F(Spheres, ExactOnesMayBeLargerThanPointsOrAroundTheEye) {
    mSize = 1024; // beyond the largest point of software drivers
    SetAll(2, 2, 2);
    Draw({{{0, 0, 0}, 1.0f}, {{0, 0, float(kEye)}, 0.5f}, {{0.2f, 0, float(kEye) - 0.2f}, 0.15f}});
    const Picture_st mesh = Picture();
    SetAll(2, 3, 2);
    Draw({{{0, 0, 0}, 1.0f}, {{0, 0, float(kEye)}, 0.5f}, {{0.2f, 0, float(kEye) - 0.2f}, 0.15f}});
    EXPECT_LT(MeanDifference(mesh, Picture()), 1.0) << "the eye sits in one, which hides nothing";
    EXPECT_GT(CountLit(), mSize * mSize / 3);
    // In the plane of the eye: one around it may lie anywhere, one beside it nowhere.
    const ViewScale_cls view;
    const float balls[2][4] = {{0.1f, 0, float(kEye), 0.5f}, {2.0f, 0, float(kEye), 0.5f}};
    ViewScale_cls::Silhouettes_st seen;
    view.GetSilhouettes(balls[0], 4, 2, seen);
    EXPECT_EQ(view.Locate(seen, 0), ViewScale_cls::Where::Near);
    EXPECT_EQ(view.Locate(seen, 1), ViewScale_cls::Where::Hidden);
}

TEST_F(Spheres, ExactOnesCutByTheNearPlaneAreOpenAsMeshesAre) {
    mSize = 192;
    for (const bool bFog : {false, true}) {
        mbFog = bFog;
        mPerspective.mNear = 3.5; // the eye is 4 away
        SetAll(2, 2, 2);
        const std::vector<Particle_st> particles = {{{-0.5f, 0, 0.2f}, 0.5f}, {{0.5f, 0.2f, 0}, 0.3f}};
        Draw(particles);
        const Picture_st mesh = Picture();
        const int lit = CountLit();
        SetAll(2, 3, 2);
        Draw(particles);
        EXPECT_GT(lit, 1000);
        EXPECT_NEAR(CountLit(), lit, lit / 50);
        EXPECT_LT(MeanDifference(mesh, Picture()), 0.6) << (bFog ? "fog" : "");
    }
}

TEST_F(Spheres, ManyOpaqueExactOnesShowTheSameInAnyOrder) {
    mSize = 256;
    std::mt19937 random(3);
    std::uniform_real_distribution<float> side(-1.6f, 1.6f); // some beyond the rim
    std::vector<Particle_st> particles;
    for (int i = 0; i < 3000; ++i)
        particles.push_back({{side(random), side(random), side(random)},
                             i % 100 == 0 ? 0.3f : 0.04f,
                             static_cast<unsigned char>(i % 4),
                             side(random)});
    SetAll(2, 3, 2);
    for (size_t i = 0; i < 4; ++i)
        SetColor(mAttribute[i]->mDiffuse, 0.25f * float(i), 1.0f - 0.25f * float(i), 0.5f, 1);
    Draw(particles);
    const Picture_st byPlace = Picture();
    EXPECT_GT(CountLit(), 20000);
    // Nearly opaque ones are blended, and so drawn in the order of the list.
    for (size_t i = 0; i < 4; ++i)
        SetColor(mAttribute[i]->mDiffuse, 0.25f * float(i), 1.0f - 0.25f * float(i), 0.5f, 0.9999f);
    Draw(particles);
    EXPECT_LT(MeanDifference(byPlace, Picture()), 0.05);
}

TEST_F(Spheres, MeshesAreLitAsTheFixedPipelineDoes) {
    std::vector<Particle_st> particles;
    for (const auto& p : kScene)
        particles.push_back({{p[0], p[1], p[2]}, p[3], static_cast<unsigned char>(p[4])});
    const auto expectAlike = [&](const char* what) {
        SetAll(2, 1, 0);
        Draw(particles);
        const Picture_st instances = Picture();
        ShaderCtrl_cls none; // without shaders every sphere goes through the fixed pipeline
        ShaderCtrl_cls* const pOwn = std::exchange(GLAttribute_cls::mspCShaderCtrl, &none);
        Draw(particles);
        GLAttribute_cls::mspCShaderCtrl = pOwn;
        EXPECT_GT(CountLit(), 500);
        EXPECT_LT(MeanDifference(instances, Picture()), 0.2)
            << what << (mbSpot ? ", spot" : "") << (mbFog ? ", fog" : "");
    };
    for (const bool bSpot : {false, true})
        for (const bool bFog : {false, true}) {
            mbSpot = bSpot;
            mbFog = bFog;
            mAttribute[0]->mBlendType.mValue = 0;
            expectAlike("covering");
            mAttribute[0]->mBlendType.mValue = 1;
            expectAlike("some adding");
        }
}

// A red one and a green one in front of it, which show their ambient colours alone.
TEST_F(Spheres, BothWaysOfBlendingMix) {
    const std::vector<Particle_st> pair = {{{0, 0, -0.5f}, 0.4f, 0}, {{0, 0, 0.5f}, 0.4f, 1}};
    const float full = 1.2f; // of the light and of the surroundings
    for (int i = 0; i < 2; ++i) {
        GLAttribute_cls& a = *mAttribute[size_t(i)];
        SetColor(a.mAmbient, i == 0 ? 0.6f / full : 0, i == 1 ? 0.6f / full : 0, 0, 1);
        SetColor(a.mDiffuse, 0, 0, 0, i == 0 ? 0.5f : 0.25f);
        SetColor(a.mSpecular, 0, 0, 0, 1);
    }
    const auto expect = [&](float r, float g, const char* what) {
        Draw(pair);
        EXPECT_NEAR(Middle().r, r, 0.002f) << what;
        EXPECT_NEAR(Middle().g, g, 0.002f) << what;
        EXPECT_EQ(Middle().b, 0.0f) << what;
    };
    const auto expectAll = [&](const char* what) {
        for (const bool bRedAdds : {false, true}) {
            mAttribute[0]->mBlendType.mValue = bRedAdds ? 1 : 0;
            mAttribute[1]->mBlendType.mValue = bRedAdds ? 0 : 1;
            // Black is what both begin on.
            expect(bRedAdds ? 0.3f * 0.75f : 0.3f, 0.15f, what);
        }
    };
    for (const unsigned shader : {0u, 1u, 2u}) {
        SetAll(2, 0, shader);
        expectAll("mesh");
        SetAll(2, 3, shader);
        expectAll("exact");
    }
    ShaderCtrl_cls none;
    ShaderCtrl_cls* const pOwn = std::exchange(GLAttribute_cls::mspCShaderCtrl, &none);
    SetAll(2, 0, 0);
    expectAll("fixed pipeline");
    GLAttribute_cls::mspCShaderCtrl = pOwn;
}

TEST_F(Spheres, ExactOnesKnowSpotsAndFog) {
    mSize = 192;
    for (const bool bFog : {false, true}) {
        mbSpot = true;
        mbFog = bFog;
        SetAll(2, 2, 2);
        Draw({{{0, 0, 0}, 0.8f}, {{0.6f, 0.3f, -1.0f}, 0.5f}});
        const Picture_st mesh = Picture();
        SetAll(2, 3, 2);
        Draw({{{0, 0, 0}, 0.8f}, {{0.6f, 0.3f, -1.0f}, 0.5f}});
        EXPECT_LT(MeanDifference(mesh, Picture()), 0.6) << (bFog ? "fog" : "");
    }
}

TEST_F(Spheres, RadiiThatAreNoneDrawNothing) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    for (const unsigned type : {1u, 2u})
        for (const unsigned quality : {0u, 3u}) {
            SetAll(type, quality);
            Draw({{{0, 0, 0}, 0.0f},
                  {{0, 0, 0}, kInf},
                  {{0, 0, 0}, -kInf},
                  {{0, 0, 0}, kNaN},
                  {{kNaN, 0, 0}, 0.5f},
                  {{0, kInf, 0}, 0.5f}});
            EXPECT_EQ(CountLit(), 0) << type << quality;
        }
    // A negative radius is drawn as the sphere that it spans.
    for (const unsigned quality : {1u, 3u}) {
        SetAll(2, quality);
        Draw({{{0, 0, 0}, 0.5f}});
        const Picture_st positive = Picture();
        Draw({{{0, 0, 0}, -0.5f}});
        EXPECT_EQ(Picture().mRGB, positive.mRGB) << quality;
    }
    // Types past the last class are drawn as class 0.
    Draw({{{0, 0, 0}, 0.5f, 200}});
    EXPECT_GT(CountLit(), 100);
}

// The program doesn't run without its shaders; here the last words are caught in place of the end.
TEST_F(Spheres, WithoutItsShadersTheProgramSaysWhichAndEnds) {
    struct End_st {
        wxString mText;
    };
    std::vector<wxString> told;
    const auto endOf = [&](const std::string& file, const char* text) {
        EnterBrokenFolder(file, text);
        ShaderCtrl_cls broken;
        wxString end;
        try {
            broken.InitializeShader(Canvas(0), true);
        } catch (const End_st& last) {
            end = last.mText;
        }
        std::filesystem::current_path(mHome);
        std::filesystem::remove_all(mDir / "GL");
        return end;
    };
    SetMessageHandler([&](MessageKind kind, const wxString& text, const wxString& title) {
        EXPECT_EQ(title, "!!");
        if (kind == MessageKind::Fatal) throw End_st{text};
        told.push_back(text);
        return true;
    });
    EXPECT_TRUE(endOf("GL/Phong.frag", "").Contains("GL/Phong.frag can't be read"));
    EXPECT_TRUE(told.empty());
    // A compiler's words are told of the first pair alone, the linker's of all.
    const char* kBroken = "#version 120\nvoid main() { this is no GLSL; }\n";
    EXPECT_TRUE(endOf("GL/Cartoon.vert", kBroken).StartsWith("The shader of GL/Cartoon.vert and GL/Cartoon"));
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(endOf("GL/Gouraud.frag", kBroken).StartsWith("The shader of GL/Gouraud.vert and GL/Gouraud"));
    ASSERT_EQ(told.size(), 1u);
    EXPECT_TRUE(told[0].StartsWith("Compile error in fragment shader.\n"));
    EXPECT_TRUE(told[0].EndsWith("GL/Gouraud.frag")) << told[0];
    SetMessageHandler({});
}

TEST_F(Spheres, HighTakesThePlaceOfExactAndSaysSo) {
    EnterBrokenFolder("GL/Exact.frag", "#version 120\nvoid main() { discard }\n");
    ShaderCtrl_cls broken;
    broken.InitializeShader(Canvas(0), true);
    ShaderCtrl_cls* const pOwn = std::exchange(GLAttribute_cls::mspCShaderCtrl, &broken);
    SetAll(2, 3, 2);
    Draw({{{0, 0, 0}, 0.5f}});
    const wxString told = GLDrawData_cls::msStrMessage;
    const Picture_st fallback = Picture();
    SetAll(2, 2, 2);
    Draw({{{0, 0, 0}, 0.5f}});
    GLAttribute_cls::mspCShaderCtrl = pOwn;
    EXPECT_EQ(fallback.mRGB, Picture().mRGB);
    EXPECT_EQ(told, "\"Exact\" spheres are drawn as \"High\": this OpenGL can't cast rays.\n");
}

} // namespace
