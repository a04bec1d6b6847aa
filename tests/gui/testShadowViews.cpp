// Shadows in views of every kind: in a fisheye, with marks, for two eyes; without parts of OpenGL, with
// values that make no sense, and from projects.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <limits>

#include "GL/BASE/clsSphere.h"
#include "GL/DRAW/clsShadowStencil.h"
#include "SCENE/clsStereoGram.h"
#include "ShadowTest.h"

namespace {

using ShadowViews = ShadowTest;

/// Pixels of a part of a window that show nothing of the pixels of a whole one that became them.
int CountOutside(const Picture_st& seen, const wxRect& part, const Picture_st& whole) {
    const int across = whole.mW / part.width, down = whole.mH / part.height;
    int outside = 0;
    for (int y = 0; y < part.height; ++y)
        for (int x = 0; x < part.width; ++x) {
            int least = 255, most = 0;
            for (int k = 0; k < across * down; ++k) {
                const int one = whole.Brightness(across * x + k % across, down * y + k / across);
                least = std::min(least, one);
                most = std::max(most, one);
            }
            const int here = seen.Brightness(part.x + x, part.y + y);
            outside += here < least - 8 || here > most + 8;
        }
    return outside;
}

// Over the seams of a dome's faces.
TEST_F(ShadowViews, LieWhereTheyAreThrownInAFisheye) {
    mMayDiffer = 0.01; // spheres are small there
    for (const double turn : {0.0, 45.0, 70.0}) {
        const double c = std::cos(turn * M_PI / 180), s = std::sin(turn * M_PI / 180);
        const auto turned = [&](const Vector& p) {
            return Vector{c * p[0] - s * p[1], s * p[0] + c * p[1], p[2]};
        };
        std::vector<Vector> spheres;
        for (const Vector& p : Pair())
            spheres.push_back(turned({p[0] - 6.5, p[1], p[2]}));
        Show(spheres, 1.0);
        Canvas(0)->SetGeometry(2);
        Canvas(0)->mGLPersAngle.mValue = float(mFisheye = 180.0);
        SetLight(0, LightSRC_cls::TYPE_PARALLEL, turned(kFromFront), 0.9);
        ExpectShadows("fisheye " + std::to_string(int(turn)), 50);
        Canvas(0)->SetGeometry(0);
        Canvas(0)->mGLPersAngle.mValue = 35.0f;
    }
}

// Marks in front and behind stay what they are.
TEST_F(ShadowViews, VolumesCanBeShownAndMarksStay) {
    Show(Pair(), 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, kFromFront, 0.4);
    const Picture_st plain = Draw(1);
    const Picture_st shown = Draw(2);
    EXPECT_GT(CountDifferent(plain, shown, 40), 3000);
    SetLight(1, LightSRC_cls::TYPE_PARALLEL, {-0.8, -0.5, 0.3}, 0.3);
    EXPECT_GT(CountDifferent(Draw(1), Draw(2), 40), 3000);
    // With marks and grid: what differs is the light on the spheres.
    const Picture_st bare[2] = {Draw(0), Draw(1)};
    Canvas(0)->mShowItems.mValue = Canvas(0)->mShowGrid.mValue = true;
    const Picture_st marked[2] = {Draw(0), Draw(1)};
    int wrong = 0, marks = 0;
    for (size_t i = 0; i < bare[0].mRGB.size(); ++i) {
        const bool bMark = std::abs(int(marked[0].mRGB[i]) - int(bare[0].mRGB[i])) > 30;
        marks += bMark;
        wrong += bMark && bare[0].mRGB[i] == bare[1].mRGB[i] &&
                 std::abs(int(marked[0].mRGB[i]) - int(marked[1].mRGB[i])) > 3;
    }
    Canvas(0)->mShowItems.mValue = Canvas(0)->mShowGrid.mValue = false;
    EXPECT_GT(marks, 500);
    EXPECT_EQ(wrong, 0);
}

// Each eye sees the shadows that its own place shows, whatever becomes of the two pictures; a driver without
// depth clamp draws the same.
TEST_F(ShadowViews, ForTwoEyesAndWithoutDepthClamp) {
    Show(Pair(), 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, kFromFront, 0.4);
    // The spheres stand before the far plane, and then their shadows end behind it.
    for (const float farthest : {5000.0f, 13.0f}) {
        Canvas(0)->mGLDepthMax.mValue = farthest;
        const Picture_st clamped = Draw(1);
        ShadowStencil_cls::msbClamps = false;
        for (const bool bInstances : {true, false}) {
            Sphere_cls::msbInstances = bInstances;
            EXPECT_LE(CountDifferent(Draw(1), clamped, 2), bInstances ? 3 * 3 : 60)
                << farthest << ": but for pixels on an edge";
            ExpectShadows("no clamp", 50);
        }
        ShadowStencil_cls::msbClamps = Sphere_cls::msbInstances = true;
    }
    Canvas(0)->mGLDepthMax.mValue = 5000.0f;
    StereoGram_cls& stereo = *Hub()->mpCStereoGram;
    stereo.mCType.mValue = StereoGram_cls::TYPE_OFF_AXIS;
    const double parallax = 0.8;
    Parameters_cls::msbUndoCommandMake = false;
    stereo.mpCParallax->SetKeyFrame(&parallax, true, 0.0);
    Parameters_cls::msbUndoCommandMake = true;
    const Vector near = {4, 1, 3};
    SetLight(1, LightSRC_cls::TYPE_POINT, near, 0.4);
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_RED_CYAN;
    const Picture_st both = Draw(1);
    Snap("shadows_eyes");
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_LEFT;
    const Picture_st left = Draw(1);
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_RIGHT;
    const Picture_st right = Draw(1);
    int wrong = 0;
    for (size_t i = 0; i < both.mRGB.size(); ++i)
        wrong += std::abs(int(both.mRGB[i]) - int((i % 3 == 0 ? left : right).mRGB[i])) > 8;
    EXPECT_LT(wrong, 60);
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_LINE_BY_LINE;
    const Picture_st lines = Draw(1);
    int wrongLines = 0;
    for (int y = 0; y < both.mH; ++y)
        for (int x = 0; x < both.mW; ++x) {
            const Picture_st& own = (both.mH - 1 - y) % 2 == 0 ? left : right; // from the lowest one
            wrongLines += std::abs(lines.Brightness(x, y) - own.Brightness(x, y)) > 3;
        }
    EXPECT_EQ(wrongLines, 0);
    const int w = both.mW, h = both.mH;
    const struct {
        int output;
        wxRect eyes[2]; ///< of the window, from its top
    } shrunk[] = {
        {StereoGram_cls::OUTPUT_SIDE_BY_SIDE, {{0, 0, w / 2, h}, {w / 2, 0, w / 2, h}}},
        {StereoGram_cls::OUTPUT_TOP_BOTTOM, {{0, 0, w, h / 2}, {0, h / 2, w, h / 2}}},
        {StereoGram_cls::OUTPUT_SIDE_BY_SIDE_FULL, {{0, h / 4, w / 2, h / 2}, {w / 2, h / 4, w / 2, h / 2}}},
        {StereoGram_cls::OUTPUT_TOP_BOTTOM_FULL, {{w / 4, 0, w / 2, h / 2}, {w / 4, h / 2, w / 2, h / 2}}}};
    for (const auto& item : shrunk) {
        stereo.mCEye.mValue = item.output;
        const Picture_st seen = Draw(1);
        EXPECT_LT(CountOutside(seen, item.eyes[0], left) + CountOutside(seen, item.eyes[1], right), 200)
            << item.output;
        EXPECT_GT(CountDifferent(seen, Draw(0), 10), 500) << item.output;
    }
    // An eye aside sees what one in the middle does of a scene that stands the other way; y is to the left.
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_NO_PARALLAX;
    for (const Picture_st* seen : {&left, &right}) {
        const Vector aside = {0, seen == &left ? -0.4 : 0.4, 0};
        std::vector<Vector> spheres = Pair();
        for (Vector& p : spheres)
            p = Plus(p, aside, 1.0);
        Show(spheres, 1.0);
        SetLight(1, LightSRC_cls::TYPE_POINT, Plus(near, aside, 1.0), 0.4);
        EXPECT_LT(CountDifferent(Draw(1), *seen, 8), 300) << aside[1];
        EXPECT_GT(CountDifferent(Draw(0), *seen, 8), 1000);
    }
    stereo.Reset();
}

TEST_F(ShadowViews, AreTheSameWithoutInstances) {
    Show(Pair(), 1.0);
    SetLooks(2, 0);
    for (const int type : {LightSRC_cls::TYPE_PARALLEL, LightSRC_cls::TYPE_POINT}) {
        SetLight(0, type, type == LightSRC_cls::TYPE_PARALLEL ? kFromFront : Vector{4, 1, 3}, 0.9);
        const Picture_st with = Draw(1);
        const Picture_st none = Draw(0);
        GLAttribute_cls::mspCShaderCtrl->mbEnabled = false;
        const Picture_st without = Draw(1);
        GLAttribute_cls::mspCShaderCtrl->mbEnabled = true;
        EXPECT_GT(CountDifferent(with, none, 10), 300);
        EXPECT_LT(CountDifferent(with, without, 10), 60) << type;
    }
}

TEST_F(ShadowViews, ValuesWithoutSenseChangeNothing) {
    Show(Pair(), 1.0);
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, kFromFront, 0.9);
    ShadowVolume_cls::Settings_st& settings = ShadowVolume_cls::GetSettings();
    const Picture_st good = Draw(1);
    for (const char* line :
         {"ShadowQuality=-7", "ShadowQuality=99", "ShadowLength=nan", "ShadowLength=1e38",
          "ShadowDarkness=nan", "ShadowDarkness=55", "ShadowDarkness=-3", "ShadowLength=-4"}) {
        ShadowVolume_cls::SetToDefault();
        ShadowVolume_cls::ReadStrLineStaticMember(line);
        EXPECT_TRUE(settings.mQuality.mValue >= 0 && settings.mQuality.mValue <= 2) << line;
        EXPECT_TRUE(settings.mLength.mValue >= 0.0f) << line;
        EXPECT_TRUE(settings.mDarkness.mValue >= 0.0f && settings.mDarkness.mValue <= 1.0f) << line;
        EXPECT_EQ(Draw(1).mRGB.size(), good.mRGB.size()) << line;
    }
    ShadowVolume_cls::SetToDefault();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (int type = 0; type < 4; ++type) {
        LightSRC_cls& light = SetLight(0, type, {0, 0, 1}, 0.9);
        FilterScope_cls::Set(light.mpCTranslate, {kNaN, 0, kNaN});
        FilterScope_cls::Set(light.mpCRotate, {kNaN, kNaN, 0});
        light.mCFade.mValue = 2;
        light.mCFadeDistance.mValue = 0.0f;
        light.mCSpotAngle.mValue = -40;
        EXPECT_GT(Draw(1).CountLit(3), 1000) << type;
    }
    EXPECT_EQ(Draw(77).mRGB.size(), good.mRGB.size()) << "any number but 0 is on";
}

