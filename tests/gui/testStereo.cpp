// Two eyes: what every output shows of them in the window, by closed forms, what files they leave, and the
// dialog "Stereogram Configure".
#include <cmath>

#include <wx/image.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/clsImageIO.h"
#include "PARAM/clsParamGroup.h"
#include "PictureTest.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsStereoGram.h"
#include "WIDGET/clsDialogEXKey.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

using Eyes = StereoGram_cls;

class Stereo : public PictureTest {
protected:
    static constexpr int kW = 480, kH = 320;
    static constexpr double kParallax = 0.2;
    static constexpr double kFar = 2.0;

    void SetUp() override {
        PictureTest::SetUp();
        Shared().msCFBOSizeIndex.mValue = 2;
        ASSERT_TRUE(SizeView(kW, kH));
        Canvas(0)->mGLPersAngle.mValue = 40.0f;
        LookAlongX();
    }
    void TearDown() override {
        wxFileDialogEX::sStrTestAnswer.clear();
        Ctrl().Reset();
        if (wxDialogEXKey* dialog = Ctrl().GetPCDialog()) dialog->CloseEXKey();
        PictureTest::TearDown();
    }
    static Eyes& Ctrl() { return *Hub()->mpCStereoGram; }
    static void Set(int type, int output, double parallax = kParallax) {
        Parameters_cls::msbUndoCommandMake = false;
        Ctrl().mCType.mValue = type;
        Ctrl().mCEye.mValue = output;
        Ctrl().mpCParallax->SetKeyFrame(&parallax, true, 0.0);
        Parameters_cls::msbUndoCommandMake = true;
    }
    static Picture_st Show(int type, int output, double parallax = kParallax) {
        Set(type, output, parallax);
        Repaint();
        return Grab(0);
    }
    /// Of a point straight ahead: how far its picture is moved by an eye that is `aside`, pixels.
    static double Shift(double aside, double far) { return aside / far * kH / 2.0 / std::tan(M_PI / 9.0); }
    /// Where one channel's light is, from the middle of a part of the picture, in pixels of that part.
    static double Place(const Picture_st& picture, int channel, wxRect part) {
        double sum = 0.0, weighted = 0.0;
        for (int y = part.y; y < part.y + part.height; ++y)
            for (int x = part.x; x < part.x + part.width; ++x) {
                const double light = Channel(picture, x, y, channel);
                sum += light;
                weighted += light * (x + 0.5);
            }
        return sum > 0.0 ? weighted / sum - part.x - part.width / 2.0 : 1e9;
    }
    static double Place(const Picture_st& picture, int channel) {
        return Place(picture, channel, wxRect(0, 0, kW, kH));
    }
};

TEST_F(Stereo, APointMovesBetweenTheEyesAsFarAsItMust) {
    ShowParticles({{kFar, 0, 0}}, 20);
    LookAlongX();
    const double shift = Shift(kParallax / 2.0, kFar);
    ASSERT_GT(shift, 10.0);
    const struct {
        int mOutput;
        double mPlaces[3]; ///< of red, green, blue
    } cases[] = {{Eyes::OUTPUT_NO_PARALLAX, {0, 0, 0}},
                 {Eyes::OUTPUT_LEFT, {shift, shift, shift}},
                 {Eyes::OUTPUT_RIGHT, {-shift, -shift, -shift}},
                 {Eyes::OUTPUT_RED_CYAN, {shift, -shift, -shift}},
                 {Eyes::OUTPUT_YELLOW_BLUE, {shift, shift, -shift}}};
    for (const auto& item : cases) {
        const Picture_st picture = Show(Eyes::TYPE_OFF_AXIS, item.mOutput);
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(Place(picture, c), item.mPlaces[c], 0.5) << item.mOutput << " channel " << c;
        const Picture_st swapped = Show(Eyes::TYPE_OFF_AXIS, item.mOutput, -kParallax);
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(Place(swapped, c), -item.mPlaces[c], 0.5) << item.mOutput << " channel " << c;
    }
    const Picture_st beside = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_SIDE_BY_SIDE);
    EXPECT_NEAR(Place(beside, 0, wxRect(0, 0, kW / 2, kH)), shift / 2, 0.5) << "half as wide";
    EXPECT_NEAR(Place(beside, 1, wxRect(kW / 2, 0, kW / 2, kH)), -shift / 2, 0.5);
}

