// A sequence that another program is still writing: which files count as snapshots, and what the store keeps
// as it grows.
#include "StoreFixture.h"

#include <unistd.h>

#include <wx/stopwatch.h>
#include <wx/utils.h>

#include "PDATA/clsFolderWatch.h"
#include "PDATA/clsParticleTrack.h"

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

class Growth : public StoreFixture {
protected:
    /// A run of three in a folder, and looks at it.
    void SetUp() override { OpenRun(3); }
    SequenceNews_st Look(const Names& finished = {}, const std::vector<int>& wanted = {},
                         bool bRegular = true) {
        SequenceNews_st news;
        mLook->Look(mLoader, bRegular, finished, wanted, &news);
        return news;
    }
    int Length(const Names& finished = {}) { return Look(finished).mLength; }
    void Begin(int length = 3) {
        mLook = std::make_unique<SequenceLook_cls>(FileSequence_cls(PathOf(0)), length, 10000);
    }
    void Cut(int index, std::uintmax_t bytes) { fs::resize_file(PathOf(index), bytes); }
    void WriteText(int index, const std::string& text) {
        std::ofstream(PathOf(index), std::ios::binary) << text;
    }
    static std::string Name(int index) {
        char name[32];
        std::snprintf(name, sizeof name, "run%04d.bin", index);
        return name;
    }
    void UseText() {
        mLoader.mCItemDataType.mValue = DATA_TEXT;
        mLoader.SetBodyGrammer({BODY_XYZ});
    }
    std::unique_ptr<SequenceLook_cls> mLook;
};

TEST_F(Growth, AFileAtRestCountsAndOneThatGrowsDoesNot) {
    Begin();
    EXPECT_EQ(Length(), 3);
    WriteSnap(3, 6, 10);
    EXPECT_EQ(Length(), 3) << "seen once";
    EXPECT_EQ(Look({}, {}, false).mLength, 3) << "no rest between two looks that follow an event";
    EXPECT_EQ(Length(), 4);
    WriteSnap(4, 8, 10);
    Cut(4, 8 + 9 * 40 + 39);
    for (int look = 0; look < 3; ++look)
        EXPECT_EQ(Length(), 4) << "at rest, but a byte is missing";
    Cut(4, 8 + 10 * 40);
    EXPECT_EQ(Length(), 4);
    EXPECT_EQ(Length(), 5);
    WriteSnap(5, 10, 0);
    Cut(5, 0);
    EXPECT_EQ(Length({Name(5)}), 5) << "empty";
    Cut(5, 48);
    EXPECT_EQ(Length({Name(5)}), 5) << "a head that still says 0, before a record";
    fs::remove(PathOf(5));
    WriteSnap(5, 10, 10);
    Cut(5, 8 + 10 * 40 + 4);
    EXPECT_EQ(Length({Name(5)}), 5) << "longer than its head says";
    Cut(0, 8 + 10 * 40 + 4);
    Cut(5, 8 + 10 * 40 + 5);
    EXPECT_EQ(Length({Name(5)}), 6) << "as the first file is";
    fs::create_directory(PathOf(6));
    EXPECT_EQ(Length({Name(6)}), 6);
}

TEST_F(Growth, FinishedFilesCountAtOnce) {
    Begin();
    WriteSnap(3, 6, 10);
    WriteSnap(4, 8, 10);
    EXPECT_EQ(Length({Name(4)}), 3) << "the one before it is in the making";
    EXPECT_EQ(Length(), 5);
    WriteSnap(5, 10, 10);
    EXPECT_EQ(Length({Name(5), "run0006.bin", "notes.txt", "run.bin", ""}), 6);
    WriteSnap(6, 12, 10);
    Cut(6, 100);
    EXPECT_EQ(Length({Name(6)}), 6) << "closed half way";
    WriteSnap(6, 12, 10);
    EXPECT_EQ(Length({Name(6)}), 7);
}

