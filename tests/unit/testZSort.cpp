#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

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

bool Before(const ArrayAndIndex_cls& a, const ArrayAndIndex_cls& b) {
    if (std::isnan(a.mKey) || std::isnan(b.mKey)) return !std::isnan(a.mKey) && std::isnan(b.mKey);
    return a.mKey < b.mKey;
}

TEST(ZSort, IsTheStableComparisonSortAtEverySize) {
    // Below and above where the radix sort and further threads begin.
    for (const int number : {0, 1, 2, 17, 2999, 3000, 3001, 49999, 100001, 250003}) {
        DrawList_t list = OddList(number);
        DrawList_t wanted = list;
        std::stable_sort(wanted.begin(), wanted.end(), Before);
        ZSort_cls::ZSortParallel(list);
        ASSERT_EQ(list.size(), wanted.size());
        for (size_t i = 0; i < list.size(); ++i) {
            ASSERT_EQ(list[i].mIndex, wanted[i].mIndex) << number << " entries, place " << i;
            ASSERT_EQ(list[i].mAlpha, wanted[i].mAlpha);
            if (!std::isnan(wanted[i].mKey)) {
                ASSERT_EQ(list[i].mKey, wanted[i].mKey);
            }
        }
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
