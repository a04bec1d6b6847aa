// Pairs by distance against the plain loops over all particles: same sticks, same order, same bits.
#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <system_error>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "BOND/PairMessages.h"
#include "BOND/clsPairFinder.h"
#include "COMMON/WideRegisters.h"
#include "StickTestTools.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

StickRule_st MakeRule(int crit, float a, float b, int spec = 0) {
    StickRule_st rule;
    rule.mCritType = crit;
    rule.mA = a;
    rule.mB = b;
    rule.mSpecType = spec;
    rule.mSpecB = 2;
    return rule;
}

StickList_st Find(const StickData_st& data, const StickRule_st& rule, const StickCell_st& cell = {},
                  int threads = 2, bool bWide = HasWideRegisters()) {
    StickList_st list;
    const StickParticles_st particles = data.Get();
    PairFinder_cls finder(particles, rule, cell);
    finder.mThreads = threads;
    finder.mbWide = bWide;
    EXPECT_EQ(finder.Find(&list), PairEnd::Whole);
    return list;
}

/// All three rules and both type rules.
void ExpectAllAsPlain(const StickData_st& data, float a, float b, const char* what) {
    for (int crit = -1; crit <= 3; ++crit)
        for (int spec = 0; spec <= 2; ++spec) {
            const StickRule_st rule = MakeRule(crit, a, b, spec);
            const auto ours = GetTuples(Find(data, rule));
            EXPECT_EQ(ours, FindPlainly(data, rule))
                << what << " rule " << crit << " types " << spec << " A " << a << " B " << b;
        }
}

} // namespace

TEST(PairFinder, RandomParticlesGiveThePairsOfThePlainLoop) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const StickData_st data = MakeRandomParticles(seed, 700, 6.0f);
        ExpectAllAsPlain(data, 0.7f, 1.1f, "random");
        ExpectAllAsPlain(data, 1.1f, 0.7f, "random");
        ExpectAllAsPlain(data, -0.5f, 0.9f, "negative A");
        ExpectAllAsPlain(data, 0.5f, -0.9f, "negative B");
    }
    EXPECT_GT(Find(MakeRandomParticles(1, 700, 6.0f), MakeRule(0, 0.7f, 0)).GetNumber(), 500u);
}

TEST(PairFinder, ThreadsAndProcessorsChangeNothing) {
    const StickData_st data = MakeRandomParticles(9, 6000, 12.0f);
    for (const int crit : {0, 1, 2}) {
        const StickRule_st rule = MakeRule(crit, 0.5f, 0.9f);
        const auto wanted = FindPlainly(data, rule);
        for (const int threads : {1, 2, 3, 7})
            EXPECT_EQ(GetTuples(Find(data, rule, {}, threads)), wanted) << threads;
        EXPECT_EQ(GetTuples(Find(data, rule, {}, 2, false)), wanted) << "narrow registers";
    }
    // From no hit a particle to more than are sorted at once.
    for (const float edge : {20.0f, 2.0f, 1.0f}) {
        const StickData_st dense = MakeRandomParticles(10, 400, edge);
        for (const int crit : {0, 1}) {
            const StickRule_st rule = MakeRule(crit, 0.8f, 1.0f);
            const auto wanted = FindPlainly(dense, rule);
            EXPECT_EQ(GetTuples(Find(dense, rule)), wanted) << edge;
            EXPECT_EQ(GetTuples(Find(dense, rule, {}, 1, false)), wanted) << edge << " narrow registers";
        }
    }
}

