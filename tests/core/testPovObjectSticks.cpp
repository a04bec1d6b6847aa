// The sticks of a filter: when they are made anew, whether they fit the data, and where a copy draws them.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "BOND/clsPovObjectSticks.h"
#include "ReaderTestTools.h"
#include "StickTestTools.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

StickRule_st MakeStep(float a) {
    StickRule_st rule;
    rule.mA = a;
    return rule;
}

void Check(PovObjectSticks_cls* pSticks, int count) { pSticks->CheckValidity(&count); }

} // namespace

TEST(PovObjectSticks, AreMadeAnewWhenSomethingChangedAndOnlyThen) {
    StickData_st data;
    data.pos = {{0, 0, 0}, {1, 0, 0}, {5, 0, 0}};
    data.type = {0, 1, 2};
    PovObjectSticks_cls sticks;
    const auto countAfter = [&](const StickRule_st& rule, int frame = 0, const StickCell_st& cell = {}) {
        EXPECT_EQ(sticks.CalcFromData(data.Get(), frame, rule, cell), "");
        return sticks.GetNumber();
    };
    EXPECT_EQ(countAfter(MakeStep(2)), 1u);
    // Behind its back: only who looks again sees it.
    data.pos[2][0] = 1.5f;
    EXPECT_EQ(countAfter(MakeStep(2)), 1u);
    EXPECT_EQ(countAfter(MakeStep(2), 1), 3u) << "another frame";
    data.pos[2][0] = 5.0f;
    EXPECT_EQ(countAfter(MakeStep(2), 1), 3u);
    data.time = kNaN;
    EXPECT_EQ(countAfter(MakeStep(2), 1), 1u) << "another time";
    data.pos[2][0] = 1.5f;
    EXPECT_EQ(countAfter(MakeStep(2), 1), 1u) << "no number is the same as itself";
    EXPECT_EQ(countAfter(MakeStep(2.5f), 1), 3u);
    StickRule_st types = MakeStep(2.5f);
    types.mSpecType = STICK_TYPES_A_B;
    EXPECT_EQ(countAfter(types, 1), 1u);
    types.mSpecB = 2;
    EXPECT_EQ(countAfter(types, 1), 1u);
    EXPECT_EQ(sticks.mvIndexB[0], 2u);
    // The box counts for those that leave it alone.
    types.mbAcross = true;
    EXPECT_EQ(countAfter(types, 1, MakeCube(2.0f)), FindPlainly(data, types, MakeCube(2.0f)).size());
    EXPECT_EQ(countAfter(types, 1, MakeCube(20.0f)), 1u);
    data.pos.pop_back();
    EXPECT_EQ(countAfter(MakeStep(2.5f), 1), 1u) << "fewer particles";
}

TEST(PovObjectSticks, AStoppedSearchIsMadeUpFor) {
    StickData_st data = MakeRandomParticles(1, 500, 3.0f);
    PovObjectSticks_cls sticks;
    sticks.mIsStopped = [] { return true; };
    EXPECT_EQ(sticks.CalcFromData(data.Get(), 0, MakeStep(0.5f)), "");
    EXPECT_EQ(sticks.GetNumber(), 0u);
    sticks.mIsStopped = nullptr;
    EXPECT_EQ(sticks.CalcFromData(data.Get(), 0, MakeStep(0.5f)), "");
    EXPECT_GT(sticks.GetNumber(), 0u);
}

TEST(PovObjectSticks, AListThatDoesntFitIsNotValid) {
    TempDir_cls dir;
    PovObjectSticks_cls sticks;
    EXPECT_EQ(sticks.ReadListFromFile(wxString::FromUTF8(dir.Write("a.txt", "0 9\n3 4 1 0.5\n"))), "");
    EXPECT_FALSE(sticks.mbValid) << "not checked yet";
    Check(&sticks, 10);
    EXPECT_TRUE(sticks.mbValid);
    Check(&sticks, 9);
    EXPECT_FALSE(sticks.mbValid);
    Check(&sticks, 10);
    EXPECT_TRUE(sticks.mbValid);
    sticks.CheckValidity(nullptr);
    EXPECT_FALSE(sticks.mbValid);
    Check(&sticks, 10);
    // Another list for as many particles is looked at, too.
    EXPECT_EQ(sticks.ReadListFromFile(wxString::FromUTF8(dir.Write("b.txt", "10 1\n"))), "");
    Check(&sticks, 10);
    EXPECT_FALSE(sticks.mbValid);
    EXPECT_EQ(sticks.ReadListFromFile(wxString::FromUTF8(dir.Write("c.txt", "-1 1\n"))), "");
    Check(&sticks, std::numeric_limits<int>::max());
    EXPECT_FALSE(sticks.mbValid);
    Check(&sticks, -5);
    EXPECT_FALSE(sticks.mbValid);
}

