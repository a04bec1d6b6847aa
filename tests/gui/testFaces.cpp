// Fisheye, panorama and distortion as the window shows them: directions land where they must, and the
// pictures are those that were looked at.
#include <cmath>
#include <sstream>
#include <utility>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/EventIds.h"
#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsDistortion.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GoldenPicture.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PictureTest.h"
#include "SCENE/clsCameraPath.h"

namespace {

class Faces : public PictureTest {
protected:
    static constexpr int kW = 480, kH = 400;

    void SetUp() override {
        PictureTest::SetUp();
        MainGLCanvas_cls::msCFBOSizeIndex.mValue = 2;
        ASSERT_TRUE(SizeView(kW, kH));
    }
    void TearDown() override {
        MainGLCanvas_cls::mspCDistortion->ReadWavefrontObject(FindRuntimeFile("Resource/distortion.obj"));
        PictureTest::TearDown();
    }
    /// Particles around the camera, away from the axis' ends.
    static std::vector<std::array<double, 2>> Places() {
        return {{10, 20}, {35, 100}, {44, 185}, {60, 300}, {70, 45}, {85, 140}, {88, 250}, {52, 235}};
    }
    void ShowPlaces() {
        std::vector<Point> points;
        for (const auto& place : Places()) {
            Point point = Direction(place[0], place[1]);
            for (double& x : point)
                x *= 4.0;
            points.push_back(point);
        }
        LookAlongX();
        ShowParticles(points, 12);
    }
    static GLAttribute_cls& Attribute() {
        return *GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()).mpCGLAttribute[0];
    }
    static void SetView(int geometry, float angle) {
        Canvas(0)->SetGeometry(geometry);
        Canvas(0)->mGLPersAngle.mValue = angle;
        Repaint();
    }
    static void ExpectLight(double x, double y, const std::string& which) {
        const auto middle = LightNear(Grab(0), x, y, 8);
        EXPECT_NEAR(middle[0], x, 1.3) << which;
        EXPECT_NEAR(middle[1], y, 1.3) << which;
    }
};

TEST_F(Faces, FisheyeDirectionsLandAtTheirRadius) {
    ShowPlaces();
    for (const double angle : {180.0, 240.0}) {
        SetView(2, float(angle));
        for (const auto& place : Places()) {
            const double radius = place[0] / angle * kH; // the picture's side is the window's height
            const double around = place[1] * M_PI / 180.0;
            ExpectLight(kW / 2.0 + radius * std::cos(around), kH / 2.0 - radius * std::sin(around),
                        std::to_string(place[0]) + " of " + std::to_string(angle));
        }
    }
    EXPECT_EQ(Grab(0).IsLit(kW / 2, kH / 2, 6, 20), false);
}

TEST_F(Faces, PanoramaDirectionsLandAtTheirAngles) {
    ShowPlaces();
    SetView(3, 180);
    for (const auto& place : Places()) {
        const Point d = Direction(place[0], place[1]);
        const double longitude = std::atan2(-d[1], d[0]) * 180.0 / M_PI;
        const double latitude = std::asin(d[2]) * 180.0 / M_PI;
        if (std::fabs(latitude) > 34.0) continue; // beyond the band
        ExpectLight(kW / 2.0 + longitude / 360.0 * kW, kH / 2.0 - latitude / 360.0 * kW,
                    std::to_string(longitude) + " " + std::to_string(latitude));
    }
    // Above and below the band is the colour around the picture, in it that of the background.
    MainGLCanvas_cls::mspCClrCurveOut->mConstantColor.mValue[0] = 1.0f;
    SetBackground(0, 1, 0);
    Repaint();
    const Picture_st picture = Grab(0);
    const int half = int(0.098 * kW);
    for (const int sign : {-1, 1}) {
        EXPECT_EQ(Channel(picture, 3, kH / 2 + sign * (half + 4), 0), 255);
        EXPECT_EQ(Channel(picture, 3, kH / 2 + sign * (half - 4), 1), 255);
    }
    for (int x = 0; x < kW; ++x)
        ASSERT_GT(Channel(picture, x, kH / 2 + 20, 1), 200) << "a gap at " << x;
    MainGLCanvas_cls::mspCClrCurveOut->mConstantColor.mValue[0] = 0.0f;
}

TEST_F(Faces, TheDomeHasNoGapsAndBlackCorners) {
    SetBackground(0, 0, 1);
    SetView(2, 180);
    const Picture_st picture = Grab(0);
    int dark = 0, lit = 0;
    for (int y = 0; y < kH; ++y)
        for (int x = 0; x < kW; ++x) {
            const double radius = std::hypot(x + 0.5 - kW / 2.0, y + 0.5 - kH / 2.0);
            if (radius < kH / 2.0 - 3) dark += Channel(picture, x, y, 2) < 250;
            if (radius > kH / 2.0 + 3) lit += Channel(picture, x, y, 2) > 0;
        }
    EXPECT_EQ(dark, 0);
    EXPECT_EQ(lit, 0) << "outside the disc";
}

