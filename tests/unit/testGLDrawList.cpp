#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "GL/BASE/clsFBO.h"
#include "GL/DRAW/clsDrawList.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsZSort.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// Particles on the x axis.
struct Row {
    explicit Row(std::vector<float> x) {
        for (const float v : x)
            flat.insert(flat.end(), {v, 0.0f, 0.0f});
    }
    const float (*Get() const)[3] { return reinterpret_cast<const float(*)[3]>(flat.data()); }
    int Count() const { return int(flat.size() / 3); }
    std::vector<float> flat;
};

std::vector<int> Indices(const Row& row, int step, const DrawListOrder& order) {
    DrawList_t list;
    MakeDrawList(list, row.Count(), step, row.Get(), order);
    std::vector<int> indices;
    for (const ArrayAndIndex_cls& entry : list) {
        EXPECT_EQ(entry.mAlpha, 1.0f);
        indices.push_back(entry.mIndex);
    }
    return indices;
}

DrawListOrder LookingAlongX(unsigned sortOrder, bool planeDepth, double eyeX) {
    DrawListOrder order;
    order.sortOrder = sortOrder;
    order.planeDepth = planeDepth;
    order.cameraPos[0] = eyeX;
    order.cameraDir[0] = 1;
    order.cameraDir[2] = 0;
    return order;
}

using Ints = std::vector<int>;

TEST(GLDrawList, WithoutSortEveryStepthParticleInFileOrder) {
    const Row row({5, 4, 3, 2, 1});
    EXPECT_EQ(Indices(row, 1, {}), (Ints{0, 1, 2, 3, 4}));
    EXPECT_EQ(Indices(row, 2, {}), (Ints{0, 2, 4}));
    EXPECT_EQ(Indices(row, 9, {}), (Ints{0}));
    EXPECT_EQ(Indices(row, 0, {}), (Ints{0, 1, 2, 3, 4}));
    EXPECT_TRUE(Indices(Row({}), 1, {}).empty());
}

TEST(GLDrawList, TransparentOrderIsFarthestFirst) {
    const Row row({3, -8, 7, 1});
    // Depth along the view knows no distance: what is behind the eye comes last.
    EXPECT_EQ(Indices(row, 1, LookingAlongX(SORT_FAR_FIRST, true, 0)), (Ints{2, 0, 3, 1}));
    EXPECT_EQ(Indices(row, 1, LookingAlongX(SORT_FAR_FIRST, false, 0)), (Ints{1, 2, 0, 3}));
    EXPECT_EQ(Indices(row, 1, LookingAlongX(SORT_FAR_FIRST, false, 6)), (Ints{1, 3, 0, 2}));
}

TEST(GLDrawList, SolidOrderIsNearestFirst) {
    const Row row({3, -8, 7, 1});
    EXPECT_EQ(Indices(row, 1, LookingAlongX(SORT_NEAR_FIRST, true, 0)), (Ints{3, 0, 2, 1}));
}

TEST(GLDrawList, TransparentOrderCountsOnlyWholeSteps) {
    const Row row({1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(Indices(row, 3, LookingAlongX(SORT_FAR_FIRST, true, 0)), (Ints{3, 0}));
    EXPECT_EQ(Indices(row, 3, LookingAlongX(SORT_NEAR_FIRST, true, 0)), (Ints{0, 3, 6}));
}

TEST(GLDrawList, KeysThatAreNoNumbersComeLast) {
    const Row row({kNaN, 2, kNaN, 9, 4});
    EXPECT_EQ(Indices(row, 1, LookingAlongX(SORT_FAR_FIRST, true, 0)), (Ints{3, 4, 1, 0, 2}));
    EXPECT_EQ(Indices(row, 1, LookingAlongX(SORT_NEAR_FIRST, true, 0)), (Ints{1, 4, 3, 0, 2}));
    EXPECT_EQ(Indices(Row({kNaN, kNaN}), 1, LookingAlongX(SORT_FAR_FIRST, false, 0)), (Ints{0, 1}));
}

TEST(GLDrawList, ManyEntriesWithScatteredBadKeysAreOrdered) {
    DrawList_t list;
    unsigned seed = 1;
    for (int i = 0; i < 20000; ++i) {
        seed = seed * 1664525u + 1013904223u;
        list.push_back({i, i % 7 == 0 ? kNaN : float(seed >> 20), 1.0f});
    }
    ZSort_cls::ZSortParallel(list);
    const size_t bad = (20000 + 6) / 7;
    for (size_t i = 1; i < list.size() - bad; ++i)
        ASSERT_LE(list[i - 1].mKey, list[i].mKey) << i;
    for (size_t i = list.size() - bad; i < list.size(); ++i)
        ASSERT_TRUE(list[i].mKey != list[i].mKey) << i;
}

TEST(GLDrawList, LinesKeepTheirShareOfEveryBuffer) {
    const int sizes[] = {256, 512, 1024, 2048, 4096};
    for (const int size : sizes)
        EXPECT_FLOAT_EQ(FBO_cls::GetLineWidthFactor(size) * 2048.0f, float(size));
    EXPECT_FLOAT_EQ(FBO_cls::GetLineWidthFactor(300), 1.0f);
}

} // namespace