TEST(PovObjectSticks, AFileIsReadOnceAndToldOnce) {
    TempDir_cls dir;
    PovObjectSticks_cls sticks;
    const wxString path = wxString::FromUTF8(dir.Name("late.txt"));
    EXPECT_EQ(sticks.ReadListFromFile(path), "The file can't be opened: No such file or directory.");
    dir.Write("late.txt", "1 2\n");
    EXPECT_EQ(sticks.ReadListFromFile(path), "") << "not tried again";
    EXPECT_EQ(sticks.GetNumber(), 0u);
    EXPECT_TRUE(sticks.IsConstantFactor()) << "no sticks";
    const wxString other = wxString::FromUTF8(dir.Write("other.txt", "1 2 0 1\n3 4 0 0.25\n"));
    EXPECT_EQ(sticks.ReadListFromFile(other), "");
    EXPECT_EQ(sticks.GetNumber(), 2u);
    EXPECT_FALSE(sticks.IsConstantFactor());
    EXPECT_EQ(sticks.ReadListFromFile(path), "");
    EXPECT_TRUE(sticks.IsConstantFactor());
    EXPECT_EQ(sticks.GetNumber(), 1u);
    // From a file to a rule and back.
    StickData_st data;
    data.pos = {{0, 0, 0}, {1.5f, 0, 0}};
    StickRule_st ramp = MakeStep(1);
    ramp.mCritType = STICK_RAMP;
    EXPECT_EQ(sticks.CalcFromData(data.Get(), 0, ramp), "");
    EXPECT_FALSE(sticks.IsConstantFactor());
    EXPECT_EQ(sticks.ReadListFromFile(path), "");
    EXPECT_EQ(GetTuples(sticks), (std::vector<StickTuple_t>{{1, 2, 0, 0, 1.0f}}));
    EXPECT_EQ(sticks.CalcFromData(data.Get(), 0, ramp), "");
    EXPECT_EQ(GetTuples(sticks), (std::vector<StickTuple_t>{{0, 1, 0, 0, 0.5f}}));
}

TEST(PovObjectSticks, OffsetsFollowTheBox) {
    StickCell_st cell = MakeCube(10.0f);
    cell.mBase[1][0] = 3.0f; // slanted
    cell.mSize[0] = 2.0f;
    PovObjectSticks_cls sticks;
    sticks.SetPPeriodicBoundary(cell);
    // Whole vectors times one factor; the seventh entry lacks the first vector.
    const float wanted[8][3] = {{0, 0, 0},  {20, 0, 0},  {3, 10, 0},  {23, 10, 0},
                                {0, 0, 10}, {20, 0, 10}, {3, 10, 10}, {3, 10, 10}};
    for (int m = 0; m < 8; ++m)
        for (int k = 0; k < 3; ++k)
            EXPECT_EQ(sticks.maOffset[m][k], wanted[m][k]) << m << k;
    // Those that were found across faces stand where the copies stand.
    StickData_st data;
    data.pos = {{1, 1, 1}, {19, 9, 9}};
    StickRule_st rule = MakeStep(9);
    rule.mbAcross = true;
    EXPECT_EQ(sticks.CalcFromData(data.Get(), 0, rule, cell), "");
    sticks.SetPPeriodicBoundary(cell);
    EXPECT_EQ(sticks.maOffset[2][0], 6.0f);
    EXPECT_EQ(sticks.maOffset[7][0], 26.0f);
    ASSERT_GT(sticks.GetNumber(), 0u);
    for (size_t k = 0; k < sticks.GetNumber(); ++k) {
        float a[3], b[3];
        sticks.GetEnds(k, data.Get().mpPos, a, b);
        EXPECT_LT(std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]), 9.0f);
    }
}

TEST(PovObjectSticks, ACopyDrawsWhatItsNeighboursLetIt) {
    using Way = PovObjectSticks_cls::Crossing_st;
    for (unsigned copy = 0; copy < 8; ++copy)
        for (unsigned m = 0; m < 256; ++m)
            EXPECT_EQ(PovObjectSticks_cls::IsDrawnIn(Way{0, m}, copy), m < 8 && (copy & m) == m);
    EXPECT_FALSE(PovObjectSticks_cls::IsDrawnIn(Way{1, 2}, 1));
    EXPECT_FALSE(PovObjectSticks_cls::IsDrawnIn(Way{1, 2}, 6));
    EXPECT_TRUE(PovObjectSticks_cls::IsDrawnIn(Way{1, 2}, 3));
}

TEST(PovObjectSticks, TheCircleIsClosedAndOfRadiusOne) {
    for (size_t k = 0; k < PovObjectSticks_cls::kCircle; ++k) {
        EXPECT_NEAR(PovObjectSticks_cls::maCircleCos[k], std::cos(double(k) * M_PI / 6), 1e-7);
        EXPECT_NEAR(PovObjectSticks_cls::maCircleSin[k], std::sin(double(k) * M_PI / 6), 1e-7);
    }
}
