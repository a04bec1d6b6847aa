// The data exporter with mouse and keys: names, runs through the film, abort, blocked folders, settings.
#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/textctrl.h>

#include "ExportTest.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/EDITOR/clsDataExporterGUI.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

namespace fs = std::filesystem;

class Export : public ExportTest {};

TEST_F(Export, AnExampleComesBackByteForByte) {
    Choose(mFolder / "out0003.dat");
    const int painted = Canvas(0)->GetPaintCount();
    ClickExport();
    EXPECT_TRUE(PumpUntil([this] { return mDialog->GetPCButtonExport()->GetLabel() == "Abort Export"; }));
    EXPECT_EQ(mDialog->GetPCButtonExport()->GetBackgroundColour(), wxColour("RED"));
    EXPECT_FALSE(mDialog->GetPCPanel()->IsEnabled());
    Snap("export_running");
    ASSERT_TRUE(WaitForEnd());
    EXPECT_LT(Canvas(0)->GetPaintCount() - painted, 5) << "a paint that exports draws nothing";
    EXPECT_EQ(mDialog->GetPCButtonExport()->GetLabel(), "Export Data");
    EXPECT_TRUE(mDialog->GetPCPanel()->IsEnabled());
    EXPECT_TRUE(FindByLabel(mDialog, "20 files exported"));
    EXPECT_EQ(Status(), "Export: 20 files exported");
    EXPECT_EQ(Exporter()->mCLastSavedFile.mStrValue, wxString::FromUTF8(mFolder / "out%04d.dat"));
    EXPECT_EQ(Time()->GetFrame(), kFrames - 1);
    EXPECT_FALSE(Time()->IsPlaying());
    ExpectFiles(kFrames);
    for (const int i : {0, 7, 19}) {
        char name[32], from[64];
        std::snprintf(name, sizeof name, "out%04d.dat", i);
        std::snprintf(from, sizeof from, "examples/lj_melt_bin/melt%04d.bin", i);
        EXPECT_TRUE(ReadFile(mFolder / name) == ReadFile(Root() + from)) << name;
    }
    EXPECT_TRUE(mVMessages.empty());
    ASSERT_TRUE(OpenAndPaint(mFolder / "out0000.dat"));
    EXPECT_EQ(Hub()->mpCPDataSeqCtrl->GetActiveFileSequenceLength(), kFrames);
    EXPECT_EQ(Status().find("Export"), wxString::npos) << "the words are gone with the frame";
}

TEST_F(Export, NamesWithoutNumberAreAskedFor) {
    Choose(mFolder / "out.dat");
    mAnswers = {false};
    ClickExport();
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mText, "Not Sequence. Append 4-digit tag ?");
    EXPECT_EQ(mVMessages[0].mTitle, "Sequence Format error");
    EXPECT_TRUE(Settle());
    EXPECT_FALSE(Exporter()->mbExporting);
    EXPECT_EQ(CountFiles(), 0);
    EXPECT_EQ(Exporter()->mCLastSavedFile.mStrValue, wxString::FromUTF8(mFolder / "out.dat"));
    mAnswers = {true};
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(kFrames);
    // Asked no more.
    mVMessages.clear();
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_TRUE(mVMessages.empty());
}

TEST_F(Export, AnInputIsReplacedOnlyWhenThatIsMeant) {
    for (const char* name : {"melt0000.bin", "melt0001.bin", "melt0002.bin"})
        fs::copy(Root() + "examples/lj_melt_bin/" + name, mLong.mPath);
    ASSERT_TRUE(OpenAndPaint(mLong / "melt0000.bin"));
    ResetClock();
    const auto read = [this] { return ReadFile(mLong / "melt0001.bin") + ReadFile(mLong / "melt0002.bin"); };
    const std::string before = read();
    fs::create_symlink(mLong.mPath, mFolder.mPath / "link"); // under another name it is the same file
    Choose(mFolder / "link/melt%04d.bin");
    Exporter()->mCInitNum.mValue = 2;
    Exporter()->SetBodyGrammer({0});
    mAnswers = {false};
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Question);
    EXPECT_TRUE(WasTold("link/melt0002.bin is a file of the data that are open"));
    EXPECT_TRUE(read() == before);
    EXPECT_FALSE(fs::exists(mLong / "melt0003.bin")) << "nor is anything else written";
    mAnswers = {true};
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_FALSE(read() == before);
    EXPECT_TRUE(fs::exists(mLong / "melt0004.bin"));
    // Behind the last of them there is nothing to ask.
    mVMessages.clear();
    Exporter()->mCInitNum.mValue = 3;
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_TRUE(mVMessages.empty());
}

TEST_F(Export, WithoutANameOneIsAskedFor) {
    wxFileDialogEX::sStrTestAnswer = "CANCEL";
    ClickExport();
    EXPECT_TRUE(Settle());
    EXPECT_FALSE(Exporter()->mbExporting);
    EXPECT_TRUE(mVMessages.empty());
}

