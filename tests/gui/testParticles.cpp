// Particles that are picked in the views: which one a click means, and what is shown of it.
#include <cmath>
#include <fstream>

#include <wx/notebook.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsInformationGUI.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticlePanel.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewPick.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "ParticlesTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class Particles : public ParticlesTest {};

TEST_F(Particles, AClickShowsThePageAndALabelAndEscapeEndsIt) {
    ShowRun({{{10, 0, 0, 41}, {10, -1, 0.5f, 42}, {20, 0, 0, 43}}});
    EXPECT_EQ(PickAt(At({10, -1, 0.5})), 42);
    EXPECT_EQ(OptionBook()->GetSelection(), 3);
    EXPECT_EQ(Hub()->mpCInformation->mIndex.mValue, 1);
    EXPECT_TRUE(PageSays("0 / 42"));
    EXPECT_TRUE(PageSays("0.5, 0.25, 0.125"));
    EXPECT_TRUE(PageSays("1 / 7"));
    EXPECT_GT(CountMark(Grab(0), At({10, -1, 0.5}), 12), 20) << "a ring";
    EXPECT_GT(CountMark(Grab(0), At({10, -1, 0.5}, 30), 15), 10) << "and its name beside it";
    EXPECT_EQ(CountMark(Grab(0), At({10, 0, 0}), 8), 0);
    Snap("particle_picked");
    EXPECT_EQ(PickAt(At({10, 0, 0}, 3, -3)), 41) << "the nearer of two, within five pixels";
    EXPECT_EQ(PickAt(At({10, 0, 0}, 5, 5)), -1) << "empty space";
    EXPECT_EQ(CountMark(Grab(0), At({10, 0, 0}), 12), 0);
    PickAt(At({10, 0, 0}));
    ASSERT_EQ(Picked(), 41);
    Key(WXK_ESCAPE);
    Settle();
    EXPECT_EQ(Picked(), -1);
    EXPECT_EQ(CountMark(Grab(0), At({10, 0, 0}), 12), 0);
    // Without the key a click is something else.
    Click(Canvas(0), At({10, 0, 0}));
    Settle();
    EXPECT_EQ(Picked(), -1);
}

TEST_F(Particles, APickFollowsItsIDFromFrameToFrame) {
    ShowRun({{{10, 0, 0, 5}, {10, 1, 0, 6}}, {{10, 1, 0, 6}, {10, 0, 1, 5}}, {{10, 1, 0, 6}}});
    PickAt(At({10, 0, 0}));
    GoTo(1);
    EXPECT_EQ(Hub()->mpCInformation->mIndex.mValue, 1);
    EXPECT_TRUE(PageSays("0 / 5"));
    EXPECT_GT(CountMark(Grab(0), At({10, 0, 1}), 12), 20);
    GoTo(2);
    EXPECT_EQ(Picked(), 5);
    EXPECT_TRUE(PageSays("no such particle"));
    EXPECT_EQ(CountMark(Grab(0), At({10, 0, 1}), 12), 0);
    GoTo(0);
    EXPECT_TRUE(PageSays("0 / 5"));
    // Between snapshots it is where it is drawn.
    ShowRun({{{10, 0, 0, 5}}, {{10, 0, 1, 5}}});
    PickAt(At({10, 0, 0}));
    Hub()->mpCTimeCtrl->SetAnimInterpNative(2);
    GoTo(0, 1);
    const Point drawn = {10.25, 0.125, 0.0625}; // its velocity goes for half of the time
    EXPECT_GT(CountMark(Grab(0), At(drawn), 12), 20);
    Key(WXK_ESCAPE);
    EXPECT_EQ(PickAt(At(drawn, -10)), -1);
    EXPECT_EQ(PickAt(At(drawn)), 5);
}