TEST_F(Stereo, EyesStandAboveEachOtherAndInFullSize) {
    ShowParticles({{kFar, 0, 0}, {kFar, 0, 0.4}}, 20);
    LookAlongX();
    const double shift = Shift(kParallax / 2.0, kFar);
    const double up = Shift(0.4, kFar); // of the second point
    for (const int geometry : {0, 2}) {
        Canvas(0)->SetGeometry(geometry);
        const struct {
            int mOutput;
            wxRect mLeft, mRight; ///< parts of the window, from its top
        } cases[] = {
            {Eyes::OUTPUT_SIDE_BY_SIDE, {0, 0, kW / 2, kH}, {kW / 2, 0, kW / 2, kH}},
            {Eyes::OUTPUT_TOP_BOTTOM, {0, 0, kW, kH / 2}, {0, kH / 2, kW, kH / 2}},
            {Eyes::OUTPUT_SIDE_BY_SIDE_FULL, {0, kH / 4, kW / 2, kH / 2}, {kW / 2, kH / 4, kW / 2, kH / 2}},
            {Eyes::OUTPUT_TOP_BOTTOM_FULL, {kW / 4, 0, kW / 2, kH / 2}, {kW / 4, kH / 2, kW / 2, kH / 2}}};
        const Picture_st left = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_LEFT);
        const Picture_st right = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_RIGHT);
        const double places[2] = {Place(left, 0), Place(right, 0)};
        if (geometry == 0) {
            EXPECT_NEAR(places[0], shift, 0.5);
        }
        EXPECT_GT(places[0] - places[1], 5.0);
        for (const auto& item : cases) {
            const Picture_st both = Show(Eyes::TYPE_OFF_AXIS, item.mOutput);
            int i = 0;
            for (const wxRect& part : {item.mLeft, item.mRight})
                EXPECT_NEAR(Place(both, 0, part), places[i++] * part.width / kW, 0.6)
                    << item.mOutput << " in geometry " << geometry;
            if (geometry != 0) continue;
            const double middle = item.mLeft.y + item.mLeft.height / 2.0;
            const double scale = double(item.mLeft.height) / kH;
            const double x = item.mLeft.x + item.mLeft.width / 2.0 + shift * item.mLeft.width / kW;
            EXPECT_TRUE(both.IsLit(x, middle - up * scale, 3, 200)) << item.mOutput;
            // Outside of the two there is nothing.
            Picture_st rest = both;
            for (const wxRect& part : {item.mLeft, item.mRight})
                for (int y = part.y; y < part.y + part.height; ++y)
                    std::fill_n(rest.mRGB.begin() + 3 * (y * kW + part.x), 3 * part.width, 0);
            EXPECT_EQ(rest.CountLit(0), 0) << item.mOutput;
        }
    }
}

TEST_F(Stereo, ColoursAreMixedAsTheGlassesNeedThem) {
    ShowParticles({{-kFar, 0, 0}}, 1);
    LookAlongX();
    const double color[3] = {0.8, 0.5, 0.25};
    SetBackground(float(color[0]), float(color[1]), float(color[2]));
    // The sums of the two matrices: both eyes see the background.
    const double sums[3][3] = {{0.413, 0.412, 0.174}, {0.338, 0.696, -0.034}, {-0.087, -0.134, 1.221}};
    for (const int geometry : {0, 2}) {
        Canvas(0)->SetGeometry(geometry);
        const Picture_st picture = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_RED_CYAN_DUBOIS);
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(Channel(picture, kW / 2, kH / 2, c),
                        255 * (sums[c][0] * color[0] + sums[c][1] * color[1] + sums[c][2] * color[2]), 1.5)
                << c;
    }
    // White points: what one eye sees is the sum of its rows, what is negative is none.
    Canvas(0)->SetGeometry(0);
    SetBackground(0, 0, 0);
    ShowParticles({{kFar, 0, 0}}, 20);
    LookAlongX();
    const Picture_st picture = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_RED_CYAN_DUBOIS);
    const int x = int(std::lround(Shift(kParallax / 2.0, kFar)));
    const int left[3] = {255, 0, 0}, right[3] = {0, 255, 255}; // 1.132, 1.094 and 1.041 are cut
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(Channel(picture, kW / 2 + x, kH / 2, c), left[c]) << c;
        EXPECT_EQ(Channel(picture, kW / 2 - x, kH / 2, c), right[c]) << c;
    }
}

TEST_F(Stereo, EyesThatTurnMeetAtTheFocus) {
    Ctrl().mCToeInAngle.mValue = 1.5f;
    Set(Eyes::TYPE_TOE_IN, Eyes::OUTPUT_RED_CYAN);
    const double focus = Ctrl().GetDistanceToFocus(0.0);
    ShowParticles({{focus, 0, 0}}, 20);
    LookAlongX();
    Repaint();
    const Picture_st picture = Grab(0);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(Place(picture, c), 0.0, 0.3) << c;
    Ctrl().mCToeInAngle.mValue = 0.0f; // they look straight ahead
    const Picture_st straight = Show(Eyes::TYPE_TOE_IN, Eyes::OUTPUT_RED_CYAN);
    EXPECT_NEAR(Place(straight, 0), Shift(kParallax / 2.0, focus), 0.5);
}

