// The lower half of the window: play panel, slider, cache bar, and the keys and dialog that move in time.
#include <cmath>

#include <wx/bmpbuttn.h>
#include <wx/checkbox.h>
#include <wx/textctrl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsCacheBar.h"
#include "WIDGET/TIMELINE/clsFrameSlider.h"
#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"
#include "WIDGET/clsNumField.h"

namespace {

class Timeline : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        OpenMelt();
        Menu(ID_VIEW_PANEL_TYPE_0);
        Time()->SetInterpStepNative(0, 0);
        PlayAll(19);
        Time()->SetPrefetchNative(3);
        Canvas(0)->SetFocus();
        Menu(ID_REFRESH_TL);
    }
    static BtmHalfPanel_cls* Half() { return Frame()->GetPCBtmHalf(); }
    static wxWindow* Play() { return Half()->GetPCPlayCtrl(); }
    static void Push(const wxString& tip) {
        wxWindow* button = FindByTip(Play(), tip);
        ASSERT_TRUE(button) << tip;
        ClickOn(button);
        Settle();
    }
    static void PushLabel(const wxString& label) {
        wxWindow* button = FindByLabel(Play(), label);
        ASSERT_TRUE(button) << label;
        ClickOn(button);
        Settle();
    }
    static void Enter(const wxString& tip, const std::string& text) {
        NumField_cls* field = FindField(Play(), tip);
        ASSERT_TRUE(field) << tip;
        TypeInto(field, text);
        Settle();
    }
    static PDataSeqCtrl_cls* Store() { return Hub()->mpCPDataSeqCtrl; }
    static const PDataBlock_cls* Block(int index) {
        return Store()->GetPCActiveFileSequence()->mpCSnap[index]->mpCBlock;
    }
};

TEST_F(Timeline, TransportButtonsMoveAndPlay) {
    Push("One step forward");
    EXPECT_EQ(Time()->GetFrame(), 1);
    Push("One step forward");
    Push("One step back");
    EXPECT_EQ(Time()->GetFrame(), 1);
    Push("To the end of the work area");
    EXPECT_EQ(Time()->GetFrame(), 19);
    Push("To the start of the work area");
    EXPECT_EQ(Time()->GetFrame(), 0);
    ClickOn(FindByTip(Play(), "Play (Space)"));
    ASSERT_TRUE(PumpUntil([] { return Time()->GetFrame() >= 5; }));
    EXPECT_TRUE(Time()->IsPlaying());
    Push("Stop playing");
    EXPECT_FALSE(Time()->IsPlaying());
    const int stopped = Time()->GetFrame();
    EXPECT_GE(stopped, 5);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Time()->GetFrame(), stopped) << "it stays stopped";
    ClickOn(FindByTip(Play(), "Play backwards"));
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsPlaying() && Time()->GetFrame() == 0; }, 20000));
}

TEST_F(Timeline, SpaceIsPlayAndStop) {
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return Time()->GetFrame() >= 3; }));
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsPlaying(); }));
    EXPECT_LT(Time()->GetFrame(), 19);
}

TEST_F(Timeline, FieldsTakeTypedNumbers) {
    Enter("Current frame", "7");
    EXPECT_EQ(Time()->GetFrame(), 7);
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains("melt0007.bin")) << "painted";
    Enter("Current frame", "500");
    EXPECT_EQ(Time()->GetFrame(), 19) << "no further than the film";
    NumField_cls* field = FindField(Play(), "Current frame");
    ClickOn(field->GetPCText());
    Key('A', wxMOD_CONTROL);
    Type("3");
    Key(WXK_ESCAPE);
    EXPECT_EQ(field->GetPCText()->GetValue(), "19") << "Escape restores";
    EXPECT_EQ(Time()->GetFrame(), 19);
    Enter("Current frame", "2x");
    EXPECT_EQ(Time()->GetFrame(), 19) << "what is no number changes nothing";
}

TEST_F(Timeline, SteppingPlaysMultiplesOnly) {
    Enter("Only multiples", "4");
    EXPECT_EQ(Time()->GetAnimStep(), 4);
    Canvas(0)->SetFocus();
    Key(WXK_RIGHT);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Time()->GetFrame(), 4);
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return Time()->IsPlaying() || Time()->GetFrame() > 4; }));
    std::vector<int> seen;
    ASSERT_TRUE(PumpUntil([&seen] {
        if (seen.empty() || seen.back() != Time()->GetFrame()) seen.push_back(Time()->GetFrame());
        return !Time()->IsPlaying();
    }));
    for (const int frame : seen)
        EXPECT_EQ(frame % 4, 0);
    EXPECT_EQ(Time()->GetFrame(), 16);
}