TEST_F(Particles, SpheresSpritesFiltersCopiesAndTheBoxCount) {
    ShowRun({{{10, 0, 0, 1, 1.0f}, {20, 0, 0, 2, 6.0f}}});
    GLAttribute_cls& look = *Look().mpCGLAttribute[0];
    look.mRadiusType.mValue = RADIUS_OF_DATA;
    for (const unsigned type : {DRAW_SPHERE, DRAW_BILLBOARD}) {
        look.mDrawType.mValue = type;
        Repaint();
        const double scale = double(look.GetRadiusFactor());
        ASSERT_GT(scale, 0.0);
        EXPECT_EQ(PickAt(At({10, -0.95 * scale, 0})), 1) << type;
        EXPECT_EQ(PickAt(At({20, -5.5 * scale, 0})), 2) << type;
        EXPECT_EQ(PickAt(At({20, -6.5 * scale, 0}, 3)), -1) << type;
    }
    look.mDrawType.mValue = DRAW_POINT;
    // What the list leaves out isn't picked, and with near first it leaves nothing out.
    FilterLists_cls& lists = *Hub()->mpCFilters;
    Menu(ID_FILTER_BOOLEAN);
    FilterData_cls& cut = *lists.GetBoolean().GetPCFilter(0)->mpCData;
    const double centre[3] = {20, 0, 0}, size[3] = {1, 9, 9};
    cut.mpCTranslate->SetKeyFrame(centre, true, SceneObj_cls::kCurrent);
    cut.mpCScale->SetKeyFrame(size, true, SceneObj_cls::kCurrent);
    DrawOption_cls& options = *Hub()->mpCDrawOption;
    for (const unsigned order : {SORT_NONE, SORT_FAR_FIRST, SORT_NEAR_FIRST}) {
        options.mSortOrder.mValue = order;
        Repaint();
        EXPECT_EQ(PickAt(At({10, 0, 0})), order == SORT_NEAR_FIRST ? 1 : 2) << order;
        EXPECT_GT(CountMark(Grab(0), At({10, 0, 0}), 12), 20) << order;
    }
    options.mSortOrder.mValue = SORT_NONE;
    lists.GetBoolean().ClearFilters();
    // Copies along y, five apart.
    Menu(ID_FILTER_COPYBOX);
    auto* copy = static_cast<FilterCopy_cls*>(lists.GetWorld().GetPCFilter(0));
    copy->GetPCData()->mCMin[1].mValue = -1;
    copy->GetPCData()->mCMax[1].mValue = 2;
    for (int k = 0; k < 3; ++k)
        Hub()->mpCPeriodicBoundary->mCPeriodicSize.mValue[k] = 1.0f;
    Hub()->mpCPeriodicBoundary->mCPeriodicBaseVector1.mValue[1] = 2.0f;
    Menu(ID_REFRESH_GL);
    Settle();
    EXPECT_EQ(PickAt(At({10, -2, 0})), 1);
    EXPECT_EQ(Watch().GetName().mCell[1], -1);
    EXPECT_GT(CountMark(Grab(0), At({10, -2, 0}), 12), 20) << "the copy that was meant";
    EXPECT_EQ(CountMark(Grab(0), At({10, 0, 0}), 8), 0);
    EXPECT_EQ(PickAt(At({10, 2, 0})), 1);
    EXPECT_EQ(Watch().GetName().mCell[1], 1);
    // A box that moves all of it up by one.
    Menu(ID_FILTER_DATABOX);
    FilterData_cls& box = *lists.GetObject().GetPCFilter(0)->mpCData;
    const double up[3] = {0, 0, 1};
    box.mpCTranslate->SetKeyFrame(up, true, SceneObj_cls::kCurrent);
    Menu(ID_REFRESH_GL);
    Settle();
    EXPECT_EQ(PickAt(At({10, 2, 0})), -1);
    EXPECT_EQ(PickAt(At({10, 2, 1})), 1);
    EXPECT_GT(CountMark(Grab(0), At({10, 2, 1}), 12), 20);
    Hub()->mpCPeriodicBoundary->SetToDefault();
}