TEST_F(Faces, SpheresAreWholeAcrossTheSeams) {
    // The first stands before two faces, the second before three, the third before the two behind as well.
    const struct { double mPolar, mAround; } places[] = {{0, 0}, {48, 90}, {80, 90}};
    LookAlongX();
    for (const auto& place : places) {
        Point point = Direction(place.mPolar, place.mAround);
        for (double& x : point)
            x *= 4.0;
        ShowParticles({point}, 1);
        int lit[2];
        for (const bool bExact : {false, true}) {
            for (const wxString line : {"DrawType=2", "RadiusType=0", "AmbientConstantColor=1 1 1 1"}) {
                std::wistringstream none;
                Attribute().ReadStrLine(none, "SEQ0TYPE0" + line);
            }
            Attribute().mDrawQuality.mValue = bExact ? 3 : 2;
            SetView(2, 180);
            lit[bExact] = Grab(0).CountLit(60);
        }
        EXPECT_NEAR(lit[1], lit[0], 0.04 * lit[0]) << place.mPolar;
        const double radius = std::asin(0.25) * 180.0 / M_PI / 180.0 * kH; // of the silhouette in the middle
        if (place.mPolar > 0) continue;
        EXPECT_NEAR(lit[1], M_PI * radius * radius, 0.02 * lit[1]);
    }
    Attribute().mDrawType.mValue = 0;
}

TEST_F(Faces, ListsAreMadeOnceForAnAngle) {
    SetView(2, 160);
    const int made = MainGLCanvas_cls::mspCFishEyeCtrl->GetListCount();
    Repaint();
    Repaint();
    EXPECT_EQ(MainGLCanvas_cls::mspCFishEyeCtrl->GetListCount(), made);
    SetView(2, 161);
    Repaint();
    EXPECT_EQ(MainGLCanvas_cls::mspCFishEyeCtrl->GetListCount(), made + 1);
    SetView(2, 161.9f); // whole degrees count
    EXPECT_EQ(MainGLCanvas_cls::mspCFishEyeCtrl->GetListCount(), made + 1);
}

TEST_F(Faces, ThePathTiltsTheDomeAndBringsItsAngle) {
    ShowParticles({{0, 4, 0}}, 12);
    CameraPath_cls* path = Hub()->mpCCameraPath;
    path->SetInitValueTrans(0, 0, 0);
    path->SetInitValueRot(0, 0, 90);
    path->mCGeometry.mValue = CameraPath_cls::GEOMETRY_FISHEYE;
    path->mCVAngle.mValue = 180.0;
    Canvas(0)->LinkageConnect();
    Repaint();
    const PositionAndDirection_cls& camera = path->mCCurrent;
    ASSERT_NEAR(camera.mFront[1], 1.0, 1e-4) << "the path looks at the particle";
    ExpectLight(kW / 2.0, kH / 2.0, "straight ahead");
    path->mCFishEyeOffset.mValue = 30.0f; // the eye looks down, what is ahead goes up
    Repaint();
    ExpectLight(kW / 2.0, kH / 2.0 - 30.0 / 180.0 * kH, "tilted");
    path->mCFishEyeOffset.mValue = 0.0f;
    path->mCGeometry.mValue = CameraPath_cls::GEOMETRY_PERSPECTIVE;
    path->mCVAngle.mValue = 35.0;
    GCUndoList.Clear();
}

TEST_F(Faces, TheMeshPutsTheDomeWhereItSays) {
    ShowPlaces();
    SetView(2, 180);
    Canvas(0)->mDistortion.mValue = true;
    const std::string corners =
        "v -3 0 -2\nv 3 0 -2\nv 3 0 2\nv -3 0 2\nvn 0 -1 0\nf 1/1/1 2/2/1 3/3/1 4/4/1\n";
    // The mesh's lowest z is at the picture's top.
    const std::string plain = corners + "vt 0 1\nvt 1 1\nvt 1 0\nvt 0 0\n";
    const std::string mirrored = corners + "vt 1 1\nvt 0 1\nvt 0 0\nvt 1 0\n";
    for (const int sign : {1, -1}) {
        ASSERT_TRUE(MainGLCanvas_cls::mspCDistortion->ReadText(sign == 1 ? plain : mirrored, "x"));
        Repaint();
        for (const auto& place : Places()) {
            if (place[0] > 85) continue; // the mask takes the rim
            const double radius = place[0] / 180.0, around = place[1] * M_PI / 180.0;
            ExpectLight(kW * (0.5 + sign * radius * std::cos(around)), kH * (0.5 - radius * std::sin(around)),
                        std::to_string(place[0]));
        }
    }
}

