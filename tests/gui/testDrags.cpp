// What drags make of items of the scene, with real mouse and keys.
#include "APP/clsShortcut.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsParticlePanel.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "PickingTest.h"

namespace {

using Drags = PickingTest;

TEST_F(Drags, ADragSetsKeysAsOneStep) {
    Put(Light(0), 0.5, 0, 0.5);
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Menu(ID_REFRESH_GL);
    const int steps = Steps();
    const wxPoint from = At({-0.3, 0, -0.3}), way(60, -35);
    const std::array<double, 2> moved = WayOf(way, 4.0);
    ShiftDrag(from, from + way);
    const Values after = PlaceOf(Light(0));
    EXPECT_NEAR(after[0], 0.5 + moved[0], 1e-5);
    EXPECT_NEAR(after[1], 0.0, 1e-5);
    EXPECT_NEAR(after[2], 0.5 + moved[1], 1e-5);
    EXPECT_GT(Steps(), steps);
    Menu(ID_UNDO);
    EXPECT_EQ(PlaceOf(Light(0)), (Values{0.5, 0, 0.5}));
    EXPECT_EQ(Steps(), steps) << "one step";
    Menu(ID_REDO);
    EXPECT_EQ(PlaceOf(Light(0)), after);
}

TEST_F(Drags, AHandleHoldsTheAxis) {
    Put(Light(0), 0.2, 0, 0.2);
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Menu(ID_REFRESH_GL);
    const wxPoint item = At({0.2, 0, 0.2});
    const wxPoint onX = item + wxPoint(30, 0); // an arrow is 40 pixels long
    ShiftDrag(onX, onX + wxPoint(40, 25));
    EXPECT_NEAR(PlaceOf(Light(0))[0], 0.2 + WayOf(wxPoint(40, 0), 4.0)[0], 1e-5);
    EXPECT_EQ(PlaceOf(Light(0))[2], 0.2);
    EXPECT_EQ(Light(0).mDragMode, -1) << "the next drag is free";
    Menu(ID_UNDO);
    // A key locks until it is pressed again.
    Canvas(0)->SetFocus();
    Key('Z');
    EXPECT_EQ(Light(0).mDragMode, 2);
    ShiftDrag(item + wxPoint(-50, 50), item + wxPoint(-10, 20));
    EXPECT_EQ(PlaceOf(Light(0))[0], 0.2);
    EXPECT_NEAR(PlaceOf(Light(0))[2], 0.2 + WayOf(wxPoint(0, -30), 4.0)[1], 1e-5);
    Key('Z');
    EXPECT_EQ(Light(0).mDragMode, -1);
}

TEST_F(Drags, RingsTurnAndBoxesScale) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    FilterData_cls& data = *cut->mpCData;
    Lists().SelectFilter(cut, true);
    Canvas(0)->SetFocus();
    Key('R');
    EXPECT_EQ(Navigators_cls::msManipulatorMode, GLGuides_cls::ROTATE);
    const wxPoint item = At({0, 0, 0});
    Snap("pick_rings");
    // The ring about y is seen as a circle of 0.92 * 40 pixels; y points away, so clockwise is forward.
    const wxPoint onRing = item + wxPoint(26, -26);
    ShiftDrag(onRing, onRing + wxPoint(8, 8));
    const Values turned = ValuesOf(data.mpCRotate);
    EXPECT_GT(turned[1], 5.0);
    EXPECT_EQ(turned[0], 0.0);
    EXPECT_EQ(turned[2], 0.0);
    Menu(ID_UNDO);
    EXPECT_EQ(ValuesOf(data.mpCRotate), (Values{0, 0, 0}));
    // Without a ring a turn does nothing.
    const int steps = Steps();
    ShiftDrag(item + wxPoint(120, 90), item + wxPoint(90, 120));
    EXPECT_EQ(Steps(), steps);
    Key('S');
    ShiftDrag(item + wxPoint(60, 60), item + wxPoint(90, 90));
    for (const double factor : ValuesOf(data.mpCScale))
        EXPECT_NEAR(factor, 1.5, 0.01) << "to half a pixel";
    Menu(ID_UNDO);
    Snap("pick_boxes");
    ShiftDrag(item + wxPoint(40, 0), item + wxPoint(80, 0));
    EXPECT_NEAR(ValuesOf(data.mpCScale)[0], 2.0, 0.02);
    EXPECT_EQ(ValuesOf(data.mpCScale)[2], 1.0);
}