TEST_F(Particles, EveryGeometryViewAndEyePicksWhatItShows) {
    ShowRun({{{3, -1, 0.5f, 1}, {3, 1, 0.5f, 2}, {0.5f, -3, 0, 3}}});
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC);
    Repaint();
    // In a parallel view the anchor's distance, here 1, is what the picture is high or wide.
    EXPECT_EQ(PickAt(At({1, 0.2, 0})), -1);
    Canvas(0)->mGLPersAngle.mValue = 180.0f;
    for (const int geometry : {ViewSettings_cls::GEOMETRY_FISHEYE, ViewSettings_cls::GEOMETRY_PANORAMIC}) {
        Canvas(0)->SetGeometry(geometry);
        Repaint();
        EXPECT_EQ(PickAt(At({3, -1, 0.5})), 1) << geometry;
        EXPECT_GT(CountMark(Grab(0), At({3, -1, 0.5}), 12), 10) << geometry;
        EXPECT_EQ(PickAt(At({0.5, -3, 0}, 2, 2)), 3) << geometry;
        EXPECT_EQ(PickAt(At({0.5, -3, 0}, 6, 0)), -1) << geometry;
        Snap("particle_wide" + std::to_string(geometry));
    }
    Canvas(0)->mGLPersAngle.mValue = 40.0f;
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_PERSPECTIVE);
    Repaint();
    // Two eyes side by side: each half has its own picture; red and cyan lie over each other.
    const wxPoint between = At({3, -1, 0.5});
    StereoGram_cls& stereo = *Hub()->mpCStereoGram;
    stereo.mCType.mValue = StereoGram_cls::TYPE_OFF_AXIS;
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_SIDE_BY_SIDE;
    const double parallax = 0.4;
    stereo.mpCParallax->SetKeyFrame(&parallax, false, ParamGroup_cls::kCurrent);
    Menu(ID_REFRESH_GL);
    Settle();
    const wxSize size = Canvas(0)->GetClientSize();
    const double shift = 0.2 / 3.0 / std::tan(20.0 * M_PI / 180.0) * size.y / 2.0; // of an eye, pixels
    const auto eye = [&](int which) {
        const double x = between.x + (which == 0 ? shift : -shift);
        return wxPoint(int(x / 2.0) + (which == 0 ? 0 : size.x / 2), between.y);
    };
    EXPECT_EQ(PickAt(eye(0)), 1);
    EXPECT_EQ(PickAt(eye(1)), 1);
    EXPECT_EQ(PickAt(between), -1);
    Snap("particle_eyes");
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_RED_CYAN;
    Menu(ID_REFRESH_GL);
    Settle();
    EXPECT_EQ(PickAt(between), -1);
    EXPECT_EQ(PickAt(wxPoint(int(between.x + shift), between.y)), 1);
    EXPECT_EQ(PickAt(wxPoint(int(between.x - shift), between.y)), 1);
    stereo.Reset();
    // Four views: each by its own camera.
    Menu(ID_VIEW_PANEL_TYPE_3);
    for (const int view : {1, 2, 3})
        Canvas(view)->mGLOrthoScale.mValue = 12.0f;
    Menu(ID_REFRESH_GL);
    Settle();
    for (const int view : {0, 1, 2, 3}) {
        Key(WXK_ESCAPE);
        const wxPoint point = At({3, -1, 0.5}, 0, 0, view);
        EXPECT_EQ(PickAt(point, view), 1) << view;
    }
    Snap("particle_four");
    Menu(ID_VIEW_PANEL_TYPE_0);
    Settle();
}

TEST_F(Particles, NothingComesOfAClickWithoutParticles) {
    Hub()->CloseDataCommand();
    Settle();
    EXPECT_EQ(PickAt(wxPoint(100, 100)), -1);
    EXPECT_TRUE(mVMessages.empty());
    ShowRun({{{10, 0, 0, 1}}});
    Canvas(0)->mShowData.mValue = false;
    Repaint();
    EXPECT_EQ(PickAt(At({10, 0, 0})), -1) << "what isn't shown isn't picked";
    Canvas(0)->mShowData.mValue = true;
    Repaint();
    EXPECT_EQ(PickAt(At({10, 0, 0})), 1);
    // Its snapshot is being read again, and what was drawn has gone.
    Hub()->mpCPDataSeqCtrl->ClearData(-1, 0, false);
    Hold(WXK_CONTROL, true);
    Click(Canvas(0), wxPoint(kW / 2, kH / 2));
    Hold(WXK_CONTROL, false);
    Repaint();
    EXPECT_EQ(PickAt(At({10, 0, 0})), 1);
    // Lines of a project that are no particle.
    for (const char* line : {"PickedParticle=", "PickedParticle=1 2", "PickedParticle=x y z w",
                             "PickedParticle=1 4 -7 0", "PickedMarks=1"}) {
        Hub()->mpCParticles->ReadStrLine(line);
        EXPECT_EQ(Picked(), 1) << line;
    }
    Hub()->mpCParticles->ReadStrLine("PickedParticle=1 99 2147483647 2147483647 -2147483648 0");
    Hub()->mpCParticles->ReadStrLine("PickedMarks=1 1 1");
    Menu(ID_REFRESH_GL);
    Settle();
    EXPECT_FALSE(Hub()->mpCAnchorPath->mCCurrent.mPos[0] > 0.0) << "an ID that no file has";
    Hub()->mpCParticles->Reset();
    PickAt(At({10, 0, 0}));
    // Other data: what was picked is none of them.
    ShowRun({{{10, 0, 0, 1}}});
    EXPECT_EQ(Picked(), -1);
}

