// Nothing is lost between two days, whatever happens in the night: unsaved steps, recent files, preferences.
#include <algorithm>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <wx/menu.h>

#include "APP/clsFileMenu.h"
#include "APP/clsRecentFiles.h"
#include "COMMON/Globals.h"
#include "GL/BASE/clsPreference.h"
#include "PDATA/clsDataLoader.h"
#include "ProjectTest.h"

namespace {

using Recovery = ProjectTest;

TEST_F(Recovery, PreferencesAndRecentFilesSurviveARestart) {
    const wxString path = GetConfigureFilePath();
    Preference_cls* preference = Frame()->GetPCUserPreference();
    const std::string folder = CopyMelt("data");
    WriteProject(folder + "/p.mrp", "melt0000.bin");
    Open(folder + "/p.mrp");
    preference->mCGyration.mValue = 1;
    preference->mCZoomMod.mValue[2] = true;
    preference->mCSortType.mValue = 2;
    Hub()->QuitProcess();
    const std::string text = ReadAll(path.ToStdString());
    const size_t frame = text.find("LastOpenedFileIMG=");
    const size_t mouse = text.find("GUI_GYRATION=1\n");
    const size_t sort = text.find("PREF_SORT_TYPE=2\n");
    const size_t recent = text.find("RecentProject1=" + folder + "/p.mrp\n");
    EXPECT_TRUE(frame < mouse && mouse < sort && sort < recent && recent != std::string::npos) << text;
    EXPECT_EQ(text.find("Panel0"), std::string::npos);
    EXPECT_EQ(text.find("DataSequence"), std::string::npos);
    EXPECT_EQ(ReadAll(folder + "/p.mrp").find("RecentProject"), std::string::npos);

    preference->mCGyration.mValue = 0;
    preference->mCZoomMod.mValue[2] = false;
    preference->mCSortType.mValue = 0;
    Hub()->mpCRecentFiles->Remove(RecentFiles_cls::Projects, folder + "/p.mrp");
    Hub()->ReadProjectFile(path);
    EXPECT_EQ(preference->mCGyration.mValue, 1u);
    EXPECT_TRUE(preference->mCZoomMod.mValue[2]);
    EXPECT_EQ(preference->mCSortType.mValue, 2u);
    EXPECT_EQ(Frame()->GetPCPreference()->Serialize(), preference->Serialize()) << "and they act";
    const auto& projects = Hub()->mpCRecentFiles->Get(RecentFiles_cls::Projects);
    EXPECT_NE(std::find(projects.begin(), projects.end(), wxString(folder + "/p.mrp")), projects.end());
    wxRemoveFile(path);
}

TEST_F(Recovery, AStarTellsOfUnsavedSteps) {
    const wxString plain = Frame()->GetTitle();
    EXPECT_FALSE(HasStar());
    Step();
    ASSERT_TRUE(PumpUntil(HasStar));
    EXPECT_EQ(Frame()->GetTitle(), "*" + plain);
    GCUndoList.UndoCurrent();
    ASSERT_TRUE(PumpUntil([] { return !HasStar(); }));
    GCUndoList.ExecCurrent();
    ASSERT_TRUE(PumpUntil(HasStar));
    Answer(mDir / "a.mrp");
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_FALSE(HasStar());
    EXPECT_TRUE(Frame()->GetTitle().EndsWith("a.mrp"));
    Step();
    ASSERT_TRUE(PumpUntil(HasStar));
    mSaveAnswers = {MESSAGE_CANCEL};
    Menu(ID_QUIT);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mText, "Save the changes of a.mrp first?");
    EXPECT_TRUE(HasStar());
    Open(mDir / "a.mrp");
    EXPECT_FALSE(HasStar());
}

