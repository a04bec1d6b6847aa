// The time lines as a whole: layout, groups and rows, zoom, and the areas of the ruler.
#include "ParamLinesTest.h"

namespace {

using ParamRows = ParamLinesTest;

TEST_F(ParamRows, LayoutKeepsRulerAndPlayPanelAndStandsInLine) {
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
    EXPECT_FALSE(Lines()->IsShown()) << "rows without room would lie over the play panel";
    Snap("low");
    Half()->SetSize(size);
    EXPECT_TRUE(Lines()->IsShown());
    Snap("layout");
}

TEST_F(ParamRows, GroupsFoldHideAndShow) {
    ClickZone(PLACE, TreeZone::FOLD);
    EXPECT_EQ(Lines()->GetRows().size(), 4u);
    const wxRect name = Tree()->GetZoneRect(0, TreeZone::NAME);
    DoubleClick(Tree(), wxPoint(name.x + 10, name.y + 10));
    Settle();
    EXPECT_EQ(Lines()->GetRows().size(), 7u);
    ClickZone(RIG, TreeZone::FOLD);
    EXPECT_EQ(Lines()->GetRows().size(), 11u) << "the folder's group, with its curves";
    EXPECT_EQ(Lines()->GetRows()[7].mDepth, 1);
    MoveTo(Tree(), wxPoint(60, 10));
    ClickZone(PLACE, TreeZone::SHY);
    EXPECT_TRUE(mpPlace->mbShy);
    EXPECT_EQ(Lines()->GetRows().size(), 11u) << "shy counts in shy mode";
    ASSERT_TRUE(ClickHeader("Shy mode"));
    EXPECT_EQ(Lines()->GetRows().size(), 7u);
    Lines()->ShowGroup(mpFade.get(), false);
    EXPECT_EQ(Lines()->GetRows().size(), 5u);
}

TEST_F(ParamRows, RowsAreSelectedForTheGraph) {
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

TEST_F(ParamRows, WheelZoomsAroundThePointerScrollsAndPans) {
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
    ASSERT_TRUE(ClickHeader("Show the whole film"));
    EXPECT_EQ(Time()->GetAAMin(), 0);
    EXPECT_EQ(Time()->GetAAMax(), 1000);
    const int top = Lines()->GetRowScale().mTop;
    Wheel(Strips(), point, -1);
    EXPECT_EQ(Lines()->GetRowScale().mTop - top,
              std::min(2 * Lines()->GetLook().mRow, Lines()->GetRowScale().ClampTop(10000)));
}

TEST_F(ParamRows, TheGraphIsFittedWhenAnotherProjectOpens) {
    MakeKeys(ALPHA, {5, 12});
    ClickZone(ALPHA, TreeZone::NAME);
    Lines()->ShowGraph(true);
    Settle();
    const GraphPanel_cls* graph = Lines()->GetPCGraph();
    std::vector<KeyFrame_cls> keys = X(*mpFade).GetKeys();
    keys[1].mValue = 5000.0;
    X(*mpFade).ExecCommandSetKeys(keys);
    ASSERT_LT(graph->GetValues().mHigh, 5000.0);
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    EXPECT_GT(graph->GetValues().mHigh, 5000.0);
    Snap("graph_fitted");
    Lines()->ShowGraph(false);
}

TEST_F(ParamRows, ABurstOfZoomsIsOneStep) {
    const auto shown = [] { return std::pair<int, int>(Time()->GetAAMin(), Time()->GetAAMax()); };
    const auto all = shown();
    FrameSlider_cls* slider = Half()->GetPCSlider();
    const std::pair<wxWindow*, wxPoint> places[] = {
        {Strips(), wxPoint(Strips()->GetScale().ToPixel(7), 10)},
        {slider, wxPoint(slider->GetScale().ToPixel(7), slider->GetBandY(1))}};
    for (const auto& [window, point] : places) {
        With(WXK_CONTROL, [window = window, point = point] { Wheel(window, point, 3); });
        EXPECT_LE(shown().second - shown().first, 11);
        Menu(ID_UNDO);
        EXPECT_EQ(shown(), all);
        EXPECT_FALSE(GCUndoList.IsUndoable());
    }
    Time()->SetFrameNative(7, 0);
    Canvas(0)->SetFocus();
    Key('\'');
    Key('\'');
    EXPECT_LE(shown().second - shown().first, 6);
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsGesture(); })) << "the burst ends by itself";
    Key('-');
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsGesture(); }));
    GCUndoList.UndoCurrent();
    EXPECT_LE(shown().second - shown().first, 6);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(shown(), all);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(ParamRows, RulerAndJumpsKnowTheKeysOfTheRowsThatExist) {
    Time()->SetAnimInterpNative(4);
    InsertKeys({&X(*mpFade)}, 5.5 / 19);
    InsertKeys({&X(*mpTurn)}, At(12)); // in the folded "Rig", whose row shows them together
    InsertKeys({&Time()->mpCTimeRemapGroup->mVParams[0]}, At(9));
    Lines()->HideAndShow();
    EXPECT_EQ(Marks(), (std::vector<double>{0, 5.5, 12})) << "Time Remap is hidden";
    Canvas(0)->SetFocus();
    const auto at = [] { return std::pair<int, int>(Time()->GetFrame(), Time()->GetInterpStep()); };
    using Place = std::pair<int, int>;
    Key('K');
    EXPECT_EQ(at(), Place(5, 2));
    Key('K');
    EXPECT_EQ(at(), Place(12, 0));
    Key('J');
    EXPECT_EQ(at(), Place(5, 2));
    ASSERT_TRUE(ClickHeader("To the next key"));
    EXPECT_EQ(at(), Place(12, 0)) << "the arrows go by the same rule";
    Snap("ruler_marks");
    Lines()->ShowGroup(mpRig.get(), false);
    EXPECT_EQ(Marks(), (std::vector<double>{0, 5.5}));
    Canvas(0)->SetFocus();
    Key('K');
    EXPECT_EQ(at(), Place(19, 0)) << "no key is left there";
    while (GCUndoList.IsUndoable())
        GCUndoList.UndoCurrent();
}

TEST_F(ParamRows, TheRulerDragsThroughTheSteps) {
    Time()->SetAnimInterpNative(4);
    Menu(ID_REFRESH_TL);
    FrameSlider_cls* slider = Half()->GetPCSlider();
    const int y = slider->GetBandY(1);
    const auto at = [&](double frame) {
        return wxPoint(int(std::lround(slider->GetScale().ToPixelExact(frame))), y);
    };
    using Place = std::pair<int, int>;
    const auto now = [] { return Place(Time()->GetFrame(), Time()->GetInterpStep()); };
    Drag(slider, at(2), at(6.75));
    EXPECT_EQ(now(), Place(6, 3));
    Snap("ruler_steps");
    With(WXK_SHIFT, [&] { Drag(slider, at(2), at(6.75)); });
    EXPECT_EQ(now(), Place(7, 0));
    Menu(ID_UNDO);
    EXPECT_EQ(now(), Place(6, 3)) << "a drag is one step";
    Click(slider, at(9.25));
    EXPECT_EQ(now(), Place(9, 1));
}

TEST_F(ParamRows, RulerShowsKeysAndDragsAreas) {
    MakeKeys(ALPHA, {5, 12});
    Menu(ID_REFRESH_TL);
    FrameSlider_cls* slider = Half()->GetPCSlider();
    EXPECT_EQ(Marks(), (std::vector<double>{0, 5, 12}));
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