TEST(PairFinder, GroupsFlatsLinesAndOutliersAreNoTrouble) {
    std::mt19937 random(3);
    std::normal_distribution<float> near(0.0f, 0.3f);
    StickData_st groups = MakeRandomParticles(3, 40, 1e6f);
    for (size_t g = 0; g < 40; ++g)
        for (int i = 0; i < 12; ++i) {
            const std::array<float, 3> c = groups.pos[g];
            groups.pos.push_back({c[0] + near(random), c[1] + near(random), c[2] + near(random)});
            groups.type.push_back(static_cast<unsigned char>(i % 3));
        }
    ExpectAllAsPlain(groups, 0.4f, 0.7f, "groups");
    for (const float far : {1e10f, 1e18f, 1e30f, 3e38f}) {
        StickData_st data = MakeRandomParticles(5, 300, 4.0f);
        data.pos[17] = {far, -far, 0.0f};
        data.pos[18] = {far, -far, 0.0f}; // coincident, too
        data.pos[19] = {-far, 1.0f, 1.0f};
        ExpectAllAsPlain(data, 0.5f, 0.8f, "outliers");
    }
    StickData_st flat = MakeRandomParticles(6, 500, 10.0f);
    for (auto& p : flat.pos)
        p[2] = 5.0f;
    ExpectAllAsPlain(flat, 0.5f, 0.8f, "flat");
    for (auto& p : flat.pos)
        p[0] = -1e5f;
    ExpectAllAsPlain(flat, 0.1f, 0.2f, "line");
}

TEST(PairFinder, DistancesOnTheLimitsFallAsInThePlainLoop) {
    // A lattice: all distances are limits or multiples of them, also in floats that aren't exact.
    for (const float edge : {1.0f, 0.1f, 0.3f, 1.0f / 3.0f}) {
        StickData_st data;
        for (int x = -4; x < 4; ++x)
            for (int y = -4; y < 4; ++y)
                for (int z = -3; z < 3; ++z) {
                    data.pos.push_back({edge * float(x), edge * float(y), edge * float(z)});
                    data.type.push_back(static_cast<unsigned char>((x + y + z) & 1));
                }
        ExpectAllAsPlain(data, edge, 2.0f * edge, "lattice");
        ExpectAllAsPlain(data, edge, std::sqrt(2.0f) * edge, "lattice");
        ExpectAllAsPlain(data, std::nextafter(edge, 9.0f), std::sqrt(3.0f) * edge, "lattice");
    }
    // Exactly at A nothing is kept, neither below nor above.
    StickData_st two;
    two.pos = {{0, 0, 0}, {1, 0, 0}};
    EXPECT_EQ(Find(two, MakeRule(0, 1, 2)).GetNumber(), 0u);
    EXPECT_EQ(Find(two, MakeRule(1, 1, 2)).GetNumber(), 0u);
    EXPECT_EQ(Find(two, MakeRule(2, 1, 2)).GetNumber(), 0u);
    two.pos[1][0] = 1.5f;
    const StickList_st ramp = Find(two, MakeRule(1, 1, 2));
    ASSERT_EQ(ramp.GetNumber(), 1u);
    EXPECT_EQ(ramp.mvFactor[0], 0.5f);
    EXPECT_EQ(Find(two, MakeRule(1, 2, 2)).GetNumber(), 0u) << "A being B";
}

TEST(PairFinder, CoincidentAndBrokenPlacesAreAsInThePlainLoop) {
    StickData_st data = MakeRandomParticles(11, 150, 3.0f);
    for (size_t i = 70; i < 120; i += 5)
        data.pos[i] = data.pos[i + 1];
    data.pos[3][0] = kNaN;
    data.pos[50] = {kInf, 0, 0};
    data.pos[51] = {kInf, 0, 0};
    data.pos[52] = {0, -kInf, kNaN};
    data.pos[60] = {0.0f, -0.0f, 1e-44f};
    data.pos[61] = {-0.0f, 0.0f, 0.0f};
    const float values[] = {0.0f, -0.0f, 0.6f, -0.6f, kNaN, kInf, -kInf, 1e-22f, 1e-30f, 1e25f, 3e38f};
    for (const float a : values)
        for (const float b : values)
            ExpectAllAsPlain(data, a, b, "broken");
    StickData_st same;
    same.pos.assign(50, {1.0f, 2.0f, 3.0f});
    ExpectAllAsPlain(same, 1.0f, 2.0f, "all in one place");
    same.pos.clear();
    ExpectAllAsPlain(same, 1.0f, 2.0f, "none");
}

