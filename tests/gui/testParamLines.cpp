// The time lines under mouse and keys: tree, strips, header and the areas of the ruler.
#include <cmath>
#include <memory>

#include <wx/splitter.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsFrameSlider.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamStrips.h"
#include "WIDGET/TIMELINE/clsParamTree.h"
#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"
#include "WIDGET/TIMELINE/clsTimeHeader.h"

namespace {

const wxString kAxes[] = {"X", "Y", "Z"};
const wxString kAlpha[] = {"Alpha"};

/// A film of 19 frames with three groups, "Place" (open, linked), "Fade" (open) and the folder "Rig" (folded)
/// around "Turn".
class ParamLines : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        Menu(ID_VIEW_PANEL_TYPE_0);
        Time()->SetMaxFrameNative(19);
        Time()->SetAnimStepNative(1);
        Time()->SetAnimInterpNative(1);
        ShowAll();
        Time()->SetWAMinNative(0);
        Time()->SetWAMaxNative(19);
        Time()->SetFrameNative(0, 0);
        mpPlace = std::make_unique<ParamGroup_cls>("Place", 3, kAxes, 6, false);
        mpFade = std::make_unique<ParamGroup_cls>("Fade", 1, kAlpha, 6, false);
        mpTurn = std::make_unique<ParamGroup_cls>("Turn", 3, kAxes, 6, false);
        mpRig = std::make_unique<ParamGroup_cls>("Rig", 0, nullptr, 6, false);
        mpRig->mVpCChilds = {mpTurn.get()};
        mpRig->mbOpen = false;
        for (ParamGroup_cls* group : Roots())
            Lines()->AddParamGroup(group);
        for (ParamGroup_cls* group : HubGroups())
            Lines()->ShowGroup(group, false);
        Lines()->HideAndShow();
        GCUndoList.Clear();
        mStart = Text();
        Menu(ID_REFRESH_TL);
        Settle();
        // All rows are seen.
        ASSERT_TRUE(PumpUntil([] {
            Splitter()->SetSashPosition(-360);
            return Strips()->GetClientSize().y >= 8 * Lines()->GetLook().mRow;
        }));
        Settle();
    }
    void TearDown() override {
        GCUndoList.Clear();
        for (ParamGroup_cls* group : Roots())
            Lines()->RemoveParamGroup(group);
        Lines()->ShowGroup(Hub()->mpCParamGroupCameraPath, true);
        Time()->mbShyMode = false;
        Frame()->FitSplitterWindow(true);
        GuiTest::TearDown();
    }
    static std::vector<ParamGroup_cls*> HubGroups() {
        return {Hub()->mpCTimeCtrl->mpCTimeRemapGroup, Hub()->mpCParamGroupCameraPath};
    }
    static void ShowAll() {
        Time()->SetAAMinNative(0);
        Time()->SetAAMaxNative(19);
    }
    static wxSplitterWindow* Splitter() { return dynamic_cast<wxSplitterWindow*>(Half()->GetParent()); }
    static TimeCtrl_cls* Time() { return Hub()->mpCTimeCtrl; }
    static BtmHalfPanel_cls* Half() { return Frame()->GetPCBtmHalf(); }
    static ParamGUICtrl_cls* Lines() { return Half()->GetPCParamGUICtrl(); }
    static ParamStrips_cls* Strips() { return Lines()->GetPCStrips(); }
    static ParamTree_cls* Tree() { return Lines()->GetPCTree(); }
    std::vector<ParamGroup_cls*> Roots() const { return {mpPlace.get(), mpFade.get(), mpRig.get()}; }
    wxString Text() const { return mpPlace->Serialize() + mpFade->Serialize() + mpRig->Serialize(); }
    static double At(int frame) { return frame / 19.0; }
    static Parameters_cls& X(ParamGroup_cls& group) { return group.mVParams[0]; }
    static wxPoint Point(int row, int frame) { return Strips()->ToPoint(row, At(frame)); }
    static void ClickZone(int row, TreeZone zone) {
        const wxRect rect = Tree()->GetZoneRect(row, zone);
        Click(Tree(), wxPoint(rect.x + rect.width / 2, rect.y + rect.height / 2));
    }
    static void GoTo(int frame) {
        Time()->SetFrameNative(frame, 0);
        Menu(ID_REFRESH_TL);
    }
    static void With(wxKeyCode modifier, const std::function<void()>& act) {
        wxUIActionSimulator simulator;
        simulator.KeyDown(modifier);
        act();
        simulator.KeyUp(modifier);
        PumpUntil([] { return true; });
    }
    /// Keys by the mouse: time dependence, then a double click a frame.
    static void MakeKeys(int row, const std::vector<int>& frames) {
        ClickZone(row, TreeZone::CHECK);
        for (const int frame : frames) {
            MoveTo(Strips(), Point(row, frame));
            wxUIActionSimulator().MouseDblClick();
            Settle();
        }
        Click(Strips(), wxPoint(Point(row, 0).x - 12, Point(row, 0).y)); // deselects
    }
    static std::vector<int> Frames(const Parameters_cls& curve) {
        std::vector<int> frames;
        for (const KeyFrame_cls& key : curve.GetKeys()) {
            const double frame = key.mDoubleIndex * 19.0;
            frames.push_back(int(std::lround(frame)));
            EXPECT_NEAR(frame, std::round(frame), 1e-9) << "on the grid";
        }
        return frames;
    }
    static std::vector<int> Selected(const Parameters_cls& curve) {
        std::vector<int> frames;
        for (const KeyFrame_cls& key : curve.GetKeys())
            if (key.mbSelected) frames.push_back(int(std::lround(key.mDoubleIndex * 19.0)));
        return frames;
    }
    void UndoAll() {
        while (GCUndoList.IsUndoable())
            GCUndoList.UndoCurrent();
        Settle();
        EXPECT_EQ(Text(), mStart);
    }
    using List = std::vector<int>;

    std::unique_ptr<ParamGroup_cls> mpPlace, mpFade, mpTurn, mpRig;
    wxString mStart; ///< text of the groups before anything was done
    // Rows while nothing is folded by the test: Place, X, Y, Z, Fade, Alpha, Rig.
    enum Row { PLACE, PLACE_X, PLACE_Y, PLACE_Z, FADE, ALPHA, RIG };
};