TEST_F(Export, NumbersAreConsecutiveWithInterpolationAndStepping) {
    Time()->SetAnimInterpNative(4);
    Time()->SetInterpStepNative(2, 0);
    Time()->SetFrameNative(7, 0);
    Time()->SetAnimStepNative(3);
    Choose(mFolder / "out%04d.dat");
    NumField_cls* number = FindField(mDialog, "Number of the first file");
    ASSERT_TRUE(number);
    TypeInto(number, "5");
    const unsigned steps = GCUndoList.GetCurrent();
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(7, 5); // 0, 3, 6 ... 18
    EXPECT_EQ(Time()->GetAnimInterp(), 1);
    EXPECT_TRUE(ReadFile(mFolder / "out0011.dat") == ReadFile(Root() + "examples/lj_melt_bin/melt0018.bin"));
    EXPECT_GT(GCUndoList.GetCurrent(), steps);
    Hub()->Undo();
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Time()->GetAnimInterp(), 4) << "one step takes the begin back";
    EXPECT_EQ(Time()->GetFrame(), 7);
    EXPECT_EQ(Time()->GetInterpStep(), 2);
    Hub()->Undo();
    EXPECT_EQ(Exporter()->mCInitNum.mValue, 0);
}

TEST_F(Export, ARepeatedFilmIsExportedOnce) {
    Time()->SetRepeatNative(1);
    Time()->SetWAMinNative(4);
    Time()->SetWAMaxNative(8);
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(5);
    EXPECT_FALSE(Time()->IsPlaying());
    PlayAll(kFrames - 1);
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(kFrames);
    EXPECT_FALSE(Time()->IsPlaying());
}

TEST_F(Export, MomentsBetweenSnapshotsAreTheViews) {
    Time()->mpCTimeRemapGroup->mVParams[0].ExecCommandInitSet(3.25);
    Time()->mbUseTimeRemap.mValue = true;
    Time()->SetWAMaxNative(2);
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    Time()->mbUseTimeRemap.mValue = false;
    ExpectFiles(3);
    const PDataSequence_cls& data = *Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence();
    const double dt = data.GetDT(3, 0.25);
    EXPECT_GT(dt, 0.0);
    ASSERT_TRUE(Exporter()->ExportFile(wxString::FromUTF8(mFolder / "expected"), *data.GetPCBlock(3), dt, 1));
    EXPECT_TRUE(ReadFile(mFolder / "out0002.dat") == ReadFile(mFolder / "expected"));
    EXPECT_FALSE(ReadFile(mFolder / "out0002.dat") == ReadFile(Root() + "examples/lj_melt_bin/melt0003.bin"));
    Hub()->Undo(); // the run's beginning
    Hub()->Undo(); // the curve
}

TEST_F(Export, DownsizedTextOfAnotherLayout) {
    Hub()->mpCDrawOption->mDownSizing.mValue = 100;
    GuiTest::Choose(mDialog->GetPCPanel()->GetField(0), 1);
    wxListCtrl* list = mDialog->mpCListBody;
    wxRect rect;
    list->GetItemRect(0, rect);
    Click(list, wxPoint(60, rect.y + rect.height / 2));
    for (int k = 0; k < 3; ++k)
        Key(WXK_DELETE);
    EXPECT_EQ(Body(), Codes({6, 7, 8}));
    EXPECT_EQ(Exporter()->GetBodyGrammer(), Codes({6, 7, 8}));
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(kFrames);
    const PDataBlock_cls* block = Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()->GetPCBlock(19);
    char text[128];
    std::snprintf(text, sizeof text, "\n%d\n%d %d %f \n", (block->mParticleNumber + 99) / 100, block->mpID[0],
                  block->mpType[0], double(block->mpValue1[0]));
    EXPECT_NE(ReadFile(mFolder / "out0019.dat").find(text), std::string::npos) << text;
}

TEST_F(Export, EditsAreUndone) {
    wxListCtrl* list = mDialog->mpCListBody;
    wxRect rect;
    list->GetItemRect(2, rect);
    Click(list, wxPoint(60, rect.y + rect.height / 2));
    Key(WXK_DELETE);
    EXPECT_EQ(Body(), Codes({0, 1, 6, 7, 8}));
    ClickOn(mDialog->FindWindow(ID_EXPORTER_BODY_DOWN));
    EXPECT_EQ(Body(), Codes({0, 1, 7, 6, 8}));
    Choose(mFolder / "out0000.dat");
    Hub()->mpCDataLoader->SetHeaderGrammer({4, 1});
    ClickOn(FindByLabel(mDialog, "Copy From Loader"));
    EXPECT_EQ(Body(), kBody);
    EXPECT_EQ(Exporter()->GetHeaderGrammer(), Codes({4, 1}));
    const auto undo = [] {
        Hub()->Undo();
        Settle();
    };
    undo();
    EXPECT_EQ(Exporter()->GetHeaderGrammer(), kHead);
    EXPECT_EQ(Body(), Codes({0, 1, 7, 6, 8}));
    undo();
    EXPECT_EQ(Exporter()->mCLastSavedFile.mStrValue, "NONE");
    undo();
    undo();
    EXPECT_EQ(Body(), kBody) << "the lists follow";
    EXPECT_EQ(Exporter()->GetBodyGrammer(), kBody);
}

