#include "COLORCURVE/clsColorCurve.h"

#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include "COLORCURVE/clsColorSegments.h"

namespace {

constexpr double kSpectrum[4][5] = {
    {0, 0.03, 0, 0.07, 1}, {0.25, 0.32, 0, 0.77, 0.5}, {0.5, 0, 0.31, 0.59, 1}, {1, 0.26, 0, 0, 0.25}};

void ExpectColor(const ColorCurve_cls& curve, float x, const std::array<float, 4>& expected) {
    float color[4];
    curve.GetColor4fScaled(color, x);
    for (size_t c = 0; c < 4; ++c)
        EXPECT_FLOAT_EQ(color[c], expected[c]) << "channel " << c << " at " << x;
}

void ReadLines(ColorCurve_cls& curve, const wxString& text) {
    std::wistringstream stream(text.ToStdWstring());
    for (std::wstring line; std::getline(stream, line);)
        curve.ReadStrLine(stream, line);
}

} // namespace

TEST(ColorCurve, ConstantUntilSwitchedOnThenGreenToRed) {
    ColorCurve_cls curve("Test", "label", "1 0.8 0.6 0.5");
    curve.PreCalcScaleFactor();
    ExpectColor(curve, 123.0f, {1, 0.8f, 0.6f, 0.5f});
    curve.mbUseColorCurve.mValue = true;
    ExpectColor(curve, 0.5f, {0.5f, 0.5f, 0, 1});
    ExpectColor(curve, -7.0f, {0, 1, 0, 1});
    ExpectColor(curve, 7.0f, {1, 0, 0, 1});
}

TEST(ColorCurve, EmptyRangeIsMendedByRaisingItsUpperEnd) {
    ColorCurve_cls curve("Test", "label", "1 1 1 1");
    curve.mbUseColorCurve.mValue = true;
    curve.mScalingMin.mValue = curve.mScalingMax.mValue = 3.0f;
    curve.PreCalcScaleFactor();
    EXPECT_EQ(curve.mScalingMax.mValue, 4.0f);
    ExpectColor(curve, 3.5f, {0.5f, 0.5f, 0, 1});
}

TEST(ColorCurve, TextFormKeepsSettingsAndKeys) {
    ColorCurve_cls source("SEQ0TYPE1Col", "label", "1 1 1 1", 4, kSpectrum);
    source.mbUseColorCurve.mValue = true;
    source.mScalingMin.mValue = -2.5f;
    source.mDependType.mValue = 6;
    ColorCurve_cls other("SEQ0TYPE2Col", "label", "1 1 1 1");
    ColorCurve_cls copy("SEQ0TYPE1Col", "label", "0 0 0 0");
    const wxString text = source.Serialize();
    EXPECT_TRUE(text.Contains("SEQ0TYPE1ColColorKeys=0 0.03 0 0.07 1 0.25 "));
    ReadLines(copy, text);
    ReadLines(other, text);
    EXPECT_EQ(copy.Serialize(), text);
    EXPECT_EQ(other.GetKeys().size(), 2u);
    EXPECT_TRUE(other.IsConstant());
}

TEST(ColorCurve, BrokenKeyLinesLeaveTheCurveUsable) {
    ColorCurve_cls curve("A", "label", "1 1 1 1");
    for (const char* text : {"AColorKeys=", "AColorKeys=0 1 2", "AColorKeys=nan 1 1 1 1", "AColorKeys=x"})
        ReadLines(curve, text);
    EXPECT_EQ(curve.GetKeys().size(), 2u);
    ReadLines(curve, "AColorKeys=1 1 1 1 1 0 0.5 0 0 1 9 9");
    ASSERT_EQ(curve.GetKeys().size(), 2u);
    EXPECT_EQ(curve.GetKeys()[0], (ColorCurve_cls::Key{0, 0.5, 0, 0, 1}));
    ReadLines(curve, "AColorKeys=0 nan 1e30 -1 1");
    curve.mbUseColorCurve.mValue = true;
    EXPECT_EQ(curve.GetWXColor(*wxWHITE, 0.0, true), wxColour(0, 255, 0));
}

TEST(ColorCurve, CompiledSegmentsAgreeWithTheCurve) {
    ColorCurve_cls curve("A", "label", "1 1 1 1", 4, kSpectrum);
    curve.mbUseColorCurve.mValue = true;
    curve.mScalingMin.mValue = -1.0f;
    curve.mScalingMax.mValue = 3.0f;
    curve.PreCalcScaleFactor();
    const ColorSegments_cls segments(curve);
    EXPECT_FALSE(segments.IsConstant());
    const auto same = [&](float x) {
        float expected[4];
        float color[4];
        curve.GetColor4fScaled(expected, x);
        segments.Get(color, x);
        for (int c = 0; c < 4; ++c)
            EXPECT_NEAR(color[c], expected[c], 1e-6f) << x;
    };
    for (float x = -2.0f; x < 4.0f; x += 0.01f)
        same(x);
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float x : {infinity, -infinity, std::nanf(""), 1e30f})
        same(x);
}

TEST(ColorCurve, FlipAndSwapAndSwatch) {
    ColorCurve_cls curve("A", "label", "1 0.5 0 0.5", 4, kSpectrum);
    const auto keys = curve.GetKeys();
    curve.Flip();
    EXPECT_EQ(curve.GetKeys()[0], (ColorCurve_cls::Key{0, 0.26, 0, 0, 0.25}));
    curve.Flip();
    curve.SwapRGB();
    EXPECT_EQ(curve.GetKeys()[2], (ColorCurve_cls::Key{0.5, 0.31, 0.59, 0, 1}));
    curve.SwapRGB();
    curve.SwapRGB();
    EXPECT_EQ(curve.GetKeys(), keys);
    EXPECT_EQ(curve.GetWXColor(*wxWHITE, 0.0, true), wxColour(255, 127, 0));
    EXPECT_EQ(curve.GetWXColor(wxColour(0, 0, 100), 0.0, false), wxColour(127, 63, 50));
}
