// Runs of the film from the dialog "Pov-Ray Rendering Configure", with renderers that work, hang and fail.
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <set>

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/statbmp.h>
#include <wx/textctrl.h>

#include "APP/clsRecovery.h"
#include "COMMON/SafeFile.h"
#include "POVRAY/clsPovOptions.h"
#include "PovDialogTest.h"

namespace {

namespace fs = std::filesystem;

class PovRun : public PovDialogTest {};

const std::string kWaits = "while [ ! -e go ]; do sleep 0.02; done; ";

TEST_F(PovRun, AnimationIsWrittenThenRenderedFrameByFrame) {
    TypeInto(FindField(mpGUI, "Number of the first frame"), "10");
    Time()->SetRepeatNative(1);
    PressButton("RenderAnim");
    ASSERT_TRUE(PumpUntil([] { return Pov().mbRenderingAnim && !Pov().mbRenderDone; }));
    Pov().mCFormat.mOutputFormat.mValue = 5; // what is written stays what it is
    Pov().mPathPovRay.mStrValue = "/no/such/povray";
    ASSERT_TRUE(WaitForEnd());
    EXPECT_TRUE(Pov().GetFailures().empty());
    EXPECT_TRUE(FindByTip(mpGUI, wxString::FromUTF8(mDir / "povanim0012.png"))) << "it is shown small";
    const std::set<std::string> pictures = {"povanim0010.png", "povanim0011.png", "povanim0012.png"};
    EXPECT_EQ(Files(".png"), pictures);
    EXPECT_EQ(Files(".pov").size(), 3u);
    EXPECT_NE(ReadFile("povanim0010.pov"), ReadFile("povanim0011.pov")) << "another frame";
    EXPECT_FALSE(Time()->IsRepeat());
    EXPECT_FALSE(Time()->mbCustomRange);
    EXPECT_TRUE(HasButton("RenderAnim") && HasButton("ExportAnim") && HasButton("RenderSnap"));
    EXPECT_TRUE(mVMessages.empty());
}

TEST_F(PovRun, RegionsChooseTheFrames) {
    Time()->SetWAMinNative(1);
    Pov().mCRender.mRegion.mValue = PovRender_cls::REGION_CUSTOM;
    Pov().mCRender.mCustomMin.mValue = 4;
    Pov().mCRender.mCustomMax.mValue = 6;
    PressButton("ExportAnim");
    ASSERT_TRUE(PumpUntil([&] { return Files(".pov").size() == 3 && !Pov().IsBusy(); }));
    EXPECT_EQ(Files(".pov"),
              (std::set<std::string>{"povanim0000.pov", "povanim0001.pov", "povanim0002.pov"}));
    EXPECT_EQ(Time()->GetFrame(), 6);
    Pov().mCRender.mRegion.mValue = PovRender_cls::REGION_ALL;
    PressButton("ExportAnim");
    const size_t all = size_t(Time()->GetMaxFrame()) + 1;
    EXPECT_TRUE(PumpUntil([&] { return Files(".pov").size() == all && !Pov().IsBusy(); }));
}

TEST_F(PovRun, AbortLetsTheFrameEndAndASecondPressStopsIt) {
    Pretend("echo 'Rendered 5 of 10 pixels (50%)' >&2; " + kWaits + "echo x > \"$base.png\"");
    PressButton("RenderAnim");
    ASSERT_TRUE(PumpUntil([] { return !Pov().mbRenderDone; }));
    EXPECT_TRUE(PumpUntil([&] { return mpGUI->GetStatusText() == "Frame 1 of 3, 50 %"; }))
        << mpGUI->GetStatusText();
    for (wxWindow* window : mpGUI->GetChildren())
        if (auto* gauge = dynamic_cast<wxGauge*>(window)) {
            EXPECT_EQ(gauge->GetRange(), 300) << "three frames";
            EXPECT_EQ(gauge->GetValue(), 50);
        }
    EXPECT_TRUE(HasButton("Abort"));
    EXPECT_TRUE(HasButton("Rendering.."));
    Snap("pov_rendering");
    // The fields can be used meanwhile, and nothing takes back what is typed.
    auto* name = static_cast<wxTextCtrl*>(mpGUI->GetPCFiles()->GetField(2));
    ASSERT_TRUE(name->IsEnabled());
    name->SetFocus();
    name->ChangeValue("half typ");
    PressButton("Abort");
    ASSERT_TRUE(PumpUntil([&] { return HasButton("Stop now"); }));
    EXPECT_FALSE(Pov().mbRenderDone) << "the frame in work goes on";
    Go("go");
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(Files(".png"), (std::set<std::string>{"povanim0000.png"}));

    fs::remove(mDir / "go");
    PressButton("RenderAnim");
    ASSERT_TRUE(PumpUntil([] { return !Pov().mbRenderDone; }));
    PressButton("Abort");
    ASSERT_TRUE(PumpUntil([&] { return HasButton("Stop now"); }));
    wxWindow* stop = FindByLabel(mpGUI, "Stop now");
    wxCommandEvent press(wxEVT_BUTTON, stop->GetId());
    const auto begin = std::chrono::steady_clock::now();
    stop->ProcessWindowEvent(press);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(500));
    EXPECT_FALSE(Pov().IsBusy()) << "it has ended by then";
    Settle();
    wxWindow* again = FindByLabel(mpGUI, "RenderAnim");
    ASSERT_TRUE(again);
    EXPECT_EQ(again->GetBackgroundColour(), wxButton::GetClassDefaultAttributes().colBg) << "as a fresh one";
    EXPECT_EQ(again->GetForegroundColour(), wxButton::GetClassDefaultAttributes().colFg);
}

