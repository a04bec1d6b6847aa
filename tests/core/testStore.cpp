#include "StoreFixture.h"

#include <sstream>

#include <wx/stopwatch.h>
#include <wx/utils.h>

#include "PDATA/clsThreadInterpolator.h"

namespace {

class Store : public StoreFixture {
protected:
    template <class CONDITION>
    static bool WaitUntil(CONDITION condition) {
        const wxStopWatch watch;
        while (!condition() && watch.Time() < 20000)
            wxMilliSleep(1);
        return condition();
    }
    void Drop(int index) { std::filesystem::remove(PathOf(index)); }
    wxString ReadBack(const wxString& text) {
        std::wistringstream stream(text.ToStdWstring());
        for (std::wstring line; std::getline(stream, line);)
            mStore.ReadStrLine(stream, line);
        return mStore.Serialize();
    }
};

} // namespace

TEST_F(Store, FlagsFollowASnapshotsLife) {
    OpenRun(3);
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 3);
    EXPECT_FALSE(mStore.IsTheIndexReady(1, 0.0, false));
    mStore.PrepareIndex(1, 0.0, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(1, 0.0, false));
    EXPECT_FALSE(mStore.IsTheIndexReady(1, 0.5, false));
    EXPECT_FALSE(mStore.IsTheIndexReady(1, std::nan(""), false));
    EXPECT_FALSE(mStore.IsTheIndexReady(1, 0.0, true));
    mStore.PrepareIndex(1, 0.5, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(1, 0.5, true));
    EXPECT_TRUE(mStore.IsTheIndexLoaded(2));
    EXPECT_FALSE(Snap(2).mbInterpolated);
    EXPECT_EQ(mStore.GetLoadedFrameNumber(), 2);
    ASSERT_EQ(Snap(1).GetParticleNumber(), 10);
    EXPECT_EQ(Snap(1).mpCBlock->mpPos[9][0], 10.0f);
    EXPECT_EQ(Snap(1).mpCBlock->mpVel[9][0], 0.5f);
    EXPECT_EQ(Snap(1).mpCBlock->mpVel[9][1], 0.0f);

    WriteSnap(1, 2.5f, 7); // the head is read again after a release
    Snap(1).ReleaseData();
    EXPECT_FALSE(Snap(1).mbLoadStarted || Snap(1).mbLoaded || Snap(1).mbInterpolateStarted ||
                 Snap(1).mbInterpolated);
    EXPECT_EQ(Snap(1).mpCBlock->mParticleNumber, -1);
    EXPECT_EQ(Snap(1).mpCBlock->mpPos, nullptr);
    mStore.PrepareIndex(1, 0.0, false, true);
    EXPECT_EQ(Snap(1).GetParticleNumber(), 7);
    EXPECT_EQ(Sequence().GetTime(1), 2.5);
}

TEST_F(Store, WithoutWaitingThingsComeInTheBackground) {
    OpenRun(3);
    const auto prepared = [this] {
        mStore.PrepareIndex(0, 0.5, false, false);
        return mStore.IsTheIndexReady(0, 0.5, false);
    };
    EXPECT_TRUE(WaitUntil(prepared));
    EXPECT_FLOAT_EQ(Snap(0).mpCBlock->mpVel[3][0], 0.5f);
}

TEST_F(Store, BeyondTheLastSnapshotNothingMoves) {
    OpenRun(3);
    mStore.PrepareIndex(7, 0.5, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(7, 0.5, false));
    ASSERT_TRUE(Snap(2).mbInterpolated);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(Snap(2).mpCBlock->mpVel[i][0], 0.0f);
        EXPECT_EQ(Snap(2).mpCBlock->mpDRadius[i], 0.0f);
    }
    mStore.PrepareIndex(1, 0.0, false, true);
    EXPECT_EQ(Sequence().GetDT(1, 0.25), 0.5);
    EXPECT_EQ(Sequence().GetDT(2, 0.25), 0.0);
    EXPECT_EQ(Sequence().GetDT(0, 0.25), 0.0) << "the time of 0 is unknown yet";
    EXPECT_EQ(Sequence().ClampIndexWithinRange(3), 2);
    EXPECT_TRUE(mMessages.empty());
}

TEST_F(Store, FileVelocitiesStayWithoutLinearInterpolation) {
    mLoader.mCItemInterpolateType.mValue = 2;
    OpenRun(2);
    mStore.PrepareIndex(0, 0.5, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(0, 0.5, false));
    EXPECT_EQ(Snap(0).mpCBlock->mpVel[4][2], 6.0f);
    EXPECT_EQ(Snap(0).mpCBlock->mpDRadius[4], 0.0f);
    EXPECT_EQ(Snap(0).mpCBlock->mpDValue1[4], 0.0f);
}