TEST_F(Particles, TheAnchorFollowsAndTheCameraComesToIt) {
    ShowRun(
        {{{10, 0, 0, 5}, {12, 0, 0, 6}}, {{11, 0, 1, 5}, {12, 0, 0, 6}}, {{12, 0, 0, 6}}, {{13, 1, 0, 5}}});
    const AnchorPath_cls& anchor = *Hub()->mpCAnchorPath;
    const auto where = [&anchor] {
        const double* p = anchor.mCCurrent.mPos;
        return Point{p[0], p[1], p[2]};
    };
    const Point rest = where();
    PickAt(At({10, 0, 0}));
    ASSERT_EQ(Picked(), 5);
    wxWindow* panel = Hub()->mpCInformation->mpCParticleGUI;
    const std::string before = Project();
    ClickOn(FindByLabel(panel, "Follow"));
    Settle();
    EXPECT_TRUE(Watch().mbFollow);
    EXPECT_EQ(where(), (Point{10, 0, 0}));
    GoTo(1);
    EXPECT_EQ(where(), (Point{11, 0, 1}));
    GoTo(2);
    EXPECT_EQ(where(), (Point{11, 0, 1})) << "missing: it stays where it was";
    GoTo(3);
    EXPECT_EQ(where(), (Point{13, 1, 0}));
    GoTo(0);
    Hub()->mpCTimeCtrl->SetAnimInterpNative(4);
    GoTo(0, 1);
    EXPECT_EQ(where(), (Point{10.125, 0.0625, 0.03125})) << "as it is drawn: by its velocity";
    Hub()->mpCTimeCtrl->SetAnimInterpNative(1);
    GoTo(1);
    // One click from there.
    PositionAndDirection_cls eye = Canvas(0)->mCamera.GetFreeCamera();
    ClickOn(FindByLabel(panel, "Camera to Anchor"));
    Settle();
    EXPECT_EQ((Point{Shared().msCAnchorPos[0], Shared().msCAnchorPos[1], Shared().msCAnchorPos[2]}),
              (Point{11, 0, 1}));
    const PositionAndDirection_cls& moved = Canvas(0)->mCamera.GetFreeCamera();
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(moved.mFront[i], eye.mFront[i], 1e-12);
        EXPECT_NEAR(moved.mPos[i] + moved.mFront[i], where()[size_t(i)], 1e-9) << "as far away as before";
    }
    // And the camera stays with it; a step of the undo list brings back the view that was.
    GoTo(3);
    EXPECT_EQ((Point{Shared().msCAnchorPos[0], Shared().msCAnchorPos[1], Shared().msCAnchorPos[2]}),
              (Point{13, 1, 0}));
    GoTo(1);
    Hub()->Undo();
    EXPECT_FALSE(Canvas(0)->mPivotMode.mValue);
    Hub()->Redo();
    Settle();
    Snap("particle_followed");
    // Escape leaves the anchor with its particle; a step of the undo list each.
    Key(WXK_ESCAPE);
    Settle();
    EXPECT_TRUE(Watch().mbFollow);
    EXPECT_EQ(CountMark(Grab(0), At({11, 0, 1}), 12), 0);
    const std::string project = Project();
    EXPECT_NE(project.find("PickedParticle=1 5 0 0 0 0\n"), std::string::npos);
    Hub()->Undo();
    Hub()->Undo();
    Settle();
    EXPECT_FALSE(Watch().mbFollow);
    EXPECT_EQ(where(), rest);
    EXPECT_EQ(Project().find("Picked"), std::string::npos) << "not in use, not in the file";
    EXPECT_EQ(before.find("Picked"), std::string::npos);
    // A project brings it back, and one without it takes it away.
    std::ofstream(mDir / "follow.mrp") << project;
    ASSERT_TRUE(OpenProjectAndPaint(mDir / "follow.mrp"));
    EXPECT_EQ(Picked(), 5);
    EXPECT_EQ(where(), (Point{10, 0, 0}));
    std::ofstream(mDir / "none.mrp") << "TimeMaxFrame=3\n";
    Frame()->OpenProject(mDir / "none.mrp");
    Settle();
    EXPECT_FALSE(Watch().IsPicked());
    EXPECT_EQ(where(), rest);
}

TEST_F(Particles, AFollowedParticleGivesWayToTheNextOneInOneStep) {
    ShowRun({{{10, 0, 0, 5}, {10, -1, 0, 6}}});
    PickAt(At({10, 0, 0}));
    ClickOn(FindByLabel(Hub()->mpCInformation->mpCParticleGUI, "Follow"));
    Settle();
    const int steps = int(GCUndoList.GetCurrent());
    EXPECT_EQ(PickAt(At({10, -1, 0})), 6);
    EXPECT_EQ(int(GCUndoList.GetCurrent()), steps + 1);
    EXPECT_EQ(Hub()->mpCAnchorPath->mCCurrent.mPos[1], -1.0);
    Hub()->Undo();
    Settle();
    EXPECT_EQ(Picked(), 5);
    EXPECT_EQ(Hub()->mpCAnchorPath->mCCurrent.mPos[1], 0.0);
}

} // namespace
