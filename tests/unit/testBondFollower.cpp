// Bonds that are followed through the snapshots of a film: the same whatever road leads to a frame, and
// nothing of the store is lost for them.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "COMMON/UpdateBits.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterStick.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "StoreFixture.h"
#include "TIME/clsTimeCtrl.h"

namespace {

// A bond forms below 1 and breaks at 1.5.
const std::vector<float> kDistances = {1.6f, 0.9f, 1.1f, 1.4f, 1.6f, 1.1f, 1.4f, 0.9f, 1.2f};
const std::string kBound = ".BBB...BB";
constexpr int kLast = 8;

class BondFollower : public StoreFixture {
protected:
    using State = BondFollower_cls::State;
    using Source = BondFollower_cls::Source;

    BondFollower() : mbUndo(std::exchange(Parameters_cls::msbUndoCommandMake, false)) {
        mLists.GetObject().AddFilter(FILTER_STICK);
        mpStick = static_cast<FilterStick_cls*>(mLists.GetObject().GetPCFilter(0));
        FilterStickData_cls& data = *mpStick->GetPCData();
        data.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
        data.mCCritA.mValue = 1.0f;
        data.mCKeepUntil.mValue = 1.5f;
        mTime.SetMaxFrameNative(kLast);
        mTime.SetWAMaxNative(kLast);
        Write(kDistances);
        mStore.OpenDataFile(PathOf(0));
    }
    ~BondFollower() override { Parameters_cls::msbUndoCommandMake = mbUndo; }