TEST_F(ParamLines, LayoutKeepsRulerAndPlayPanelAndStandsInLine) {
    EXPECT_EQ(Lines()->GetRows().size(), 7u);
    Frame()->FitSplitterWindow(true);
    Settle();
    EXPECT_EQ(Half()->GetSize().y, Hub()->mDisplayHeight > 1050 ? 210 : 150);
    EXPECT_GE(Strips()->GetClientSize().y, 2 * Lines()->GetLook().mRow);
    EXPECT_LE(Half()->GetPCPlayCtrl()->GetRect().GetBottom(), Half()->GetClientSize().y);
    const int left = Half()->GetPCSlider()->GetScreenPosition().x;
    EXPECT_EQ(Strips()->GetScreenPosition().x, left);
    EXPECT_EQ(left - Half()->GetScreenPosition().x, Half()->FromDIP(228));
    for (const int frame : {0, 7, 19})
        EXPECT_EQ(Half()->GetPCSlider()->GetScale().ToPixel(frame), Strips()->GetScale().ToPixel(frame));
    // However low the panel, the play panel is seen whole.
    const wxSize size = Half()->GetSize();
    Half()->SetSize(size.x, 80);
    EXPECT_EQ(Half()->GetPCPlayCtrl()->GetRect().GetBottom(), 79);
    Half()->SetSize(size);
    Snap("layout");
}

TEST_F(ParamLines, KeysAreSetInTheTree) {
    GoTo(4);
    ClickZone(ALPHA, TreeZone::KEY);
    EXPECT_TRUE(X(*mpFade).mbTimeDepend.mValue);
    EXPECT_EQ(Frames(X(*mpFade)), List({4}));
    GoTo(9);
    ClickZone(ALPHA, TreeZone::KEY);
    EXPECT_EQ(Frames(X(*mpFade)), List({4, 9}));
    ClickZone(ALPHA, TreeZone::PREVIOUS);
    EXPECT_EQ(Time()->GetFrame(), 4);
    ClickZone(ALPHA, TreeZone::KEY);
    EXPECT_EQ(Frames(X(*mpFade)), List({9}));
    ClickZone(ALPHA, TreeZone::NEXT);
    EXPECT_EQ(Time()->GetFrame(), 9);
    ClickZone(ALPHA, TreeZone::KEY);
    EXPECT_FALSE(X(*mpFade).mbTimeDepend.mValue) << "without keys it is constant";
    // A linked group has its keys together.
    ClickZone(PLACE_Y, TreeZone::KEY);
    for (const Parameters_cls& curve : mpPlace->mVParams)
        EXPECT_EQ(Frames(curve), List({9}));
    UndoAll();
}