TEST_F(Store, TimeIsTheIndexWhenTheHeadHasNone) {
    mLoader.SetHeaderGrammer({HEAD_DUMMY, HEAD_NUMBER});
    OpenRun(3);
    mStore.PrepareIndex(1, 0.5, false, true);
    EXPECT_EQ(Sequence().GetDT(1, 0.5), 0.5);
}

TEST_F(Store, RemovingTheCacheKeepsPathsAndTimes) {
    OpenRun(3);
    mStore.PrepareIndex(1, 0.5, false, true);
    mStore.ClearData(-1, -2, false);
    EXPECT_EQ(mStore.GetLoadedFrameNumber(), 0);
    EXPECT_EQ(Sequence().GetTime(1), 2.0);
    EXPECT_EQ(Sequence().GetFilename(1), wxString(PathOf(1)));
    mStore.ClearData(-1, -2, true);
    EXPECT_EQ(Sequence().GetTime(1), -9999.0);
    EXPECT_TRUE(Sequence().GetFilename(1).empty());
    EXPECT_TRUE(mStore.GetStrActiveFileSequencePath().empty());
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 3);
}

TEST_F(Store, TextFormFindsTheDataBesideTheProject) {
    OpenRun(3);
    PDataSequence_cls::msStrProjectDir = mFolder;
    mStore.OpenDataFile("run0000.bin");
    const wxString text = mStore.Serialize();
    EXPECT_TRUE(text.StartsWith("DataSequence0=0\nrun0000.bin\nDataSequence1=1\n"));
    mStore.ClearData(-2, -2, true);
    EXPECT_TRUE(mStore.Serialize().StartsWith("DataSequence0=0\n\nDataSequence1=1\n"));
    EXPECT_EQ(ReadBack(text), text);
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 3);
    // Saved elsewhere, where the short name leads nowhere, the path is written whole.
    PDataSequence_cls::msStrProjectDir = "/nowhere";
    EXPECT_TRUE(mStore.Serialize().StartsWith("DataSequence0=0\n" + mFolder + "/run0000.bin\n"));
    // Undo opens the same text when no project is being read.
    PDataSequence_cls::msStrProjectDir.clear();
    mStore.ClearData(-1, -2, true);
    mStore.OpenDataFile("run0000.bin");
    mStore.PrepareIndex(2, 0.0, false, true);
    EXPECT_EQ(Snap(2).GetParticleNumber(), 10);
    EXPECT_TRUE(mMessages.empty());
}

TEST_F(Store, VanishedFilesAreToldOnceAndSkipped) {
    OpenRun(5);
    mStore.PrepareIndex(1, 0.0, false, true);
    Drop(1);
    Drop(3);
    EXPECT_TRUE(mStore.IsTheIndexReady(1, 0.0, false)) << "what is cached stays";
    Snap(1).ReleaseData();
    for (const int index : {1, 3, 1, 3}) {
        mStore.PrepareIndex(index, 0.5, false, true);
        EXPECT_TRUE(mStore.IsTheIndexReady(index, 0.5, false));
        EXPECT_EQ(Sequence().GetFilenameStatus(index), FILE_UNUSABLE);
        EXPECT_EQ(Sequence().GetParticleNumber(index), 0);
    }
    ASSERT_EQ(mMessages.size(), 1u);
    EXPECT_EQ(mMessages[0].mKind, MessageKind::Notice);
    EXPECT_TRUE(mMessages[0].mText.Contains("run0001.bin"));
    // Before the gap particles stand still, and time with them.
    mStore.PrepareIndex(2, 0.5, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(2, 0.5, false));
    EXPECT_EQ(Snap(2).mpCBlock->mpVel[0][0], 0.0f);
    EXPECT_EQ(Sequence().GetDT(2, 0.5), 0.0);

    WriteSnap(1, 2.0f, 4);
    mStore.ClearData(-1, -2, false);
    mStore.PrepareIndex(1, 0.0, false, true);
    EXPECT_EQ(Snap(1).GetParticleNumber(), 4);
}

TEST_F(Store, UnreadableHeadsAreToldAndPlayingGoesOn) {
    OpenRun(4);
    WriteSnap(2, 4.0f, 10);
    std::fstream file(PathOf(2), std::ios::binary | std::ios::in | std::ios::out);
    const int huge = 2147483647;
    file.seekp(4).write(reinterpret_cast<const char*>(&huge), 4);
    file.close();
    for (int index = 0; index < 4; ++index) {
        mStore.PrepareIndex(index, 0.5, false, true);
        EXPECT_TRUE(mStore.IsTheIndexReady(index, 0.5, false)) << index;
        EXPECT_EQ(Sequence().GetParticleNumber(index), index == 2 ? 0 : 10);
    }
    ASSERT_EQ(mMessages.size(), 1u);
    EXPECT_TRUE(mMessages[0].mText.Contains("run0002.bin"));
    EXPECT_EQ(Snap(1).mpCBlock->mpVel[0][0], 0.0f);
    EXPECT_EQ(Snap(2).mpCBlock->mpPos, nullptr);
}

