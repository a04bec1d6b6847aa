#include "StoreFixture.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/DRAW/clsThreadSnapInterpolate.h"
#include "PDATA/ParticleScalars.h"

namespace {

class SnapData : public ::testing::Test {
protected:
    SnapData() {
        for (int k = 0; k < 4; ++k) {
            mOwned[k] = std::make_unique<GLAttribute_cls>(nullptr, 0, k, &mOption);
            mAttribute[k] = mOwned[k].get();
        }
    }
    GLAttribute_cls& SwitchOn(int k, unsigned depend, float min, float max) {
        mAttribute[k]->mColor.mbUseColorCurve.mValue = true;
        mAttribute[k]->mColor.mDependType.mValue = depend;
        mAttribute[k]->mColor.mScalingMin.mValue = min;
        mAttribute[k]->mColor.mScalingMax.mValue = max;
        return *mAttribute[k];
    }
    void ExpectColor(const SnapData_cls& snap, int i, float value, float alphaScale) {
        const int k = snap.mpType[i] > 3 ? 0 : snap.mpType[i];
        float expected[4];
        mAttribute[k]->mColor.GetColor4fScaled(expected, value);
        expected[3] *= alphaScale;
        for (int c = 0; c < 4; ++c)
            EXPECT_NEAR(snap.mpColor[i][c], expected[c], 1e-5f) << "particle " << i << " channel " << c;
    }