TEST_F(Timeline, StepsBetweenSnapshotsMoveTheParticles) {
    Enter("Interpolation steps", "2");
    EXPECT_EQ(Time()->GetAnimInterp(), 2);
    Enter("Current frame", "4");
    Push("One step forward");
    EXPECT_EQ(Time()->GetFrame(), 4);
    EXPECT_EQ(Time()->GetInterpStep(), 1);
    ASSERT_TRUE(Settle());
    const SnapData_cls* drawn = GLDrawData_cls::mspCSnapShot;
    ASSERT_TRUE(drawn);
    const PDataBlock_cls* from = Block(4);
    const PDataBlock_cls* to = Block(5);
    ASSERT_TRUE(from->mpPos && to->mpPos);
    int moved = 0;
    int near = 0;
    int compared = 0;
    for (int i = 0; i < from->mParticleNumber; ++i) {
        double way = 0.0;
        double off = 0.0;
        for (int k = 0; k < 3; ++k) {
            way += std::pow(to->mpPos[i][k] - from->mpPos[i][k], 2);
            off += std::pow(drawn->mpPos[i][k] - 0.5 * (to->mpPos[i][k] + from->mpPos[i][k]), 2);
        }
        way = std::sqrt(way);
        off = std::sqrt(off);
        if (way > 0.5) continue; // through the wall of the box
        ++compared;
        moved += way > 0.0 && std::fabs(drawn->mpPos[i][0] - from->mpPos[i][0]) > 0.0;
        near += off <= way; // the curve bends, but not beyond its ends
    }
    EXPECT_GT(compared, 1000);
    EXPECT_GT(moved, compared * 0.95);
    EXPECT_GT(near, compared * 0.9);
    Push("One step forward");
    EXPECT_EQ(Time()->GetFrame(), 5);
    EXPECT_EQ(Time()->GetInterpStep(), 0);
    Enter("Step between", "1");
    EXPECT_EQ(Time()->GetInterpStep(), 1);
}

TEST_F(Timeline, RepeatGoesRoundUntilStopped) {
    Enter("Last frame that plays", "3");
    EXPECT_EQ(Time()->GetWAMax(), 3);
    wxWindow* box = FindByLabel(Play(), "Repeat");
    Click(box, wxPoint(8, box->GetClientSize().y / 2));
    EXPECT_TRUE(Time()->IsRepeat());
    Canvas(0)->SetFocus();
    Key(WXK_SPACE);
    int rounds = 0;
    int last = 0;
    ASSERT_TRUE(PumpUntil(
        [&] {
            const int frame = Time()->GetFrame();
            EXPECT_LE(frame, 3);
            rounds += frame < last;
            last = frame;
            return rounds >= 3;
        },
        20000));
    EXPECT_TRUE(Time()->IsPlaying());
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsPlaying(); }));
}

TEST_F(Timeline, WorkAreaFollowsButtonsAndKeys) {
    Enter("Current frame", "5");
    PushLabel("in here");
    EXPECT_EQ(Time()->GetWAMin(), 5);
    Enter("Current frame", "9");
    PushLabel("out here");
    EXPECT_EQ(Time()->GetWAMax(), 9);
    EXPECT_EQ(FindField(Play(), "First frame that plays")->GetValue(), 5.0);
    EXPECT_EQ(FindField(Play(), "Last frame that plays")->GetValue(), 9.0);
    Push("To the start of the work area");
    EXPECT_EQ(Time()->GetFrame(), 5);
    Canvas(0)->SetFocus();
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return Time()->IsPlaying() || Time()->GetFrame() > 5; }));
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsPlaying(); }));
    EXPECT_EQ(Time()->GetFrame(), 9) << "plays to the end of the work area";
    Time()->SetFrameNative(7, 0);
    Canvas(0)->SetFocus();
    Key('B');
    EXPECT_EQ(Time()->GetWAMin(), 7);
    Time()->SetFrameNative(8, 0);
    Key('N');
    EXPECT_EQ(Time()->GetWAMax(), 8);
}

TEST_F(Timeline, WithoutKeysTheSnipKeysGoToTheEnds) {
    Enter("Current frame", "5");
    Canvas(0)->SetFocus();
    Key('K');
    EXPECT_EQ(Time()->GetFrame(), 19);
    Key('J');
    EXPECT_EQ(Time()->GetFrame(), 0);
}

