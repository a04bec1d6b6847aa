// Weights of particles by regions and numbers, against plain loops of their definitions.
#include "FilterFixture.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "FILTER/clsFilterFiltering.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

using Boolean = FilterBooleanData_cls;

struct Cut_st {
    unsigned mOperator, mRegion;
    float mBorder;
    Place_t mCentre, mScale;
};

float SoftFactor(float d, float h, float b) {
    if (d > h * (1.0f + b)) return 0.0f;
    if (h < d && d <= h * (1.0f + b)) return 1.0f - (d - h) / (h * b);
    if (-h < d && d <= h) return 1.0f;
    if (-h * (1.0f + b) < d && d <= -h) return 1.0f + (d + h) / (h * b);
    return 0.0f;
}

float Weigh(const Cut_st& cut, const Place_t& p, float w) {
    float d[3], f = 1.0f;
    for (size_t i = 0; i < 3; ++i)
        d[i] = p[i] - cut.mCentre[i];
    const Place_t& s = cut.mScale;
    if (cut.mRegion == Boolean::SPHERE) {
        f = d[0] * d[0] / s[0] / s[0] + d[1] * d[1] / s[1] / s[1] + d[2] * d[2] / s[2] / s[2] < 0.25f ? 1.0f
                                                                                                      : 0.0f;
    } else {
        for (size_t i = 0; i < 3; ++i) {
            const float h = s[i] * 0.5f;
            f *= cut.mBorder != 0.0f ? SoftFactor(d[i], h, cut.mBorder) : h > d[i] && d[i] > -h ? 1.0f : 0.0f;
        }
    }
    if (cut.mOperator == Boolean::INTERSECT) return w * f;
    if (cut.mOperator == Boolean::DIFFERENCE) return w * (1.0f - f);
    return cut.mOperator == Boolean::ADD ? std::min(1.0f, w + f) : w;
}

class FilterWeights : public FilterTest {
protected:
    /// Every weight to the bit, and the order.
    void Expect(const std::vector<Place_t>& places, const std::vector<Cut_st>& cuts) {
        mLists.ClearFilters();
        for (const Cut_st& cut : cuts)
            AddCut(cut.mOperator, cut.mRegion, cut.mBorder, cut.mCentre, cut.mScale);
        const DrawList_t list = Kept(places);
        size_t k = 0;
        for (size_t i = 0; i < places.size(); ++i) {
            float w = 1.0f;
            for (const Cut_st& cut : cuts)
                w = Weigh(cut, places[i], w);
            if (!(w > 0.0f)) continue;
            ASSERT_LT(k, list.size());
            ASSERT_EQ(list[k].mIndex, int(i));
            ASSERT_EQ(std::memcmp(&list[k].mAlpha, &w, sizeof w), 0)
                << i << ": " << list[k].mAlpha << " " << w;
            ++k;
        }
        EXPECT_EQ(k, list.size());
    }
    std::vector<int> Listed(const wxString& text, unsigned type, int particles = 10) {
        mLists.ClearFilters();
        auto& filter = Add<FilterFiltering_cls>(FILTER_FILTERING);
        filter.GetPCData()->mCFilteringString.mStrValue = text;
        filter.GetPCData()->mCFilteringType.mValue = type;
        return Indices(particles);
    }
    std::vector<int> Indices(int particles) {
        std::vector<int> indices;
        for (const ArrayAndIndex_cls& entry : Kept(std::vector<Place_t>(size_t(particles))))
            indices.push_back(entry.mIndex);
        return indices;
    }
};

using Ints = std::vector<int>;

TEST_F(FilterWeights, RegionsWeighAsTheirFormulasToTheBit) {
    const auto places = Scatter(3000, 2.0f);
    for (const unsigned op : {0u, 1u, 2u, 3u, 77u})
        for (const unsigned region : {0u, 1u, 2u})
            for (const float border : {0.0f, 0.01f, 0.7f, 3.0f, -0.5f, kNaN, kInf})
                // A first cut leaves weights between 0 and 1 for the second.
                Expect(places, {{0, 0, 0.9f, {0.3f, 0, 0}, {1.7f, 2, 1.1f}},
                                {op, region, border, {-0.1f, 0.2f, 0.5f}, {2.3f, 1.9f, 2.6f}}});
}

