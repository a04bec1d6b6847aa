#include "StoreFixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <limits>
#include <random>
#include <unordered_map>

#include "InterpolateNow.h"
#include "PDATA/clsPeriodicBoundary.h"

namespace {

constexpr float kBox = 6.0f;

/// What a particle's slope is, told as plainly as can be: one particle, one match (-1: none).
class Reference_cls {
public:
    Reference_cls(const PDataBlock_cls& block, const PDataBlock_cls& next, unsigned type, unsigned effect,
                  float dt, std::array<float, 3> box = {kBox, kBox, kBox})
        : mBlock(block), mNext(next), mType(type), mEffect(effect), mDT(dt), mBox(box) {
        for (int j = 0; j < next.mParticleNumber; ++j)
            mPlaces.emplace(next.mpID[j], j);
    }

    int Match(int i) const {
        if (mBlock.mVariableNumber == 0) return i;
        const int wanted = mBlock.mpID[i];
        if (mBlock.mVariableNumber == 2) {
            const auto found = mPlaces.find(wanted);
            return found == mPlaces.end() ? -1 : found->second;
        }
        if (i < mNext.mParticleNumber && mNext.mpID[i] == wanted) return i;
        for (int w = 10; w <= 10000; w *= 10) {
            const int j = Find(wanted, std::max(i - w, 0), std::min(i + w, mNext.mParticleNumber));
            if (j >= 0) return j;
        }
        return Find(wanted, 0, mNext.mParticleNumber / 10);
    }
    float Position(int i, int c) const {
        const int j = Match(i);
        if (j < 0) return 0.0f;
        float d = mNext.mpPos[j][c] - mBlock.mpPos[i][c];
        if ((mType == 1 && c < 2) || mType == 2) {
            const float length = mBox[size_t(c)];
            if (d > 0.5f * length)
                d = mEffect == 0 ? d - length : 0.0f;
            else if (d < -0.5f * length)
                d = mEffect == 0 ? d + length : 0.0f;
        }
        return d / mDT;
    }
    float Scalar(int i, const float* pFrom, const float* pTo) const {
        int j = Match(i);
        if (j < 0) return 0.0f;
        if (mType == 2) j = i;
        return (pTo[j] - pFrom[i]) / mDT;
    }
    void Expect(const PDataBlock_cls& old) const {
        int wrong = 0;
        for (int i = 0; i < mBlock.mParticleNumber; ++i) {
            const bool bInside = i < mNext.mParticleNumber;
            for (int c = 0; c < 3; ++c)
                wrong += mBlock.mpVel[i][c] != (bInside ? Position(i, c) : old.mpVel[i][c]);
            wrong += mBlock.mpDRadius[i] !=
                     (bInside ? Scalar(i, mBlock.mpRadius, mNext.mpRadius) : old.mpDRadius[i]);
            wrong += mBlock.mpDValue1[i] !=
                     (bInside ? Scalar(i, mBlock.mpValue1, mNext.mpValue1) : old.mpDValue1[i]);
        }
        EXPECT_EQ(wrong, 0) << "numbers " << mBlock.mVariableNumber << " type " << mType << " effect "
                            << mEffect;
    }

private:
    int Find(int id, int begin, int end) const {
        for (int j = begin; j < end; ++j)
            if (mNext.mpID[j] == id) return j;
        return -1;
    }
    const PDataBlock_cls& mBlock;
    const PDataBlock_cls& mNext;
    unsigned mType;
    unsigned mEffect;
    float mDT;
    std::array<float, 3> mBox;
    std::unordered_map<int, int> mPlaces; ///< ID to index in the next snapshot
};

class Interpolator : public ::testing::Test {
protected:
    Interpolator() {
        for (ConfItemFLOATARRAY_cls* pVector :
             {&mBox.mCPeriodicBaseVector0, &mBox.mCPeriodicBaseVector1, &mBox.mCPeriodicBaseVector2})
            for (float& length : pVector->mValue)
                length = length != 0.0f ? kBox : 0.0f;
    }
    void SetBox(unsigned type, unsigned effect) {
        mBox.mCPeriodicType.mValue = type;
        mBox.mCPeriodicEffect.mValue = effect;
    }
    /// Every mode of the box against the reference.
    void ExpectAllBoxes(int number, int numberNext, int variable, void (*change)(PDataBlock_cls& next)) {
        for (unsigned type = 0; type < 3; ++type)
            for (unsigned effect = 0; effect < (type > 0 ? 2u : 1u); ++effect) {
                HandBlock_st hand(number, 1);
                const HandBlock_st old(number, 1);
                HandBlock_st next(numberNext, 2);
                change(next.mBlock);
                hand.mBlock.mVariableNumber = variable;
                SetBox(type, effect);
                InterpolateNow(hand.mBlock, next.mBlock, &mBox, 0.7f);
                Reference_cls(hand.mBlock, next.mBlock, type, effect, 0.7f).Expect(old.mBlock);
            }
    }

