// Items of the scene under the hand: what a click selects, what drags make of them, with real mouse and keys.
#include <cmath>
#include <random>

#include <epoxy/gl.h>
#include <wx/statusbr.h>

#include "COMMON/Globals.h"
#include "FilterTest.h"
#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/VIEW/clsViewPick.h"
#include "GroupValue.h"
#include "GuiEvents.h"
#include "IMAGE/clsImageIO.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsMoveItem.h"
#include "TIME/clsTimeCtrl.h"

namespace {

using Values = std::vector<double>;
constexpr double kNow = SceneObj_cls::kCurrent;

class Picking : public FilterTest {
protected:
    void SetUp() override {
        FilterTest::SetUp();
        Frame()->GetPCPreference()->SetToDefaultMouse(0);
        Navigators_cls::TranslationMode();
        Hub()->SelectObject(nullptr);
        // The eye at (0, -4, 0) looks along y: x goes to the right, z up.
        PositionAndDirection_cls& eye = Canvas(0)->mCamera.GetFreeCamera();
        const double front[3] = {0, 1, 0}, up[3] = {0, 0, 1};
        eye.Set(0, -4, 0);
        eye.Setv(front, up);
        Canvas(0)->mShowGrid.mValue = false;
        Menu(ID_REFRESH_GL);
        GCUndoList.Clear();
    }
    void TearDown() override {
        Hub()->SelectObject(nullptr);
        Navigators_cls::TranslationMode();
        MoveTo(Canvas(0), wxPoint(60, 300));
        FilterTest::TearDown();
    }
    static LightSRC_cls& Light(int i) { return Hub()->mpCLightSRCCtrl->GetLight(i); }
    static SceneObj_cls* Selected() { return MoveItem_cls::mspCSelectedObject; }
    static Values ValuesOf(ParamGroup_cls* pGroup) { return GetGroupValue(pGroup, kNow); }
    static Values PlaceOf(SceneObj_cls& object) {
        Values place(3);
        for (size_t i = 0; i < 3; ++i)
            place[i] = object.mpCTranslate->mVParams[i].GetInterpolatedValue(kNow);
        return place;
    }
    static void Put(SceneObj_cls& object, double x, double y, double z) {
        const double values[3] = {x, y, z};
        Parameters_cls::msbUndoCommandMake = false;
        object.mpCTranslate->SetKeyFrame(values, true, kNow);
        Parameters_cls::msbUndoCommandMake = true;
        Menu(ID_REFRESH_GL);
    }
    /// Where a view shows a place of the scene.
    static wxPoint At(const Values& place, int view = 0) {
        double at[2] = {9, 9};
        EXPECT_TRUE(Canvas(view)->GetPick().Project(place.data(), at));
        const wxSize size = Canvas(view)->GetClientSize();
        return wxPoint(int(std::lround((at[0] + 1.0) * size.x / 2.0)),
                       int(std::lround((1.0 - at[1]) * size.y / 2.0)));
    }
    static void PickAt(wxPoint point, int view = 0) {
        Hold(WXK_SHIFT, true);
        Click(Canvas(view), point, 3);
        Hold(WXK_SHIFT, false);
        Settle();
    }
    static void ShiftDrag(wxPoint from, wxPoint to, int view = 0) {
        Hold(WXK_SHIFT, true);
        Drag(Canvas(view), from, to);
        Hold(WXK_SHIFT, false);
        Settle();
    }
    /// Press with Shift and move; the button stays down.
    static void Begin(wxPoint from, wxPoint to, int view = 0) {
        Hold(WXK_SHIFT, true);
        MoveTo(Canvas(view), from);
        Press(true);
        for (int k = 1; k <= 4; ++k)
            MoveTo(Canvas(view), from + (to - from) * k / 4);
        Hold(WXK_SHIFT, false);
    }
    static void End() {
        Press(false);
        Settle();
    }
    static int Steps() { return int(GCUndoList.GetCurrent()); }
    static wxString Status() { return Frame()->GetStatusBar()->GetStatusText(0); }
    /// What a way of so many pixels moves an item by that is `depth` away: to the right and up.
    static std::array<double, 2> WayOf(wxPoint pixels, double depth, int view = 0) {
        const wxSize size = Canvas(view)->GetClientSize();
        const double aspect = double(size.x) / size.y;
        return {MouseSpeed::kItem * depth * aspect * 2.0 * pixels.x / size.x,
                -MouseSpeed::kItem * depth * 2.0 * pixels.y / size.y};
    }
};

TEST_F(Picking, AClickSelectsEveryKindOfItem) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    FilterBase_cls* box = Add(ID_FILTER_DATABOX, FILTER_LIST_OBJECT);
    Put(*cut->mpCData, -0.8, 0, -0.4);
    Put(*box->mpCData, 0.9, 0, -0.5);
    Put(Light(0), 0.5, 0, 0.8);
    Put(Light(1), -0.5, 0, 0.8);
    Put(*Hub()->mpCAnchorPath, 0.1, 0, 0.3);
    Put(*Hub()->mpCCameraPath, 0.1, 0, -0.7);
    Snap("pick_items");
    PickAt(At({0.5, 0, 0.8}));
    EXPECT_EQ(Selected(), &Light(0));
    EXPECT_TRUE(Light(0).mbSelected);
    EXPECT_EQ(Hub()->mpCLightSRCCtrl->GetCurrentLight(), 0);
    Snap("pick_light");
    PickAt(At({-0.5, 0, 0.8}));
    EXPECT_EQ(Selected(), &Light(1));
    EXPECT_FALSE(Light(0).mbSelected);
    EXPECT_EQ(Hub()->mpCLightSRCCtrl->GetCurrentLight(), 1) << "the dialog follows";
    PickAt(At({-1.3, 0.5, 0.1})); // an edge of its box
    EXPECT_EQ(Selected(), cut->mpCData.get());
    EXPECT_EQ(Lists().GetPCSelected(), cut);
    EXPECT_FALSE(Light(1).mbSelected);
    Snap("pick_filter");
    PickAt(At({1.4, 0.5, -1.0}));
    EXPECT_EQ(Selected(), box->mpCData.get());
    EXPECT_EQ(Lists().GetPCSelected(), box);
    PickAt(At({0.1, 0, -0.7}));
    EXPECT_EQ(Selected(), Hub()->mpCCameraPath);
    EXPECT_EQ(Lists().GetPCSelected(), nullptr);
    Snap("pick_camera");
    PickAt(At({0.1, 0, 0.3}));
    EXPECT_EQ(Selected(), Hub()->mpCAnchorPath);
    EXPECT_FALSE(Hub()->mpCCameraPath->mbSelected);
    // Where nothing is, nothing changes.
    PickAt(wxPoint(150, 15));
    EXPECT_EQ(Selected(), Hub()->mpCAnchorPath);
    Menu(ID_DESELECT);
    EXPECT_EQ(Selected(), nullptr);
    EXPECT_FALSE(Hub()->mpCAnchorPath->mbSelected);
    EXPECT_TRUE(Grab(0).IsLit(16, 64, 8, 60));
    Canvas(0)->mShowItems.mValue = false;
    Menu(ID_REFRESH_GL);
    PickAt(At({0.5, 0, 0.8}));
    EXPECT_EQ(Selected(), nullptr) << "what isn't shown isn't picked";
    EXPECT_FALSE(Grab(0).IsLit(16, 64, 8, 60)) << "nor are there buttons for it";
    Put(*Hub()->mpCAnchorPath, 0, 0, 0);
    Put(*Hub()->mpCCameraPath, -1.5, 0, 1.5);
}

