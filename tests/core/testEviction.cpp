#include "StoreFixture.h"

namespace {

/// Twenty slots that count as loaded, each of exactly one MB; no arrays behind them.
class Eviction : public StoreFixture {
protected:
    Eviction() {
        Sequence().SetSeqLength(20);
        for (int i = 0; i < 20; ++i) {
            Snap(i).mbLoadStarted = true;
            Snap(i).mbLoaded = true;
            Snap(i).mpCBlock->mInterpolateType = 0;
            Snap(i).mpCBlock->mParticleNumber = 32768;
        }
    }
    std::vector<int> Loaded() {
        std::vector<int> loaded;
        for (int i = 0; i < 20; ++i)
            if (Snap(i).IsItLoaded()) loaded.push_back(i);
        return loaded;
    }
    /// What goes, one after the other, when the limit sinks MB by MB.
    std::vector<int> Order(int current, int step) {
        std::vector<int> order;
        for (;;) {
            const std::vector<int> before = Loaded();
            mStore.mLimitMB = static_cast<int>(before.size()) - 1;
            mStore.CleanUpMemory(current, step);
            const std::vector<int> after = Loaded();
            if (after.size() == before.size()) return order;
            EXPECT_EQ(after.size() + 1, before.size());
            std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                                std::back_inserter(order));
        }
    }
};

} // namespace

TEST_F(Eviction, HistoryCountsDoubleAndTheNextThreeStay) {
    EXPECT_EQ(Order(10, 1), (std::vector<int>{0, 1, 2, 3, 4, 5, 19, 6, 18, 17, 7, 16, 15, 8, 14, 9}));
    EXPECT_EQ(Loaded(), (std::vector<int>{10, 11, 12, 13}));
}

TEST_F(Eviction, SnapshotsWithAKeyGoAfterTheirFellows) {
    mStore.SetSnipping(2);
    mStore.SetSnipping(18);
    EXPECT_EQ(Order(10, 1), (std::vector<int>{0, 1, 3, 4, 5, 19, 2, 6, 17, 7, 16, 15, 8, 9, 18, 14}));
    mStore.ClearSnipping();
    EXPECT_FALSE(Snap(18).mbSnipping);
}

// Among those with a key what lies behind counts double, too.
TEST_F(Eviction, KeysBehindGoBeforeKeysLessThanTwiceAsFarAhead) {
    for (int i = 0; i < 20; ++i) {
        if (i != 7 && i != 10 && i != 15 && i != 17) Snap(i).ReleaseData();
        mStore.SetSnipping(i);
    }
    EXPECT_EQ(Order(10, 1), (std::vector<int>{17, 7, 15}));
}

TEST_F(Eviction, SteppingByThreeDropsWhatIsNeverShown) {
    mStore.CleanUpMemory(0, 3);
    EXPECT_EQ(Loaded(), (std::vector<int>{0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16, 18, 19}));
    mStore.CleanUpMemory(0, 2);
    EXPECT_EQ(Loaded().size(), 14u);
}

TEST_F(Eviction, LimitBelowOneSnapshotEnds) {
    mStore.mLimitMB = 0;
    mStore.CleanUpMemory(19, 1);
    EXPECT_EQ(Loaded(), std::vector<int>{19});
    EXPECT_EQ(mStore.mUsedMB, 1);
    mStore.CleanUpMemory(0, 0); // a step of 0 is one of 1
    EXPECT_TRUE(Loaded().empty());
}

TEST_F(Eviction, MemoryIsCountedByFixedWeights) {
    EXPECT_EQ(mStore.CalcAndGetUsedTotalMemoryMB(), 20);
    for (int i = 0; i < 20; ++i)
        Snap(i).mpCBlock->mInterpolateType = 1;
    EXPECT_EQ(mStore.CalcAndGetUsedTotalMemoryMB(), 20 * 1792 / 1024);
    Snap(0).mpCBlock->mParticleNumber = 2000000000;
    EXPECT_EQ(Snap(0).GetUsedMemoryKB(), 2000000000LL * 56 / 1024);
    Snap(0).mpCBlock->mParticleNumber = -1;
    EXPECT_EQ(Snap(0).GetUsedMemoryKB(), 0);
}

TEST_F(Eviction, ThePresentStaysWhateverIsShort) {
    // A remapped clock shows snapshots far from the frame's number.
    mStore.SetPresent(2, 0.5, false);
    mStore.mLimitMB = 0;
    mStore.CleanUpMemory(19, 3);
    EXPECT_EQ(Loaded(), (std::vector<int>{2, 3, 19}));
    // Reading ahead takes what is further away, nothing else; the present takes all that isn't its own.
    mStore.mLimitMB = 20;
    for (const int index : {4, 5, 9}) {
        Snap(index).mbLoadStarted = true;
        Snap(index).mbLoaded = true;
    }
    mStore.CleanUpMemory(2, 1);
    while (PDataSeqCtrl_cls::ReleaseForAllocation(&Snap(6)))
        ;
    EXPECT_EQ(Loaded(), (std::vector<int>{2, 3, 4, 5}));
    EXPECT_TRUE(PDataSeqCtrl_cls::IsAhead(&Snap(4)));
    EXPECT_FALSE(PDataSeqCtrl_cls::IsAhead(&Snap(3)));
    while (PDataSeqCtrl_cls::ReleaseForAllocation())
        ;
    EXPECT_EQ(Loaded(), (std::vector<int>{2, 3}));
    PDataSnap_cls::mspCDrawn = &Snap(3);
    mStore.SetPresent(2, 0.0, false);
    EXPECT_FALSE(PDataSeqCtrl_cls::ReleaseForAllocation()) << "what is drawn stays too";
    PDataSnap_cls::mspCDrawn = nullptr;
    EXPECT_TRUE(PDataSeqCtrl_cls::ReleaseForAllocation());
    EXPECT_EQ(Loaded(), std::vector<int>{2});
}

TEST_F(Eviction, ShortMemoryTakesTheFurthestButNotWhatIsNeeded) {
    mStore.mLimitMB = 20;
    mStore.CleanUpMemory(10, 1);
    PDataSnap_cls::mspCOnBehalf = &Snap(0);
    ASSERT_TRUE(PDataSeqCtrl_cls::ReleaseForAllocation(&Snap(1)));
    EXPECT_FALSE(Snap(2).IsItLoaded());
    while (PDataSeqCtrl_cls::ReleaseForAllocation(&Snap(1)))
        ;
    PDataSnap_cls::mspCOnBehalf = nullptr;
    EXPECT_EQ(Loaded(), (std::vector<int>{0, 1}));
}
