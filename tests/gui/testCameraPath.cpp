// The camera that moves by key frames: keys set from a view, the view that looks through it, undo, projects.
#include <array>
#include <cmath>
#include <sstream>

#include <wx/checkbox.h>
#include <wx/choice.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GuiTest.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr double kFar[3] = {30, 5, 12};
constexpr double kNear[3] = {20, -5, 8};

class CameraPath : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        Time().SetAnimInterpNative(1);
        Time().SetRepeatNative(0);
        ResetPaths();
        ResetViews();
    }
    void TearDown() override {
        ResetPaths();
        ResetViews();
        GuiTest::TearDown();
    }
    static void ResetPaths() {
        CameraPath_cls camera;
        AnchorPath_cls anchor;
        std::wistringstream stream((camera.Serialize() + anchor.Serialize()).ToStdWstring());
        std::wstring line;
        while (std::getline(stream, line)) {
            Path().ReadStrLine(stream, line);
            Anchor().ReadStrLine(stream, line);
        }
        GCUndoList.Clear();
        Go(0);
    }
    static CameraPath_cls& Path() { return *Hub()->mpCCameraPath; }
    static AnchorPath_cls& Anchor() { return *Hub()->mpCAnchorPath; }
    static TimeCtrl_cls& Time() { return *Hub()->mpCTimeCtrl; }
    static void Go(int frame) {
        Time().SetFrameNative(frame, 0); // leaves no step
        Menu(ID_REFRESH_GL);
        Settle();
    }
    static const PositionAndDirection_cls& Eye(int view = 0) { return Canvas(view)->mCamera.mCCamPos; }
    static double Apart(const double* a, const double* b) {
        return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
    }
    /// Put the free camera somewhere; it looks at the anchor from there.
    static void FlyTo(const double* place) {
        Canvas(0)->mCamera.GetPCCameraPosition()->Set(place);
        Menu(ID_REFRESH_GL);
    }
    static wxPoint Spot() { return Middle(Canvas(0)); }
    static int KeyNumber() { return Path().mpCTranslate->mVParams[0].GetKeyNumber(); }
    /// Keys of place and rotation in the first and in the last frame, from the popup of a free view.
    static void MakeKeys() {
        FlyTo(kFar);
        ClickPopup(Canvas(0), Spot(), {WXK_DOWN, WXK_DOWN, WXK_DOWN, WXK_RETURN}); // (Pos+Rot)
        Go(Time().GetMaxFrame());
        FlyTo(kNear);
        ClickPopup(Canvas(0), Spot(), {WXK_DOWN, WXK_DOWN, WXK_DOWN, WXK_RETURN});
    }
    static void Link() { ClickPopup(Canvas(0), Spot(), {WXK_DOWN, WXK_RETURN}); } // Move to Cam Pos
};

TEST_F(CameraPath, ViewFliesBetweenTwoKeysAndUndoTakesThemBack) {
    MakeKeys();
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0) << "setting keys links nothing";
    ASSERT_EQ(KeyNumber(), 2);
    EXPECT_EQ(Path().mpCRotate->mVParams[2].GetKeyNumber(), 2);
    const int last = Time().GetMaxFrame();
    Link();
    ASSERT_EQ(Canvas(0)->GetDisplayMode(), 7);
    auto* geometry = dynamic_cast<wxChoice*>(FindByTip(Frame(), "Geometry"));
    ASSERT_TRUE(geometry);
    EXPECT_FALSE(geometry->IsEnabled()) << "the path's geometry counts";
    EXPECT_LT(Apart(Eye().mPos, kNear), 1e-9);
    double front[3];
    std::copy_n(Eye().mFront, 3, front);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(front[i] * Apart(kNear, Shared().msCAnchorPos), -kNear[i], 1e-3)
            << "as the free view looked";
    // Two automatic keys make a straight way.
    const Picture_st atEnd = Grab(0);
    for (const int frame : {0, 5, 10, 15}) {
        Go(frame);
        const double rate = double(frame) / last;
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(Eye().mPos[i], kFar[i] + rate * (kNear[i] - kFar[i]), 1e-9) << frame;
        EXPECT_NE(Grab(0).mRGB, atEnd.mRGB);
        Snap("cam0_frame" + std::to_string(frame));
    }
    Menu(ID_UNDO);
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0) << "linking is a step of its own";
    EXPECT_LT(Apart(Eye().mPos, kNear), 1e-9);
    Menu(ID_REDO);
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 7);
    EXPECT_FALSE(geometry->IsEnabled()) << "the controls follow";
    Menu(ID_UNDO);
    Canvas(0)->LinkageConnect(); // without a step, to see the rest
    GCUndoList.UndoCurrent();    // the second popup's step, seen without moving time
    ASSERT_TRUE(Settle());
    EXPECT_EQ(KeyNumber(), 1);
    EXPECT_LT(Apart(Eye().mPos, kFar), 1e-9);
    GCUndoList.UndoCurrent();
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(Path().mpCTranslate->mVParams[0].mbTimeDepend.mValue);
    EXPECT_EQ(Eye().mPos[0], -1.5) << "where cameras begin";
    EXPECT_FALSE(GCUndoList.IsUndoable());
    GCUndoList.ExecCurrent();
    GCUndoList.ExecCurrent();
    ASSERT_TRUE(Settle());
    EXPECT_NEAR(Eye().mPos[0], kFar[0] + 15.0 / last * (kNear[0] - kFar[0]), 1e-9);
}