TEST_F(Growth, TextCountsWhenAllItsLinesEnd) {
    UseText();
    Begin();
    WriteText(3, "6.0\n2\n1 2 3\n");
    Length();
    EXPECT_EQ(Length({Name(3)}), 3) << "a record is missing";
    WriteText(3, "6.0\n2\n1 2 3\n4 5 6");
    Length();
    EXPECT_EQ(Length(), 3) << "the last number may go on";
    WriteText(3, "6.0\n2\n1 2 3\n4 5 66\n");
    Length();
    EXPECT_EQ(Length(), 4);
    WriteText(4, "8.0\n2\n1 2 3\n4 5 6");
    EXPECT_EQ(Length({Name(4)}), 5) << "closed: that is its end";
    WriteText(5, "8.0\n1\n1 2 3");
    int looks = 0;
    while (Length() < 6 && ++looks < 20)
        continue;
    EXPECT_EQ(looks, 5) << "nobody tells, but nothing comes either";
}

TEST_F(Growth, HolesAreTreatedAsWhenTheSequenceIsOpened) {
    Begin();
    for (const int index : {4, 5, 10, 11})
        WriteSnap(index, 6, 10);
    Length();
    EXPECT_EQ(Length(), 3) << "4 was seen once";
    EXPECT_EQ(Length(), 12) << "a step of ten leads over 3 and 6 to 9";
    FileSequence_cls opened(PathOf(0));
    opened.CalcMaxOffset();
    EXPECT_EQ(opened.mMaxOffset, 12);
    WriteSnap(13, 6, 10);
    Length();
    EXPECT_EQ(Length(), 12);
    // One of the jumped ones comes late, and one that is broken becomes whole.
    WriteSnap(3, 6, 10);
    EXPECT_TRUE(Look({}, {3, 6}).mVLate.empty());
    EXPECT_EQ(Look({}, {3, 6}).mVLate, std::vector<int>{3});
    EXPECT_TRUE(Look({}, {3, 6}).mVLate.empty()) << "once is enough";
    // What is being written ends the sequence although a later one is whole; what was given up doesn't.
    WriteSnap(12, 6, 10);
    Cut(12, 50);
    WriteSnap(20, 6, 10);
    for (int look = 0; look < 5; ++look)
        EXPECT_EQ(Length(), 12) << look;
    EXPECT_EQ(Length(), 21);
}

TEST_F(Growth, WhatShrinksOrIsWrittenAnewLosesNothing) {
    Begin();
    WriteSnap(3, 6, 10);
    Length();
    Cut(3, 8);
    EXPECT_EQ(Length(), 3) << "it shrank between two looks";
    WriteSnap(3, 6, 10);
    EXPECT_EQ(Length({Name(3)}), 4);
    SequenceNews_st news = Look({Name(3)});
    EXPECT_EQ(news.mRewritten, 0) << "closed again, unchanged";
    Cut(3, 8);
    news = Look({Name(3)});
    EXPECT_EQ(news.mLength, 4);
    EXPECT_EQ(news.mRewritten, 1);
    fs::remove(PathOf(3));
    EXPECT_EQ(Length({Name(3)}), 4);
}

TEST_F(Growth, AFolderThatGoesIsTold) {
    Begin();
    fs::rename(mFolder, mFolder + "_away");
    EXPECT_FALSE(Look().mbFolderGone) << "for a moment";
    EXPECT_TRUE(Look().mbFolderGone);
    fs::rename(mFolder + "_away", mFolder);
    const SequenceNews_st news = Look();
    EXPECT_FALSE(news.mbFolderGone);
    EXPECT_EQ(news.mLength, 3);
}

TEST_F(Growth, TenThousandFilesComeInTwoLooks) {
    Begin();
    for (int i = 3; i < 10002; ++i)
        fs::create_hard_link(PathOf(2), PathOf(i)); // at rest as their first one, and quickly made
    EXPECT_EQ(Length(), 3);
    const wxStopWatch watch;
    EXPECT_EQ(Length(), 10000) << "which is the most";
    EXPECT_LT(watch.Time(), 20000);
}