TEST_F(ParamLines, UnlinkedCurvesHaveTheirOwnKeys) {
    MoveTo(Tree(), wxPoint(60, 10));
    ClickZone(PLACE, TreeZone::LINK);
    EXPECT_FALSE(mpPlace->mbLinked);
    GoTo(6);
    ClickZone(PLACE_Y, TreeZone::KEY);
    EXPECT_TRUE(mpPlace->mVParams[1].mbTimeDepend.mValue);
    EXPECT_FALSE(mpPlace->mVParams[0].mbTimeDepend.mValue);
    ClickZone(PLACE, TreeZone::LINK);
    GoTo(8);
    ClickZone(PLACE_Y, TreeZone::KEY);
    EXPECT_EQ(Frames(mpPlace->mVParams[1]), List({6, 8}));
    EXPECT_EQ(Frames(mpPlace->mVParams[2]), List({8}));
    UndoAll();
}

TEST_F(ParamLines, ValuesAreTypedAndDraggedInOneStep) {
    const wxRect value = Tree()->GetZoneRect(ALPHA, TreeZone::VALUE);
    const wxPoint middle(value.x + value.width / 2, value.y + value.height / 2);
    const auto open = [&] {
        PumpUntil([] { return false; }, 600); // else it could be the third click of another double click
        MoveTo(Tree(), middle);
        wxUIActionSimulator().MouseDblClick();
        Settle();
    };
    open();
    ASSERT_TRUE(Tree()->GetPCEditor() && Tree()->GetPCEditor()->IsShown());
    Type("2.5");
    Key(WXK_RETURN);
    EXPECT_DOUBLE_EQ(X(*mpFade).Evaluate(0.5, 0.01), 2.5);
    EXPECT_EQ(X(*mpFade).GetKeyNumber(), 1) << "a constant stays one";
    open();
    Type("7");
    Key(WXK_ESCAPE);
    EXPECT_DOUBLE_EQ(X(*mpFade).Evaluate(0.5, 0.01), 2.5);
    open();
    Type("3");
    Click(Strips(), Point(RIG, 10)); // leaving commits
    EXPECT_DOUBLE_EQ(X(*mpFade).Evaluate(0.5, 0.01), 3.0);
    const unsigned before = GCUndoList.GetCurrent();
    const wxString text = Text();
    Drag(Tree(), middle, middle + wxPoint(40, 0));
    const double dragged = X(*mpFade).Evaluate(0.5, 0.01);
    EXPECT_GT(dragged, 3.0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), before) << "one step a gesture";
    EXPECT_EQ(Text(), text);
    // In an animated curve a value is a key.
    GoTo(0);
    ClickZone(ALPHA, TreeZone::CHECK);
    GoTo(12);
    Drag(Tree(), middle, middle + wxPoint(30, 0));
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 12}));
    UndoAll();
}

TEST_F(ParamLines, EscapeTakesADragBack) {
    MakeKeys(ALPHA, {5, 10});
    const wxString text = Text();
    const unsigned steps = GCUndoList.GetCurrent();
    wxUIActionSimulator simulator;
    MoveTo(Strips(), Point(ALPHA, 5));
    simulator.MouseDown();
    for (int frame = 6; frame <= 8; ++frame)
        MoveTo(Strips(), Point(ALPHA, frame));
    PumpUntil([this] { return Frames(X(*mpFade)) == List({0, 8, 10}); }, 2000);
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 8, 10})) << "seen while it is dragged";
    Key(WXK_ESCAPE);
    simulator.MouseUp();
    Settle();
    EXPECT_EQ(Text(), text);
    EXPECT_EQ(GCUndoList.GetCurrent(), steps);
}

