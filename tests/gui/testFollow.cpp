// What goes with a picked particle through undo, missing snapshots, stopped work and other frames.
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterData.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/VIEW/CameraSpeed.h"
#include "GL/VIEW/clsParticlePanel.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "ParticlesTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsMoveItem.h"

namespace {

class Follow : public ParticlesTest {
protected:
    void Tick(const char* label) {
        ClickOn(FindByLabel(Hub()->mpCInformation->mpCParticleGUI, label));
        Settle();
    }
    static Point Anchor() {
        const double* p = Hub()->mpCAnchorPath->mCCurrent.mPos;
        return {p[0], p[1], p[2]};
    }
    void Undo() {
        Hub()->Undo();
        Settle();
    }
    void Redo() {
        Hub()->Redo();
        Settle();
    }
    void Escape() {
        Key(WXK_ESCAPE);
        Settle();
    }
};

TEST_F(Follow, UndoAndRedoFindTheParticleWhateverWasPickedMeanwhile) {
    ShowRun({{{10, 0, 0, 5}, {10, -1, 0, 6}}});
    PickAt(At({10, 0, 0}));
    Tick("Follow");
    const std::string followed = Project();
    ASSERT_NE(followed.find("PickedParticle=1 5"), std::string::npos);
    // Nothing is picked any more as the tick comes back.
    Escape();
    Tick("Follow");
    EXPECT_FALSE(Watch().IsPicked());
    Undo();
    EXPECT_EQ(Project(), followed);
    EXPECT_EQ(Anchor(), (Point{10, 0, 0}));
    Undo();
    EXPECT_FALSE(Watch().IsPicked()) << "nothing shows it, nothing needs it";
    EXPECT_FALSE(Hub()->mpCParticles->End());
    // Another one is.
    EXPECT_EQ(PickAt(At({10, -1, 0})), 6);
    Redo();
    EXPECT_EQ(Project(), followed);
    Undo();
    EXPECT_EQ(Picked(), 6);
    Tick("Follow");
    EXPECT_NE(Project().find("PickedParticle=1 6"), std::string::npos);
    EXPECT_EQ(Anchor(), (Point{10, -1, 0}));
    Undo();
    EXPECT_EQ(Project().find("Picked"), std::string::npos);
    // A tick beside the particle that undo has brought back goes with that one.
    PickAt(At({10, 0, 0}));
    Tick("Follow");
    EXPECT_EQ(PickAt(At({10, -1, 0})), 6);
    Undo();
    Tick("Trail");
    EXPECT_EQ(Picked(), 5);
    Tick("Trail");
    Tick("Follow");
    EXPECT_EQ(Picked(), 5) << "it is what is picked";
    for (int k = 0; k < 3; ++k)
        Undo();
    EXPECT_EQ(Project(), followed);
}

TEST_F(Follow, AnAnchorThatIsHeldIsNotDragged) {
    ShowRun({{{10, 0, 0, 5}}, {{10, 1, 0, 5}}});
    PickAt(At({10, 0, 0}));
    Tick("Follow");
    Hub()->SelectObject(AnchorPath_cls::kPickName, 0);
    Repaint();
    ASSERT_EQ(MoveItem_cls::mspCSelectedObject, Hub()->mpCAnchorPath);
    const auto steps = GCUndoList.GetCurrent();
    const std::string before = Project();
    const int manipulator = Navigators_cls::msManipulatorMode;
    Navigators_cls::TranslationMode();
    EXPECT_FALSE(Hub()->mpCAnchorPath->TakesMode(Navigators_cls::msManipulatorMode));
    EXPECT_FALSE(Hub()->mpCAnchorPath->GetWhyHeld().empty());
    MoveItem_cls::InitializeMoveItem();
    EXPECT_FALSE(MoveItem_cls::TypeKey('3', Navigators_cls::msManipulatorMode));
    Repaint();
    EXPECT_EQ(Anchor(), (Point{10, 0, 0})) << "it stays with its particle";
    MoveItem_cls::EndDrag();
    EXPECT_EQ(GCUndoList.GetCurrent(), steps);
    EXPECT_EQ(Project(), before);
    Tick("Follow");
    EXPECT_TRUE(Hub()->mpCAnchorPath->TakesMode(Navigators_cls::msManipulatorMode));
    Navigators_cls::msManipulatorMode = manipulator;
    MoveItem_cls::SetSelection(nullptr);
}

TEST_F(Follow, TheMarkIsWhereTheParticleIsDrawn) {
    ShowRun({{{10, 0, 0, 1}}});
    FilterLists_cls& lists = *Hub()->mpCFilters;
    PickAt(At({10, 0, 0}));
    Tick("Follow");
    // Copies that come later leave it where it is.
    for (int k = 0; k < 3; ++k)
        Hub()->mpCPeriodicBoundary->mCPeriodicSize.mValue[k] = 1.0f;
    Hub()->mpCPeriodicBoundary->mCPeriodicBaseVector1.mValue[1] = 2.0f;
    Menu(ID_FILTER_COPYBOX);
    auto* copy = static_cast<FilterCopy_cls*>(lists.GetWorld().GetPCFilter(0));
    copy->GetPCData()->mCMin[1].mValue = -1;
    copy->GetPCData()->mCMax[1].mValue = 2;
    Menu(ID_REFRESH_GL);
    Settle();
    EXPECT_EQ(Anchor(), (Point{10, 0, 0}));
    EXPECT_GT(CountMark(Grab(0), At({10, 0, 0}), 12), 20);
    EXPECT_EQ(PickAt(At({10, 2, 0})), 1);
    EXPECT_EQ(Anchor(), (Point{10, 2, 0}));
    // A cell without a copy, a class without a look: no mark hangs in the air.
    copy->GetPCData()->mCMax[1].mValue = 1;
    Menu(ID_REFRESH_GL);
    Settle();
    EXPECT_EQ(CountMark(Grab(0), At({10, 2, 0}), 12), 0);
    EXPECT_EQ(PickAt(At({10, 0, 0})), 1);
    Look().mpCGLAttribute[0]->mDrawType.mValue = DRAW_HIDE;
    Menu(ID_REFRESH_GL);
    Settle();
    EXPECT_EQ(CountMark(Grab(0), At({10, 0, 0}), 12), 0);
    Hub()->mpCPeriodicBoundary->SetToDefault();
}

TEST_F(Follow, ATrailThatIsStoppedStaysAndPicturesHaveAllOfIt) {
    using State = ParticleWatch_cls::State;
    using Source = ParticleWatch_cls::Source;
    std::vector<std::vector<ParticleDot_st>> run;
    for (int k = 0; k < 12; ++k)
        run.push_back({{10, 0.1f * float(k), 0, 5}});
    ShowRun(run);
    Hub()->mpCTimeCtrl->SetWAMaxNative(11);
    ParticleWatch_cls& watch = *Hub()->mpCParticles;
    watch.ReadStrLine("PickedParticle=1 5 0 0 0 0");
    watch.mbTrail = true;
    State state = State::More;
    for (int k = 0; state == State::More && k < 12; ++k) // what is in memory one by one
        state = watch.Learn(0, Source::Memory);
    ASSERT_EQ(state, State::Reading);
    const wxString reading = watch.GetStatus();
    EXPECT_TRUE(reading.StartsWith("Trail: ")) << reading;
    // A paint between press and idle loop keeps the press.
    GbAbort.store(true);
    Repaint();
    EXPECT_TRUE(watch.GetStatus().StartsWith("Trail stopped at ")) << watch.GetStatus();
    EXPECT_FALSE(GbAbort.load());
    size_t points = 0;
    for (const auto& line : watch.GetTrail())
        points += line.size();
    EXPECT_LT(points, 12u);
    EXPECT_EQ(watch.Learn(0, Source::Background), State::Known) << "and no more is read";
    bool bDone = false;
    const auto take = [&](wxSize, int) {
        bDone = true;
        EXPECT_EQ(watch.GetTrail()[0].size(), 12u) << "pictures have all of it";
    };
    Canvas(0)->RequestWindowPicture(take, false);
    ASSERT_TRUE(PumpUntil([&bDone] { return bDone; }));
    ASSERT_EQ(watch.GetTrail().size(), 1u);
    EXPECT_TRUE(watch.GetStatus().empty());
}

TEST_F(Follow, AClickWhileAReaderWorksPicksWhatIsSeen) {
    ShowRun({{{10, 0, 0, 5}}, {{10, -1, 0, 6}}});
    const wxPoint at = At({10, 0, 0});
    GbGLLockForLoadingData.store(true); // no paint comes through
    Hub()->mpCTimeCtrl->SetFrameNative(1, 0);
    Hold(WXK_CONTROL, true);
    Click(Canvas(0), at);
    Hold(WXK_CONTROL, false);
    EXPECT_EQ(Picked(), 5);
    GbGLLockForLoadingData.store(false);
    Repaint();
    EXPECT_EQ(CountMark(Grab(0), At({10, 0, 0}), 12), 0) << "the frame in sight lacks it";
    EXPECT_EQ(PickAt(At({10, -1, 0})), 6);
}

TEST_F(Follow, ACameraThatLooksAtItIsJudgedByItsWay) {
    // Half a turn around the camera from one frame to the next.
    ShowRun({{{10, 0, 0, 5}}, {{-10, 1, 0, 5}}, {{-10, 1, 0, 5}}});
    const TimeCtrl_cls& time = *Hub()->mpCTimeCtrl;
    Hub()->mpCTimeCtrl->SetWAMaxNative(2);
    CameraPath_cls& camera = *Hub()->mpCCameraPath;
    const double none[3] = {0, 0, 0};
    camera.mpCTranslate->SetKeyFrame(none, true, ParamGroup_cls::kCurrent);
    camera.mCLookAnchor.mValue = true;
    const auto turn = [&] { return FindFastestTurn(camera, *Hub()->mpCAnchorPath, time, 25.0).mDegrees; };
    EXPECT_LT(turn(), 1.0);
    PickAt(At({10, 0, 0}));
    Tick("Follow");
    while (Hub()->mpCParticles->Learn(100, ParticleWatch_cls::Source::Wait) !=
           ParticleWatch_cls::State::Known) {
    }
    for (int frame = 0; frame < 3; ++frame)
        GoTo(frame);
    EXPECT_GT(turn(), 1000.0);
    camera.SetToDefault();
}

} // namespace