TEST_F(Picking, PanelsRowsAndViewsAgree) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    Lists().SelectFilter(cut, true);
    EXPECT_EQ(Selected(), cut->mpCData.get());
    Hub()->mpCLightSRCCtrl->SelectLight(1);
    EXPECT_EQ(Selected(), &Light(1));
    EXPECT_FALSE(cut->mpCData->mbSelected);
    for (size_t row = 0; row < Strips()->GetRows().size(); ++row)
        if (Strips()->GetRows()[row].mpCGroup->GetPCGroup() == cut->mpCData->mpCObjectGroup)
            Strips()->SelectRow(int(row), false, false);
    EXPECT_EQ(Selected(), cut->mpCData.get());
    EXPECT_TRUE(cut->mpCData->mbSelected);
    EXPECT_FALSE(Light(1).mbSelected);
    // A light that goes out of use isn't the selected one any more.
    Hub()->mpCLightSRCCtrl->SelectLight(1);
    Hub()->mpCLightSRCCtrl->RemoveLight();
    Settle();
    EXPECT_EQ(Selected(), nullptr);
}

TEST_F(Picking, ADragSetsKeysAsOneStep) {
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

TEST_F(Picking, AHandleHoldsTheAxis) {
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

TEST_F(Picking, RingsTurnAndBoxesScale) {
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

TEST_F(Picking, KeysWhileTheHandHoldsIt) {
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

TEST_F(Picking, CtrlSnapsToTenthsOfTheGrid) {
    Put(Light(0), 0.53, 0, 0.5);
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Menu(ID_REFRESH_GL);
    const wxPoint from = At({-0.4, 0, -0.4});
    Begin(from, from + wxPoint(40, -30));
    Hold(WXK_CONTROL, true);
    MoveTo(Canvas(0), from + wxPoint(44, -33));
    End();
    Hold(WXK_CONTROL, false);
    const Values place = PlaceOf(Light(0)); // the eye is 4 away: cells are 1 wide
    const std::array<double, 2> moved = WayOf(wxPoint(44, -33), 4.0);
    EXPECT_NEAR(place[0], std::round((0.53 + moved[0]) * 10.0) / 10.0, 1e-9);
    EXPECT_NEAR(place[2], std::round((0.5 + moved[1]) * 10.0) / 10.0, 1e-9);
}

TEST_F(Picking, UndoAndDeletionUnderTheHand) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    Lists().SelectFilter(cut, true);
    Menu(ID_REFRESH_GL);
    const wxString before = Text();
    const wxPoint from = At({-0.2, 0, -0.2}), to = from + wxPoint(50, -20);
    const int steps = Steps();
    // What the hand holds is the latest step: undo takes it back, redo brings it.
    Begin(from, to);
    Key('Z', wxMOD_CONTROL);
    EXPECT_FALSE(MoveItem_cls::IsDragging());
    EXPECT_EQ(Text().ToStdString(), before.ToStdString());
    MoveTo(Canvas(0), to + wxPoint(30, 0));
    End();
    EXPECT_EQ(Text().ToStdString(), before.ToStdString()) << "the rest of the way moves nothing";
    EXPECT_EQ(Steps(), steps);
    Menu(ID_REDO);
    EXPECT_NE(Text().ToStdString(), before.ToStdString());
    Menu(ID_UNDO);
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

TEST_F(Picking, WideAndSmallViewsPickWhatTheyShow) {
    Put(Light(0), 2.0, -3.0, 0.3); // outside of a flat view
    for (const int geometry : {2, 3}) {
        Canvas(0)->SetGeometry(geometry);
        Canvas(0)->mGLPersAngle.mValue = 180;
        Menu(ID_REFRESH_GL);
        const wxPoint at = At({2.0, -3.0, 0.3});
        EXPECT_TRUE(Grab(0).IsLit(at.x, at.y, 14, 60)) << "its mark is there, geometry " << geometry;
        Snap(geometry == 2 ? "pick_fisheye" : "pick_panorama");
        Menu(ID_DESELECT);
        PickAt(at);
        EXPECT_EQ(Selected(), &Light(0)) << geometry;
        Menu(ID_DESELECT);
        PickAt(at + wxPoint(60, 0));
        EXPECT_EQ(Selected(), nullptr) << geometry;
    }
    Canvas(0)->mGLPersAngle.mValue = 35;
    Canvas(0)->SetGeometry(0);
    Put(Light(0), 0.3, 0.2, 0.1);
    Menu(ID_VIEW_PANEL_TYPE_3);
    for (int view = 0; view < 4; ++view) {
        Menu(ID_DESELECT);
        PickAt(At({0.3, 0.2, 0.1}, view), view);
        EXPECT_EQ(Selected(), &Light(0)) << "view " << view;
    }
    Snap("pick_four");
    // A drag in a view along an axis.
    const wxPoint from(20, 120), way(12, 8);
    const double depth = double(Canvas(1)->mGLOrthoScale.mValue) - 0.1; // from above
    const std::array<double, 2> moved = WayOf(way, depth, 1);
    ShiftDrag(from, from + way, 1);
    const Values place = PlaceOf(Light(0));
    EXPECT_NEAR(place[0], 0.3 + moved[0], 1e-5);
    EXPECT_NEAR(place[1], 0.2 + moved[1], 1e-5);
    EXPECT_NEAR(place[2], 0.1, 1e-5);
}

TEST_F(Picking, AClickDuringAReadGoesByThePictureOnTheScreen) {
    Put(Light(0), 0.5, 0, 0.5);
    const wxPoint at = At({0.5, 0, 0.5});
    GbGLLockForLoadingData.store(true); // no paint comes through
    const int paints = Canvas(0)->GetPaintCount();
    Hold(WXK_SHIFT, true);
    Click(Canvas(0), at, 3);
    Hold(WXK_SHIFT, false);
    EXPECT_EQ(Selected(), &Light(0));
    EXPECT_EQ(Canvas(0)->GetPaintCount(), paints);
    GbGLLockForLoadingData.store(false);
    Settle();
}

TEST_F(Picking, ButtonsInTheViewChooseTheMode) {
    Canvas(0)->SetThisToBeActiveGL();
    Menu(ID_REFRESH_GL);
    const double before = Canvas(0)->mCamera.GetPCCameraPosition()->mPos[0];
    Snap("pick_buttons");
    Drag(Canvas(0), wxPoint(16, 40), wxPoint(90, 60));
    EXPECT_EQ(Navigators_cls::msManipulatorMode, GLGuides_cls::ROTATE);
    EXPECT_EQ(Canvas(0)->mCamera.GetPCCameraPosition()->mPos[0], before) << "nothing is dragged from there";
    Click(Canvas(0), wxPoint(16, 16));
    EXPECT_EQ(Navigators_cls::msManipulatorMode, GLGuides_cls::SCALE);
    Click(Canvas(0), wxPoint(16, 64));
    EXPECT_EQ(Navigators_cls::msManipulatorMode, GLGuides_cls::TRANSLATE);
}

TEST_F(Picking, ThePointerNamesWhatItIsOver) {
    Put(Light(0), 0.5, 0, 0.5);
    const wxPoint at = At({0.5, 0, 0.5});
    MoveTo(Canvas(0), wxPoint(60, 300));
    Settle();
    const auto sumLight = [at] {
        const Picture_st picture = Grab(0);
        int sum = 0;
        for (int y = -20; y <= 20; ++y)
            for (int x = -20; x <= 20; ++x)
                sum += picture.Brightness(at.x + x, at.y + y);
        return sum;
    };
    const int plain = sumLight();
    MoveTo(Canvas(0), at);
    Settle();
    EXPECT_EQ(Status(), "Light 0");
    EXPECT_GT(sumLight(), plain + plain / 20);
    Snap("pick_hover");
    MoveTo(Canvas(0), wxPoint(60, 300));
    Settle();
    EXPECT_NE(Status(), "Light 0");
    EXPECT_EQ(sumLight(), plain);
}

// Clicks, drags, keys and undo in any order: undone to the start, everything is as it was, to the byte.
TEST_F(Picking, ARandomWalkIsUndoneToTheByte) {
    Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    Add(ID_FILTER_DATABOX, FILTER_LIST_OBJECT);
    Put(Light(0), 0.4, 0, 0.4);
    Put(Light(1), -0.4, 0.3, 0.4);
    Light(0).mCTarget.mValue = SceneObj_cls::TARGET_ORIGIN;
    GCUndoList.Clear();
    const std::string start = Hub()->MakeRecoveryText();
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
    for (int act = 0; act < 50; ++act) {
        const int what = pick(8);
        if (what == 0) {
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
    EXPECT_TRUE(Hub()->MakeRecoveryText() == start);
    Light(0).mCTarget.mValue = SceneObj_cls::TARGET_NONE;
}

TEST_F(Picking, PicturesOfTheSceneKnowNoHandles) {
    Put(Light(0), 0.5, 0, 0.5);
    const auto picture = [] {
        std::vector<float> pixels;
        Canvas(0)->RequestImage(
            [&pixels](const ImageBuffers_st& buffers, wxSize) {
                const int size = buffers.mpColor->GetWidth();
                pixels.resize(size_t(3 * size) * size_t(size));
                buffers.mpColor->BindTexture();
                glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_FLOAT, pixels.data());
            },
            wxSize(128, 128));
        Settle();
        return pixels;
    };
    const auto plain = picture();
    ASSERT_FALSE(plain.empty());
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Settle();
    EXPECT_TRUE(picture() == plain);
}

} // namespace