    PeriodicBoundary_cls mBox;
};

void Keep(PDataBlock_cls& /*next*/) {}

void Shuffle(PDataBlock_cls& next) {
    std::mt19937 random(3);
    std::shuffle(next.mpID, next.mpID + next.mParticleNumber, random);
}

void LoseEveryThird(PDataBlock_cls& next) {
    for (int i = 0; i < next.mParticleNumber; ++i)
        next.mpID[i] = i + i / 2; // 0 1 3 4 6 7: ascending with holes
}

// A third of it down: out of every window. One goes to the first tenth, one within the widest window only.
void MoveFarAway(PDataBlock_cls& next) {
    std::rotate(next.mpID, next.mpID + 11000, next.mpID + 33000);
    std::swap(next.mpID[1650], next.mpID[21999]);
}

} // namespace

TEST_F(Interpolator, ConstantNumbersInEveryBoxAndForEveryThreadCount) {
    ExpectAllBoxes(1001, 1001, 0, Keep);
    ExpectAllBoxes(100, 60, 0, Keep);
    ExpectAllBoxes(60, 100, 0, Keep);
    ExpectAllBoxes(300001, 300001, 0, Keep);
}

TEST_F(Interpolator, VariableNumbersAreMatchedById) {
    ExpectAllBoxes(500, 500, 1, Shuffle);
    ExpectAllBoxes(2000, 900, 1, LoseEveryThird);
    ExpectAllBoxes(500, 700, 1, Shuffle);
    ExpectAllBoxes(4000, 3600, 1, Shuffle); // enough of them moved for an index
    ExpectAllBoxes(4000, 4000, 1, [](PDataBlock_cls& next) {
        Shuffle(next);
        for (int i = 0; i < next.mParticleNumber; ++i)
            next.mpID[i] /= 2; // every ID twice
    });
    ExpectAllBoxes(5, 5, 1, LoseEveryThird); // a tenth of it is nothing
}

TEST_F(Interpolator, SearchEndsAtTheWindowsAndTheFirstTenth) {
    constexpr int kMany = 33000;
    HandBlock_st hand(kMany, 1);
    HandBlock_st next(kMany, 2);
    MoveFarAway(next.mBlock);
    hand.mBlock.mVariableNumber = 1;
    InterpolateNow(hand.mBlock, next.mBlock, nullptr, 1.0f);
    const auto expectAt = [&](int i, int j) {
        ASSERT_EQ(next.mBlock.mpID[j], i);
        EXPECT_EQ(hand.mBlock.mpVel[i][0], next.mBlock.mpPos[j][0] - hand.mBlock.mpPos[i][0]);
    };
    expectAt(12650, 21999);
    expectAt(32999, 1650);
    expectAt(14000, 3000);
    for (const int lost : {0, 10999, 20000}) {
        EXPECT_EQ(hand.mBlock.mpVel[lost][0], 0.0f);
        EXPECT_EQ(hand.mBlock.mpDRadius[lost], 0.0f);
    }
}

TEST_F(Interpolator, SortedNumbersAreMatchedByOneWalk) {
    ExpectAllBoxes(900, 500, 2, LoseEveryThird);
    ExpectAllBoxes(500, 900, 2, LoseEveryThird);
    ExpectAllBoxes(110000, 110000, 2, LoseEveryThird);
}

TEST_F(Interpolator, ParticleCrossesTheFaceTheShortWay) {
    for (unsigned effect = 0; effect < 2; ++effect) {
        HandBlock_st hand(1, 1);
        HandBlock_st next(1, 2);
        for (int c = 0; c < 3; ++c) {
            hand.mBlock.mpPos[0][c] = 0.05f * kBox;
            next.mBlock.mpPos[0][c] = 0.95f * kBox;
        }
        SetBox(1, effect);
        InterpolateNow(hand.mBlock, next.mBlock, &mBox, 2.0f);
        EXPECT_NEAR(hand.mBlock.mpVel[0][1], effect == 0 ? -0.05f * kBox : 0.0f, 1e-6f);
        EXPECT_NEAR(hand.mBlock.mpVel[0][2], 0.45f * kBox, 1e-6f);
    }
}

