// A simulation that is still running: its new snapshots come into the open window.
#include <fstream>

#include <wx/menu.h>
#include <wx/statusbr.h>

#include "COMMON/EventIds.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSequence.h"
#include "ProjectTest.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class FollowRun : public ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        Hub()->mpCDataLoader->mCItemDataType.mValue = DATA_BINARY;
        Hub()->mpCDataLoader->SetHeaderGrammer(GrammerBase_cls::DefaultHead());
        Hub()->mpCDataLoader->SetBodyGrammer(GrammerBase_cls::DefaultBody());
        for (int i = 0; i < 6; ++i)
            Write(i);
        ASSERT_TRUE(OpenAndPaint(PathOf(0)));
        PlayAll(5);
        Menu(ID_FOLLOW, true);
        ASSERT_TRUE(IsFollowing());
    }
    void TearDown() override {
        Time()->SetRepeatNative(0);
        Time()->SetWAMinNative(0);
        Menu(ID_CLOSE_DATA);
        ProjectTest::TearDown();
    }
    std::string PathOf(int index) const {
        char name[32];
        std::snprintf(name, sizeof name, "run/run%04d.bin", index);
        fs::create_directories(mDir / "run");
        return mDir / name;
    }
    /// Under another name, as careful programs do it.
    void Write(int index) const {
        const std::string path = PathOf(index);
        std::ofstream file(path + ".part", std::ios::binary);
        const auto put = [&file](const auto& value) {
            file.write(reinterpret_cast<const char*>(&value), sizeof value);
        };
        put(float(index));
        put(1);
        const float head[7] = {float(index), 0, 0, 0, 0, 0, 1};
        put(head);
        put(0);
        put(0);
        put(1.0f);
        file.close();
        fs::rename(path + ".part", path);
    }
    bool Grow(int to) const {
        for (int i = Length(); i < to; ++i)
            Write(i);
        return PumpUntil([to] { return Length() == to; });
    }
    static int Length() { return Frame()->GetPCActiveFileSequence()->GetSeqLength(); }
    static bool Is(int id, bool (wxMenuBar::*pAsk)(int) const) {
        Frame()->GetMenuBar()->GetMenu(0)->UpdateUI();
        return (Frame()->GetMenuBar()->*pAsk)(id);
    }
    static bool IsFollowing() { return Is(ID_FOLLOW, &wxMenuBar::IsChecked); }
    static wxString Status() { return Frame()->GetStatusBar()->GetStatusText(0); }
    std::string Project() { return Save(mDir / "run.mrp"); }
    static std::string Save(const std::string& path) {
        EXPECT_TRUE(Hub()->SaveProjectFile(path, true));
        return ReadAll(path);
    }
};

TEST_F(FollowRun, TheFilmGrowsWhileItPlaysAndNothingIsReadTwice) {
    Time()->SetRepeatNative(1);
    Time()->StartPlayCommand(1);
    const PDataSeqCtrl_cls& store = *Hub()->mpCPDataSeqCtrl;
    ASSERT_TRUE(PumpUntil([&store] { return store.GetLoadedFrameNumber() == 6; }));
    for (int i = 0; i < 6; ++i) // whoever reads one again tells that it is missing
        fs::remove(PathOf(i));
    ASSERT_TRUE(Grow(8));
    EXPECT_TRUE(Time()->IsPlaying());
    EXPECT_EQ(Time()->GetMaxFrame(), 7);
    EXPECT_EQ(Time()->GetWAMax(), 7);
    EXPECT_EQ(Time()->GetAAMax(), 7);
    EXPECT_TRUE(Status().EndsWith("frame 7")) << Status();
    EXPECT_TRUE(PumpUntil([] { return Time()->GetFrame() == 7; }));
    EXPECT_TRUE(PumpUntil([] { return Time()->GetFrame() == 1; }));
    EXPECT_TRUE(PumpUntil([&store] { return store.GetLoadedFrameNumber() == 8; }));
    Time()->StartPlayCommand(1);
    Settle();
    EXPECT_TRUE(mVMessages.empty());
    // Growing is no step: the last one is that of playing, and the film stays as long as it is.
    Hub()->Undo();
    Settle();
    EXPECT_EQ(Time()->GetFrame(), 0);
    EXPECT_EQ(Time()->GetMaxFrame(), 7);
    Hub()->Undo();
    EXPECT_FALSE(IsFollowing());
    Hub()->Redo();
    EXPECT_TRUE(IsFollowing());
}