TEST_F(FilterWeights, WallsBandsAndOddNumbers) {
    std::vector<Place_t> places;
    for (const float x : {0.0f, 1.0f, -1.0f, std::nextafter(1.0f, 0.0f), 1.005f, -1.005f, 1.01f, -1.01f,
                          std::nextafter(1.01f, 0.0f), 1.02f, kNaN, kInf, -kInf, 1e30f})
        for (const float y : {0.0f, 1.004f})
            places.push_back({x, y, 0.0f});
    for (const float border : {0.0f, 0.01f, -2.0f, kInf})
        for (const unsigned region : {0u, 2u})
            for (const unsigned op : {0u, 1u, 2u})
                for (const float sx : {2.0f, 0.0f, -2.0f, kInf, -kInf, 1e-30f})
                    Expect(places, {{0, 0, 0.5f, {0, 0, 0}, {3, 3, 3}},
                                    {op, region, border, {0, 0, 0}, {sx, 2.0f, 2.0f}}});
    mLists.ClearFilters();
    AddCut(0, 0, 0.0f, {0, 0, 0}, {2, 2, 2});
    EXPECT_TRUE(Kept({{1, 0, 0}, {-1, 0, 0}}).empty()) << "on the wall is outside";
    mLists.ClearFilters();
    AddCut(0, 0, 0.25f, {0, 0, 0}, {2, 2, 2});
    const DrawList_t list = Kept({{1.125f, 0, 0}, {1, 0, 0}, {1.25f, 0, 0}});
    ASSERT_EQ(list.size(), 2u) << "nothing at the end of the border";
    EXPECT_EQ(list[0].mAlpha, 0.5f);
    EXPECT_EQ(list[1].mAlpha, 1.0f);
}

TEST_F(FilterWeights, OnASurfaceTheLastBitDecides) {
    const Place_t scale = {1.3f, 2.7f, 0.9f};
    std::vector<Place_t> places = Scatter(4000, 1.0f);
    size_t k = 0;
    for (Place_t& p : places) {
        const double length = std::sqrt(double(p[0]) * double(p[0]) + double(p[1]) * double(p[1]) +
                                        double(p[2]) * double(p[2]));
        const double onto = 0.5 * (1.0 + 1e-8 * double(int(k++ % 200) - 100)) / length;
        for (size_t i = 0; i < 3; ++i)
            p[i] = float(double(p[i]) * onto * double(scale[i]));
    }
    for (const float size : {1.0f, -1.0f, 1e-4f, 3e8f, 1e12f, 1e-12f, 1e-20f}) {
        std::vector<Place_t> sized = places;
        for (Place_t& p : sized)
            for (float& x : p)
                x *= size;
        Expect(sized, {{0, 2, 0.0f, {0, 0, 0}, {scale[0] * size, scale[1] * size, scale[2] * size}}});
        Expect(sized, {{1, 2, 0.0f, {0, 0, 0}, {scale[0] * size, scale[1] * size, scale[2] * size}}});
    }
    Expect(places, {{0, 2, 0.0f, {0, 0, 0}, scale}});
    const size_t inside = Kept(places).size();
    EXPECT_GT(inside, 1000u);
    EXPECT_LT(inside, 3000u);
}

TEST_F(FilterWeights, SlicesOfThreadsMeetWithoutAGap) {
    for (const int count : {1, 2, 1023, 1025, 10000, 10001, 100001, 1000003})
        Expect(Scatter(count, 1.0f), {{0, 0, 0.3f, {0.1f, 0, 0}, {1.3f, 1.5f, 1.4f}}});
}

TEST_F(FilterWeights, OrderOfTheListDecides) {
    const Cut_st keep = {Boolean::INTERSECT, 0, 0.0f, {0, 0, 0}, {2, 2, 2}};
    const Cut_st add = {Boolean::ADD, 0, 0.0f, {3, 0, 0}, {2, 2, 2}};
    const std::vector<Place_t> places = {{0, 0, 0}, {3, 0, 0}, {6, 0, 0}};
    Expect(places, {keep, add});
    EXPECT_EQ(Kept(places).size(), 2u);
    Expect(places, {add, keep});
    EXPECT_EQ(Kept(places).size(), 1u);
    // Invalid ones are as good as gone; a turned region cuts as if it weren't.
    mLists.GetBoolean().GetPCFilter(1)->mpCData->mCValid.mValue = false;
    EXPECT_EQ(Kept(places).size(), 3u);
    mLists.GetBoolean().GetPCFilter(1)->mpCData->mCValid.mValue = true;
    SetValues(mLists.GetBoolean().GetPCFilter(1)->mpCData->mpCRotate, 0, 0, 45);
    EXPECT_EQ(Kept({{0.99f, 0.99f, 0}, {1.2f, 0, 0}}).size(), 1u);
}