TEST_F(Timeline, PrefetchReadsAheadAsFarAsAsked) {
    Enter("Frames read ahead", "0");
    EXPECT_EQ(Time()->GetPrefetch(), 0);
    Menu(ID_REMOVE_CACHE_ALL);
    ASSERT_TRUE(PumpUntil([] { return Store()->IsTheIndexLoaded(0); }));
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(Store()->IsTheIndexLoaded(1));
    Enter("Frames read ahead", "5");
    ASSERT_TRUE(PumpUntil([] { return Store()->IsTheIndexLoaded(5); }));
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(Store()->IsTheIndexLoaded(6));
}

TEST_F(Timeline, SliderDragAndWheelMoveTheFrame) {
    FrameSlider_cls* slider = Half()->GetPCSlider();
    const FrameScale scale = slider->GetScale();
    const int y = slider->GetClientSize().y - 5;
    Click(slider, wxPoint(scale.ToPixel(12), y));
    EXPECT_EQ(Time()->GetFrame(), 12);
    Drag(slider, wxPoint(scale.ToPixel(12), y), wxPoint(scale.ToPixel(3), y));
    EXPECT_EQ(Time()->GetFrame(), 3);
    // Outside the strip the drag goes on, to the end and no further.
    Drag(slider, wxPoint(scale.ToPixel(3), y), wxPoint(scale.ToPixel(19) + 60, y + 40));
    EXPECT_EQ(Time()->GetFrame(), 19);
    Wheel(slider, wxPoint(scale.ToPixel(10), y), 2);
    EXPECT_EQ(Time()->GetFrame(), 17);
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains("melt0017.bin"));
}

TEST_F(Timeline, RulerHasTicksForTheStepsThatPlay) {
    FrameSlider_cls* slider = Half()->GetPCSlider();
    const FrameScale scale = slider->GetScale();
    // Red over the work area's band where a frame or a step stands, the first of the three without a tick.
    // The screen shows a paint a little later than it was asked for.
    const auto red = [&](double frame) {
        const Picture_st picture = Shoot(slider);
        const size_t row = size_t(picture.mH - slider->FromDIP(12) - 1);
        const auto x = size_t(std::lround(scale.ToPixelExact(frame)));
        return int(picture.mRGB[3 * (row * size_t(picture.mW) + x)]);
    };
    const int plain = red(11.4);
    const auto ticked = [&](double frame) { return red(frame) < plain - 60; };
    EXPECT_TRUE(ticked(11.0)) << "a frame";
    EXPECT_FALSE(ticked(11.5));
    Enter("Interpolation steps", "2");
    EXPECT_TRUE(PumpUntil([&] { return ticked(11.5) && ticked(12.5); })) << "steps";
    Enter("Only multiples", "3");
    EXPECT_TRUE(PumpUntil([&] { return !ticked(11.5); })) << "frame 11 is left out";
    EXPECT_TRUE(ticked(12.5));
}

TEST_F(Timeline, CacheBarShowsWhatIsInMemory) {
    CacheBar_cls* bar = Half()->GetPCCacheBar();
    ASSERT_TRUE(PumpUntil([] { return Store()->IsTheIndexLoaded(3); }));
    ASSERT_TRUE(Settle());
    const FrameScale scale = bar->GetScale();
    Picture_st picture;
    const auto colour = [&](int frame) {
        const int x = std::min(scale.ToPixel(frame), picture.mW - 2);
        const size_t at = 3 * (size_t(picture.mH / 2) * size_t(picture.mW) + size_t(x));
        return std::vector<int>(picture.mRGB.begin() + long(at), picture.mRGB.begin() + long(at) + 3);
    };
    // The bar looks at the store twice a second.
    EXPECT_TRUE(PumpUntil([&] {
        picture = Shoot(bar);
        return colour(1) != colour(12);
    })) << "loaded and not loaded";
    EXPECT_EQ(bar->GetState(12), CacheState::Empty);
    EXPECT_EQ(colour(1), colour(2));
    EXPECT_EQ(colour(12), colour(15));
}

TEST_F(Timeline, MoveFrameDialogGoesWhereItIsTold) {
    Canvas(0)->SetFocus();
    const auto type = [] {
        KeyNow('A', wxMOD_CONTROL);
        KeyNow('1');
        KeyNow('3');
    };
    Later({{HasDialog, type}, {nullptr, [] { KeyNow(WXK_RETURN); }}});
    Key('G', wxMOD_CONTROL);
    ASSERT_TRUE(PumpUntil([] { return Time()->GetFrame() == 13; }, 3000)) << Time()->GetFrame();
    ASSERT_TRUE(Settle());
    Later({{HasDialog, [] { KeyNow('2'); }}, {nullptr, [] { KeyNow(WXK_ESCAPE); }}});
    Key('G', wxMOD_CONTROL);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Time()->GetFrame(), 13) << "Escape stays";
}

} // namespace