TEST_F(CameraPath, PlayingMovesTheLinkedViewWithItsSteps) {
    MakeKeys();
    Link();
    Go(0);
    Time().SetAnimInterpCommand(4);
    Time().SetInterpStepCommand(2);
    ASSERT_TRUE(Settle());
    const double rate = 0.5 / Time().GetMaxFrame();
    EXPECT_NEAR(Eye().mPos[0], kFar[0] + rate * (kNear[0] - kFar[0]), 1e-9) << "between the frames too";
    Time().SetInterpStepCommand(0);
    Time().SetAnimInterpCommand(1);
    Time().StartPlayCommand(1);
    ASSERT_TRUE(PumpUntil([] { return !Time().IsPlaying(); }, 20000));
    ASSERT_TRUE(Settle());
    EXPECT_LT(Apart(Eye().mPos, kNear), 1e-9);
}

TEST_F(CameraPath, UsersMoveStandsUntilTimeMoves) {
    MakeKeys();
    Link();
    Go(5);
    const PositionAndDirection_cls before = Eye();
    Drag(Canvas(0), Spot(), Spot() + wxPoint(60, 20));
    ASSERT_TRUE(Settle());
    const PositionAndDirection_cls moved = Eye();
    EXPECT_GT(Apart(moved.mPos, before.mPos), 0.5);
    Menu(ID_REFRESH_GL);
    EXPECT_LT(Apart(Eye().mPos, moved.mPos), 1e-9) << "a refresh is no move of time";
    wxWindow* button = FindByTip(Frame(), "Set a key of the camera's position");
    ASSERT_TRUE(button);
    ClickOn(button);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(KeyNumber(), 3);
    EXPECT_LT(Apart(Eye().mPos, moved.mPos), 1e-9) << "the key stands where the view is";
    GCUndoList.UndoCurrent();
    ASSERT_TRUE(Settle());
    EXPECT_LT(Apart(Eye().mPos, before.mPos), 1e-9) << "the path moved back, and the view with it";
    wxWindow* both = FindByTip(Frame(), "Set keys of the camera's position and direction");
    ASSERT_TRUE(both);
    ClickOn(both);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(KeyNumber(), 3);
    EXPECT_EQ(Path().mpCRotate->mVParams[2].GetKeyNumber(), 3);
    GCUndoList.UndoCurrent();
    ASSERT_TRUE(Settle());
    Drag(Canvas(0), Spot(), Spot() + wxPoint(60, 20));
    Go(6);
    Go(5);
    EXPECT_LT(Apart(Eye().mPos, before.mPos), 1e-9);
    ClickPopup(Canvas(0), Spot(), {WXK_UP, WXK_RETURN}); // unlink
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0);
    EXPECT_LT(Apart(Eye().mPos, kNear), 1e-9) << "the free camera waited where it was";
    Menu(ID_UNDO);
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 7) << "and the link comes back";
}

