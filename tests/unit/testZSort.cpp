#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "GL/DRAW/clsDepthSort.h"
#include "GL/DRAW/clsZSort.h"

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// Few different keys, so that many are equal, with every odd kind of float among them.
DrawList_t OddList(int number) {
    std::mt19937 random(unsigned(number) + 1);
    const float odd[] = {0.0f, -0.0f, kInf, -kInf, kNaN, -kNaN, 1e-42f, -1e-42f, 3e38f, -3e38f};
    DrawList_t list;
    for (int i = 0; i < number; ++i) {
        const unsigned pick = unsigned(random());
        const float plain = float(int(pick % 2001) - 1000) * 0.37f;
        list.push_back({i, pick % 9 == 0 ? odd[(pick / 9) % 10] : plain, float(i % 251)});
    }
    return list;
}

/// Keys of one spread each, which fill the buckets of the sort in ways of their own.
DrawList_t SpreadList(int number, int spread) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> even(0.0f, 1.0f);
    std::normal_distribution<float> normal(0.0f, 100.0f);
    DrawList_t list;
    for (int i = 0; i < number; ++i) {
        const float x = even(random);
        const float keys[] = {
            x,
            normal(random),
            std::ldexp(1.0f + x, int(x * 240.0f) - 120), // even in its logarithm
            7.0f,                                        // all alike
            float(i),                                    // in order
            float(-i),                                   // in reverse order
            1000.0f + 0.01f * x,                         // in one narrow band
            i % 99991 == 0 ? kInf : 1000.0f + 0.01f * x, // with few that spread the range
            x < 0.9f ? 0.0f : x * 1e30f,
            x < 0.5f ? std::floor(x * 10.0f) : kNaN,
        };
        list.push_back({i, keys[spread], 1.0f});
    }
    return list;
}
constexpr int kSpreads = 10;

bool Before(const ArrayAndIndex_cls& a, const ArrayAndIndex_cls& b) {
    if (std::isnan(a.mKey) || std::isnan(b.mKey)) return !std::isnan(a.mKey) && std::isnan(b.mKey);
    return a.mKey < b.mKey;
}

void ExpectStableOrder(DrawList_t list, const char* pWhat) {
    DrawList_t wanted = list;
    std::stable_sort(wanted.begin(), wanted.end(), Before);
    ZSort_cls::ZSortParallel(list);
    ASSERT_EQ(list.size(), wanted.size());
    for (size_t i = 0; i < list.size(); ++i) {
        ASSERT_EQ(list[i].mIndex, wanted[i].mIndex) << pWhat << ", place " << i << " of " << list.size();
        ASSERT_EQ(list[i].mAlpha, wanted[i].mAlpha);
        if (std::isnan(wanted[i].mKey))
            ASSERT_TRUE(std::isnan(list[i].mKey));
        else
            ASSERT_EQ(list[i].mKey, wanted[i].mKey);
    }
}

TEST(ZSort, IsTheStableComparisonSortAtEverySize) {
    // Below and above where the radix sort, further buckets and further threads begin.
    for (const int number : {0, 1, 2, 17, 2999, 3000, 3001, 8191, 8192, 49999, 100001, 250003})
        ExpectStableOrder(OddList(number), "odd keys");
}

TEST(ZSort, IsTheStableComparisonSortForEverySpreadOfKeys) {
    for (int spread = 0; spread < kSpreads; ++spread)
        for (const int number : {5000, 400000})
            ExpectStableOrder(SpreadList(number, spread), ("spread " + std::to_string(spread)).c_str());
}

// Else the order is right and only the time is wrong.
TEST(ZSort, BucketsAreMonotoneAndHoldAboutAsManyEach) {
    constexpr size_t kBuckets = 64;
    std::mt19937 random(9);
    std::uniform_real_distribution<float> even(0.0f, 1.0f);
    std::normal_distribution<float> normal(0.0f, 100.0f);
    for (int spread = 0; spread < 4; ++spread) {
        DrawList_t list;
        for (int i = 0; i < 200000; ++i) {
            const float x = even(random);
            // Even; around 0; even in its logarithm; one octave, and outliers on both sides.
            const float keys[] = {x, normal(random), std::ldexp(1.0f + x, int(x * 240.0f) - 120),
                                  i % 1000 == 0     ? kNaN
                                  : i % 1000 == 500 ? -1e30f
                                                    : 1.0f + x};
            list.push_back({i, keys[spread], 1.0f});
        }
        const DepthBuckets_cls buckets(list, kBuckets);
        std::vector<size_t> counts(kBuckets);
        std::vector<std::pair<uint32_t, size_t>> found;
        for (const ArrayAndIndex_cls& entry : list) {
            const uint32_t order = OrderOfFloat(entry.mKey);
            const size_t bucket = buckets.Find(order);
            ASSERT_LT(bucket, kBuckets);
            ++counts[bucket];
            found.emplace_back(order, bucket);
        }
        EXPECT_LT(*std::max_element(counts.begin(), counts.end()), 4 * list.size() / kBuckets) << spread;
        std::sort(found.begin(), found.end());
        for (size_t i = 1; i < found.size(); ++i)
            ASSERT_GE(found[i].second, found[i - 1].second) << spread;
    }
}

TEST(ZSort, KeysPutTheFarthestFirstAndEveryStepthEntryOnce) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> place(-5.0f, 5.0f);
    const int count = 300007;
    std::vector<float> flat(size_t(count) * 3);
    for (float& x : flat)
        x = place(random);
    const auto* pPos = reinterpret_cast<const float(*)[3]>(flat.data());
    const double eye[3] = {1.5, -20.0, 3.0};
    const double dir[3] = {0.6, 0.0, -0.8};
    for (const int step : {1, 3}) {
        for (const int mode : {ZSort_cls::PLANE_DEPTH, ZSort_cls::EYE_DISTANCE}) {
            DrawList_t list(static_cast<size_t>(count / step));
            EXPECT_EQ(ZSort_cls::ZSortPrepare(list.data(), count, step, pPos, eye, dir, mode), count / step);
            for (size_t i = 0; i < list.size(); ++i) {
                ASSERT_EQ(list[i].mIndex, int(i) * step);
                ASSERT_EQ(list[i].mAlpha, 1.0f);
                const float* p = pPos[list[i].mIndex];
                const double depth = p[0] * dir[0] + p[1] * dir[1] + p[2] * dir[2];
                const double square = (p[0] - eye[0]) * (p[0] - eye[0]) + (p[1] - eye[1]) * (p[1] - eye[1]) +
                                      (p[2] - eye[2]) * (p[2] - eye[2]);
                ASSERT_EQ(list[i].mKey, float(mode == ZSort_cls::PLANE_DEPTH ? -depth : -square)) << i;
            }
        }
    }
}

} // namespace
