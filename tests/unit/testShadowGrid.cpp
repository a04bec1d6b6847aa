// Blocks of small spheres' shadows: whoever holds a point is listed where the point is.
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "GL/DRAW/clsShadowGrid.h"

namespace {

ShadowShape_st MakeShape(bool bNear, double x, double y, double z, float length) {
    ShadowShape_st shape;
    shape.start = 0.1f;
    shape.length = length;
    const double norm = bNear ? 1.0 : std::sqrt(x * x + y * y + z * z);
    const double light[3] = {x / norm, y / norm, z / norm};
    shape.SetLight(bNear, light);
    return shape;
}

/// By the circles at both ends alone.
bool Holds(const ShadowShape_st& shape, const float* pBall, const double* p) {
    ShadowShape_st::Ends_st ends;
    if (!shape.GetEnds(pBall, pBall[3], ends)) return false;
    double axis[3], way[3], length = 0.0, along = 0.0, across = 0.0;
    for (int i = 0; i < 3; ++i) {
        axis[i] = double(ends.place[1][i]) - double(ends.place[0][i]);
        way[i] = p[i] - double(ends.place[0][i]);
        length += axis[i] * axis[i];
        along += axis[i] * way[i];
    }
    const double share = along / length;
    if (share < 0.001 || share > 0.999) return false;
    for (int i = 0; i < 3; ++i)
        across += std::pow(way[i] - share * axis[i], 2);
    return std::sqrt(across) <
           0.999 * (double(ends.radius[0]) + share * (double(ends.radius[1]) - double(ends.radius[0])));
}

ShadowGrid_cls::Point_st Locate(const ShadowGrid_cls& grid, const double* p) {
    double turn[3][3];
    grid.GetTurn(turn);
    ShadowGrid_cls::Point_st point{};
    for (size_t row = 0; row < 3; ++row) {
        double q = 0.0;
        for (int i = 0; i < 3; ++i)
            q += turn[row][i] * (p[i] - grid.GetOrigin()[i]);
        point.place[row] = static_cast<float>(q);
    }
    grid.Locate(point);
    return point;
}

bool IsListed(const ShadowGrid_cls& grid, const double* p, const float* pBall) {
    double turn[3][3];
    grid.GetTurn(turn);
    const uint32_t block = Locate(grid, p).block;
    const float* pEntry = nullptr;
    for (int32_t k = grid.GetStarts()[block]; k < grid.GetStarts()[block + 1]; ++k) {
        pEntry = grid.GetEntries().data() + 4 * static_cast<size_t>(k);
        double off = std::abs(double(pEntry[3]) - double(pBall[3]));
        for (int row = 0; row < 3; ++row) {
            double q = 0.0;
            for (int i = 0; i < 3; ++i)
                q += turn[row][i] * (double(pBall[i]) - grid.GetOrigin()[i]);
            off += std::abs(q - double(pEntry[row]));
        }
        if (off < 1e-3) return true;
    }
    return false;
}

struct Case_st {
    bool bNear;
    double x, y, z;
    float length;
    double offset; ///< of everything
    bool bMixed;
};

class ShadowGridBlocks : public testing::TestWithParam<Case_st> {};

TEST_P(ShadowGridBlocks, ListsWhoeverHoldsAPoint) {
    const Case_st& c = GetParam();
    const double far = c.bNear ? c.offset : 0.0;
    const ShadowShape_st shape = MakeShape(c.bNear, c.x + far, c.y + far, c.z + far, c.length);
    ShadowGrid_cls grid(shape);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> side(-1.0, 1.0);
    std::vector<std::array<float, 4>> balls;
    for (int i = 0; i < 1500; ++i) {
        const float radius = c.bMixed ? (i % 100 == 0 ? 0.6f : 0.02f + 0.02f * float(i % 5)) : 0.04f;
        balls.push_back({float(side(random) + c.offset), float(side(random) + c.offset),
                         float(side(random) + c.offset), radius});
        // Out of the way of the table's size.
        if (i % 300 == 0) balls.back()[0] += 1e4f;
        grid.Add(balls.back().data(), radius);
    }
    const std::vector<size_t> out = grid.Sort();
    std::vector<bool> bOut(balls.size());
    for (const size_t i : out)
        bOut[i] = true;
    EXPECT_LT(out.size(), balls.size() / (c.bNear && c.bMixed ? 4 : 10));
    size_t held = 0, missing = 0, unseen = 0;
    for (int n = 0; n < 4000; ++n) {
        const double p[3] = {1.3 * side(random) + c.offset, 1.3 * side(random) + c.offset,
                             1.3 * side(random) + c.offset};
        for (size_t i = 0; i < balls.size(); ++i) {
            if (bOut[i] || !Holds(shape, balls[i].data(), p)) continue;
            ++held;
            missing += !IsListed(grid, p, balls[i].data());
            unseen += !grid.IsInShadow(Locate(grid, p));
        }
    }
    EXPECT_GT(held, 300u);
    EXPECT_EQ(missing, 0u);
    EXPECT_LE(unseen, held / 50) << "but for what floats round, as the first sphere is far out";
    // Whoever does the work.
    const std::vector<int32_t> starts = grid.GetStarts();
    const std::vector<float> entries = grid.GetEntries();
    for (const int threads : {1, 2, 7}) {
        EXPECT_EQ(grid.Sort(threads), out);
        EXPECT_EQ(grid.GetStarts(), starts);
        EXPECT_EQ(grid.GetEntries(), entries);
    }
    grid.Clear();
    EXPECT_TRUE(grid.Sort().empty());
    EXPECT_EQ(grid.GetStarts().back(), 0);
}

TEST(ShadowGrid, LeavesOutWhatThereIsNoRoomFor) {
    ShadowGrid_cls grid(MakeShape(false, 0.3, 0.5, 0.8, 20.0f));
    std::mt19937 random(5);
    std::uniform_real_distribution<float> side(-1.0f, 1.0f);
    for (int i = 0; i < 1200000; ++i) {
        const float place[3] = {side(random), side(random), side(random)};
        grid.Add(place, 0.01f);
    }
    const std::vector<size_t> out = grid.Sort(1);
    const std::vector<int32_t> starts = grid.GetStarts();
    const std::vector<float> entries = grid.GetEntries();
    EXPECT_LT(out.size(), 1000000u);
    EXPECT_GT(out.size(), 1000u);
    EXPECT_LE(entries.size(), 4 * (ShadowGrid_cls::kMostEntries + ShadowGrid_cls::kSpareEntries));
    EXPECT_GT(entries.size(), 4 * ShadowGrid_cls::kMostEntries - 1000);
    EXPECT_EQ(grid.Sort(3), out);
    EXPECT_TRUE(grid.GetStarts() == starts);
    EXPECT_TRUE(grid.GetEntries() == entries);
}

INSTANTIATE_TEST_SUITE_P(Lights, ShadowGridBlocks,
                         testing::Values(Case_st{false, 0.3, 0.5, 0.8, 20.0f, 0.0, false},
                                         Case_st{false, 0, 0, 1, 20.0f, 100.0, true},
                                         Case_st{false, -1, 0.2, 0, 3000.0f, 0.0, false},
                                         Case_st{true, 2, 1, 3, 20.0f, 0.0, false},
                                         Case_st{true, 0.1, 0.1, 0.1, 20.0f, 0.0, true},
                                         Case_st{true, 40, 1, 3, 20.0f, 100.0, true}));

// A light within a sphere or beside one, shadows without end: nothing is lost, nothing is endless.
TEST(ShadowGridLimits, LeavesOutWhatIsNotWorthIt) {
    ShadowGrid_cls endless(MakeShape(true, 5, 0, 0, 1e6f));
    ShadowGrid_cls inside(MakeShape(true, 0, 0, 0, 20.0f));
    const float balls[2][3] = {{0, 0, 0}, {1, 1, 1}};
    for (const float* p : balls) {
        endless.Add(p, 0.1f);
        inside.Add(p, 0.1f);
    }
    EXPECT_TRUE(endless.Sort().empty());
    EXPECT_LT(endless.GetEntries().size(), 4u * 200u);
    EXPECT_TRUE(inside.Sort().empty());
    EXPECT_EQ(endless.GetBall(1)[3], 0.1f);

    ShadowGrid_cls beside(MakeShape(true, 0, 0, 0.2, 20.0f));
    const float small[3][3] = {{5, 0, 0}, {0, 5, 0}, {3, 4, 0}};
    beside.Add(balls[0], 0.15f);
    for (const float* p : small)
        beside.Add(p, 0.02f);
    EXPECT_EQ(beside.Sort(), std::vector<size_t>{0});
}

} // namespace