TEST_F(FilterWeights, SolidOrderKnowsNoRegionAndStepsStay) {
    const auto places = Scatter(100, 1.0f);
    AddCut(0, 0, 0.0f, {5, 5, 5}, {1, 1, 1});
    DrawList_t list;
    for (const unsigned order : {0u, 1u, 2u}) {
        DrawListOrder how;
        how.sortOrder = order;
        MakeDrawList(list, 100, 1, Raw(places), how, &mLists.GetBoolean(), 0.0);
        EXPECT_EQ(list.size(), order == 2 ? 100u : 0u);
    }
    mLists.ClearFilters();
    AddCut(0, 0, 0.0f, {0, 0, 0}, {1, 1, 1});
    for (const ArrayAndIndex_cls& entry : Kept(places, 7)) {
        EXPECT_EQ(entry.mIndex % 7, 0);
        for (const float v : places[size_t(entry.mIndex)])
            EXPECT_LT(std::fabs(v), 0.5f);
    }
}

TEST_F(FilterWeights, NumbersAreReadBlockByBlock) {
    EXPECT_EQ(Listed("0-2,5", 0), (Ints{0, 1, 2, 5}));
    EXPECT_EQ(Listed("-5", 0), (Ints{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(Listed("abc", 0), Ints{0});
    EXPECT_EQ(Listed("", 0), Ints{});
    EXPECT_EQ(Listed("", 1).size(), 10u);
    EXPECT_EQ(Listed("", 2), Ints{}) << "what lies beyond the list is out";
    EXPECT_EQ(Listed("5-2", 0), Ints{});
    EXPECT_EQ(Listed("5-2", 2), (Ints{0, 1, 2})) << "its end says how far the list goes";
    EXPECT_EQ(Listed(" 3 , 7 - 8 ,+1", 0), (Ints{1, 3, 7, 8}));
    EXPECT_EQ(Listed("4-,6-x,2--1", 0), (Ints{2, 4, 6})) << "what is no number is no end";
    EXPECT_EQ(Listed("0-2,5", 1), (Ints{3, 4, 6, 7, 8, 9}));
    EXPECT_EQ(Listed("4-6,5-9,0,2-2", 0), (Ints{0, 2, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(Listed("1-3", 3).size(), 10u) << "an operation that only files know";
    EXPECT_EQ(FilterFiltering_cls::GetFin(L"3"), -1);
    EXPECT_EQ(FilterFiltering_cls::GetIni(L"99999999999999999999"),
              std::numeric_limits<long long>::max() - 1);
}

TEST_F(FilterWeights, LongListsTakeNoMoreThanTheParticlesNeed) {
    EXPECT_EQ(Listed("0-99999999999", 0).size(), 10u);
    EXPECT_EQ(Indices(1000).size(), 1000u) << "more particles than at first";
    EXPECT_EQ(Listed(wxString(',', 1 << 20), 0), Ints{0});
    wxString ranges;
    for (int i = 0; i < 60000; ++i)
        ranges += wxString::Format("%d-900000000,", 60000 - i);
    EXPECT_EQ(Listed(ranges, 1, 100000), Ints{0});
    // A new list begins with nothing flagged.
    EXPECT_EQ(Listed("0-5", 0).size(), 6u);
    static_cast<FilterFiltering_cls&>(*mLists.GetBoolean().GetPCFilter(0))
        .GetPCData()
        ->mCFilteringString.mStrValue = "2-5";
    EXPECT_EQ(Indices(10), (Ints{2, 3, 4, 5}));
}

TEST_F(FilterWeights, ForcedParticlesComeBackInTheListsOrder) {
    AddCut(0, 0, 0.0f, {9, 9, 9}, {1, 1, 1});
    auto& filter = Add<FilterFiltering_cls>(FILTER_FILTERING);
    filter.GetPCData()->mCFilteringType.mValue = 2;
    filter.GetPCData()->mCFilteringString.mStrValue = "3,1";
    EXPECT_EQ(Indices(10), (Ints{1, 3}));
    mLists.GetBoolean().MoveFilterExe(0, 1);
    EXPECT_EQ(Indices(10), Ints{});
}

} // namespace