TEST_F(CameraPath, AnchorPathIsLookedAtAndTurnedAround) {
    const double low[3] = {2, 3, -4};
    std::copy_n(low, 3, Shared().msCAnchorPos);
    wxWindow* button = FindByTip(Frame(), "Set a key of the anchor"); // on the play panel
    ASSERT_TRUE(button);
    ClickOn(button);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Anchor().mpCTranslate->mVParams[2].GetInterpolatedValue(0.0), -4.0);
    std::fill_n(Shared().msCAnchorPos, 3, 0.0);
    // The free view's pivot follows it.
    wxWindow* pivot = FindByLabel(Frame(), "Pivot Follows Anchor");
    ASSERT_TRUE(pivot);
    Click(pivot, wxPoint(8, pivot->GetClientSize().y / 2));
    ASSERT_TRUE(Settle());
    EXPECT_LT(Apart(Shared().msCAnchorPos, low), 1e-12);
    EXPECT_LT(Apart(Eye().mAnc, low), 1e-12);
    Canvas(0)->mPivotMode.mValue = false;
    std::fill_n(Shared().msCAnchorPos, 3, 0.0);
    // And the linked one looks at it, whatever the rotation says.
    Path().mCLookAnchor.mValue = true;
    Link();
    EXPECT_LT(Apart(Eye().mAnc, low), 1e-12);
    EXPECT_NEAR(Eye().GetProjectedDistance(low), Apart(Eye().mPos, low), 1e-9) << "straight ahead";
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains(":1--7 1"));
    // Its lens is the path's.
    Path().mCVAngle.mValue = 50.0;
    Path().mCGeometry.mValue = CameraPath_cls::GEOMETRY_ORTHOGRAPHIC;
    Menu(ID_REFRESH_GL);
    EXPECT_EQ(Canvas(0)->mCGLPerspective.mAngle, 50.0);
    EXPECT_FALSE(Canvas(0)->mCGLPerspective.mbPerspective);
    EXPECT_TRUE(Canvas(0)->IsOrthographic());
    EXPECT_FALSE(Canvas(1)->IsFishEye());
    Path().mCGeometry.mValue = CameraPath_cls::GEOMETRY_PERSPECTIVE;
    Path().mCLookAnchor.mValue = false;
    Path().mCVAngle.mValue = 35.0;
}

TEST_F(CameraPath, OtherViewsShowTheTrail) {
    MakeKeys();
    Canvas(0)->SetDisplayMode(6); // from above
    Canvas(0)->mGLOrthoScale.mValue = 80.0f;
    Canvas(0)->mShowData.mValue = Canvas(0)->mShowGrid.mValue = Canvas(0)->mShowMessage.mValue = false;
    Menu(ID_REFRESH_GL);
    const double middle[3] = {25, 0, 10};
    double x = 0.0;
    double y = 0.0;
    ASSERT_TRUE(ProjectToWindow(0, middle, &x, &y));
    EXPECT_TRUE(Grab(0).IsLit(x, y, 3, 200));
    Snap("trail");
    Path().mCVisible.mValue = false;
    Menu(ID_REFRESH_GL);
    EXPECT_FALSE(Grab(0).IsLit(x, y, 3, 30));
    Path().mCVisible.mValue = true;
    Canvas(0)->mShowItems.mValue = false;
    Menu(ID_REFRESH_GL);
    EXPECT_FALSE(Grab(0).IsLit(x, y, 3, 30));
}

TEST_F(CameraPath, ProjectKeepsThePathsAndTheLinkedView) {
    MakeKeys();
    Link();
    Path().mCVAngle.mValue = 60.0;
    const TempDir_cls dir;
    const wxString file = dir / "flight.mrp";
    ASSERT_TRUE(Hub()->SaveProjectFile(file, true));
    const auto values = [](const ParamGroup_cls* pGroup) {
        std::array<double, 3> at{};
        for (size_t i = 0; i < at.size(); ++i)
            at[i] = pGroup->mVParams[i].Evaluate(0.3, 0.0);
        return at;
    };
    const auto place = values(Path().mpCTranslate);
    const auto angles = values(Path().mpCRotate);
    ResetPaths();
    ResetViews();
    ASSERT_TRUE(OpenProjectAndPaint(file.ToStdString()));
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(values(Path().mpCTranslate)[i], place[i], 1e-5);
        EXPECT_NEAR(values(Path().mpCRotate)[i], angles[i], 1e-5);
    }
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 7);
    EXPECT_LT(Apart(Eye().mPos, kFar), 1e-5) << "files keep six decimals";
    EXPECT_EQ(Canvas(0)->mCGLPerspective.mAngle, 60.0);
    EXPECT_EQ(Hub()->mpCParamGroupCameraPath->mVpCChilds.size(), 3u);
    EXPECT_TRUE(mVMessages.empty());
    Path().mCVAngle.mValue = 35.0;
}

} // namespace