TEST_F(Drags, KeysWhileTheHandHoldsIt) {
    Put(Light(0), 0.5, 0, 0.5);
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Menu(ID_REFRESH_GL);
    const int steps = Steps();
    const wxPoint from = At({-0.4, 0, -0.4}), to = from + wxPoint(50, -20);
    // Escape takes it back, and the rest of the way moves nothing.
    Begin(from, to);
    EXPECT_TRUE(MoveItem_cls::IsDragging());
    EXPECT_TRUE(Status().StartsWith("Move to")) << Status();
    Key(WXK_ESCAPE);
    EXPECT_FALSE(MoveItem_cls::IsDragging());
    MoveTo(Canvas(0), to + wxPoint(30, 30));
    End();
    EXPECT_EQ(PlaceOf(Light(0)), (Values{0.5, 0, 0.5}));
    EXPECT_EQ(Steps(), steps);
    // X, and a number: the mouse has no say any more. Enter is the end.
    Begin(from, to);
    Key('X');
    EXPECT_EQ(MoveItem_cls::msSelectedItemPos[2], 0.5);
    Type("-1.5");
    MoveTo(Canvas(0), to + wxPoint(10, 10));
    Snap("pick_typed");
    Key(WXK_RETURN);
    EXPECT_EQ(PlaceOf(Light(0)), (Values{-1, 0, 0.5}));
    End();
    EXPECT_EQ(PlaceOf(Light(0)), (Values{-1, 0, 0.5}));
    EXPECT_EQ(Light(0).mDragMode, -1);
    Menu(ID_UNDO);
    // R, then 45, Enter.
    const Values angles = ValuesOf(Light(0).mpCRotate);
    Begin(from, to);
    Key('R');
    Type("45");
    Key(WXK_RETURN);
    End();
    EXPECT_EQ(PlaceOf(Light(0)), (Values{0.5, 0, 0.5})) << "what the hand had moved is back";
    EXPECT_NEAR(ValuesOf(Light(0).mpCRotate)[2], angles[2] + 45, 1e-9);
    Navigators_cls::TranslationMode();
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0) << "figures are no shortcuts meanwhile";
}

TEST_F(Drags, APressIsEnoughForKeysAndOneButtonHolds) {
    Put(Light(0), 0.5, 0, 0.5);
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Menu(ID_REFRESH_GL);
    const int mode = Canvas(0)->GetDisplayMode();
    const wxPoint from = At({-0.4, 0, -0.4}), to = from + wxPoint(50, -20);
    Hold(WXK_SHIFT, true);
    MoveTo(Canvas(0), from);
    Press(true);
    Hold(WXK_SHIFT, false);
    Key('Z');
    Type("1");
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), mode) << "figures are no shortcuts";
    Key(WXK_RETURN);
    End();
    EXPECT_EQ(PlaceOf(Light(0)), (Values{0.5, 0, 1.5}));
    Menu(ID_UNDO);
    // A lock from before the drag is there again behind one in it.
    Canvas(0)->SetFocus();
    Key('X');
    Begin(from, to);
    Key('Y');
    EXPECT_EQ(Light(0).mDragMode, 1);
    End();
    EXPECT_EQ(Light(0).mDragMode, 0);
    Key('X');
    Menu(ID_UNDO);
    // Another button's release doesn't let go.
    Begin(from, to);
    Click(Canvas(0), to, 3);
    EXPECT_TRUE(MoveItem_cls::IsDragging());
    End();
    EXPECT_FALSE(MoveItem_cls::IsDragging());
}

