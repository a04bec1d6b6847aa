#include <gtest/gtest.h>

#include <cmath>

#include "WIDGET/NumberText.h"

namespace {

NumSpec Spec(double low, double high, double step, bool bInteger = false) {
    NumSpec spec;
    spec.mMin = low;
    spec.mMax = high;
    spec.mStep = step;
    spec.mbInteger = bInteger;
    return spec;
}

double Parsed(const char* text, const NumSpec& spec = NumSpec()) {
    double value = -12345.0;
    return ParseNumber(wxString::FromUTF8(text), spec, &value) ? value : std::nan("");
}

} // namespace

TEST(NumberText, TakesWhatPeopleType) {
    EXPECT_EQ(Parsed("  1.5 "), 1.5);
    EXPECT_EQ(Parsed("+2"), 2.0);
    EXPECT_EQ(Parsed("-.25"), -0.25);
    EXPECT_EQ(Parsed("1e-3"), 0.001);
    EXPECT_EQ(Parsed("1,5"), 1.5);
    EXPECT_EQ(Parsed("3.0", Spec(0, 9, 1, true)), 3.0);
}

TEST(NumberText, RefusesWhatIsNoNumber) {
    for (const char* text :
         {"", " ", "abc", "1.5x", "1 2", "+-1", "nan", "inf", "1e999", "1,234.5", "\xc2\xb2", "--1"})
        EXPECT_TRUE(std::isnan(Parsed(text))) << text;
    EXPECT_TRUE(std::isnan(Parsed("1.5", Spec(0, 9, 1, true))));
}

TEST(NumberText, ShowsTheShortestTextThatReadsBack) {
    NumSpec wide;
    wide.mbDouble = true;
    EXPECT_EQ(FormatNumber(double(0.1f), NumSpec()), "0.1");
    EXPECT_EQ(FormatNumber(0.1, wide), "0.1");
    EXPECT_EQ(FormatNumber(-0.0, wide), "0");
    EXPECT_EQ(FormatNumber(4294967295.0, Spec(0, 1e10, 1, true)), "4294967295");
    for (const float value : {16777216.0f, 1.17549435e-38f, 3.4028235e38f, 0.3333333f}) {
        double back = 0.0;
        ASSERT_TRUE(ParseNumber(FormatNumber(double(value), NumSpec()), NumSpec(), &back));
        EXPECT_EQ(static_cast<float>(back), value);
    }
}

TEST(NumberText, StepsStayInRangeAndOnTheGrid) {
    const NumSpec tenth = Spec(0, 1, 0.1);
    double value = 0.0;
    for (int i = 0; i < 3; ++i)
        value = StepNumber(value, 1, tenth);
    EXPECT_EQ(value, 0.3);
    EXPECT_EQ(StepNumber(0.95, 1, tenth), 1.0);
    EXPECT_EQ(StepNumber(0.0, -5, tenth), 0.0);
    EXPECT_EQ(ClampNumber(std::nan(""), tenth), 0.0);
    EXPECT_EQ(ClampNumber(2.6, Spec(0, 9, 1, true)), 3.0);
}

TEST(NumberText, DraggingCountsFromItsStart) {
    const NumSpec spec = Spec(-100, 100, 0.5);
    EXPECT_EQ(DragNumber(1.0, 10, 1.0, spec), 6.0);
    EXPECT_EQ(DragNumber(1.0, -4, 0.1, spec), 0.8);
    EXPECT_EQ(DragNumber(1.0, 0, 1.0, spec), 1.0);
    EXPECT_EQ(DragNumber(1.0, 9999, 1.0, spec), 100.0);
    NumSpec factor = Spec(0, 1e6, 0.1);
    factor.mbRelative = true;
    EXPECT_EQ(DragNumber(0.001, 100, 1.0, factor), 0.00272);
    EXPECT_GT(DragNumber(0.0, 10, 1.0, factor), 0.0) << "nothing multiplied would stay nothing";
}

TEST(NumberText, TellsTheRange) {
    EXPECT_EQ(DescribeRange(Spec(0, 10, 1, true)), "0 to 10");
    EXPECT_EQ(DescribeRange(Spec(0, 1e30, 1)), "at least 0");
    EXPECT_EQ(DescribeRange(Spec(-1e30, 1, 1)), "at most 1");
    EXPECT_EQ(DescribeRange(NumSpec()), "");
}