TEST_F(Recovery, UnsavedStepsAreKeptBesideTheConfigureFile) {
    Recovery_cls* recovery = Hub()->mpCRecovery;
    recovery->mGap = std::chrono::milliseconds(0);
    Open(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    PumpUntil([] { return false; }, 1200);
    EXPECT_TRUE(recovery->GetPath().empty()) << "nothing is unsaved";
    {
        const FlagScope_cls modal(GbGLLockModalDialog);
        Step();
        ASSERT_TRUE(PumpUntil([recovery] { return !recovery->GetPath().empty(); }))
            << "a question may stay up for hours";
    }
    const std::string path = recovery->GetPath().ToStdString();
    EXPECT_EQ(fs::path(path).parent_path(), fs::path(ConfigFolder()));
    const std::string text = ReadAll(path);
    EXPECT_NE(text.find("DataSequence0=0\nmelt0000.bin\n"), std::string::npos);
    EXPECT_NE(text.find("TimeRepeat=1\n"), std::string::npos) << "a whole project";
    // Settings that are no steps come along.
    Hub()->mpCDataLoader->mCItemScale.mValue = 0.375f;
    ASSERT_TRUE(PumpUntil([&path] { return ReadAll(path).find("LoaderScale=0.375") != std::string::npos; }));
    GCUndoList.UndoCurrent();
    ASSERT_TRUE(PumpUntil([&path] { return !fs::exists(path); }));
    Step();
    ASSERT_TRUE(PumpUntil([&path] { return fs::exists(path); }));
    Answer(mDir / "a.mrp");
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_FALSE(fs::exists(path)) << "saved";
}

TEST_F(Recovery, WhatWasLeftIsOfferedAndOpensUnnamed) {
    // Left by a program that was killed: a project beside the data, which it names by a relative path.
    const std::string folder = CopyMelt("work");
    WriteProject(folder + "/p.mrp", "melt0000.bin");
    std::ofstream(folder + "/p.mrp", std::ios::app) << "LastOpenedFileMRP=" << folder << "/p.mrp\n";
    const std::string left = ConfigFolder() + "/Morentis3Recovery-1.mrp";
    fs::copy(folder + "/p.mrp", left);
    mAnswers = {false};
    Frame()->GetPCFileMenu()->Begin();
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Question);
    EXPECT_TRUE(WasTold(wxDateTime::Now().Format("%Y-%m-%d"))) << "with the file's time";
    EXPECT_FALSE(fs::exists(left)) << "no throws it away";
    Frame()->GetPCFileMenu()->Begin();
    EXPECT_EQ(mVMessages.size(), 1u) << "once";

    fs::copy(folder + "/p.mrp", left);
    mAnswers = {true};
    Frame()->GetPCFileMenu()->Begin();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 3);
    EXPECT_EQ(Frame()->GetTitle(), "*Morentis 3 v 0.80") << "unnamed and modified";
    EXPECT_FALSE(Frame()->GetPCFileMenu()->IsProjectNamed());
    Answer("CANCEL");
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_EQ(GpCFileDialog->GetFilename(), "untitled.mrp");
    EXPECT_TRUE(fs::exists(left)) << "until it is saved";
    Answer(folder + "/saved.mrp");
    Menu(ID_SAVE_PROJECT);
    EXPECT_FALSE(fs::exists(left));
    EXPECT_FALSE(HasStar());
    EXPECT_NE(ReadAll(folder + "/saved.mrp").find("DataSequence0=0\nmelt0000.bin\n"), std::string::npos);
}

TEST_F(Recovery, RecentFilesOpenAgainAndTheLostOnesGo) {
    const std::string folder = CopyMelt("recent & old");
    WriteProject(folder + "/one.mrp", "melt0000.bin");
    WriteProject(folder + "/two.mrp", "melt0001.bin");
    Open(folder + "/one.mrp");
    Open(folder + "/two.mrp");
    ASSERT_TRUE(OpenAndPaint(folder + "/melt0002.bin"));
    wxMenuBar* bar = Frame()->GetMenuBar();
    EXPECT_TRUE(bar->FindItem(ID_RECENT_PROJECT_0)->GetItemLabelText().EndsWith("two.mrp"));
    EXPECT_TRUE(bar->FindItem(ID_RECENT_PROJECT_0 + 1)->GetItemLabelText().EndsWith("/recent & old/one.mrp"));
    EXPECT_TRUE(bar->FindItem(ID_RECENT_DATA_0)->GetItemLabelText().EndsWith("melt0002.bin"));
    Menu(ID_RECENT_PROJECT_0 + 1);
    EXPECT_TRUE(Frame()->GetTitle().EndsWith("one.mrp"));
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 3);
    EXPECT_TRUE(bar->FindItem(ID_RECENT_PROJECT_0)->GetItemLabelText().EndsWith("one.mrp")) << "newest first";
    Menu(ID_RECENT_DATA_0);
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 1);
    ASSERT_EQ(mVMessages.size(), 1u) << "opening the data was a step";
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Save);
    mVMessages.clear();
    Snap("recent");

    fs::remove(folder + "/two.mrp");
    fs::remove(folder + "/melt0002.bin");
    Menu(ID_RECENT_PROJECT_0 + 1);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_TRUE(WasTold("two.mrp is not there any more"));
    EXPECT_TRUE(Frame()->GetTitle().EndsWith("one.mrp")) << "nothing else changed";
    Menu(ID_RECENT_DATA_0);
    EXPECT_EQ(mVMessages.size(), 2u);
    const auto& data = Hub()->mpCRecentFiles->Get(RecentFiles_cls::Data);
    EXPECT_TRUE(data.empty() || !data[0].EndsWith("melt0002.bin"));
    EXPECT_FALSE(bar->FindItem(ID_RECENT_PROJECT_0 + 1) &&
                 bar->FindItem(ID_RECENT_PROJECT_0 + 1)->GetItemLabelText().EndsWith("two.mrp"));
}

} // namespace