TEST_F(ParamLines, KeysAreSelectedByClickAndModifiers) {
    MakeKeys(ALPHA, {5, 10, 15});
    const Parameters_cls& curve = X(*mpFade);
    EXPECT_EQ(Frames(curve), List({0, 5, 10, 15}));
    Click(Strips(), Point(ALPHA, 5));
    EXPECT_EQ(Selected(curve), List({5}));
    Click(Strips(), Point(ALPHA, 10));
    EXPECT_EQ(Selected(curve), List({10}));
    With(WXK_SHIFT, [] { Click(Strips(), Point(ALPHA, 15)); });
    EXPECT_EQ(Selected(curve), List({10, 15}));
    With(WXK_CONTROL, [] { Click(Strips(), Point(ALPHA, 10)); });
    EXPECT_EQ(Selected(curve), List({15}));
    Click(Strips(), Point(ALPHA, 8));
    EXPECT_EQ(Selected(curve), List());
    EXPECT_EQ(Frames(curve), List({0, 5, 10, 15})) << "empty ground moves nothing";
    Key('A', wxMOD_CONTROL);
    EXPECT_EQ(Selected(curve), List({0, 5, 10, 15}));
    Key(WXK_ESCAPE);
    EXPECT_EQ(Selected(curve), List());
    // The group's own row selects the keys of all.
    Click(Strips(), Point(FADE, 5));
    EXPECT_EQ(Selected(curve), List({5}));
}

TEST_F(ParamLines, RubberBandGoesOverStripsAndRowsFollowTheLink) {
    MakeKeys(PLACE_X, {5, 10});
    MakeKeys(ALPHA, {6, 14});
    const int half = Lines()->GetLook().mRow / 2 - 1;
    const auto band = [&](int row0, int frame0, int row1, int frame1) {
        Drag(Strips(), Point(row0, frame0) - wxPoint(0, half), Point(row1, frame1) + wxPoint(0, half));
    };
    band(PLACE_Z, 3, ALPHA, 8);
    EXPECT_EQ(Selected(X(*mpPlace)), List({5})) << "linked";
    EXPECT_EQ(Selected(mpPlace->mVParams[2]), List({5}));
    EXPECT_EQ(Selected(X(*mpFade)), List({6}));
    With(WXK_SHIFT, [&] { band(ALPHA, 12, ALPHA, 16); });
    EXPECT_EQ(Selected(X(*mpFade)), List({6, 14}));
    EXPECT_EQ(Selected(X(*mpPlace)), List({5}));
    With(WXK_CONTROL, [&] { band(PLACE_X, 3, ALPHA, 8); });
    EXPECT_EQ(Selected(X(*mpFade)), List({14}));
    EXPECT_EQ(Selected(mpPlace->mVParams[1]), List()) << "toggled once, though three rows were touched";
    Snap("band");
}

TEST_F(ParamLines, DraggedKeysLandOnTheGridInOneStep) {
    MakeKeys(PLACE_X, {5, 10});
    MakeKeys(ALPHA, {5, 12});
    Click(Strips(), Point(PLACE_X, 5));
    With(WXK_SHIFT, [] { Click(Strips(), Point(ALPHA, 12)); });
    const wxString text = Text();
    const unsigned steps = GCUndoList.GetCurrent();
    // A third of a frame off: frames are whole.
    const int third = int(Strips()->GetScale().PixelsPerFrame() / 3);
    Drag(Strips(), Point(PLACE_X, 5), Point(PLACE_X, 8) + wxPoint(third, 0));
    for (const Parameters_cls& curve : mpPlace->mVParams)
        EXPECT_EQ(Frames(curve), List({0, 8, 10}));
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5, 15}));
    EXPECT_EQ(Selected(X(*mpFade)), List({15}));
    GCUndoList.UndoCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), steps);
    EXPECT_EQ(Text(), text);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5, 15}));
    // Beyond the end all stay where the last one stops; onto another key it takes its place.
    Drag(Strips(), Point(PLACE_X, 8), Point(PLACE_X, 19));
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5, 19}));
    EXPECT_EQ(Frames(X(*mpPlace)), List({0, 10, 12}));
    Click(Strips(), Point(ALPHA, 19));
    Drag(Strips(), Point(ALPHA, 19), Point(ALPHA, 5));
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5}));
    UndoAll();
}

