// The dialog "Pov-Ray Rendering Configure" by hand: every button and field, runs of the film with renderers
// that work, hang and fail, and what is asked before.
#include <signal.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <set>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecovery.h"
#include "COMMON/EventIds.h"
#include "COMMON/SafeFile.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "PARAM/clsUndoManager.h"
#include "POVRAY/clsPovOptions.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "POVRAY/clsPovRayGUI.h"
#include "PictureTest.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsNumField.h"

namespace {

namespace fs = std::filesystem;

class PovDialog : public PictureTest {
protected:
    static void SetUpTestSuite() { Frame()->SetSize(900, 700); } // little to paint
    void SetUp() override {
        PictureTest::SetUp();
        OpenMelt(2);
        Reset();
        Menu(ID_POVRAY);
        mpGUI = dynamic_cast<PovRayGUI_cls*>(WaitForWindow("Pov-Ray Rendering Configure"));
        ASSERT_TRUE(mpGUI);
        mpGUI->UpdateValues();
        Settle();
    }
    void TearDown() override {
        wxFileDialogEX::sStrTestAnswer.clear();
        Pov().AbortRenderPovAnim();
        Pov().StopRenderer();
        if (Time()->IsPlaying()) Menu(ID_PLAY_STOP);
        Reset();
        mpGUI->CloseEXKey();
        PictureTest::TearDown();
    }
    void Reset() {
        Pov().SetToDefault();
        Pov().mPathPovRay.mStrValue = "/usr/bin/povray";
        Pov().mPathPovWork.mStrValue = wxString::FromUTF8(mDir.mPath.string());
        Pov().mFilePovSnap.mStrValue = "povsnap%04d";
        Pov().mFilePovAnim.mStrValue = "povanim%04d";
        Pov().mSnapNumber = Pov().mAnimInitNumber = 0;
        Pov().mCFormat.mWidth.mValue = 64;
        Pov().mCFormat.mHeight.mValue = 48;
        Pov().mCFormat.mDisplay.mValue = false;
    }
    static PovRayCtrl_cls& Pov() { return *Hub()->mpCPovRayCtrl; }
    void PressButton(const wxString& label) {
        wxWindow* button = FindByLabel(mpGUI, label);
        ASSERT_TRUE(button) << label;
        ASSERT_TRUE(button->IsEnabled()) << label;
        ClickOn(button);
        Arrive(false);
    }
    bool HasButton(const wxString& label) const { return FindByLabel(mpGUI, label) != nullptr; }
    static bool WaitForEnd() {
        return PumpUntil([] { return !Pov().IsBusy(); }, 60000);
    }
    std::set<std::string> Files(const std::string& ending = "") const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(mDir.mPath))
            if (ending.empty() || entry.path().extension() == ending)
                names.insert(entry.path().filename().string());
        return names;
    }
    std::string ReadFile(const std::string& name) const {
        std::ifstream file(mDir / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    /// In the place of POV-Ray; it runs in the folder and is given the .ini.
    void Pretend(const std::string& script) {
        const std::string path = mDir / "renderer";
        std::ofstream(path) << "#!/bin/sh\nbase=\"${1%.ini}\"\n" << script << "\n";
        chmod(path.c_str(), 0755);
        Pov().mPathPovRay.mStrValue = wxString::FromUTF8(path);
        mpGUI->UpdateValues();
    }
    void Go(const std::string& name) { std::ofstream(mDir / name) << "x"; }

    PovRayGUI_cls* mpGUI = nullptr;
};

const std::string kWaits = "while [ ! -e go ]; do sleep 0.02; done; ";

TEST_F(PovDialog, StillIsWrittenAndRendered) {
    PressButton("ExportSnap");
    ASSERT_TRUE(PumpUntil([&] { return Files().count("povsnap0000.pov") > 0; }));
    EXPECT_EQ(Files().count("povsnap0000.ini"), 1u);
    EXPECT_NE(ReadFile("povsnap0000.ini").find("Input_File_Name=\"povsnap0000.pov\""), std::string::npos);
    EXPECT_EQ(ReadFile("povsnap0000.pov").compare(0, 17, "global_settings {"), 0);
    Pov().mCFormat.mOutputFormat.mValue = 6; // light that no toolkit reads
    TypeInto(FindField(mpGUI, "Number of the still"), "7");
    PressButton("RenderSnap");
    ASSERT_TRUE(PumpUntil([&] { return Files().count("povsnap0007.exr") > 0 && !Pov().IsBusy(); }, 60000));
    EXPECT_TRUE(Pov().GetFailures().empty());
    EXPECT_TRUE(mVMessages.empty());
    auto* small =
        dynamic_cast<wxStaticBitmap*>(FindByTip(mpGUI, wxString::FromUTF8(mDir / "povsnap0007.exr")));
    ASSERT_TRUE(small && small->GetBitmap().IsOk());
    const wxImage shown = small->GetBitmap().ConvertToImage();
    EXPECT_GT(std::count_if(shown.GetData(),
                            shown.GetData() + size_t(shown.GetWidth()) * shown.GetHeight() * 3,
                            [](unsigned char c) { return c > 64; }),
              100);
    EXPECT_NE(ReadFile("povsnap0007.ini").find("Input_File_Name=\"" + (mDir / "povsnap0007.pov")),
              std::string::npos)
        << "what is rendered is named whole";
    Snap("pov_still");
}

TEST_F(PovDialog, AnimationIsWrittenThenRenderedFrameByFrame) {
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

TEST_F(PovDialog, RegionsChooseTheFrames) {
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

TEST_F(PovDialog, AbortLetsTheFrameEndAndASecondPressStopsIt) {
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

TEST_F(PovDialog, AbortDuringTheExportRendersNothing) {
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

TEST_F(PovDialog, FailuresAreListedAndTheRunGoesOn) {
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

TEST_F(PovDialog, QuestionsComeFirst) {
    mAnswers = {false};
    Pov().mPathPovRay.mStrValue = "/no/such/povray";
    mpGUI->UpdateValues();
    EXPECT_TRUE(mpGUI->GetPCFiles()->GetField(0)->GetToolTipText().EndsWith("File dose not exist."));
    EXPECT_TRUE(mpGUI->GetPCFiles()->GetField(1)->GetToolTipText().EndsWith("File exists."));
    PressButton("RenderSnap");
    EXPECT_TRUE(WasTold("Path discrepancy.\nAbove warnings detected. Continue?"));
    Reset();
    mVMessages.clear();
    mAnswers = {false};
    Pov().mFilePovAnim.mStrValue = "%s";
    mpGUI->UpdateValues();
    PressButton("ExportAnim");
    EXPECT_TRUE(WasTold("\"%s\" has no number"));
    Reset();
    mVMessages.clear();
    mAnswers = {false};
    Pov().mCFormat.mOutputFormat.mValue = 2;
    mpGUI->UpdateValues();
    PressButton("RenderSnap");
    ASSERT_TRUE(PumpUntil([&] { return WasTold("PNG(3x16bit)"); }));
    mVMessages.clear();
    mAnswers = {false};
    Reset();
    mpGUI->UpdateValues();
    LightSRCCtrl_cls& lights = *Hub()->mpCLightSRCCtrl;
    const int number = lights.mCLightNumber.mValue;
    lights.mCLightNumber.mValue = 0;
    PressButton("ExportSnap");
    ASSERT_TRUE(PumpUntil([&] { return WasTold("No Light"); }));
    lights.mCLightNumber.mValue = number;
    Settle();
    EXPECT_TRUE(Files(".pov").empty()) << "every answer was no";
}

TEST_F(PovDialog, FoldersAreMadeAndClosedOnesTold) {
    Pov().mPathPovWork.mStrValue = wxString::FromUTF8(mDir / "new \xc3\xbc/deep");
    mpGUI->UpdateValues();
    PressButton("ExportSnap");
    EXPECT_TRUE(WasTold("it will be made"));
    ASSERT_TRUE(PumpUntil([&] { return fs::exists(mDir / "new \xc3\xbc/deep/povsnap0000.pov"); }));
    mVMessages.clear();
    Pov().mPathPovWork.mStrValue = "/proc/pov";
    mpGUI->UpdateValues();
    PressButton("ExportAnim");
    ASSERT_TRUE(PumpUntil([&] { return WasTold("/proc/pov can't be made"); }));
    ASSERT_TRUE(WaitForEnd());
    EXPECT_FALSE(Time()->IsPlaying()) << "the other frames would fare no better";
    mVMessages.clear();
    Pov().mPathPovWork.mStrValue = "/proc/self";
    mpGUI->UpdateValues();
    PressButton("RenderSnap");
    ASSERT_TRUE(PumpUntil([&] { return WasTold("povsnap0000.ini could not be written"); }));
    EXPECT_FALSE(Pov().IsBusy());
}

TEST_F(PovDialog, TryTellsTheTimeOfTheFilm) {
    Pov().mCFormat.mWidth.mValue = 128;
    Pov().mCFormat.mHeight.mValue = 96;
    Pov().mCFormat.mOutputFormat.mValue = 4; // which no dialog of pictures knows
    Pov().mCRadiosity.mType.mValue = PovRadiosity_cls::TYPE_PRETRACE;
    Pov().mCRadiosity.mReuse.mValue = PovRadiosity_cls::REUSE_SAVE;
    Pov().mCRadiosity.mPath.mStrValue = "light.rca";
    mpGUI->UpdateValues();
    Go("light.rca");
    const std::string light = ReadFile("light.rca");
    PressButton("Try");
    ASSERT_TRUE(PumpUntil([] { return !Pov().GetTrialText().empty(); }, 60000));
    EXPECT_TRUE(Pov().GetTrialText().Contains("a film of 3 frames")) << Pov().GetTrialText();
    EXPECT_TRUE(FindByTip(mpGUI, wxString::FromUTF8(mDir / "povtry.ppm"))) << "it is shown small";
    EXPECT_EQ(ReadFile("povtry.ppm").substr(3, 6), "32 24\n");
    EXPECT_EQ(ReadFile("light.rca"), light) << "what a whole picture found stays";
    EXPECT_EQ(Pov().mCRadiosity.mReuse.mValue, unsigned(PovRadiosity_cls::REUSE_SAVE));
    EXPECT_EQ(Pov().mCFormat.mWidth.mValue, 128);
    EXPECT_EQ(mpGUI->GetStatusText(), Pov().GetTrialText());
    Settle();
    auto* words = dynamic_cast<wxStaticText*>(FindByLabel(mpGUI, Pov().GetTrialText()));
    ASSERT_TRUE(words);
    const wxSize all = words->GetTextExtent(words->GetLabel());
    const int lines = all.x / words->GetClientSize().x + 1;
    EXPECT_LE(lines * all.y, words->GetClientSize().y) << "nothing is cut off";
    Snap("pov_try");
}

TEST_F(PovDialog, AStillIsGivenUpAndTheDialogClosed) {
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

TEST_F(PovDialog, PresetsDefaultsAndPathsAreSteps) {
    const wxString before = Pov().Serialize();
    PressButton("Film");
    EXPECT_TRUE(Pov().mKeepFirstPretrace.mValue);
    const wxString film = Pov().Serialize();
    PressButton("Still");
    EXPECT_NE(Pov().Serialize(), film);
    EXPECT_EQ(Pov().mCRadiosity.mType.mValue, unsigned(PovRadiosity_cls::TYPE_FULL));
    Snap("pov_preset");
    Hub()->Undo();
    EXPECT_EQ(Pov().Serialize(), film);
    PressButton("Set to Defalt");
    EXPECT_EQ(Pov().mCFormat.mWidth.mValue, 640);
    Hub()->Undo();
    Hub()->Undo();
    EXPECT_EQ(Pov().Serialize(), before);
    wxFileDialogEX::sStrTestAnswer = "/bin/true";
    ClickOn(FindByTip(mpGUI, "Choose POV-Ray's program"));
    Arrive(false);
    EXPECT_EQ(Pov().mPathPovRay.mStrValue, "/bin/true");
    wxFileDialogEX::sStrTestAnswer = "/tmp";
    ClickOn(FindByTip(mpGUI, "Choose the folder"));
    Arrive(false);
    EXPECT_EQ(Pov().mPathPovWork.mStrValue, "/tmp");
    Hub()->Undo();
    Hub()->Undo();
    EXPECT_EQ(Pov().Serialize(), before);
}

TEST_F(PovDialog, PagesShowWhatCounts) {
    PovOptions_cls* radiosity = mpGUI->GetPCPage(2);
    const wxSize size = mpGUI->GetSize();
    auto* type = static_cast<wxChoice*>(radiosity->GetField(0));
    const auto isShown = [&](const wxString& tip) { return FindByTip(radiosity, tip) != nullptr; };
    EXPECT_FALSE(isShown("Rays that look for light"));
    Choose(type, 2);
    EXPECT_EQ(Pov().mCRadiosity.mType.mValue, 2u);
    EXPECT_TRUE(isShown("Rays that look for light"));
    EXPECT_FALSE(isShown("Name of the file"));
    Choose(static_cast<wxChoice*>(radiosity->GetField(1)), 1);
    EXPECT_TRUE(isShown("Name of the file"));
    EXPECT_FALSE(FindByLabel(mpGUI, "POV-Ray reads no such name."));
    static_cast<wxTextCtrl*>(FindByTip(radiosity, "Name of the file"))->ChangeValue("li\"ght");
    mpGUI->UpdateFromText();
    Settle();
    EXPECT_TRUE(FindByLabel(mpGUI, "POV-Ray reads no such name."));
    Snap("pov_radiosity");
    Hub()->Undo();
    Hub()->Undo();
    Hub()->Undo();
    EXPECT_FALSE(isShown("Rays that look for light")) << "pages follow the undo list";
    auto* sizes = static_cast<wxChoice*>(FindByTip(mpGUI, "The usual sizes"));
    Choose(sizes, 5);
    EXPECT_TRUE(Pov().mCFormat.mWidth.mValue == 320 && Pov().mCFormat.mHeight.mValue == 240);
    EXPECT_FALSE(mpGUI->GetPCPage(0)->GetField(2)->IsEnabled());
    Choose(sizes, 0);
    EXPECT_TRUE(mpGUI->GetPCPage(0)->GetField(2)->IsEnabled()) << "for any other";
    EXPECT_EQ(Pov().mCFormat.mWidth.mValue, 320);
    Choose(static_cast<wxChoice*>(mpGUI->GetPCPage(0)->GetField(0)), 2);
    EXPECT_TRUE(FindByLabel(mpGUI, "POV-Ray 3.7 refuses this."));
    Settle();
    EXPECT_TRUE(mpGUI->GetPCPage(0)->GetBestSize().y <= mpGUI->GetPCPage(0)->GetSize().y)
        << "all rows have room";
    EXPECT_EQ(mpGUI->GetSize(), size) << "as they had from the first";
    Snap("pov_refusal");
    PressButton("Advanced");
    ASSERT_TRUE(WaitForWindow("Pov-Ray Advanced Settings"));
    TypeInto(dynamic_cast<NumField_cls*>(mpGUI->GetPCAdvanced()->GetField(0)), "33");
    EXPECT_EQ(Pov().mCAdvanced.mMaxTraceLevel.mValue, 33);
    Snap("pov_advanced");
    wxWindow* advanced = wxGetTopLevelParent(mpGUI->GetPCAdvanced());
    ClickOn(FindByLabel(advanced, "Close"));
    EXPECT_TRUE(PumpUntil([&] { return !advanced->IsShown(); }));
    EXPECT_TRUE(mpGUI->IsShown());
}

TEST_F(PovDialog, FolderIsShownByTheDesktop) {
    const std::string tool = mDir / "xdg-open";
    std::ofstream(tool) << "#!/bin/sh\necho \"$1\" > " << (mDir / "shown") << "\n";
    chmod(tool.c_str(), 0755);
    const std::string path = getenv("PATH");
    setenv("PATH", (mDir.mPath.string() + ":" + path).c_str(), 1);
    PressButton("Open folder");
    EXPECT_TRUE(PumpUntil([&] { return ReadFile("shown") == mDir.mPath.string() + "\n"; }));
    setenv("PATH", path.c_str(), 1);
}

TEST_F(PovDialog, ZzQuittingAsksAndLeavesNoRenderer) {
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
