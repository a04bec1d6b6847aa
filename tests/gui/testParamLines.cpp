// The time lines under mouse and keys: curves in the tree, keys in the strips.
#include <utility>

#include <wx/clipbrd.h>

#include "ParamLinesTest.h"

namespace {

using ParamLines = ParamLinesTest;

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
        DoubleClick(Tree(), middle);
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
    MoveTo(Strips(), Point(ALPHA, 5));
    Press(true);
    for (int frame = 6; frame <= 8; ++frame)
        MoveTo(Strips(), Point(ALPHA, frame));
    PumpUntil([this] { return Frames(X(*mpFade)) == List({0, 8, 10}); }, 2000);
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 8, 10})) << "seen while it is dragged";
    Key(WXK_ESCAPE);
    Press(false);
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

TEST_F(ParamLines, LabelsOfKeysGoWithTheKeysAndNeverContradictADrag) {
    MakeKeys(ALPHA, {5, 10});
    MoveTo(Strips(), Point(ALPHA, 10));
    ASSERT_TRUE(PumpUntil([] { return Strips()->GetHint().StartsWith("Frame 10: "); }));
    Snap("strip_label");
    Press(true);
    for (int frame = 10; frame <= 13; ++frame)
        MoveTo(Strips(), Point(ALPHA, frame));
    ASSERT_TRUE(PumpUntil([this] { return Frames(X(*mpFade)) == List({0, 5, 13}); }));
    EXPECT_EQ(Strips()->GetHint(), "") << "the drag has its own label";
    Press(false);
    MoveTo(Strips(), Point(ALPHA, 13) + wxPoint(1, 0));
    ASSERT_TRUE(PumpUntil([] { return Strips()->GetHint().StartsWith("Frame 13: "); }));
    // The pointer rests, the key goes.
    Key(WXK_DELETE);
    ASSERT_TRUE(PumpUntil([this] { return Frames(X(*mpFade)) == List({0, 5}); }));
    EXPECT_EQ(Strips()->GetHint(), "");
    MoveTo(Strips(), Point(ALPHA, 5));
    ASSERT_TRUE(PumpUntil([] { return !Strips()->GetHint().empty(); }));
    Lines()->FoldGroup(mpPlace.get(), true);
    EXPECT_EQ(Strips()->GetHint(), "") << "other rows are under the pointer";
    EXPECT_EQ(Strips()->GetToolTipText(), "");
}

TEST_F(ParamLines, AltDragCopiesAndCtrlVPastesAtTheClock) {
    MakeKeys(ALPHA, {5});
    With(WXK_ALT, [] { Drag(Strips(), Point(ALPHA, 5), Point(ALPHA, 8)); });
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5, 8}));
    EXPECT_EQ(Selected(X(*mpFade)), List({8}));
    GCUndoList.UndoCurrent();
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5}));
    const auto clipboard = std::exchange(GParamHooks.mClipboard, [](const wxString& text) {
        if (!wxTheClipboard->Open()) return;
        wxTheClipboard->SetData(new wxTextDataObject(text));
        wxTheClipboard->Close();
    });
    Click(Strips(), Point(ALPHA, 5));
    Key('C', wxMOD_CONTROL);
    GoTo(12);
    const unsigned steps = GCUndoList.GetCurrent();
    Key('V', wxMOD_CONTROL);
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5, 12}));
    EXPECT_EQ(Selected(X(*mpFade)), List({12}));
    Snap("pasted");
    GCUndoList.UndoCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), steps);
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 5}));
    GParamHooks.mClipboard = clipboard;
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
    ASSERT_TRUE(ClickHeader("Selected keys: LINEAR"));
    EXPECT_EQ(X(*mpFade).GetKeys()[1].mInterpType, unsigned(INTERP_LINEAR));
    Key(WXK_DELETE);
    EXPECT_EQ(Frames(X(*mpFade)), List({0, 10}));
    Key('A', wxMOD_CONTROL);
    Key(WXK_DELETE);
    EXPECT_EQ(Frames(X(*mpFade)), List({0})) << "a curve keeps its last key";
    UndoAll();
}

} // namespace