TEST_F(ParamLines, DeleteCopyAndKinds) {
    MakeKeys(ALPHA, {5, 10});
    wxString copied;
    const auto clipboard = GParamHooks.mClipboard;
    GParamHooks.mClipboard = [&copied](const wxString& text) { copied = text; };
    Click(Strips(), Point(ALPHA, 5));
    Key('C', wxMOD_CONTROL);
    GParamHooks.mClipboard = clipboard;
    EXPECT_TRUE(copied.StartsWith("Parameter_Alpha\nitemnum 1\n")) << copied;
    // The fifth entry of the menu is the step.
    ClickPopup(Strips(), Point(ALPHA, 5), {WXK_DOWN, WXK_DOWN, WXK_DOWN, WXK_DOWN, WXK_DOWN, WXK_RETURN});
    EXPECT_EQ(X(*mpFade).GetKeys()[1].mInterpType, unsigned(INTERP_STEP));
    TimeHeader_cls* header = Half()->GetPCHeader();
    const wxRect linear = header->GetButtonRect("Selected keys: LINEAR");
    ASSERT_FALSE(linear.IsEmpty());
    Click(header, wxPoint(linear.x + linear.width / 2, linear.y + linear.height / 2));
    EXPECT_EQ(X(*mpFade).GetKeys()[1].mInterpType, unsigned(INTERP_LINEAR));
    Key(WXK_DELETE);
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 10}));
    Key('A', wxMOD_CONTROL);
    Key(WXK_DELETE);
    EXPECT_EQ(Frames(X(*mpFade)), List({0})) << "a curve keeps its last key";
    UndoAll();
}

TEST_F(ParamLines, GroupsFoldHideAndShow) {
    ClickZone(PLACE, TreeZone::FOLD);
    EXPECT_EQ(Lines()->GetRows().size(), 4u);
    const wxRect name = Tree()->GetZoneRect(0, TreeZone::NAME);
    MoveTo(Tree(), wxPoint(name.x + 10, name.y + 10));
    wxUIActionSimulator().MouseDblClick();
    Settle();
    EXPECT_EQ(Lines()->GetRows().size(), 7u);
    ClickZone(RIG, TreeZone::FOLD);
    EXPECT_EQ(Lines()->GetRows().size(), 11u) << "the folder's group, with its curves";
    EXPECT_EQ(Lines()->GetRows()[7].mDepth, 1);
    MoveTo(Tree(), wxPoint(60, 10));
    ClickZone(PLACE, TreeZone::SHY);
    EXPECT_TRUE(mpPlace->mbShy);
    EXPECT_EQ(Lines()->GetRows().size(), 11u) << "shy counts in shy mode";
    const wxRect shy = Half()->GetPCHeader()->GetButtonRect("Shy mode");
    Click(Half()->GetPCHeader(), wxPoint(shy.x + 5, shy.y + 5));
    EXPECT_EQ(Lines()->GetRows().size(), 7u);
    Lines()->ShowGroup(mpFade.get(), false);
    EXPECT_EQ(Lines()->GetRows().size(), 5u);
}

TEST_F(ParamLines, RowsAreSelectedForTheGraph) {
    ClickZone(PLACE_X, TreeZone::NAME);
    EXPECT_EQ(Lines()->GetSelectedCurves(), Curves({&X(*mpPlace)}));
    With(WXK_SHIFT, [] { ClickZone(PLACE_Z, TreeZone::NAME); });
    EXPECT_EQ(Lines()->GetSelectedCurves().size(), 3u);
    With(WXK_CONTROL, [] { ClickZone(PLACE_Y, TreeZone::NAME); });
    EXPECT_EQ(Lines()->GetSelectedCurves(), Curves({&X(*mpPlace), &mpPlace->mVParams[2]}));
    ClickZone(RIG, TreeZone::NAME);
    EXPECT_EQ(Lines()->GetSelectedCurves().size(), 3u) << "a folder stands for what is in it";
    Key(WXK_UP);
    EXPECT_EQ(Lines()->GetSelectedCurves(), Curves({&X(*mpFade)}));
}

