// Colour curves: what they are worth at a place, edits and their steps, their text, compiled segments.
#include "COLORCURVE/clsColorCurve.h"

#include <cmath>
#include <limits>
#include <memory>
#include <random>

#include "COLORCURVE/clsColorSegments.h"
#include "ParamTest.h"

namespace {

constexpr double kSpectrum[4][5] = {
    {0, 0.03, 0, 0.07, 1}, {0.25, 0.32, 0, 0.77, 0.5}, {0.5, 0, 0.31, 0.59, 1}, {1, 0.26, 0, 0, 0.25}};

class ColorCurve : public ParamTest {
protected:
    static void ExpectColor(const ColorCurve_cls& curve, float x, const std::array<float, 4>& expected) {
        float color[4];
        curve.GetColor4fScaled(color, x);
        for (size_t c = 0; c < 4; ++c)
            EXPECT_FLOAT_EQ(color[c], expected[c]) << "channel " << c << " at " << x;
    }
    static Parameters_cls& Channel(const ColorCurve_cls& curve, size_t c) {
        return curve.mpCParamGroup->mVParams[c];
    }
    static std::vector<wxString> TextOf(const std::vector<const ColorCurve_cls*>& curves) {
        std::vector<wxString> texts;
        for (const ColorCurve_cls* curve : curves)
            texts.push_back(curve->Serialize());
        return texts;
    }
};

/// The rule of one channel, told as plainly as can be: end values outside the keys, a straight line, a cubic
/// with tangents, or a step between them.
double Rule(const std::vector<KeyFrame_cls>& keys, double t) {
    if (t <= keys.front().mDoubleIndex) return keys.front().mValue;
    if (!(t < keys.back().mDoubleIndex)) return keys.back().mValue;
    size_t i = 0;
    while (keys[i + 1].mDoubleIndex <= t)
        ++i;
    const KeyFrame_cls& a = keys[i];
    const KeyFrame_cls& b = keys[i + 1];
    if (a.mInterpType == INTERP_STEP) return a.mValue;
    const double dt = b.mDoubleIndex - a.mDoubleIndex;
    const double s = (t - a.mDoubleIndex) / dt;
    if (a.mInterpType == INTERP_LINEAR) return a.mValue + s * (b.mValue - a.mValue);
    const auto tangent = [](const KeyFrame_cls& key) {
        return key.mInterpType == INTERP_HERMITE_SEMIAUTO ? key.mValueD1 * key.mValueD2 : key.mValueD1;
    };
    // Hermite's own basis.
    return (1 + 2 * s) * (1 - s) * (1 - s) * a.mValue + s * (1 - s) * (1 - s) * dt * tangent(a) +
           s * s * (3 - 2 * s) * b.mValue + s * s * (s - 1) * dt * tangent(b);
}

/// Keys of every kind at places of its own in each channel.
void FillAtRandom(ColorCurve_cls& curve, std::mt19937& random) {
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (Parameters_cls& param : curve.mpCParamGroup->mVParams) {
        std::vector<KeyFrame_cls> keys;
        const size_t count = 1 + random() % 9;
        for (size_t k = 0; k < count; ++k)
            keys.push_back(MakeKey(unit(random), unit(random), unsigned(random() % 5), 4 * unit(random) - 2,
                                   2 * unit(random)));
        SetKeys(param, keys);
    }
}

} // namespace

TEST_F(ColorCurve, ConstantUntilSwitchedOnThenGreenToRed) {
    ColorCurve_cls curve("Test", "label", "1 0.8 0.6 0.5");
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "making a curve is no step";
    curve.PreCalcScaleFactor();
    ExpectColor(curve, 123.0f, {1, 0.8f, 0.6f, 0.5f});
    ExpectColor(curve, std::nanf(""), {1, 0.8f, 0.6f, 0.5f});
    curve.mbUseColorCurve.mValue = true;
    ExpectColor(curve, 0.5f, {0.5f, 0.5f, 0, 1});
    ExpectColor(curve, -7.0f, {0, 1, 0, 1});
    ExpectColor(curve, 7.0f, {1, 0, 0, 1});
}