TEST_F(ShadowViews, ProjectsKeepWhatIsSet) {
    using Volume = ShadowVolume_cls;
    EXPECT_EQ(Volume::SerializeStaticMember(), "ShadowQuality=1\nShadowLength=20.000000\n");
    Volume::ReadStrLineStaticMember("ShadowQuality=2");
    Volume::ReadStrLineStaticMember("ShadowLength=3.5");
    Volume::ReadStrLineStaticMember("ShadowDarkness=0.25");
    const wxString text = "ShadowQuality=2\nShadowLength=3.500000\nShadowDarkness=0.250000\n";
    EXPECT_EQ(Volume::SerializeStaticMember(), text);
    Option().mShadow.mValue = 2;
    const wxString path = wxString::FromUTF8(mDir / "shadows.mrp");
    ASSERT_TRUE(Hub()->SaveProjectFile(path, true));
    Volume::SetToDefault();
    Option().mShadow.mValue = 0;
    Hub()->ReadProjectFile(path);
    EXPECT_EQ(Volume::SerializeStaticMember(), text);
    EXPECT_EQ(Option().mShadow.mValue, 2u);
    // A project of a time before there were any isn't dark by the one before it.
    const std::string old = mDir / "old.mrp";
    std::ofstream(old) << "Shadow=1\n";
    Hub()->ReadProjectFile(wxString::FromUTF8(old));
    EXPECT_EQ(Option().mShadow.mValue, 1u);
    EXPECT_EQ(Volume::SerializeStaticMember(), "ShadowQuality=1\nShadowLength=20.000000\n");
}

} // namespace