TEST_F(Stereo, LinesBelongToTheEyesInTurn) {
    ShowParticles({{kFar, 0, 0}}, 120);
    LookAlongX();
    const auto shift = int(std::lround(Shift(kParallax / 2.0, kFar)));
    for (const int geometry : {0, 2}) {
        Canvas(0)->SetGeometry(geometry);
        Canvas(0)->mGLPersAngle.mValue = geometry == 0 ? 40.0f : 60.0f;
        const Picture_st left = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_LEFT);
        const Picture_st right = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_RIGHT);
        const Picture_st lines = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_LINE_BY_LINE);
        int differ = 0;
        for (int y = 0; y < kH; ++y) {
            const Picture_st& own = (kH - 1 - y) % 2 == 0 ? left : right; // from the lowest one
            for (int x = 0; x < kW; ++x) {
                differ += left.Brightness(x, y) != right.Brightness(x, y);
                EXPECT_NEAR(lines.Brightness(x, y), own.Brightness(x, y), 3) << x << " " << y;
            }
        }
        Snap("stereo_lines_" + std::to_string(geometry));
        EXPECT_GT(differ, shift * 4) << "the eyes see something else";
    }
}

// From beside a camera of the path: a line between its eyes, and where they look.
TEST_F(Stereo, TheEyesOfThePathAreMarkedInOtherViews) {
    ShowParticles({{-kFar, 0, 0}}, 1);
    LookAlongX();
    Canvas(0)->mShowItems.mValue = true;
    CameraPath_cls& path = *Hub()->mpCCameraPath;
    const wxString before = path.Serialize();
    path.mCLookAnchor.mValue = false;
    Ctrl().mCToeInAngle.mValue = 14.0f;
    Set(Eyes::TYPE_TOE_IN, Eyes::OUTPUT_NO_PARALLAX, 0.5);
    Parameters_cls::msbUndoCommandMake = false;
    const double place[3] = {4, 0, -0.6}, angles[3] = {0, 0, 0}; // looks along x as well
    path.mpCTranslate->SetKeyFrame(place, true, 0.0);
    path.mpCRotate->SetKeyFrame(angles, true, 0.0);
    Parameters_cls::msbUndoCommandMake = true;
    Repaint();
    Snap("stereo_focus");
    const double focus = 0.25 / std::tan(14.0 * M_PI / 180.0);
    const auto isMarked = [&](double x, double y, double z) {
        const Picture_st picture = Grab(0);
        double atX = 0, atY = 0;
        const double at[3] = {x, y, z};
        if (!ProjectToWindow(0, at, &atX, &atY)) return false;
        for (int dy = -2; dy <= 2; ++dy)
            for (int dx = -2; dx <= 2; ++dx) {
                const auto color = [&](int c) { return Channel(picture, int(atX) + dx, int(atY) + dy, c); };
                const int red = color(0);
                if (red > 100 && std::abs(color(1) - 0.7 * red) < 12 && std::abs(color(2) - 0.2 * red) < 12)
                    return true;
            }
        return false;
    };
    const double cross = 0.02 * focus;
    const auto seen = [&](bool bTurned) {
        int marks = isMarked(4, 0.2, -0.6) + isMarked(4, -0.2, -0.6);
        for (const double side : {-1.0, 1.0})
            marks += isMarked(4 + 0.5 * focus, 0.125 * side, -0.6) +
                     isMarked(4 + focus, 0.8 * cross * side, -0.6) +
                     isMarked(4 + focus, 0, -0.6 + 0.8 * cross * side);
        EXPECT_FALSE(isMarked(4, 0.32, -0.6)) << "beyond the eye, " << bTurned;
        return marks;
    };
    EXPECT_EQ(seen(true), 8);
    Set(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_NO_PARALLAX, 0.5);
    Repaint();
    EXPECT_EQ(seen(false), 2) << "these look straight ahead";
    Set(Eyes::TYPE_MONOGRAM, Eyes::OUTPUT_NO_PARALLAX, 0.5);
    Repaint();
    EXPECT_EQ(seen(false), 0);
    std::wistringstream lines(before.ToStdWstring());
    for (std::wstring line; std::getline(lines, line);)
        path.ReadStrLine(lines, line);
}