TEST_F(Faces, AMeshThatCannotBeUsedIsToldAndTheRestWorks) {
    ShowPlaces();
    SetView(2, 180);
    const Picture_st before = Grab(0);
    MainGLCanvas_cls::mspCDistortion->ReadText("f 1/1/1 2/2/2 3/3/3\n", "bad.obj");
    Canvas(0)->mDistortion.mValue = true;
    Canvas(0)->mShowMessage.mValue = true;
    Repaint();
    EXPECT_TRUE(WasTold("The distortion mesh bad.obj, line 1: a face must be a quad"));
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains("The distortion mesh bad.obj"));
    Canvas(0)->mShowMessage.mValue = false;
    Canvas(0)->mDistortion.mValue = false;
    Repaint();
    EXPECT_EQ(Grab(0).mRGB, before.mRGB);
}

TEST_F(Faces, AMissingMaskIsToldAndLeavesTheMeshAlone) {
    ShowPlaces();
    SetView(2, 180);
    Canvas(0)->mDistortion.mValue = true;
    Repaint();
    const Picture_st masked = Grab(0);
    GLTexture_cls none;
    GLTexture_cls* const pMask = std::exchange(MainGLCanvas_cls::mspCMask, &none);
    Repaint();
    MainGLCanvas_cls::mspCMask = pMask;
    EXPECT_TRUE(WasTold("The mask Resource/DefaultMask.png can't be read as an image"));
    EXPECT_GT(Grab(0).CountLit(20), 0) << "without darkened edges";
    Repaint();
    EXPECT_EQ(Grab(0).mRGB, masked.mRGB);
    Canvas(0)->mDistortion.mValue = false;
}

TEST_F(Faces, TheMenusSettingsAreUndoable) {
    SetView(2, 180);
    const Picture_st before = Grab(0);
    const auto choose = [](int id) {
        wxCommandEvent event(wxEVT_MENU, id);
        Canvas(0)->ProcessWindowEvent(event);
        Settle();
    };
    choose(ID_CANVAS_FISHEYE_GRID);
    EXPECT_TRUE(Canvas(0)->mFisheyeGrid.mValue);
    EXPECT_GT(Grab(0).CountLit(100), 3000) << "circles and spokes";
    choose(ID_CANVAS_DISTORTION);
    EXPECT_TRUE(Canvas(0)->mDistortion.mValue);
    Menu(ID_UNDO);
    EXPECT_FALSE(Canvas(0)->mDistortion.mValue);
    Menu(ID_UNDO);
    EXPECT_FALSE(Canvas(0)->mFisheyeGrid.mValue);
    EXPECT_EQ(Grab(0).mRGB, before.mRGB);
    Menu(ID_REDO);
    EXPECT_TRUE(Canvas(0)->mFisheyeGrid.mValue);
    const wxString text = Canvas(0)->Serialize();
    EXPECT_TRUE(text.Contains("\nPanel0Distortion0\nPanel0FisheyeGrid1\n")) << text;
}

TEST_F(Faces, PicturesAreThoseThatWereLookedAt) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    MainGLCanvas_cls::msCFBOSizeIndex.mValue = 1;
    MainGLCanvas_cls* canvas = Canvas(0);
    Menu(ID_VIEW_PANEL_TYPE_0);
    canvas->SetDisplayMode(0);
    canvas->mShowMessage.mValue = canvas->mShowItems.mValue = false;
    canvas->mShowGrid.mValue = true;
    ASSERT_TRUE(SizeView(kW, kH));
    LookAlongX();
    canvas->GetPCCameraPosition()->Set(-2.2, -0.5, 0.7);
    SetBackground(0.05f, 0.1f, 0.2f);
    SetView(2, 180);
    EXPECT_TRUE(IsGolden("fisheye", Grab(0)));
    canvas->mFisheyeGrid.mValue = canvas->mDistortion.mValue = true;
    Repaint();
    EXPECT_TRUE(IsGolden("fisheye_distorted", Grab(0)));
    SetView(3, 150);
    EXPECT_TRUE(IsGolden("panorama", Grab(0)));
    SetView(0, 60);
    EXPECT_TRUE(IsGolden("perspective", Grab(0)));
    SetView(1, 60);
    EXPECT_TRUE(IsGolden("orthographic", Grab(0)));
}

} // namespace
