// The dialog "Pov-Ray Rendering Configure" by hand: every button and field, stills, and what is asked before.
#include <algorithm>
#include <filesystem>
#include <set>

#include <wx/choice.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "PARAM/clsUndoManager.h"
#include "POVRAY/clsPovOptions.h"
#include "PovDialogTest.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "WIDGET/clsNumField.h"

namespace {

namespace fs = std::filesystem;

class PovDialog : public PovDialogTest {};

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

} // namespace