TEST(PairFinder, SmallestFloatsHaveTheirNeighbours) {
    StickData_st data = MakeRandomParticles(12, 200, 1.0f);
    for (auto& p : data.pos)
        for (float& x : p)
            x *= 3e-22f;
    ExpectAllAsPlain(data, 1e-22f, 2e-22f, "squares are denormal");
    ExpectAllAsPlain(data, 4e-23f, 5e-23f, "squares are the smallest float");
}

TEST(PairFinder, OnlyFilledParticlesCount) {
    StickData_st data = MakeRandomParticles(13, 801, 3.0f);
    data.step = 4;
    for (size_t i = 0; i < data.pos.size(); ++i)
        if (i % 4 != 0) data.pos[i] = data.pos[0];
    ExpectAllAsPlain(data, 0.6f, 0.9f, "every fourth");
    StickRule_st rule = MakeRule(0, 0.6f, 0.9f);
    rule.mbAcross = true;
    EXPECT_EQ(GetTuples(Find(data, rule, MakeCube(3.0f))), FindPlainly(data, rule, MakeCube(3.0f)));
}

TEST(PairFinder, AcrossFacesMeetsThePlainLoopOverImages) {
    StickCell_st slanted;
    slanted.mType = 2;
    const float base[3][3] = {{5, 0, 0}, {2, 4.5f, 0}, {-1, 1, 4}};
    std::copy_n(&base[0][0], 9, &slanted.mBase[0][0]);
    slanted.mSize[1] = 1.25f; // of the coordinate, not of the vector
    StickCell_st broken = MakeCube(5.0f);
    broken.mBase[0][0] = 0.0f;
    broken.mBase[1][2] = kNaN;
    StickCell_st open = MakeCube(5.0f);
    open.mType = 0;
    const StickCell_st cells[] = {MakeCube(5.0f), MakeCube(5.0f, 1), slanted, MakeCube(0.5f), broken, open};
    for (const StickCell_st& cell : cells)
        for (int crit = 0; crit < 3; ++crit)
            for (int spec = 0; spec < 2; ++spec) {
                const StickData_st data = MakeRandomParticles(20 + unsigned(crit), 260, 5.0f);
                StickRule_st rule = MakeRule(crit, 0.8f, 1.2f, spec);
                rule.mbAcross = true;
                const auto ours = GetTuples(Find(data, rule, cell));
                EXPECT_EQ(ours, FindPlainly(data, rule, cell)) << crit << spec;
                rule.mbAcross = false;
                const auto inside = GetTuples(Find(data, rule, cell));
                EXPECT_TRUE(std::equal(inside.begin(), inside.end(), ours.begin())) << "they come first";
            }
    // Far from the origin, where sums of places and offsets are coarse.
    StickData_st data = MakeRandomParticles(30, 200, 8.0f);
    for (auto& p : data.pos)
        p[0] += 1e6f, p[2] -= 2e6f;
    StickRule_st rule = MakeRule(0, 1.0f, 0.0f);
    rule.mbAcross = true;
    EXPECT_EQ(GetTuples(Find(data, rule, MakeCube(8.0f))), FindPlainly(data, rule, MakeCube(8.0f)));
    // No larger than the box: every image is another partner, and the particle itself.
    StickData_st one;
    one.pos = {{0.5f, 0.5f, 0.5f}};
    rule.mA = 1.01f;
    EXPECT_EQ(Find(one, rule, MakeCube(1.0f)).GetNumber(), 3u);
}