TEST_F(ParamLines, WheelZoomsAroundThePointerScrollsAndPans) {
    Time()->SetMaxFrameNative(1000);
    Time()->SetAAMinNative(0);
    Time()->SetAAMaxNative(1000);
    Menu(ID_REFRESH_TL);
    const wxPoint point(Strips()->GetScale().ToPixel(700), 10);
    const int there = Strips()->GetScale().ToFrame(point.x);
    With(WXK_CONTROL, [&] { Wheel(Strips(), point, 4); });
    const int shown = Time()->GetAAMax() - Time()->GetAAMin();
    EXPECT_NEAR(shown, 410, 3);
    EXPECT_NEAR(Strips()->GetScale().ToFrame(point.x), there, 1);
    const int first = Time()->GetAAMin();
    With(WXK_SHIFT, [&] { Wheel(Strips(), point, -1); });
    EXPECT_EQ(Time()->GetAAMax() - Time()->GetAAMin(), shown);
    EXPECT_NEAR(Time()->GetAAMin() - first, shown / 10, 1);
    // With the middle button the frame stays under the pointer.
    const int held = Strips()->GetScale().ToFrame(300);
    Drag(Strips(), wxPoint(300, 10), wxPoint(400, 10), 2);
    EXPECT_NEAR(Strips()->GetScale().ToFrame(400), held, 1);
    const wxRect all = Half()->GetPCHeader()->GetButtonRect("Show the whole film");
    Click(Half()->GetPCHeader(), wxPoint(all.x + 5, all.y + 5));
    EXPECT_EQ(Time()->GetAAMin(), 0);
    EXPECT_EQ(Time()->GetAAMax(), 1000);
    const int top = Lines()->GetRowScale().mTop;
    Wheel(Strips(), point, -1);
    EXPECT_EQ(Lines()->GetRowScale().mTop - top,
              std::min(2 * Lines()->GetLook().mRow, Lines()->GetRowScale().ClampTop(10000)));
}

TEST_F(ParamLines, RulerShowsKeysAndDragsAreas) {
    MakeKeys(ALPHA, {5, 12});
    Menu(ID_REFRESH_TL);
    FrameSlider_cls* slider = Half()->GetPCSlider();
    ASSERT_EQ(slider->GetTags().size(), 20u);
    for (int frame = 0; frame < 20; ++frame)
        EXPECT_EQ(slider->GetTags()[size_t(frame)], frame == 0 || frame == 5 || frame == 12) << frame;
    const FrameScale scale = slider->GetScale();
    const int work = slider->GetBandY(2);
    const int film = slider->GetBandY(0);
    Drag(slider, wxPoint(scale.ToPixel(19), work), wxPoint(scale.ToPixel(12), work));
    EXPECT_EQ(Time()->GetWAMax(), 12);
    Drag(slider, wxPoint(scale.ToPixel(0), work), wxPoint(scale.ToPixel(4), work));
    EXPECT_EQ(Time()->GetWAMin(), 4);
    Drag(slider, wxPoint(scale.ToPixel(8), work), wxPoint(scale.ToPixel(11), work));
    EXPECT_EQ(Time()->GetWAMin(), 7);
    EXPECT_EQ(Time()->GetWAMax(), 15);
    EXPECT_EQ(Time()->GetFrame(), 0) << "the frame stays";
    Click(slider, wxPoint(scale.ToPixel(9), work));
    EXPECT_EQ(Time()->GetFrame(), 9) << "a click into the area goes there";
    Drag(slider, wxPoint(slider->GetFilmScale().ToPixel(19), film),
         wxPoint(slider->GetFilmScale().ToPixel(10), film));
    EXPECT_EQ(Time()->GetAAMax(), 10);
    Drag(slider, wxPoint(slider->GetFilmScale().ToPixel(5), film),
         wxPoint(slider->GetFilmScale().ToPixel(9), film));
    EXPECT_EQ(Time()->GetAAMin(), 4);
    EXPECT_EQ(Time()->GetAAMax(), 14);
    Settle();
    Snap("ruler");
}

} // namespace