TEST_F(PovRun, AbortDuringTheExportRendersNothing) {
    Time()->SetWAMaxNative(19);
    Pretend("echo x > \"$base.png\"");
    PressButton("RenderAnim");
    ASSERT_TRUE(PumpUntil([] { return Pov().mbExportingAnim; }));
    Menu(ID_POV_RENDER_ANIM); // as the button's press
    ASSERT_TRUE(WaitForEnd());
    EXPECT_TRUE(Files(".png").empty());
    EXPECT_FALSE(Time()->IsPlaying());
    Pov().ProcessRenderPovAnim();
    EXPECT_FALSE(Pov().IsBusy()) << "an empty list only clears the flags";
}

TEST_F(PovRun, FailuresAreListedAndTheRunGoesOn) {
    Pretend("case \"$base\" in *1) echo the lamp broke >&2; exit 1;; *2) " + kWaits +
            "printf 'P6\\n# today\\n1 1\\n255\\nrgb' > \"$base.png\"; exit 0;; esac; echo x > \"$base.png\"");
    PressButton("RenderAnim");
    ASSERT_TRUE(PumpUntil([] { return Pov().GetFailures().size() == 1; }));
    GSafeFileStep = [](const char* step) { return std::string(step) != "write"; };
    Go("go");
    ASSERT_TRUE(WaitForEnd());
    GSafeFileStep = nullptr;
    EXPECT_EQ(Files(".png"), (std::set<std::string>{"povanim0000.png", "povanim0002.png"}));
    ASSERT_EQ(Pov().GetFailures().size(), 2u);
    EXPECT_TRUE(Pov().GetFailures()[1].mWords.Contains("povanim0002.png")) << "its date can't be taken out";
    EXPECT_EQ(Pov().GetFailures()[0].mName, "povanim0001");
    auto* list = dynamic_cast<wxTextCtrl*>(FindByTip(mpGUI, "Frames without a picture"));
    ASSERT_TRUE(list);
    EXPECT_TRUE(list->GetValue().Contains("povanim0001: it ended with 1")) << list->GetValue();
    EXPECT_TRUE(list->GetValue().Contains("the lamp broke"));
    EXPECT_TRUE(WasTold("povanim0001"));
    auto* small =
        dynamic_cast<wxStaticBitmap*>(FindByTip(mpGUI, wxString::FromUTF8(mDir / "povanim0000.png")));
    ASSERT_TRUE(small);
    EXPECT_FALSE(small->GetBitmap().IsOk()) << "it is no picture, and no older one takes its place";
    Snap("pov_failures");
}

TEST_F(PovRun, AStillIsGivenUpAndTheDialogClosed) {
    Pretend("echo 'Rendered 5 of 20 pixels (25%)' >&2; " + kWaits);
    PressButton("RenderSnap");
    ASSERT_TRUE(PumpUntil([&] { return mpGUI->GetStatusText().StartsWith("25 %, "); }))
        << mpGUI->GetStatusText();
    EXPECT_TRUE(mpGUI->GetStatusText().EndsWith(" left"));
    PressButton("Rendering..");
    ASSERT_TRUE(PumpUntil([] { return !Pov().IsBusy(); }));
    EXPECT_TRUE(WasTold("it was given up"));
    EXPECT_TRUE(Files(".png").empty());
    const wxColour there = mpGUI->GetPCFiles()->GetField(0)->GetBackgroundColour();
    Pov().mPathPovRay.mStrValue = "/no/such/povray";
    mpGUI->UpdateValues();
    const wxColour missing = mpGUI->GetPCFiles()->GetField(0)->GetBackgroundColour();
    EXPECT_GT(there.Green(), there.Red());
    EXPECT_GT(missing.Red(), missing.Green());
    PressButton("Close");
    EXPECT_TRUE(PumpUntil([&] { return !mpGUI->IsShown(); }));
    Menu(ID_POVRAY);
    EXPECT_TRUE(PumpUntil([&] { return mpGUI->IsShown(); }));
}

TEST_F(PovRun, ZzQuittingAsksAndLeavesNoRenderer) {
    Pretend("echo $$ > pid; while :; do sleep 0.05; done");
    PressButton("RenderSnap");
    ASSERT_TRUE(PumpUntil([&] { return !ReadFile("pid").empty(); }));
    mAnswers = {false};
    mSaveAnswers = {MESSAGE_CANCEL};
    Menu(ID_QUIT);
    EXPECT_TRUE(WasTold("POV-Ray is at work"));
    EXPECT_TRUE(Pov().IsBusy());
    const int pid = std::stoi(ReadFile("pid"));
    Hub()->mpCRecovery->MarkSaved();
    mAnswers = {true};
    FrameMain_cls* frame = Frame();
    wxCommandEvent quit(wxEVT_MENU, ID_QUIT);
    frame->ProcessWindowEvent(quit);
    EXPECT_TRUE(wxPendingDelete.Member(frame)) << "the window closes";
    EXPECT_NE(kill(pid, 0), 0);
    EXPECT_FALSE(Pov().IsBusy());
    // Whoever comes behind in this process finds the window as before.
    wxPendingDelete.DeleteObject(frame);
    frame->Show();
}

} // namespace