TEST_F(Drags, CtrlSnapsToTenthsOfTheGrid) {
    Put(Light(0), 0.53, 0, 0.5);
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Menu(ID_REFRESH_GL);
    const wxPoint from = At({-0.4, 0, -0.4});
    Begin(from, from + wxPoint(40, -30));
    Hold(WXK_CONTROL, true);
    MoveTo(Canvas(0), from + wxPoint(44, -33));
    Shortcut_cls(Frame()).ProcShortcutKey(2, 'Y'); // an axis, and none again: not redo
    EXPECT_EQ(Selected()->mDragMode, 1);
    Shortcut_cls(Frame()).ProcShortcutKey(6, 'Y');
    EXPECT_TRUE(MoveItem_cls::IsDragging());
    MoveTo(Canvas(0), from + wxPoint(88, -66)); // the way to here was that of the axis
    End();
    Hold(WXK_CONTROL, false);
    const Values place = PlaceOf(Light(0)); // the eye is 4 away: cells are 1 wide
    const std::array<double, 2> moved = WayOf(wxPoint(44, -33), 4.0);
    EXPECT_NEAR(place[0], std::round((0.53 + moved[0]) * 10.0) / 10.0, 1e-9);
    EXPECT_NEAR(place[2], std::round((0.5 + moved[1]) * 10.0) / 10.0, 1e-9);
}

TEST_F(Drags, UndoAndDeletionUnderTheHand) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    Lists().SelectFilter(cut, true);
    Menu(ID_REFRESH_GL);
    const wxString before = Text();
    const wxPoint from = At({-0.2, 0, -0.2}), to = from + wxPoint(50, -20);
    const int steps = Steps();
    // What the hand holds is the latest step: undo takes it back, redo brings it.
    for (const int held : {0, int(wxMOD_SHIFT)}) { // the gesture's own key
        Begin(from, to);
        Key('Z', wxMOD_CONTROL | held);
        EXPECT_FALSE(MoveItem_cls::IsDragging());
        EXPECT_EQ(Text().ToStdString(), before.ToStdString());
        if (held == 0) End();
    }
    MoveTo(Canvas(0), to + wxPoint(30, 0));
    End();
    EXPECT_EQ(Text().ToStdString(), before.ToStdString()) << "the rest of the way moves nothing";
    EXPECT_EQ(Steps(), steps);
    Menu(ID_REDO);
    EXPECT_NE(Text().ToStdString(), before.ToStdString());
    Menu(ID_UNDO);
    // The view goes under the hand, which has moved the item.
    Menu(ID_VIEW_PANEL_TYPE_1);
    Begin(wxPoint(90, 90), wxPoint(120, 110), 1);
    EXPECT_TRUE(MoveItem_cls::IsDragging());
    Menu(ID_VIEW_PANEL_TYPE_0);
    EXPECT_FALSE(MoveItem_cls::IsDragging());
    End();
    EXPECT_NE(Text().ToStdString(), before.ToStdString());
    Menu(ID_UNDO);
    EXPECT_EQ(Steps(), steps);
    // The filter goes, and comes back as it was.
    Begin(from, to);
    EXPECT_TRUE(MoveItem_cls::IsDragging());
    Lists().DeleteSelectedFilter();
    EXPECT_EQ(Selected(), nullptr);
    MoveTo(Canvas(0), to + wxPoint(30, 0));
    End();
    EXPECT_EQ(Lists().GetBoolean().GetCount(), 0);
    Menu(ID_UNDO);
    EXPECT_EQ(Text().ToStdString(), before.ToStdString());
    // Another project under the hand.
    Lists().SelectFilter(FilterTest::At(FILTER_LIST_BOOLEAN, 0), true);
    Begin(from, to);
    Frame()->OpenProject(mDefaults);
    MoveTo(Canvas(0), to + wxPoint(30, 0));
    End();
    EXPECT_EQ(Steps(), 0);
}