TEST_F(Interpolator, ASlantedBoxIsAsLongAsItsDiagonal) {
    // Its vectors are longer than what they span along their own axis.
    for (int k = 0; k < 3; ++k) {
        ConfItemFLOATARRAY_cls& vector = k == 0   ? mBox.mCPeriodicBaseVector0
                                         : k == 1 ? mBox.mCPeriodicBaseVector1
                                                  : mBox.mCPeriodicBaseVector2;
        vector.mValue[(k + 1) % 3] = 0.75f * kBox;
    }
    HandBlock_st hand(1, 1);
    HandBlock_st next(1, 2);
    for (int c = 0; c < 3; ++c) {
        hand.mBlock.mpPos[0][c] = 0.2f * kBox;
        next.mBlock.mpPos[0][c] = 0.75f * kBox;
    }
    SetBox(2, 0);
    InterpolateNow(hand.mBlock, next.mBlock, &mBox, 1.0f);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(hand.mBlock.mpVel[0][c], -0.45f * kBox, 1e-5f) << "the short way round";
}

TEST_F(Interpolator, BoxWithoutExtentChangesNothing) {
    HandBlock_st hand(100, 1);
    HandBlock_st next(100, 2);
    SetBox(2, 0);
    for (float& factor : mBox.mCPeriodicSize.mValue)
        factor = 0.0f;
    InterpolateNow(hand.mBlock, next.mBlock, &mBox, 1.0f);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(hand.mBlock.mpVel[i][1], next.mBlock.mpPos[i][1] - hand.mBlock.mpPos[i][1]);
}

TEST_F(Interpolator, EqualTimesCountAsOneApart) {
    HandBlock_st hand(10, 1, 3.0);
    HandBlock_st next(10, 2, 3.0);
    ASSERT_TRUE(hand.mBlock.InterpolateData(&next.mBlock));
    PDataSnap_cls::WaitInterpolator();
    EXPECT_TRUE(hand.mSnap.mbInterpolated);
    EXPECT_EQ(hand.mBlock.mpVel[4][0], next.mBlock.mpPos[4][0] - hand.mBlock.mpPos[4][0]);
}

TEST_F(Interpolator, ThreadCountsGrowWithTheParticles) {
    const std::pair<int, int> counts[] = {{0, 1},        {100000, 1},  {100001, 2},  {300001, 3},
                                          {1000000, 3},  {1000001, 4}, {3000000, 4}, {3000001, 5},
                                          {10000000, 5}, {10000001, 6}};
    for (const auto& count : counts)
        EXPECT_EQ(ThreadInterpolator_cls::GetThreadCount(count.first), count.second) << count.first;
}

TEST_F(Interpolator, ExactlyHalfABoxIsNoCrossing) {
    // One step beyond it is: the shorter way round, or none.
    const float half = 0.5f * kBox;
    const float above = std::nextafter(half, kBox);
    for (unsigned effect = 0; effect < 2; ++effect) {
        HandBlock_st hand(4, 1);
        HandBlock_st next(4, 2);
        const float to[4] = {half, -half, above, -above};
        for (int i = 0; i < 4; ++i)
            for (int c = 0; c < 3; ++c) {
                hand.mBlock.mpPos[i][c] = 0.0f;
                next.mBlock.mpPos[i][c] = to[i];
            }
        SetBox(2, effect);
        for (const int variable : {0, 1, 2}) {
            hand.mBlock.mVariableNumber = variable;
            InterpolateNow(hand.mBlock, next.mBlock, &mBox, 1.0f);
            const float expected[4] = {half, -half, effect == 0 ? above - kBox : 0.0f,
                                       effect == 0 ? kBox - above : 0.0f};
            for (int i = 0; i < 4; ++i)
                for (int c = 0; c < 3; ++c)
                    EXPECT_EQ(hand.mBlock.mpVel[i][c], expected[i]) << i << " mode " << variable;
        }
    }
}