TEST_F(ColorCurve, EmptyRangeIsMendedByRaisingItsUpperEnd) {
    ColorCurve_cls curve("Test", "label", "1 1 1 1");
    curve.mbUseColorCurve.mValue = true;
    curve.mScalingMin.mValue = curve.mScalingMax.mValue = 3.0f;
    curve.PreCalcScaleFactor();
    EXPECT_EQ(curve.mScalingMax.mValue, 4.0f);
    ExpectColor(curve, 3.5f, {0.5f, 0.5f, 0, 1});
}

TEST_F(ColorCurve, FollowsTheRuleOfItsKeysAtRandomPlaces) {
    std::mt19937 random(17);
    std::uniform_real_distribution<float> place(-0.2f, 1.2f);
    int bent = 0;
    for (int round = 0; round < 50; ++round) {
        ColorCurve_cls curve("Test", "label", "1 1 1 1");
        curve.mbUseColorCurve.mValue = true;
        FillAtRandom(curve, random);
        curve.PreCalcScaleFactor();
        const ColorSegments_cls segments(curve, 0.5f);
        bent += segments.IsCubic() ? 1 : 0;
        for (int n = 0; n < 20; ++n) {
            // Between the keys, and at the places where steps happen.
            const auto& keys = Channel(curve, size_t(n) % 4).GetKeys();
            const float x =
                n % 4 == 0 ? static_cast<float>(keys[random() % keys.size()].mDoubleIndex) : place(random);
            float exact[4];
            float fast[4];
            curve.GetColor4fScaled(exact, x);
            segments.Get(fast, x);
            for (size_t c = 0; c < 4; ++c) {
                const double rule = Rule(Channel(curve, c).GetKeys(), double(x));
                EXPECT_NEAR(double(exact[c]), rule, 1e-6 * (1 + std::fabs(rule))) << c << " at " << x;
                const double scaled = c == 3 ? 0.5 * rule : rule;
                EXPECT_NEAR(double(fast[c]), scaled, 2e-5 * (1 + std::fabs(scaled))) << c << " at " << x;
            }
        }
    }
    EXPECT_GT(bent, 40);
}

/// The compiled form gives the curve's own colours.
void ExpectCompiled(const ColorSegments_cls& segments, ColorCurve_cls& curve,
                    std::initializer_list<float> scalars) {
    for (const float x : scalars) {
        float exact[4];
        float fast[4];
        curve.GetColor4fScaled(exact, x);
        segments.Get(fast, x);
        for (int c = 0; c < 4; ++c)
            EXPECT_NEAR(fast[c], exact[c], 1e-6f) << x;
    }
}

TEST_F(ColorCurve, CompiledSegmentsHoldAtTheEdgesOfNumbers) {
    ColorCurve_cls curve("A", "label", "1 1 1 1", 4, kSpectrum);
    curve.mbUseColorCurve.mValue = true;
    curve.mScalingMin.mValue = 3.0f; // a scale that runs down
    curve.mScalingMax.mValue = -1.0f;
    curve.PreCalcScaleFactor();
    const ColorSegments_cls segments(curve);
    EXPECT_FALSE(segments.IsConstant());
    EXPECT_FALSE(segments.IsCubic());
    const float infinity = std::numeric_limits<float>::infinity();
    ExpectCompiled(segments, curve, {infinity, -infinity, std::nanf(""), 1e30f, -1e-40f, 3.0f, -1.0f});
}