    DrawOption_cls mOption;
    std::unique_ptr<GLAttribute_cls> mOwned[4];
    GLAttribute_cls* mAttribute[4];
};

void ExpectMoved(const SnapData_cls& snap, const PDataBlock_cls& block, float dt) {
    int wrong = 0;
    for (int i = 0; i < snap.mNumber; i += snap.mStep) {
        for (int c = 0; c < 3; ++c)
            wrong += snap.mpPos[i][c] != block.mpPos[i][c] + block.mpVel[i][c] * dt;
        wrong += snap.mpRadius[i] != block.mpRadius[i] + block.mpDRadius[i] * dt;
        wrong += snap.mpValue1[i] != block.mpValue1[i] + block.mpDValue1[i] * dt;
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace

TEST_F(SnapData, ValuesMoveAlongTheirSlopesForEveryThreadCountAndStep) {
    // 700001: two threads and, with a whole step, results that go past the caches.
    for (const int number : {1, 7, 4097, 100001, 700001}) {
        HandBlock_st hand(number, 1, 2.0);
        for (const int step : {1, 3, 10}) {
            const SnapData_cls snap(&hand.mBlock, mAttribute, 0.75, step);
            ASSERT_EQ(snap.mNumber, number);
            EXPECT_EQ(snap.mTime, 2.75);
            ExpectMoved(snap, hand.mBlock, 0.75f);
            for (int i = 0; i < number; i += step * (1 + number / 100))
                ExpectColor(snap, i, 0.0f, 1.0f);
        }
    }
}

TEST_F(SnapData, AtItsOwnTimeASnapshotIsCopied) {
    HandBlock_st hand(1000, 2);
    hand.mBlock.mpVel[5][1] = std::nanf("");
    const SnapData_cls snap(&hand.mBlock, mAttribute, 0.0, 1);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(snap.mpPos[i][1], hand.mBlock.mpPos[i][1]);
        EXPECT_EQ(snap.mpValue1[i], hand.mBlock.mpValue1[i]);
    }
}

TEST_F(SnapData, AlphaFollowsItsTypeAndClassFourIsClassZero) {
    mAttribute[0]->mColor.mConstantColor.mValue[3] = 0.5f;
    mAttribute[0]->mAlphaFactor.mValue = 0.5f;
    mAttribute[1]->mAlphaType.mValue = 1;
    mAttribute[1]->mAlphaDependBase.mValue = 3.0f;
    SwitchOn(2, 0, -5, 5);
    SwitchOn(3, 1, -5, 5).mAlphaFactor.mValue = 2.0f;
    HandBlock_st hand(500, 3);
    for (const int step : {1, 7}) {
        const SnapData_cls snap(&hand.mBlock, mAttribute, 0.5, step);
        const float scale[5] = {0.5f, 9.0f, 1.0f, 2.0f, 0.5f};
        for (int i = 0; i < 500; i += step) {
            const int type = hand.mBlock.mpType[i];
            ExpectColor(snap, i, type == 3 ? snap.mpRadius[i] : snap.mpValue1[i], scale[type]);
        }
    }
}

TEST_F(SnapData, DerivedQuantitiesComeFromTheBlock) {
    HandBlock_st hand(300, 4);
    const PDataBlock_cls& block = hand.mBlock;
    const auto expected = [&block](unsigned depend, int i) {
        const float* v = depend < 6 ? block.mpPos[i] : block.mpVel[i];
        if (depend == 10) return static_cast<float>(block.mpID[i]);
        if (depend == 2 || depend == 6) return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
        return v[(depend - 3) % 4];
    };
    for (unsigned depend = 2; depend <= 10; ++depend) {
        for (int k = 0; k < 4; ++k)
            SwitchOn(k, depend, -5, 300);
        const SnapData_cls snap(&hand.mBlock, mAttribute, 0.0, 1);
        ASSERT_TRUE(snap.mbValue1Dash) << depend;
        for (int i = 0; i < 300; i += 11) {
            EXPECT_FLOAT_EQ(snap.mpValue1Dash[i], expected(depend, i)) << depend;
            ExpectColor(snap, i, snap.mpValue1Dash[i], 1.0f);
        }
    }
}

TEST_F(SnapData, FirstDerivedQuantityServesAllClasses) {
    SwitchOn(0, 0, -5, 5);
    SwitchOn(1, 4, -5, 5);
    SwitchOn(2, 5, -5, 5);
    HandBlock_st hand(100, 5);
    SnapData_cls snap(&hand.mBlock, mAttribute, 0.25, 1);
    EXPECT_EQ(snap.mpValue1Dash[17], hand.mBlock.mpPos[17][1]);
    float* pValue = nullptr;
    snap.SetPValue1(&pValue, mAttribute[2], 0);
    EXPECT_EQ(pValue, snap.mpValue1Dash);
    snap.SetPValue1(&pValue, mAttribute[0], 0);
    EXPECT_EQ(pValue, snap.mpValue1);
}

TEST_F(SnapData, SlopesAreRequiredByTheCurvesThatADrawTypeUses) {
    EXPECT_FALSE(SnapData_cls::IsInterpolateRequired(mAttribute));
    mAttribute[3]->mColor.mDependType.mValue = 2;
    const bool mainCurve[5] = {true, true, false, true, false};
    for (unsigned type = 0; type < 5; ++type) {
        mAttribute[3]->mDrawType.mValue = type;
        EXPECT_EQ(SnapData_cls::IsInterpolateRequired(mAttribute), mainCurve[type]) << type;
    }
    mAttribute[3]->mSpecular.mDependType.mValue = 10;
    EXPECT_FALSE(SnapData_cls::IsInterpolateRequired(mAttribute));
    mAttribute[3]->mDrawType.mValue = 2;
    EXPECT_TRUE(SnapData_cls::IsInterpolateRequired(mAttribute));
}

TEST_F(SnapData, SameOnlyForBlockTimeAndAStepThatItServes) {
    HandBlock_st hand(50, 6, 1.0);
    HandBlock_st twin(50, 7, 1.0);
    const SnapData_cls whole(&hand.mBlock, mAttribute, 0.5, 1);
    const SnapData_cls thin(&hand.mBlock, mAttribute, 0.5, 4);
    EXPECT_TRUE(whole.IsItSameSnap(&hand.mBlock, 0.5, 4));
    EXPECT_TRUE(thin.IsItSameSnap(&hand.mBlock, 0.5, 4));
    EXPECT_FALSE(thin.IsItSameSnap(&hand.mBlock, 0.5, 2));
    EXPECT_FALSE(whole.IsItSameSnap(&hand.mBlock, 0.25, 1));
    EXPECT_FALSE(whole.IsItSameSnap(&twin.mBlock, 0.5, 1));
    GbSnapDataRefresh = true;
    EXPECT_FALSE(whole.IsItSameSnap(&hand.mBlock, 0.5, 1));
    EXPECT_TRUE(whole.IsItSameSnap(&hand.mBlock, 0.5, 1)) << "the flag is consumed";
}

TEST_F(SnapData, ThreadCountsGrowWithTheParticles) {
    const std::pair<long long, int> counts[] = {{0, 1},       {100000, 1},   {100001, 2},  {1000000, 2},
                                                {1000001, 3}, {10000000, 3}, {10000001, 4}};
    for (const auto& count : counts)
        EXPECT_EQ(ThreadSnapInterpolate_cls::GetThreadCount(count.first), count.second) << count.first;
}

TEST_F(SnapData, AColourThatIsOffAsksForNothing) {
    mAttribute[0]->mColor.mDependType.mValue = 6;
    SwitchOn(1, 4, -5, 5);
    HandBlock_st hand(100, 5);
    const SnapData_cls snap(&hand.mBlock, mAttribute, 0.25, 1);
    EXPECT_EQ(snap.mpValue1Dash[17], hand.mBlock.mpPos[17][1]) << "the first curve in use decides";
    SwitchOn(1, 1, -5, 5);
    const SnapData_cls plain(&hand.mBlock, mAttribute, 0.25, 1);
    EXPECT_FALSE(plain.mbValue1Dash);
}

TEST_F(SnapData, RangeAndHistogramOfADrivingScalar) {
    HandBlock_st hand(5000, 9);
    PDataBlock_cls& block = hand.mBlock;
    block.mpValue1[10] = std::nanf("");
    block.mpValue1[11] = INFINITY;
    block.mpRadius[12] = -INFINITY;
    const ParticleScalars_st scalars = ParticleScalars_st::Of(block);
    const auto value = [&block](unsigned depend, int i) {
        const float* v = depend < 6 ? block.mpPos[i] : block.mpVel[i];
        if (depend == 10) return static_cast<float>(block.mpID[i]);
        if (depend < 2) return depend == 0 ? block.mpValue1[i] : block.mpRadius[i];
        return depend % 4 == 2 ? std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]) : v[(depend + 1) % 4];
    };
    for (unsigned depend = 0; depend <= 10; ++depend)
        for (int classIndex = -1; classIndex < 4; ++classIndex) {
            std::vector<float> all;
            for (int i = 0; i < 5000; ++i) {
                const int type = block.mpType[i] > 3 ? 0 : block.mpType[i];
                if (std::isfinite(value(depend, i)) && (classIndex < 0 || type == classIndex))
                    all.push_back(value(depend, i));
            }
            float low;
            float high;
            ASSERT_TRUE(scalars.GetRange(depend, classIndex, &low, &high));
            EXPECT_FLOAT_EQ(low, *std::min_element(all.begin(), all.end())) << depend << " " << classIndex;
            EXPECT_FLOAT_EQ(high, *std::max_element(all.begin(), all.end())) << depend;
            const std::vector<float> bins = scalars.Count(depend, classIndex, low, high, 7);
            EXPECT_EQ(std::accumulate(bins.begin(), bins.end(), 0.0f), static_cast<float>(all.size()));
        }
    float low;
    float high;
    EXPECT_FALSE(ParticleScalars_st().GetRange(0, -1, &low, &high));
    std::fill_n(block.mpType, 5000, static_cast<unsigned char>(2));
    EXPECT_FALSE(scalars.GetRange(0, 1, &low, &high)) << "nobody is of this class";
    const std::vector<float> none = scalars.Count(0, -1, 3.0f, 3.0f, 4);
    EXPECT_EQ(std::accumulate(none.begin(), none.end(), 0.0f), 0.0f) << "a scale without extent";
    // A thinned snapshot has only every step-th particle, and values at its own time.
    const SnapData_cls snap(&block, mAttribute, 0.5, 10);
    const ParticleScalars_st thin = snap.GetScalars();
    const std::vector<float> bins = thin.Count(1, -1, -100.0f, 100.0f, 1);
    EXPECT_EQ(bins[0], 500.0f);
}