TEST_F(Interpolator, WhatIsNoNumberStaysWithItsParticle) {
    const float bad[] = {std::nanf(""), INFINITY, -INFINITY};
    for (const int variable : {0, 1, 2}) {
        HandBlock_st hand(100, 1);
        HandBlock_st next(100, 2);
        hand.mBlock.mVariableNumber = variable;
        for (int i = 0; i < 3; ++i) {
            hand.mBlock.mpPos[10 + i][1] = bad[i];
            next.mBlock.mpRadius[20 + i] = bad[i];
            next.mBlock.mpValue1[30 + i] = bad[i];
        }
        SetBox(2, 0);
        InterpolateNow(hand.mBlock, next.mBlock, &mBox, 1.0f);
        for (int i = 0; i < 100; ++i) {
            EXPECT_TRUE(std::isfinite(hand.mBlock.mpVel[i][0]));
            EXPECT_EQ(std::isfinite(hand.mBlock.mpVel[i][1]), i < 10 || i > 12) << i;
            EXPECT_EQ(std::isfinite(hand.mBlock.mpDRadius[i]), i < 20 || i > 22) << i;
            EXPECT_EQ(std::isfinite(hand.mBlock.mpDValue1[i]), i < 30 || i > 32) << i;
        }
        InterpolateNow(hand.mBlock, next.mBlock, &mBox, std::nanf(""));
        EXPECT_TRUE(std::isnan(hand.mBlock.mpVel[50][0])) << "a time that is no number passes through";
        SetBox(2, 1);
        InterpolateNow(hand.mBlock, next.mBlock, &mBox, 1.0f);
        EXPECT_TRUE(std::isnan(hand.mBlock.mpVel[10][1]));
        EXPECT_EQ(hand.mBlock.mpVel[11][1], 0.0f) << "beyond half a box, however far";
        EXPECT_EQ(hand.mBlock.mpVel[12][1], 0.0f);
    }
}

TEST_F(Interpolator, NoParticlesInEitherSnapshotIsNoWork) {
    HandBlock_st hand(50, 1);
    const HandBlock_st old(50, 1);
    HandBlock_st empty(0, 2);
    for (const int variable : {0, 1, 2}) {
        hand.mBlock.mVariableNumber = empty.mBlock.mVariableNumber = variable;
        InterpolateNow(hand.mBlock, empty.mBlock, &mBox, 1.0f);
        InterpolateNow(empty.mBlock, hand.mBlock, &mBox, 1.0f);
        EXPECT_EQ(hand.mBlock.mpVel[7][2], old.mBlock.mpVel[7][2]);
    }
}

namespace {

/// The store with the settings of a shipped project.
class RealData : public StoreFixture {
protected:
    void Open(const std::string& name) {
        const std::string folder = std::string(MORENTIS_TEST_ROOT) + "/examples/" + name + "/";
        std::ifstream project(folder + name + ".mrp");
        std::string first;
        for (std::string line; std::getline(project, line);) {
            mLoader.ReadStrLine(line);
            mBox.ReadStrLine(line);
            if (line == "DataSequence0=0") std::getline(project, first);
        }
        mLoader.mpCPeriodic = &mBox;
        mStore.OpenDataFile(folder + first);
    }
    std::array<float, 3> Lengths() const {
        std::array<float, 3> lengths;
        for (int c = 0; c < 3; ++c) {
            float vector[3];
            mBox.GetBoundaryVector(vector, c);
            lengths[size_t(c)] = vector[c];
        }
        return lengths;
    }
    /// Particles that go round the box to the next snapshot.
    static int CountCrossings(const PDataBlock_cls& block, const PDataBlock_cls& next, float dt) {
        int count = 0;
        for (int i = 0; i < std::min(block.mParticleNumber, next.mParticleNumber); ++i)
            count +=
                std::fabs(block.mpVel[i][0] * dt - (next.mpPos[i][0] - block.mpPos[i][0])) > 0.5f ? 1 : 0;
        return count;
    }

    PeriodicBoundary_cls mBox;
};

} // namespace

TEST_F(RealData, ShippedPeriodicRunsAgreeWithTheReference) {
    int crossings = 0;
    for (const char* name : {"lj_melt_bin", "lj_melt_text", "deposit_text", "friction_bin_622187"})
        for (unsigned effect = 0; effect < 2; ++effect) {
            Open(name);
            mBox.mCPeriodicEffect.mValue = effect;
            const int last = std::min(Sequence().GetSeqLength() - 1, name[0] == 'l' ? 5 : 1);
            for (int index = 0; index < last; ++index) {
                Sequence().PrepareIndex(index, 0.5, false, true);
                const PDataBlock_cls& block = *Snap(index).mpCBlock;
                const PDataBlock_cls& next = *Snap(index + 1).mpCBlock;
                ASSERT_TRUE(Snap(index).mbInterpolated && Snap(index + 1).IsItLoaded()) << name;
                const float dt = static_cast<float>(Snap(index + 1).mTime - Snap(index).mTime);
                const unsigned type = mBox.mCPeriodicType.mValue;
                ASSERT_GT(type, 0u) << name;
                // Beyond the smaller count the arrays keep what was read: those are left out.
                Reference_cls(block, next, type, effect, dt, Lengths()).Expect(block);
                if (effect == 0 && name[0] == 'l') crossings += CountCrossings(block, next, dt);
            }
            mStore.ClearData(-2, -2, true);
        }
    EXPECT_GT(crossings, 100) << "the data must put the box to use";
}