TEST_F(Export, AbortStopsAtOnceAndAnotherRunBeginsAnew) {
    OpenLong();
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(PumpUntil([] { return Exporter()->mExportedCount >= 3; }));
    ClickExport();
    EXPECT_FALSE(Exporter()->mbExporting);
    const int files = CountFiles();
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsPlaying(); }));
    ASSERT_TRUE(Settle());
    EXPECT_EQ(CountFiles(), files);
    EXPECT_LT(files, kLong);
    EXPECT_EQ(mDialog->GetPCButtonExport()->GetLabel(), "Export Data");
    EXPECT_GT(Grab(0).CountLit(60), 0) << "the view draws again";
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(kLong);
}

TEST_F(Export, TheStopKeyEndsARun) {
    OpenLong();
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(PumpUntil([] { return Exporter()->mExportedCount >= 2; }));
    Canvas(0)->SetFocus();
    Key(WXK_SPACE);
    ASSERT_TRUE(WaitForEnd());
    EXPECT_FALSE(Time()->IsPlaying());
    EXPECT_LT(CountFiles(), kLong);
}

TEST_F(Export, AMissingFolderIsToldOnceAndTheRunGoesOn) {
    Choose(mFolder / "nowhere/out0000.dat");
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(Time()->GetFrame(), kFrames - 1) << "the run went through";
    EXPECT_EQ(CountFiles(), 0);
    EXPECT_TRUE(mVMessages.empty()) << "no box, no bar";
    const wxString reason =
        "No such file or directory: " + wxString::FromUTF8(mFolder / "nowhere/out0000.dat");
    EXPECT_EQ(Status(), "Export: 0 files exported, 20 failed: " + reason);
    EXPECT_TRUE(FindByLabel(mDialog, "0 files exported, 20 failed: " + reason));
    Snap("export_failed");
}

TEST_F(Export, ClosingTheDialogLeavesTheRunAlone) {
    OpenLong();
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(PumpUntil([] { return Exporter()->mExportedCount >= 1; }));
    mDialog->SetFocus();
    Key(WXK_ESCAPE);
    ASSERT_TRUE(PumpUntil([this] { return !mDialog->IsShown(); }));
    EXPECT_TRUE(Exporter()->mbExporting);
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(kLong);
}

TEST_F(Export, ClosingTheDataEndsTheRun) {
    OpenLong();
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(PumpUntil([] { return Exporter()->mExportedCount >= 1; }));
    Menu(ID_CLOSE_DATA);
    ASSERT_TRUE(WaitForEnd());
    EXPECT_LT(CountFiles(), kLong);
    EXPECT_FALSE(Exporter()->HasFailed());
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_TRUE(WasTold("There are no data to export."));
}

TEST_F(Export, AHiddenDataSwitchDoesNotMatter) {
    Canvas(0)->mShowData.mValue = false;
    Menu(ID_REMOVE_CACHE_ALL);
    Choose(mFolder / "out0000.dat");
    ClickExport();
    ASSERT_TRUE(WaitForEnd());
    ExpectFiles(kFrames);
    EXPECT_TRUE(ReadFile(mFolder / "out0013.dat") == ReadFile(Root() + "examples/lj_melt_bin/melt0013.bin"));
}

TEST_F(Export, AProjectKeepsTheSettings) {
    Exporter()->SetBodyGrammer({0, 8, 3});
    Exporter()->mCItemDataType.mValue = 1;
    Exporter()->mCInitNum.mValue = 77;
    Exporter()->mCLastSavedFile.mStrValue = wxString::FromUTF8(mFolder / "möwe%04d.txt");
    ASSERT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(mFolder / "a.mrp"), true));
    const wxString kept = Exporter()->Serialize();
    SetGrammar(*Exporter());
    Exporter()->mCInitNum.mValue = 0;
    Exporter()->mCLastSavedFile.mStrValue = "NONE";
    ASSERT_TRUE(OpenProjectAndPaint(mFolder / "a.mrp"));
    EXPECT_EQ(Exporter()->Serialize(), kept);
    mDialog->OpenWindow();
    EXPECT_EQ(Body(), Codes({0, 8, 3}));
}

} // namespace