TEST(PairFinder, EveryBondOfARepeatedBoxIsDrawnOnce) {
    // Copies of the box drawn with their sticks are the same as one big box of copies, but for what leaves
    // it.
    const float edge = 3.0f;
    const StickData_st data = MakeRandomParticles(40, 60, edge);
    StickRule_st rule = MakeRule(0, 0.9f, 0);
    rule.mbAcross = true;
    const StickList_st list = Find(data, rule, MakeCube(edge));
    const int cells[3] = {2, 3, 2};
    const size_t number = data.pos.size();
    const auto nameOf = [&](int x, int y, int z, size_t i) {
        return (static_cast<size_t>((x * cells[1] + y) * cells[2] + z)) * number + i;
    };
    std::multiset<std::pair<size_t, size_t>> drawn, wanted;
    StickData_st big;
    for (int x = 0; x < cells[0]; ++x)
        for (int y = 0; y < cells[1]; ++y)
            for (int z = 0; z < cells[2]; ++z) {
                for (const auto& p : data.pos)
                    big.pos.push_back(
                        {p[0] + edge * float(x), p[1] + edge * float(y), p[2] + edge * float(z)});
                const unsigned copy = unsigned(x + 1 < cells[0]) | unsigned(y + 1 < cells[1]) << 1 |
                                      unsigned(z + 1 < cells[2]) << 2;
                for (size_t k = 0; k < list.GetNumber(); ++k) {
                    const unsigned a = list.GetBitFirst(k), b = list.GetBit(k);
                    if (((a | b) & ~copy) != 0) continue;
                    const size_t first =
                        nameOf(x + int(a & 1), y + int(a >> 1 & 1), z + int(a >> 2), list.mvIndexA[k]);
                    const size_t second =
                        nameOf(x + int(b & 1), y + int(b >> 1 & 1), z + int(b >> 2), list.mvIndexB[k]);
                    drawn.insert({std::min(first, second), std::max(first, second)});
                }
            }
    rule.mbAcross = false;
    for (const auto& stick : FindPlainly(big, rule))
        wanted.insert({std::get<0>(stick), std::get<1>(stick)});
    EXPECT_GT(wanted.size(), 500u);
    EXPECT_EQ(drawn, wanted);
}

TEST(PairFinder, TooManyOrStoppedLeavesNothingAndSaysSo) {
    const StickData_st data = MakeRandomParticles(50, 1000, 1.0f);
    const StickRule_st rule = MakeRule(0, 9.0f, 0);
    const StickParticles_st particles = data.Get();
    const StickCell_st cell;
    StickList_st list;
    PairFinder_cls finder(particles, rule, cell);
    finder.mMost = 1000 * 999 / 2 - 1;
    EXPECT_EQ(finder.Find(&list), PairEnd::TooMany);
    EXPECT_EQ(list.GetNumber(), 0u);
    EXPECT_EQ(GetPairMessage(PairEnd::TooMany, 12),
              "The distances make more than 12 sticks; none is drawn. Choose shorter ones.");
    ++finder.mMost;
    EXPECT_EQ(finder.Find(&list), PairEnd::Whole);
    EXPECT_EQ(list.GetNumber(), finder.mMost);
    finder.mThreads = 1; // the one that asks
    finder.mIsStopped = [] { return true; };
    EXPECT_EQ(finder.Find(&list), PairEnd::Stopped);
    EXPECT_EQ(list.GetNumber(), 0u);
}

TEST(PairFinder, WithoutThreadsTheWorkIsDoneInPlace) {
    const StickData_st data = MakeRandomParticles(51, 1500, 6.0f);
    const auto wanted = FindPlainly(data, MakeRule(0, 0.6f, 0));
    ASSERT_GT(wanted.size(), 100u);
    // In a child that may have no second thread; the administrator may always.
    const pid_t child = fork();
    if (child == 0) {
        const rlimit none = {0, 0};
        if ((geteuid() == 0 && setuid(65534) != 0) || setrlimit(RLIMIT_NPROC, &none) != 0) _exit(3);
        try {
            std::thread([] {}).join();
            _exit(2);
        } catch (const std::system_error&) {
        }
        _exit(GetTuples(Find(data, MakeRule(0, 0.6f, 0), {}, 4)) == wanted ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