TEST_F(Stereo, OneEyeIsThePictureAsItWas) {
    ShowParticles({{kFar, 0, 0}, {kFar, 0.3, 0.2}, {3, -0.4, 0.1}, {0.3, 0, 0}}, 12);
    LookAlongX();
    SetBackground(0.1f, 0.2f, 0.3f);
    const Picture_st mono = Show(Eyes::TYPE_MONOGRAM, Eyes::OUTPUT_NO_PARALLAX);
    EXPECT_GT(mono.CountLit(200), 20);
    for (const int output : {Eyes::OUTPUT_LEFT, Eyes::OUTPUT_RED_CYAN, Eyes::OUTPUT_SIDE_BY_SIDE})
        EXPECT_TRUE(Show(Eyes::TYPE_MONOGRAM, output).mRGB == mono.mRGB) << output;
    for (const int type : {Eyes::TYPE_OFF_AXIS, Eyes::TYPE_TOE_IN})
        EXPECT_TRUE(Show(type, Eyes::OUTPUT_NO_PARALLAX).mRGB == mono.mRGB) << type;
    // Eyes at one place see one picture, whatever it is split into.
    for (const int output : {Eyes::OUTPUT_LINE_BY_LINE, Eyes::OUTPUT_RED_CYAN, Eyes::OUTPUT_YELLOW_BLUE})
        EXPECT_TRUE(Show(Eyes::TYPE_OFF_AXIS, output, 0.0).mRGB == mono.mRGB) << output;
    // Views along an axis have one.
    Set(Eyes::TYPE_MONOGRAM, Eyes::OUTPUT_NO_PARALLAX);
    Canvas(0)->SetDisplayMode(3);
    Repaint();
    const Picture_st axis = Grab(0);
    EXPECT_GT(axis.CountLit(200), 2);
    for (const int output : {Eyes::OUTPUT_LEFT, Eyes::OUTPUT_RED_CYAN, Eyes::OUTPUT_SIDE_BY_SIDE})
        EXPECT_TRUE(Show(Eyes::TYPE_OFF_AXIS, output).mRGB == axis.mRGB) << output;
}

TEST_F(Stereo, HugeDistancesAndOddAnglesEndNothing) {
    ShowParticles({{kFar, 0, 0}}, 12);
    LookAlongX();
    for (const double parallax : {1e6, -1e6, 1e30, -1e300})
        for (const int output : {Eyes::OUTPUT_RED_CYAN, Eyes::OUTPUT_SIDE_BY_SIDE})
            EXPECT_EQ(Show(Eyes::TYPE_TOE_IN, output, parallax).CountLit(100), 0) << parallax;
    for (const float angle : {0.0f, 180.0f}) {
        Canvas(0)->mGLPersAngle.mValue = angle;
        Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_RED_CYAN);
    }
    Canvas(0)->mGLPersAngle.mValue = 40.0f;
    EXPECT_NEAR(Place(Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_LEFT), 0), Shift(kParallax / 2.0, kFar), 0.5);
}

TEST_F(Stereo, ASnapshotIsTheWindowOrAFileForEachEye) {
    ShowParticles({{kFar, 0, 0}}, 20);
    LookAlongX();
    const auto save = [this] {
        wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(mDir / "snap.png");
        Menu(ID_SAVE_IMAGE_SNAP);
        Settle();
        GCImgIO.Finish();
    };
    const auto differ = [this](const std::string& name, const Picture_st& picture) {
        const wxImage image(wxString::FromUTF8(mDir / name));
        if (!image.IsOk() || image.GetSize() != wxSize(picture.mW, picture.mH)) return 999;
        int most = 0;
        for (size_t i = 0; i < picture.mRGB.size(); ++i)
            most = std::max(most, std::abs(picture.mRGB[i] - image.GetData()[i]));
        return most;
    };
    const Picture_st left = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_LEFT);
    const Picture_st right = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_RIGHT);
    Ctrl().mCDualOutput.mValue = 0;
    const Picture_st both = Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_RED_CYAN);
    save();
    EXPECT_EQ(differ("snap.png", both), 0);
    EXPECT_FALSE(std::filesystem::exists(mDir / "snapL.png"));
    std::filesystem::remove(mDir / "snap.png");
    Ctrl().mCDualOutput.mValue = 1;
    Show(Eyes::TYPE_OFF_AXIS, Eyes::OUTPUT_LINE_BY_LINE);
    save();
    EXPECT_LE(differ("snapL.png", left), 1);
    EXPECT_LE(differ("snapR.png", right), 1);
    EXPECT_FALSE(std::filesystem::exists(mDir / "snap.png"));
}

} // namespace
