// A particle that is named once and looked for in every snapshot.
#include <fstream>
#include <limits>
#include <numeric>

#include "PDATA/clsArrayPool.h"
#include "PDATA/clsParticleTrack.h"
#include "StoreFixture.h"

namespace {

using Place = ParticleTrack_cls::Place_st;
using State = ParticleTrack_cls::State;
using Source = ParticleTrack_cls::Source;

ParticleName_st WithID(int id, int index) {
    ParticleName_st name;
    name.mbID = true;
    name.mID = id;
    name.mIndex = index;
    return name;
}

class ParticleTrack : public StoreFixture {
protected:
    /// One snapshot for each list of IDs; a particle's x is 100 * snapshot + its ID.
    void OpenIDs(const std::vector<std::vector<int>>& all) {
        for (size_t k = 0; k < all.size(); ++k) {
            std::ofstream file(PathOf(int(k)), std::ios::binary);
            const auto put = [&file](const auto& value) {
                file.write(reinterpret_cast<const char*>(&value), sizeof value);
            };
            put(float(k));
            put(int(all[k].size()));
            for (const int id : all[k]) {
                const float head[7] = {float(100 * int(k) + id), 0, 0, 0, 0, 0, 1};
                put(head);
                put(id);
                put(0);
                put(0.0f);
            }
        }
        mStore.OpenDataFile(PathOf(0));
    }
    /// All of a run, reading what lacks.
    static State LearnAll(ParticleTrack_cls& track, int last) {
        State state = State::More;
        while (state == State::More)
            state = track.Learn(0, last, Source::Wait);
        return state;
    }
    /// x where it is held.
    static float HeldX(ParticleTrack_cls& track, int index) {
        State state = State::More;
        while (state == State::More)
            state = track.LearnHeld(index, Source::Wait);
        const Place* held = track.GetHeld(index);
        return held ? held->mPos[0] : -1.0f;
    }
};

TEST_F(ParticleTrack, NamesSurviveAnotherOrderAndRepeats) {
    HandBlock_st hand(4, 1);
    int* pID = hand.mBlock.mpID;
    const int ids[4] = {7, 5, 7, -2};
    std::copy_n(ids, 4, pID);
    const ParticleName_st second = NameParticle(hand.mBlock, 2, {3, 0, -1});
    ParticleName_st expected = WithID(7, 2);
    expected.mCell = {3, 0, -1};
    EXPECT_TRUE(second == expected);
    EXPECT_EQ(FindParticle(hand.mBlock, second), 2) << "its own place first";
    pID[2] = 9;
    EXPECT_EQ(FindParticle(hand.mBlock, second), 0) << "then the first";
    EXPECT_EQ(FindParticle(hand.mBlock, WithID(-2, 50)), 3);
    EXPECT_EQ(FindParticle(hand.mBlock, WithID(8, 1)), -1);
    EXPECT_TRUE(NameParticle(hand.mBlock, 4, {}).IsNone());
    EXPECT_TRUE(NameParticle(hand.mBlock, -1, {}).IsNone());
    // Without IDs the place is all there is.
    hand.mBlock.mbHasID = false;
    const ParticleName_st place = NameParticle(hand.mBlock, 3, {});
    EXPECT_FALSE(place.mbID);
    EXPECT_EQ(FindParticle(hand.mBlock, place), 3);
    EXPECT_EQ(FindParticle(hand.mBlock, WithID(7, 1)), 1) << "nor for those that were named by one";
    HandBlock_st few(2, 1);
    few.mBlock.mbHasID = false;
    EXPECT_EQ(FindParticle(few.mBlock, place), -1);
    EXPECT_EQ(FindParticle(few.mBlock, ParticleName_st()), -1);
}

TEST_F(ParticleTrack, LearnsTheWayAndLeavesTheStoreAlone) {
    OpenIDs({{1, 2}, {2, 1}, {1}, {2}});
    ParticleTrack_cls track(mStore);
    track.SetName(WithID(2, 1));
    EXPECT_EQ(track.Learn(0, 3, Source::Memory), State::Reading);
    EXPECT_EQ(track.CountUnknown(0, 3), 4);
    mStore.PrepareIndex(2, 0.0, false, true); // what is in memory is known at once
    EXPECT_EQ(track.GetPlace(2).mKnown, Place::MISSING);
    EXPECT_EQ(track.CountUnknown(0, 3), 3);
    EXPECT_EQ(LearnAll(track, 3), State::Known);
    EXPECT_EQ(track.GetPlace(0).mPos[0], 2.0f);
    EXPECT_EQ(track.GetPlace(1).mPos[0], 102.0f);
    EXPECT_EQ(track.GetPlace(3).mPos[0], 302.0f);
    EXPECT_EQ(mStore.GetLoadedFrameNumber(), 1);
    // Another particle, and other data: nothing is known of them.
    track.SetName(WithID(1, 0));
    EXPECT_EQ(track.CountUnknown(0, 3), 4);
    EXPECT_EQ(LearnAll(track, 3), State::Known);
    EXPECT_EQ(track.GetPlace(3).mKnown, Place::MISSING);
    OpenIDs({{5}, {1}});
    EXPECT_EQ(track.GetPlace(1).mKnown, Place::UNKNOWN);
    EXPECT_EQ(LearnAll(track, 9), State::Known) << "past the end is the end";
    EXPECT_EQ(track.GetPlace(1).mPos[0], 101.0f);
}

TEST_F(ParticleTrack, WhereItIsMissingItIsHeld) {
    OpenIDs({{9}, {9, 3}, {9}, {9}, {3}, {9}});
    const std::vector<float> held = {103, 103, 103, 103, 403, 403};
    for (const int start : {0, 3, 5}) { // whatever road leads there
        ParticleTrack_cls track(mStore);
        track.SetName(WithID(3, 0));
        EXPECT_EQ(HeldX(track, start), held[size_t(start)]);
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(HeldX(track, i), held[size_t(i)]) << i;
    }
    ParticleTrack_cls near(mStore);
    near.SetName(WithID(3, 0));
    EXPECT_EQ(HeldX(near, 5), 403.0f);
    EXPECT_EQ(near.CountUnknown(0, 5), 4) << "no more is read than that takes";
    // One without a place is missing, too.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    std::fstream(PathOf(4), std::ios::in | std::ios::out | std::ios::binary)
        .seekp(8)
        .write(reinterpret_cast<const char*>(&nan), sizeof nan);
    ParticleTrack_cls placeless(mStore);
    placeless.SetName(WithID(3, 0));
    EXPECT_EQ(HeldX(placeless, 5), 103.0f);
    ParticleTrack_cls never(mStore);
    never.SetName(WithID(77, 0));
    EXPECT_EQ(HeldX(never, 2), -1.0f);
}

TEST_F(ParticleTrack, SaysThatMemoryIsShortUntilItIsTriedAgain) {
    OpenIDs({{1}, {1}, {1}});
    mStore.PrepareIndex(0, 0.0, false, true);
    mStore.SetPresent(0, 0.0, false);
    ParticleTrack_cls track(mStore);
    track.SetName(WithID(1, 0));
    EXPECT_EQ(track.Learn(0, 2, Source::Background), State::More) << "one of memory a call";
    EXPECT_EQ(track.GetKnownPlace(0).mKnown, Place::THERE);
    PDataSeqCtrl_cls::RefuseAhead();
    EXPECT_EQ(track.Learn(0, 2, Source::Wait), State::NoMemory);
    EXPECT_EQ(track.Learn(0, 2, Source::Memory), State::NoMemory) << "a picture doesn't wait for ever";
    mStore.SetPresent(1, 0.0, false); // gives memory another chance
    track.TryAgain();
    EXPECT_EQ(track.Learn(0, 2, Source::Memory), State::Reading);
    EXPECT_EQ(LearnAll(track, 2), State::Known);
    EXPECT_EQ(track.CountUnknown(0, 2), 0);
}

TEST_F(ParticleTrack, ALongWayTakesTheMemoryOfOneSnapshot) {
    std::vector<int> ids(300000); // so many that the pool keeps what is given back
    std::iota(ids.begin(), ids.end(), 0);
    OpenIDs(std::vector<std::vector<int>>(8, ids));
    ArrayPool_cls& pool = ArrayPool_cls::Shared();
    // What was given back is kept there.
    const auto learn = [&](int last) {
        pool.Trim();
        ParticleTrack_cls track(mStore);
        track.SetName(WithID(3, 3));
        EXPECT_EQ(LearnAll(track, last), State::Known);
        EXPECT_EQ(track.GetPlace(last).mPos[0], float(100 * last + 3));
        track.DropSnapshot();
        return pool.GetCachedBytes();
    };
    const size_t one = learn(0);
    EXPECT_GT(one, 12 * ids.size());
    EXPECT_LT(learn(7), one + one / 2);
}

TEST_F(ParticleTrack, BrokenFilesAreSnapshotsWithoutIt) {
    OpenIDs({{1}, {1}, {1}});
    std::ofstream(PathOf(1), std::ios::binary) << "x";
    ParticleTrack_cls track(mStore);
    track.SetName(WithID(1, 0));
    EXPECT_EQ(LearnAll(track, 2), State::Known);
    EXPECT_EQ(track.GetPlace(0).mKnown, Place::THERE);
    EXPECT_EQ(track.GetPlace(1).mKnown, Place::MISSING);
    EXPECT_EQ(track.GetPlace(2).mKnown, Place::THERE);
    // Without data at all.
    mStore.ClearData(-2, -2, true);
    EXPECT_EQ(LearnAll(track, 5), State::Known);
    EXPECT_EQ(HeldX(track, 0), -1.0f);
}

} // namespace