TEST_F(Growth, TheThreadFindsWhatComesEitherWay) {
    for (const FolderWatch_cls::Way way : {FolderWatch_cls::Way::Told, FolderWatch_cls::Way::Poll}) {
        const bool bTold = way == FolderWatch_cls::Way::Told;
        const int before = bTold ? 3 : 6;
        // The kernel's word is enough where it comes: no second regular look within the test.
        FolderWatch_cls watch(FileSequence_cls(PathOf(0)), before, 10000, way, bTold ? 1000000 : 20);
        const wxStopWatch time;
        const auto tick = [&] { return watch.Tick(mLoader, [] { return std::vector<int>(); }); };
        const auto await = [&](int length) {
            int known = 0;
            while (known != length && time.Time() < 20000) {
                if (const SequenceNews_st* pNews = tick()) {
                    known = pNews->mLength;
                    watch.NewsTaken();
                }
                wxMilliSleep(1);
            }
            return known;
        };
        for (int looks = 0; looks < 50; ++looks) { // the first one is over, and nothing is new
            EXPECT_EQ(tick(), nullptr);
            wxMilliSleep(1);
        }
        WriteSnap(before, 6, 10);
        EXPECT_EQ(await(before + 1), before + 1) << bTold;
        WriteSnap(9000, 6, 10);
        fs::rename(PathOf(9000), PathOf(before + 1));
        EXPECT_EQ(await(before + 2), before + 2) << bTold;
        WriteSnap(before + 2, 6, 10);
        EXPECT_EQ(await(before + 3), before + 3) << bTold;
    }
}

TEST_F(Growth, TheStoreKeepsWhatItHasRead) {
    mStore.PrepareIndex(2, 0.5, false, true);
    mStore.PrepareIndex(1, 0.5, false, true);
    const float* pHeld = Snap(2).mpCBlock->mpPos[0];
    EXPECT_EQ(Snap(2).mpCBlock->mpVel[9][0], 0.0f) << "nothing to move towards";
    EXPECT_FALSE(Snap(3).IsFileValid());
    ParticleTrack_cls track(mStore);
    track.SetName({true, 4, 4, {0, 0, 0}});
    track.Learn(0, 2, ParticleTrack_cls::Source::Memory);
    track.Learn(0, 2, ParticleTrack_cls::Source::Memory);
    ASSERT_EQ(track.GetPlace(1).mKnown, ParticleTrack_cls::Place_st::THERE);

    WriteSnap(3, 6, 10);
    for (int i = 0; i < 10; ++i) // read again it would be another one
        WriteSnap(1, 99, 3);
    ASSERT_TRUE(Sequence().Grow(5, {}));
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 5);
    EXPECT_TRUE(mStore.IsTheIndexReady(1, 0.5, false));
    EXPECT_EQ(Snap(2).mpCBlock->mpPos[0], pHeld);
    EXPECT_EQ(track.GetPlace(1).mKnown, ParticleTrack_cls::Place_st::THERE);
    EXPECT_EQ(track.CountUnknown(0, 4), 3) << "0, 3 and 4";
    EXPECT_FALSE(mStore.IsTheIndexReady(2, 0.5, false));
    mStore.PrepareIndex(2, 0.5, false, true);
    EXPECT_EQ(Snap(2).mpCBlock->mpVel[9][0], 0.5f);
    EXPECT_EQ(Snap(1).GetParticleNumber(), 10);
    // The last one comes late.
    mStore.PrepareIndex(4, 0.0, false, true);
    mStore.PrepareIndex(3, 0.5, false, true);
    EXPECT_EQ(Sequence().GetUnusable(), std::vector<int>{4});
    EXPECT_EQ(Snap(3).mpCBlock->mpVel[9][0], 0.0f);
    WriteSnap(4, 8, 10);
    ASSERT_TRUE(Sequence().Grow(5, {4}));
    mStore.PrepareIndex(3, 0.5, false, true);
    EXPECT_EQ(Snap(3).mpCBlock->mpVel[9][0], 0.5f);
    EXPECT_TRUE(Sequence().GetUnusable().empty());
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 5);
}

} // namespace