TEST_F(ColorCurve, TextFormKeepsSettingsAndKeys) {
    ColorCurve_cls source("SEQ0TYPE1Col", "label", "1 1 1 1", 4, kSpectrum);
    source.mbUseColorCurve.mValue = true;
    source.mScalingMin.mValue = -2.5f;
    source.mDependType.mValue = 6;
    SetKind(Channel(source, 1), 2, INTERP_HERMITE_AUTO);
    ColorCurve_cls other("SEQ0TYPE2Col", "label", "1 1 1 1");
    ColorCurve_cls copy("SEQ0TYPE1Col", "label", "0 0 0 0");
    const wxString before = other.Serialize();
    const wxString text = source.Serialize();
    EXPECT_TRUE(text.Contains("-ParamGroup=SEQ0TYPE1Col ColorCurve\ndimension=4\nStart\nParameter_R\n"));
    EXPECT_TRUE(ReadText(copy, text).empty());
    EXPECT_FALSE(ReadText(other, text).empty());
    EXPECT_EQ(copy.Serialize(), text);
    EXPECT_EQ(other.Serialize(), before);
}

TEST_F(ColorCurve, BrokenTextLeavesTheCurveUsable) {
    for (const char* text : {"-ParamGroup=A ColorCurve\n",
                             "-ParamGroup=A ColorCurve\ndimension=4\nStart\nParameter_R\nitemnum 3\n",
                             "-ParamGroup=A ColorCurve\ndimension=99\nStart\nParameter_R\nitemnum -1\n",
                             "-ParamGroup=A ColorCurve\nStart\nParameter_R\ntimeDepend=0\nitemnum 2\nnan 7 "
                             "x\n1e999 0 1 1 1\n"}) {
        ColorCurve_cls curve("A", "label", "1 1 1 1");
        curve.mbUseColorCurve.mValue = true;
        ReadText(curve, text);
        curve.PreCalcScaleFactor();
        SCOPED_TRACE(text);
        ExpectCompiled(ColorSegments_cls(curve), curve, {-1.0f, 0.25f, 2.0f});
    }
}

TEST_F(ColorCurve, EditsAreOneStepEach) {
    ColorCurve_cls curve("A", "label", "1 0.5 0 0.5", 4, kSpectrum);
    const wxString start = curve.Serialize();
    curve.mbUseColorCurve.mValue = true;
    curve.Flip();
    ExpectColor(curve, 0.0f, {0.26f, 0, 0, 0.25f});
    curve.Flip();
    curve.SwapRGB();
    ExpectColor(curve, 0.5f, {0.31f, 0.59f, 0, 1});
    curve.SwapRGB();
    curve.SwapRGB();
    ExpectColor(curve, 0.5f, {0, 0.31f, 0.59f, 1});
    for (int step = 0; step < 5; ++step)
        GCUndoList.UndoCurrent();
    EXPECT_FALSE(GCUndoList.IsUndoable());
    GbSnapDataRefresh.store(false);
    curve.Flip();
    EXPECT_TRUE(GbSnapDataRefresh.load()) << "what was drawn is stale";
    GCUndoList.UndoCurrent();
    curve.mbUseColorCurve.mValue = false;
    EXPECT_EQ(curve.Serialize(), start);
}

TEST_F(ColorCurve, CopyTakesTheColoursAndOnlyIfAskedTheSettings) {
    ColorCurve_cls source("S", "label", "0.1 0.2 0.3 0.4", 4, kSpectrum);
    source.mbUseColorCurve.mValue = true;
    source.mScalingMax.mValue = 9.0f;
    source.mDependType.mValue = 4;
    ColorCurve_cls curve("A", "label", "1 1 1 1");
    const wxString start = curve.Serialize();
    curve.CopyColorFromP(&source, true);
    EXPECT_EQ(curve.mScalingMax.mValue, 1.0f);
    EXPECT_EQ(curve.mDependType.mValue, 0u);
    EXPECT_TRUE(curve.IsConstant());
    EXPECT_EQ(Channel(curve, 0).GetKeyNumber(), 4);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), start);
    curve.CopyColorFromP(&source, false);
    curve.PreCalcScaleFactor();
    source.PreCalcScaleFactor();
    float expected[4];
    source.GetColor4fScaled(expected, 4.4f);
    ExpectColor(curve, 4.4f, {expected[0], expected[1], expected[2], expected[3]});
    EXPECT_EQ(curve.mDependType.mValue, 4u);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), start);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    GCUndoList.ExecCurrent();
    EXPECT_FALSE(curve.IsConstant());
}