TEST_F(Store, EmptySnapshotsAreReadyWithNothing) {
    WriteSnap(0, 0, 0);
    WriteSnap(1, 1, 10);
    WriteSnap(2, 2, 0);
    mStore.OpenDataFile(PathOf(0));
    for (int index = 0; index < 3; ++index) {
        mStore.PrepareIndex(index, 0.5, false, true);
        EXPECT_TRUE(mStore.IsTheIndexReady(index, 0.5, false)) << index;
        EXPECT_EQ(Snap(index).GetParticleNumber(), index == 1 ? 10 : 0);
    }
    EXPECT_EQ(Snap(0).mpCBlock->mpPos, nullptr);
    EXPECT_TRUE(mMessages.empty());
}

TEST_F(Store, ShippedSequencesPlayThrough) {
    const std::string folder = std::string(MORENTIS_TEST_ROOT) + "/tests/data/bad/sequence/";
    const std::vector<std::pair<std::string, std::vector<int>>> runs = {
        {"changing_count/snap0000.bin", {20, 40, 60, 80, 100}},
        {"empty_in_the_middle/snap0000.bin", {0, 100, 0, 100}}};
    for (const auto& run : runs) {
        mStore.OpenDataFile(wxString::FromUTF8(folder + run.first));
        ASSERT_EQ(mStore.GetActiveFileSequenceLength(), static_cast<int>(run.second.size()));
        for (size_t index = 0; index < run.second.size(); ++index) {
            mStore.PrepareIndex(static_cast<int>(index), 0.25, false, true);
            EXPECT_TRUE(mStore.IsTheIndexReady(static_cast<int>(index), 0.25, false));
            EXPECT_EQ(Sequence().GetParticleNumber(static_cast<int>(index)), run.second[index]);
        }
    }
    EXPECT_TRUE(mMessages.empty());
}

TEST_F(Store, RequestThatMeetsABusyInterpolatorIsMadeAgain) {
    OpenRun(3);
    mStore.PrepareIndex(0, 0.0, false, true);
    mStore.PrepareIndex(1, 0.0, false, true);
    GpCThreadInterpolate.store(reinterpret_cast<ThreadInterpolator_cls*>(1)); // busy with others
    GbThreadInterpolateFinished.store(false);
    mStore.PrepareIndex(0, 0.5, false, false);
    EXPECT_FALSE(Snap(0).mbInterpolateStarted);
    GbThreadInterpolateFinished.store(true); // whoever waits sees that it is done
    mStore.PrepareIndex(0, 0.5, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(0, 0.5, false));
}

TEST_F(Store, ReleaseWaitsForTheInterpolatorOfBothBlocks) {
    mLoader.mCItemVariableNumber.mValue = 1;
    constexpr int kMany = 200000; // all of them lost: a search that takes a while
    for (int release = 0; release < 2; ++release) {
        for (int i = 0; i < 2; ++i)
            WriteSnap(i, float(i), kMany, i * kMany);
        mStore.OpenDataFile(PathOf(0));
        mStore.PrepareIndex(1, 0.0, false, true);
        mStore.PrepareIndex(0, 0.0, false, true);
        mStore.PrepareIndex(0, 0.5, false, false);
        Snap(release).ReleaseData();
        PDataSnap_cls::WaitInterpolator();
        EXPECT_FALSE(Snap(release).mpCBlock->mbAllocated);
        EXPECT_EQ(Snap(0).mbInterpolated, release == 1);
        if (release == 1) {
            EXPECT_EQ(Snap(0).mpCBlock->mpVel[kMany - 1][0], 0.0f);
        }
    }
}

TEST_F(Store, TenThousandSlotsAndNoMore) {
    // The length is found in steps of a hundred: what lies between needn't be there.
    for (int i = 0; i <= PDataSequence_cls::kMaxSnap; i += 100)
        std::ofstream(mFolder + "/n" + std::to_string(i) + ".bin");
    mStore.OpenDataFile(mFolder + "/n%01d.bin");
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 10001);
    EXPECT_TRUE(Sequence().GetFilename(9999).EndsWith("n9999.bin"));
    EXPECT_TRUE(Sequence().GetFilename(10000).EndsWith("n9999.bin"));
    mStore.PrepareIndex(20000, 0.5, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(20000, 0.5, false));
    mStore.CleanUpMemory(10000, 1);
}

TEST_F(Store, SpecialCopyTakesRadiusTypeAndValue) {
    OpenRun(2);
    Sequence().Special_Copy(1, 0); // nothing is loaded
    mStore.PrepareIndex(0, 0.5, false, true);
    Snap(0).mpCBlock->mpRadius[3] = 77.0f;
    Sequence().Special_Copy(1, 0);
    EXPECT_EQ(Snap(1).mpCBlock->mpRadius[3], 77.0f);
    EXPECT_EQ(Snap(1).mpCBlock->mpPos[3][0], 4.0f);
}
