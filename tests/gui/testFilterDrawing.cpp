// Weights of filters in every way to draw particles.
#include <cmath>

#include "DrawTest.h"
#include "FilterPictures.h"

namespace {

class FilterDrawing : public DrawTest {
protected:
    void SetUp() override {
        DrawTest::SetUp();
        MakePlainTexture();
        for (auto& attribute : mAttribute) {
            attribute->mPointSize.mValue = 9;
            for (ColorCurve_cls* pCurve :
                 {&attribute->mColor, &attribute->mAmbient, &attribute->mDiffuse, &attribute->mSpecular})
                SetColor(*pCurve, 0.8f, 0.6f, 0.4f, 1.0f);
        }
    }
    struct Way_st {
        unsigned mClassify, mDrawType, mQuality, mRadiusType, mBlend;
        bool mbCurve;
    };
    void Use(const Way_st& way) {
        mOption.mClassify.mValue = way.mClassify;
        SetAll(way.mDrawType, way.mQuality, 2);
        for (auto& attribute : mAttribute) {
            attribute->mAlphaFactor.mValue = 1.0f;
            attribute->mRadiusType.mValue = way.mRadiusType;
            attribute->mRadiusFactorForConst.mValue = 0.4f;
            attribute->mBlendType.mValue = way.mBlend;
            for (ColorCurve_cls* pCurve :
                 {&attribute->mColor, &attribute->mAmbient, &attribute->mDiffuse, &attribute->mSpecular}) {
                pCurve->mbUseColorCurve.mValue = way.mbCurve;
                if (way.mbCurve) pCurve->SetKeys({{0, 0.8, 0.6, 0.4, 1}, {1, 0.8, 0.6, 0.4, 1}});
            }
        }
    }
    template <class TEST>
    void InEveryWay(TEST test) {
        for (const unsigned classify : {0u, 1u})
            for (const auto& [type, quality] : {std::pair(0u, 0u), {1u, 0u}, {1u, 1u}, {2u, 0u}, {2u, 3u}})
                for (const unsigned radius : {0u, 1u})
                    for (const unsigned blend : {0u, 1u})
                        for (const bool bCurve : {false, true}) {
                            const Way_st way = {classify, type, quality, radius, blend, bCurve};
                            SCOPED_TRACE(::testing::Message()
                                         << "classify " << classify << " type " << type << " quality "
                                         << quality << " radius " << radius << " blend " << blend << " curve "
                                         << bCurve);
                            Use(way);
                            test();
                        }
    }

    FilterScope_cls mFilters{*Hub()->mpCFilters};
    const std::vector<Particle_st> mOne = {{{0, 0, 0}, 0.4f}};
};

// A quarter of the way from full weight to none, by two filters.
TEST_F(FilterDrawing, SoftBordersFadeInEveryWay) {
    mFilters.AddCut(0, 0, 1.0f, {-0.75, 0, 0}, {1, 9, 9});
    mFilters.AddCut(0, 0, 1.0f, {0, 0.75, 0}, {9, 1, 9});
    FilterBase_cls& first = *Hub()->mpCFilters->GetBoolean().GetPCFilter(0);
    FilterBase_cls& second = *Hub()->mpCFilters->GetBoolean().GetPCFilter(1);
    InEveryWay([&] {
        const auto light = [&](bool bFirst, bool bSecond) {
            first.mpCData->mCValid.mValue = bFirst;
            second.mpCData->mCValid.mValue = bSecond;
            Draw(mOne);
            return Middle();
        };
        const Pixel_st full = light(false, false), half = light(true, false), quarter = light(true, true);
        ASSERT_GT(full.r, 0.3f);
        EXPECT_NEAR(half.r, 0.5f * full.r, 0.004f);
        EXPECT_NEAR(half.b, 0.5f * full.b, 0.004f);
        EXPECT_NEAR(quarter.g, 0.25f * full.g, 0.004f);
    });
}

// Where all weights are 1 a filter, soft or hard, changes no pixel.
TEST_F(FilterDrawing, WhatIsInsideLooksAsEverAndWhatIsOutsideIsGone) {
    const std::vector<Particle_st> pair = {{{-0.5f, 0, 0}, 0.3f}, {{0.5f, 0.2f, 0.3f}, 0.2f, 1}};
    FilterBooleanData_cls& cut = mFilters.AddCut(0, 0, 0.0f, {0, 0, 0}, {4, 4, 4});
    InEveryWay([&] {
        cut.mCValid.mValue = false;
        Draw(pair);
        const Picture_st plain = Picture();
        cut.mCValid.mValue = true;
        for (const float border : {0.0f, 0.1f}) {
            cut.mCBorderFactor.mValue = border;
            cut.mCOperatorType.mValue = 0;
            mOption.mSortOrder.mValue = 0;
            Draw(pair);
            EXPECT_TRUE(Picture().mRGB == plain.mRGB) << border;
            cut.mCOperatorType.mValue = 1;
            Draw(pair);
            EXPECT_EQ(CountLit(), 0) << border;
            mOption.mSortOrder.mValue = 1;
            Draw(pair);
            EXPECT_EQ(CountLit(), 0) << border;
            mOption.mSortOrder.mValue = 2;
            Draw(pair);
            EXPECT_GT(CountLit(), 0) << "this order knows no filter";
        }
        mOption.mSortOrder.mValue = 0;
    });
}

TEST_F(FilterDrawing, OneOfTwoStays) {
    mFilters.AddCut(0, 2, 0.0f, {-0.5, 0, 0}, {0.4, 0.4, 0.4});
    const double x = 0.5 * PixelsPerUnit();
    InEveryWay([&] {
        Draw({{{-0.5f, 0, 0}, 0.1f}, {{0.5f, 0, 0}, 0.1f}});
        EXPECT_GT(At(mSize / 2 - int(x), mSize / 2).r, 0.1f);
        EXPECT_LT(LitInRow(mSize / 2)[1], mSize / 2 + int(x) / 4);
    });
}

} // namespace
