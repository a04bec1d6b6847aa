// The graph under real keys and mouse, in a window of its own over the program's clock and undo list.
#include <cmath>
#include <memory>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "GuiTest.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/TIMELINE/clsKeyDialog.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

const wxString kNames[] = {"X", "Y", "Z"};

class Graph : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        Time()->SetMaxFrameNative(100);
        PlayAll(100);
        Time()->SetWAMinNative(10);
        Time()->SetWAMaxNative(80);
        Time()->SetFrameNative(30, 0);
        mpGroup = std::make_unique<ParamGroup_cls>("Graph test", 3, kNames, 0, true);
        mpGroup->mbLinked = false;
        const unsigned kinds[] = {INTERP_HERMITE, INTERP_LINEAR, INTERP_HERMITE_SEMIAUTO};
        for (int c = 0; c < 3; ++c) {
            std::vector<KeyFrame_cls> keys(4);
            for (int i = 0; i < 4; ++i)
                keys[size_t(i)].Set(0.2 + 0.2 * i, kinds[c], 10.0 * c + (i % 2 ? 20.0 : 4.0), 20.0, 1.0,
                                    false);
            mpGroup->mVParams[size_t(c)].ExecCommandSetKeys(keys);
        }
        GCUndoList.Clear();
        mpFrame = new wxFrame(Frame(), wxID_ANY, "Graph", wxPoint(40, 40), wxSize(900, 420),
                              wxDEFAULT_FRAME_STYLE | wxFRAME_FLOAT_ON_PARENT);
        mpPanel = new GraphPanel_cls(mpFrame, Time());
        mpPanel->mOnEdited = [this] { ++mEdits; };
        mpFrame->Show();
        ASSERT_TRUE(PumpUntil([this] { return mpFrame->IsActive() && mpPanel->GetClientSize().x > 800; }));
        mpPanel->SetCurves({Curve(0), Curve(1), Curve(2)});
        mpFrame->Raise();
        mpPanel->SetFocus();
        ASSERT_TRUE(PumpUntil([this] { return mpFrame->IsActive() && mpPanel->HasFocus(); }));
        Settle();
    }
    void TearDown() override {
        mpFrame->Destroy();
        GCUndoList.Clear();
        GuiTest::TearDown();
    }
    Parameters_cls* Curve(int c) { return &mpGroup->mVParams[size_t(c)]; }
    const KeyFrame_cls& KeyOf(int c, int i) { return Curve(c)->GetKeys()[size_t(i)]; }
    wxPoint At(double t, double value) {
        const GraphScale scale = mpPanel->GetGraphScale();
        return wxPoint(int(scale.ToX(t)), int(scale.ToY(value)));
    }
    wxPoint AtKey(int c, int i) { return At(KeyOf(c, i).mDoubleIndex, KeyOf(c, i).mValue); }
    /// Pixels that stand for these steps.
    wxPoint Way(double frames, double value) { return At(frames / 100, value) - At(0, 0); }

    std::unique_ptr<ParamGroup_cls> mpGroup;
    wxFrame* mpFrame = nullptr;
    GraphPanel_cls* mpPanel = nullptr;
    int mEdits = 0;
};

TEST_F(Graph, ADraggedKeyFollowsAndIsOneStep) {
    const KeyFrame_cls before = KeyOf(0, 1);
    Drag(mpPanel, AtKey(0, 1), AtKey(0, 1) + Way(5, 6));
    EXPECT_NEAR(KeyOf(0, 1).mDoubleIndex, 0.45, 1e-9);
    EXPECT_NEAR(KeyOf(0, 1).mValue, before.mValue + 6, 0.3);
    EXPECT_EQ(KeyOf(0, 1).mValueD1, before.mValueD1) << "the slope stays";
    EXPECT_TRUE(KeyOf(0, 1).mbSelected);
    EXPECT_GE(mEdits, 1);
    Snap("graph_dragged");
    GCUndoList.UndoCurrent();
    EXPECT_EQ(KeyOf(0, 1).mDoubleIndex, before.mDoubleIndex);
    EXPECT_EQ(KeyOf(0, 1).mValue, before.mValue);
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "a whole drag is one step";
    GCUndoList.ExecCurrent();
    EXPECT_NEAR(KeyOf(0, 1).mDoubleIndex, 0.45, 1e-9);
}