    /// Two particles along x, so far apart.
    void Write(const std::vector<float>& distances) const {
        for (size_t k = 0; k < distances.size(); ++k) {
            std::ofstream file(PathOf(int(k)), std::ios::binary);
            const auto put = [&file](const auto& value) {
                file.write(reinterpret_cast<const char*>(&value), sizeof value);
            };
            put(float(k));
            put(2);
            for (int i = 0; i < 2; ++i) {
                const float head[7] = {i == 0 ? 0.0f : distances[k], 0, 0, 0, 0, 0, 1};
                put(head);
                put(i);
                put(0);
                put(0.0f);
            }
        }
    }
    void GoTo(int frame) { mTime.SetFrameNative(frame, 0); }
    State FollowAll(Source source) {
        State state = State::More;
        for (int tries = 0; tries < 10000 && (state == State::More || state == State::Reading); ++tries) {
            state = mBonds.Follow(0, source);
            if (state == State::Reading) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return state;
    }
    /// B where a picture of the frame on show has the bond.
    char Look() {
        const int index = mTime.GetRemappedIndex(-1);
        mStore.PrepareIndex(index, 0.0, false, true);
        const PDataBlock_cls& block = *Sequence().GetPCBlock(index);
        StickParticles_st particles;
        particles.mpPos = block.mpPos;
        particles.mpID = block.mpID;
        particles.mCount = block.mParticleNumber;
        particles.mTime = float(index);
        particles.mVersion = ++mPictures;
        if (!mpStick->Prepare(particles, index, mTime.GetFrame())) return '?';
        return mpStick->GetSticks().GetNumber() == 1 ? 'B' : '.';
    }
    std::string LookAt(const std::vector<int>& frames) {
        std::string seen;
        for (const int frame : frames) {
            GoTo(frame);
            EXPECT_EQ(FollowAll(Source::Wait), State::Known) << frame;
            seen += Look();
        }
        return seen;
    }
    static std::vector<int> Whole() { return {0, 1, 2, 3, 4, 5, 6, 7, 8}; }

    FilterLists_cls mLists;
    TimeCtrl_cls mTime{nullptr};
    BondFollower_cls mBonds{mLists, mStore, mTime};
    FilterStick_cls* mpStick = nullptr;
    unsigned long long mPictures = 0;

private:
    bool mbUndo;
};

TEST_F(BondFollower, EveryRoadToAFrameShowsTheSame) {
    EXPECT_EQ(LookAt(Whole()), kBound);
    for (const int frame : Whole()) {
        mpStick->ForgetBonds();
        EXPECT_EQ(LookAt({frame}), kBound.substr(size_t(frame), 1)) << "straight to " << frame;
    }
    EXPECT_EQ(LookAt({3, 8, 5, 1, 6, 2}), "BB.B.B");
    // Stepping leaves frames out of the film, not out of what is followed.
    mTime.SetAnimStepNative(3);
    mpStick->ForgetBonds();
    EXPECT_EQ(LookAt({0, 3, 6}), ".B.");
    // Without it a bond is where the particles are near.
    mpStick->GetPCData()->mCKeepUntil.mValue = 0.0f;
    EXPECT_EQ(LookAt({3, 7}), ".B");
    EXPECT_TRUE(mBonds.GetStatus().empty());
}

TEST_F(BondFollower, NothingIsShownBeforeItIsKnownAndTheStoreStaysAsItWas) {
    GoTo(kLast);
    EXPECT_EQ(mBonds.Follow(1000, Source::Memory), State::Reading);
    EXPECT_EQ(mBonds.GetStatus(), "Following bonds: frame 0 of 8");
    EXPECT_EQ(Look(), '?'); // which reads the last snapshot
    EXPECT_EQ(Sequence().GetLoadedFrameNumber(), 1);
    EXPECT_EQ(FollowAll(Source::Background), State::Known);
    EXPECT_EQ(Look(), 'B');
    EXPECT_EQ(Sequence().GetLoadedFrameNumber(), 1);
    // What is in memory is taken from there.
    mpStick->ForgetBonds();
    for (const int frame : Whole())
        mStore.PrepareIndex(frame, 0.0, false, true);
    for (const int frame : Whole())
        std::filesystem::remove(PathOf(frame));
    EXPECT_EQ(FollowAll(Source::Memory), State::Known);
    EXPECT_EQ(Look(), 'B');
}

TEST_F(BondFollower, FollowsFromTheWorkAreasStartInTheFilmsOrder) {
    mTime.SetWAMinNative(5);
    EXPECT_EQ(LookAt({3, 5, 6, 8}), "...B") << "before it, as at the first frame";
    mTime.SetWAMinNative(2);
    EXPECT_EQ(LookAt({2, 3}), "..");
    mTime.SetWAMinNative(0);
    EXPECT_EQ(LookAt({2, 3}), "BB");
    // Backward through the data, each snapshot for two frames.
    mTime.SetMaxFrameNative(2 * kLast);
    mTime.SetWAMaxNative(2 * kLast);
    std::wistringstream curve(L"dimension=1\nStart\nParameter_Time\ntimeDepend=1\nperiodic=0\nitemnum 2\n"
                              L"0 0 8 0 0\n1 0 0 0 0\n");
    ASSERT_TRUE(mTime.mpCTimeRemapGroup->ReadStrLine(curve, "-ParamGroup=Time Remap"));
    mTime.mbUseTimeRemap.mValue = true;
    EXPECT_EQ(LookAt({0, 2, 4, 6, 8, 10, 12, 14, 16}), ".BBB...B."); // 1.2 0.9 1.4 1.1 1.6 1.4 1.1 0.9 1.6
    mTime.mbUseTimeRemap.mValue = false;
    EXPECT_EQ(LookAt({3, 5}), "B.");
}

TEST_F(BondFollower, MissingFilesChangeNothingAndNewDataAll) {
    std::filesystem::remove(PathOf(2));
    EXPECT_EQ(LookAt({3, 4}), "B.");
    Write({1.6f, 1.1f, 1.1f, 1.1f, 0.9f});
    EXPECT_EQ(LookAt({3}), "B") << "of what was read";
    // A filter that doesn't act just then forgets, too.
    mpStick->GetPCData()->mCValid.mValue = false;
    EXPECT_EQ(mBonds.Follow(0, Source::Memory), State::Known);
    mStore.ClearData(-1, -2, false);
    mpStick->GetPCData()->mCValid.mValue = true;
    EXPECT_EQ(LookAt({3, 4}), ".B");
}

TEST_F(BondFollower, StopsWhenToldAndGoesOnElsewhere) {
    GoTo(kLast);
    EXPECT_EQ(mBonds.Follow(0, Source::Wait), State::More);
    mBonds.Stop();
    EXPECT_EQ(mBonds.Follow(1000, Source::Wait), State::Stopped);
    EXPECT_EQ(mBonds.GetStatus(), "Bonds aren't followed: stopped");
    EXPECT_EQ(Look(), '?');
    EXPECT_EQ(LookAt({3}), "B");
    // In the midst of a frame.
    mpStick->ForgetBonds();
    GoTo(kLast);
    mBonds.mIsStopped = [] { return true; };
    EXPECT_EQ(FollowAll(Source::Wait), State::Stopped);
    mBonds.mIsStopped = nullptr;
    EXPECT_EQ(LookAt({0, kLast}), ".B");
}

} // namespace