// Clicks, drags, keys and undo in any order: undone to the start, everything is as it was, to the byte.
TEST_F(Drags, ARandomWalkIsUndoneToTheByte) {
    Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    Add(ID_FILTER_DATABOX, FILTER_LIST_OBJECT);
    Put(Light(0), 0.4, 0, 0.4);
    Put(Light(1), -0.4, 0.3, 0.4);
    Light(0).mCTarget.mValue = SceneObj_cls::TARGET_ORIGIN;
    GCUndoList.Clear();
    ASSERT_TRUE(OpenAndPaint(Root() + "examples/lj_melt_bin/melt0000.bin"));
    const PDataBlock_cls* pBlock = Store()->GetPCActiveFileSequence()->GetSnap(0)->mpCBlock;
    Hub()->mpCStereoGram->mCType.mValue = StereoGram_cls::TYPE_OFF_AXIS;
    GCUndoList.Clear();
    const std::string start = Hub()->MakeProjectText();
    std::mt19937 random(20);
    const auto pick = [&random](int n) { return int(random() % unsigned(n)); };
    const wxSize size = Canvas(0)->GetClientSize();
    const auto anywhere = [&] { return wxPoint(60 + pick(size.x - 120), 100 + pick(size.y - 160)); };
    const std::vector<SceneObj_cls*> items = {&Light(0),
                                              &Light(1),
                                              Hub()->mpCCameraPath,
                                              Hub()->mpCAnchorPath,
                                              FilterTest::At(FILTER_LIST_BOOLEAN, 0)->mpCData.get(),
                                              FilterTest::At(FILTER_LIST_OBJECT, 0)->mpCData.get()};
    wxWindow* page = Hub()->mpCInformation->mpCParticleGUI;
    for (int act = 0; act < 70; ++act) {
        const int what = pick(11);
        if (what == 8) {
            pick(2) == 0 ? Hub()->mpCLightSRCCtrl->AddLight() : Hub()->mpCLightSRCCtrl->RemoveLight();
        } else if (what == 9) {
            const double parallax = 0.1 * pick(5);
            Hub()->mpCStereoGram->mpCParallax->SetKeyFrame(&parallax, true, kNow);
        } else if (what == 10) {
            Hub()->mpCParticles->Pick(NameParticle(*pBlock, pick(50), {}));
            auto* tick = static_cast<wxCheckBox*>(FindByLabel(page, pick(2) == 0 ? "Follow" : "In Pictures"));
            Change(tick);
            Settle();
        } else if (what == 0) {
            PickAt(anywhere());
        } else if (what == 1) {
            Hub()->SelectObject(items[size_t(pick(6))]);
        } else if (what == 2) {
            Key("RSTXYZ"[pick(6)]);
        } else if (what == 3) {
            Menu(pick(3) == 0 ? ID_REDO : ID_UNDO);
        } else {
            if (!Selected()) Hub()->SelectObject(items[size_t(pick(6))]);
            const wxPoint from = pick(2) == 0 ? anywhere() : At(PlaceOf(*Selected())) + wxPoint(25, 0);
            if (!wxRect(size).Deflate(40).Contains(from)) continue;
            Begin(from, anywhere());
            if (pick(3) == 0) Key("XYZ7"[pick(4)]);
            if (pick(6) == 0) Key(WXK_ESCAPE);
            End();
        }
        EXPECT_FALSE(MoveItem_cls::IsDragging()) << act;
    }
    EXPECT_GT(Steps(), 10) << "something has been done";
    while (GCUndoList.IsUndoable())
        Hub()->Undo();
    Settle();
    EXPECT_TRUE(Hub()->MakeProjectText() == start);
    Hub()->mpCParticles->Reset();
    Hub()->mpCStereoGram->Reset();
    Light(0).mCTarget.mValue = SceneObj_cls::TARGET_NONE;
}

} // namespace