TEST_F(Graph, EscapeTakesADragBackAndLeavesNoStep) {
    const KeyFrame_cls before = KeyOf(1, 1);
    const wxPoint from = AtKey(1, 1);
    MoveTo(mpPanel, from);
    Press(true);
    for (int k = 1; k <= 4; ++k)
        MoveTo(mpPanel, from + wxPoint(12 * k, -8 * k));
    ASSERT_TRUE(PumpUntil([&] { return KeyOf(1, 1).mDoubleIndex != before.mDoubleIndex; }, 2000)) << "live";
    Snap("graph_dragging");
    Key(WXK_ESCAPE);
    EXPECT_EQ(KeyOf(1, 1).mDoubleIndex, before.mDoubleIndex);
    EXPECT_EQ(KeyOf(1, 1).mValue, before.mValue);
    MoveTo(mpPanel, from + wxPoint(80, 0));
    Press(false);
    Settle();
    EXPECT_EQ(KeyOf(1, 1).mDoubleIndex, before.mDoubleIndex) << "the rest of the drag does nothing";
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(Graph, HandlesTurnSlopesAndEaseFactors) {
    Click(mpPanel, AtKey(0, 2));
    wxPoint2DDouble handle;
    ASSERT_TRUE(mpPanel->GetHandle(*Curve(0), 2, 1, &handle));
    const wxPoint grip(int(handle.m_x), int(handle.m_y));
    Drag(mpPanel, grip, AtKey(0, 2) + Way(10, 8));
    EXPECT_NEAR(KeyOf(0, 2).mValueD1, 80.0, 3.0) << "8 in a tenth of the film";
    EXPECT_EQ(KeyOf(0, 2).mValue, 4.0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(KeyOf(0, 2).mValueD1, 20.0);
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "one step";
    // Kind 2 has a slope of its own, and the handle says how much of it counts.
    Click(mpPanel, AtKey(2, 0));
    const double slope = KeyOf(2, 0).mValueD1;
    ASSERT_NEAR(slope, 80.0, 1e-6);
    ASSERT_TRUE(mpPanel->GetHandle(*Curve(2), 0, -1, &handle));
    Drag(mpPanel, wxPoint(int(handle.m_x), int(handle.m_y)), AtKey(2, 0) - Way(10, 4));
    EXPECT_NEAR(KeyOf(2, 0).mValueD2, 0.5, 0.05);
    EXPECT_EQ(KeyOf(2, 0).mValueD1, slope);
    Click(mpPanel, AtKey(1, 1));
    EXPECT_FALSE(mpPanel->GetHandle(*Curve(1), 1, 1, &handle)) << "a straight line has none";
}

TEST_F(Graph, ClicksAndBandSelect) {
    Click(mpPanel, AtKey(0, 1));
    EXPECT_TRUE(KeyOf(0, 1).mbSelected);
    Hold(WXK_SHIFT, true);
    Click(mpPanel, AtKey(1, 2));
    Hold(WXK_SHIFT, false);
    EXPECT_EQ(CountSelectedKeys(mpPanel->GetCurves()), 2);
    Hold(WXK_CONTROL, true);
    Click(mpPanel, AtKey(0, 1));
    Hold(WXK_CONTROL, false);
    EXPECT_FALSE(KeyOf(0, 1).mbSelected);
    Click(mpPanel, wxPoint(400, 5));
    EXPECT_EQ(CountSelectedKeys(mpPanel->GetCurves()), 0) << "the ground deselects";
    const wxSize size = mpPanel->GetClientSize();
    Drag(mpPanel, wxPoint(At(0.5, 0).x, 3), wxPoint(At(0.7, 0).x, size.y - 3));
    for (int c = 0; c < 3; ++c)
        EXPECT_TRUE(KeyOf(c, 2).mbSelected && Curve(c)->GetSelectedKeyNum() == 1) << c;
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "selecting is no step";
    Key('A', wxMOD_CONTROL);
    EXPECT_EQ(CountSelectedKeys(mpPanel->GetCurves()), 12);
}

TEST_F(Graph, LinkedCurvesGoAlongInTimeAlone) {
    mpGroup->mbLinked = true;
    const double value = KeyOf(1, 1).mValue;
    Drag(mpPanel, AtKey(0, 1), AtKey(0, 1) + Way(-7, 5));
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(KeyOf(c, 1).mDoubleIndex, 0.33, 1e-9) << c;
    EXPECT_EQ(KeyOf(1, 1).mValue, value);
    Key(WXK_DELETE);
    for (int c = 0; c < 3; ++c)
        EXPECT_EQ(Curve(c)->GetKeyNumber(), 3) << c;
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    for (int c = 0; c < 3; ++c)
        EXPECT_EQ(KeyOf(c, 1).mDoubleIndex, 0.4) << c;
}

TEST_F(Graph, ADoubleClickInsertsOnTheCurve) {
    const double value = Curve(0)->Evaluate(0.5, 0.01);
    const wxPoint point = At(0.5, value);
    DoubleClick(mpPanel, point);
    ASSERT_TRUE(PumpUntil([this] { return Curve(0)->GetKeyNumber() == 5; }, 2000));
    EXPECT_NEAR(KeyOf(0, 2).mDoubleIndex, 0.5, 1e-9);
    EXPECT_EQ(KeyOf(0, 2).mValue, value);
    EXPECT_TRUE(KeyOf(0, 2).mbSelected);
    EXPECT_EQ(Curve(1)->GetKeyNumber(), 4) << "not linked";
    GCUndoList.UndoCurrent();
    EXPECT_EQ(Curve(0)->GetKeyNumber(), 4);
}

TEST_F(Graph, WheelAndKeysMoveTheView) {
    const wxPoint point = At(0.5, 20);
    const ValueRange fitted = mpPanel->GetValues();
    Hold(WXK_SHIFT, true);
    Wheel(mpPanel, point, 3);
    Hold(WXK_SHIFT, false);
    EXPECT_NEAR(mpPanel->GetValues().Span() / fitted.Span(), std::pow(0.8, 3), 1e-6);
    EXPECT_LE(std::abs(At(0.5, 20).y - point.y), 1) << "around the pointer";
    Key('F');
    EXPECT_EQ(mpPanel->GetValues().mLow, fitted.mLow);
    Wheel(mpPanel, point, 2);
    EXPECT_GT(mpPanel->GetValues().mLow, fitted.mLow);
    EXPECT_NEAR(mpPanel->GetValues().Span(), fitted.Span(), 1e-9);
    GCUndoList.Clear();
    Hold(WXK_CONTROL, true);
    Wheel(mpPanel, point, 4);
    Hold(WXK_CONTROL, false);
    GCUndoList.UndoCurrent();
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "a burst of zooms is one step";
    GCUndoList.ExecCurrent();
    EXPECT_LT(Time()->GetAAMax() - Time()->GetAAMin(), 60);
    EXPECT_LE(std::abs(At(0.5, 20).x - point.x), 12) << "around the pointer, to whole frames";
    const int first = Time()->GetAAMin();
    Drag(mpPanel, wxPoint(400, 200), wxPoint(300, 150), 2);
    EXPECT_GT(Time()->GetAAMin(), first);
    ClickOn(mpPanel);
    Click(mpPanel, mpPanel->GetFitButton().GetPosition() + wxPoint(8, 8));
    EXPECT_NE(mpPanel->GetValues().mLow, fitted.mLow) << "fits what these frames show";
    GCUndoList.Clear();
}

TEST_F(Graph, TheMenuSetsKindsAndTheDialogItsFields) {
    Click(mpPanel, AtKey(0, 1));
    ClickPopup(mpPanel, AtKey(0, 1), {WXK_DOWN, WXK_RETURN});
    ASSERT_TRUE(PumpUntil([this] { return KeyOf(0, 1).mInterpType == INTERP_LINEAR; }, 3000));
    GCUndoList.UndoCurrent();
    EXPECT_EQ(KeyOf(0, 1).mInterpType, unsigned(INTERP_HERMITE));
    EXPECT_EQ(KeyOf(0, 1).mValueD1, 20.0);
    EXPECT_FALSE(GCUndoList.IsUndoable());

    KeyDialog_cls* dialog = nullptr;
    const auto field = [&dialog](const wxString& tip) { return FindField(dialog, tip); };
    const auto find = [&dialog] {
        for (wxWindow* window : wxTopLevelWindows)
            if (auto* found = dynamic_cast<KeyDialog_cls*>(window)) dialog = found;
    };
    const auto type = [&](const wxString& tip, const wxString& text) {
        field(tip)->GetPCText()->SetFocus();
        field(tip)->GetPCText()->ChangeValue(text);
        field(tip)->GetPCText()->MarkDirty();
    };
    Curve(0)->SelectKey(1, true);
    Later({{HasDialog, find},
           {nullptr, [&] { type("The value at the key", "12.5"); }},
           {nullptr, [&] { type("Where the key stands", "47"); }},
           {nullptr, [&] { type("Change of the value", "-33"); }},
           {nullptr, [] { Snap("key_dialog"); }},
           {nullptr, [] { KeyNow(WXK_RETURN); }}});
    EXPECT_TRUE(KeyDialog_cls::Open(mpPanel, mpPanel->GetCurves()));
    ASSERT_TRUE(dialog);
    EXPECT_NEAR(KeyOf(0, 1).mDoubleIndex, 0.47, 1e-9);
    EXPECT_EQ(KeyOf(0, 1).mValue, 12.5);
    EXPECT_EQ(KeyOf(0, 1).mValueD1, -33.0);
    EXPECT_EQ(mpGroup->mpKeyDlgEase, nullptr);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(KeyOf(0, 1).mValue, 24.0 - 4.0);
    EXPECT_EQ(KeyOf(0, 1).mDoubleIndex, 0.4);
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "one step";

    // Keys of several curves at one place have a value each; an ease factor is for those that go by it.
    Curve(1)->SelectKey(1, true);
    bool bEase = true;
    Later({{HasDialog, find},
           {nullptr, [&] { type("The values at the keys, of X, Y", "7.5"); }},
           {nullptr, [&] { bEase = field("Factor of the automatic slope")->IsEnabled(); }},
           {nullptr, [] { Snap("key_dialog_linked"); }},
           {nullptr, [] { KeyNow(WXK_RETURN); }}});
    const double second = KeyOf(1, 1).mValue;
    EXPECT_TRUE(KeyDialog_cls::Open(mpPanel, mpPanel->GetCurves()));
    EXPECT_EQ(KeyOf(0, 1).mValue, 7.5);
    EXPECT_EQ(KeyOf(1, 1).mValue, second);
    EXPECT_FALSE(bEase) << "neither is of that kind";
    GCUndoList.UndoCurrent();
    EXPECT_FALSE(GCUndoList.IsUndoable());
    Curve(1)->SelectKey(1, false);

    const auto escape = [] {
        if (HasDialog()) KeyNow(WXK_ESCAPE);
    };
    Later({{HasDialog, find},
           {nullptr, [&] { type("The value at the key", "99"); }},
           {nullptr, escape},
           {nullptr, escape}}); // the first one is the field's
    EXPECT_FALSE(KeyDialog_cls::Open(mpPanel, mpPanel->GetCurves()));
    EXPECT_EQ(KeyOf(0, 1).mValue, 20.0);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(Graph, DeletedCurvesAndStrangeFilmsAreShown) {
    MoveTo(mpPanel, AtKey(0, 1));
    Press(true);
    MoveTo(mpPanel, AtKey(0, 1) + wxPoint(20, 20));
    mpGroup.reset(); // in the middle of a drag
    MoveTo(mpPanel, wxPoint(200, 200));
    Press(false);
    Settle();
    EXPECT_TRUE(mpPanel->GetCurves().empty());
    mpPanel->RefreshIfChanged();
    mpGroup = std::make_unique<ParamGroup_cls>("Odd", 3, kNames, 0, true);
    std::vector<KeyFrame_cls> keys(3);
    keys[1].Set(0.5, INTERP_HERMITE, NAN, HUGE_VAL, 0, true);
    keys[2].Set(0.5, INTERP_HERMITE, 1e308, -1e308, 0, true);
    Curve(0)->ExecCommandSetKeys(keys);
    Curve(1)->ExecCommandSetKeys({});
    mpPanel->SetCurves({Curve(0), Curve(1), Curve(2)});
    for (const int length : {0, 1, 65535}) {
        Time()->SetMaxFrameNative(length);
        PlayAll(length);
        mpPanel->FitToView();
        for (const wxSize& size : {wxSize(900, 400), wxSize(1, 1), wxSize(300, 7)}) {
            mpPanel->SetSize(size);
            Settle();
            Wheel(mpPanel, wxPoint(0, 0), 1);
        }
    }
    EXPECT_EQ(mpPanel->GetCurves().size(), 3u);
    Time()->SetMaxFrameNative(100);
}

} // namespace