TEST_F(FollowRun, EndAreaAndClockMoveOnlyWhereTheyShould) {
    Menu(ID_FOLLOW_NEWEST, true);
    EXPECT_EQ(Time()->GetFrame(), 5);
    Time()->SetWAMaxCommand(3);
    Time()->BeginGesture(); // under a hand nothing moves
    Write(6);
    EXPECT_FALSE(PumpUntil([] { return Length() > 6; }, 1500));
    Time()->EndGesture();
    ASSERT_TRUE(Grow(7));
    EXPECT_EQ(Time()->GetMaxFrame(), 6);
    EXPECT_EQ(Time()->GetWAMax(), 3);
    EXPECT_EQ(Time()->GetFrame(), 6);
    Settle();
    EXPECT_EQ(Frame()->GetPCActiveFileSequence()->GetTime(6), 6.0) << "it is on show";
    Menu(ID_FOLLOW_NEWEST, false);
    ASSERT_TRUE(Grow(8));
    EXPECT_EQ(Time()->GetFrame(), 6);
    EXPECT_EQ(Time()->GetMaxFrame(), 7);
    Time()->SetMaxFrameCommand(4);
    ASSERT_TRUE(Grow(9));
    EXPECT_EQ(Time()->GetMaxFrame(), 4) << "a film that shows a part of the data";
    Hub()->Undo();
    EXPECT_EQ(Time()->GetMaxFrame(), 7);
    Time()->SetMaxFrameNative(20);
    Hub()->Undo(); // the tick
    ASSERT_TRUE(Grow(10));
    EXPECT_EQ(Time()->GetMaxFrame(), 20);
    EXPECT_EQ(Time()->GetFrame(), 9) << "a film that goes on behind them";
    Hub()->Undo();
    EXPECT_EQ(Time()->GetWAMax(), 5) << "as it was";
}

TEST_F(FollowRun, AProjectKeepsItAndGrowsWhenItIsOpenedAgain) {
    const std::string plain = ReadAll(mDefaults.ToStdString());
    EXPECT_EQ(plain.find("Follow"), std::string::npos);
    Menu(ID_FOLLOW_NEWEST, true);
    EXPECT_NE(Project().find("FollowRun=6\nFollowNewest=1\n"), std::string::npos);
    ASSERT_TRUE(OpenProjectAndPaint(mDefaults.ToStdString()));
    EXPECT_FALSE(IsFollowing());
    EXPECT_EQ(Status(), "Following ended: its data are closed");
    EXPECT_FALSE(Is(ID_FOLLOW, &wxMenuBar::IsEnabled)) << "no data";
    EXPECT_EQ(Save(mDir / "again.mrp").find("Follow"), std::string::npos);
    Write(6);
    ASSERT_TRUE(OpenProjectAndPaint(mDir / "run.mrp"));
    EXPECT_TRUE(IsFollowing());
    EXPECT_TRUE(Is(ID_FOLLOW_NEWEST, &wxMenuBar::IsChecked));
    EXPECT_EQ(Time()->GetMaxFrame(), 6);
    EXPECT_EQ(Time()->GetFrame(), 6);
    ASSERT_TRUE(Grow(8));
    EXPECT_EQ(Time()->GetMaxFrame(), 7);
    Hub()->mpCDataLoader->OpenDataFile(PathOf(0));
    EXPECT_TRUE(IsFollowing()) << "the same sequence, opened anew";
    ASSERT_TRUE(Grow(9));
    Menu(ID_CLOSE_DATA);
    EXPECT_FALSE(IsFollowing());
    Hub()->Undo();
    EXPECT_TRUE(IsFollowing());
    fs::copy_file(PathOf(0), mDir / "single.bin");
    Hub()->mpCDataLoader->OpenDataFile(mDir / "single.bin");
    EXPECT_FALSE(IsFollowing());
    EXPECT_FALSE(Is(ID_FOLLOW, &wxMenuBar::IsEnabled)) << "a file without a number";
}

TEST_F(FollowRun, AFolderThatGoesIsToldOnce) {
    fs::rename(mDir / "run", mDir / "away");
    ASSERT_TRUE(PumpUntil([] { return !IsFollowing(); }));
    EXPECT_TRUE(WasTold("is not there any more"));
    EXPECT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(Status(), "Following ended: the folder is gone");
    EXPECT_EQ(Length(), 6);
    EXPECT_TRUE(Hub()->IsTheIndexLoaded(0));
}

} // namespace
