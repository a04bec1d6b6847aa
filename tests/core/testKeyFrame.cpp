// The value of a curve: kinds, ends, snapping to keys, periods, automatic tangents, and a key's text.
#include "PARAM/clsKeyFrame.h"

#include <limits>

#include "ParamTest.h"

namespace {

using KeyFrame = ParamTest;

constexpr double kR = 0.01;

TEST_F(KeyFrame, LinearBetweenKeysAndFlatBeyondTheEnds) {
    Curve curve({MakeKey(0.2, 10), MakeKey(0.4, 20), MakeKey(0.8, 0)});
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(0.1), 10);
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(0.2), 10);
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(0.3), 15);
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(0.6), 10);
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(0.8), 0);
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(7), 0);
    Parameters_cls::msCurrentDoubleIndex = 0.25;
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(-1.0), 12.5);
    EXPECT_DOUBLE_EQ(curve.mCurrentValue, 12.5) << "the last result is kept";
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST_F(KeyFrame, TheLastHalfResolutionBelongsToTheNextSegment) {
    Curve curve({MakeKey(0.2, 10), MakeKey(0.4, 20), MakeKey(0.8, 0)});
    EXPECT_NEAR(curve.GetInterpolatedValue(0.394), 19.7, 1e-12);
    EXPECT_NEAR(curve.GetInterpolatedValue(0.398), 20.1, 1e-12) << "a rate of -0.005, not clamped";
    EXPECT_NEAR(curve.GetInterpolatedValue(0.398, 0.0), 19.9, 1e-12) << "no resolution, no snapping";
    EXPECT_NEAR(curve.GetInterpolatedValue(0.794), 0.3, 1e-12);
    EXPECT_EQ(curve.GetInterpolatedValue(0.796), 0) << "the last key draws the time to itself";
    Curve whole({MakeKey(0, 3), MakeKey(1, 5)});
    EXPECT_EQ(whole.GetInterpolatedValue(0.996, kR), 5);
    EXPECT_NEAR(whole.GetInterpolatedValue(0.004, kR), 3.008, 1e-12) << "the first key does not";
}

TEST_F(KeyFrame, SegmentsAreFoundAmongManyKeys) {
    std::vector<KeyFrame_cls> keys;
    for (int i = 0; i <= 50; ++i)
        keys.push_back(MakeKey(i / 50.0, i, INTERP_STEP));
    const Curve curve(keys);
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(curve.Evaluate(i / 50.0, kR), i);
        EXPECT_EQ(curve.Evaluate((i + 0.7) / 50.0, kR), i) << "a step holds until half a resolution before";
        EXPECT_EQ(curve.Evaluate((i + 0.8) / 50.0, kR), i + 1);
    }
}

TEST_F(KeyFrame, NoKeysOneKeyAndNoTimeDependence) {
    Curve curve({MakeKey(0.3, 4), MakeKey(0.6, 8)});
    curve.mbTimeDepend.mValue = false;
    EXPECT_EQ(curve.GetInterpolatedValue(0.6), 4);
    curve.mbTimeDepend.mValue = true;
    curve.ExecCommandDeleteKey(0);
    EXPECT_EQ(curve.GetInterpolatedValue(0.0), 8);
    curve.ExecCommandDeleteKey(0);
    EXPECT_EQ(curve.GetInterpolatedValue(0.5), 0);
}

TEST_F(KeyFrame, HermiteKindsTakeTheirTangents) {
    // dt 0.5, tangents 2 and -4: 1 + rate + 6 rate^2 - 5 rate^3.
    const Curve manual({MakeKey(0, 1, INTERP_HERMITE, 2), MakeKey(0.5, 3, INTERP_LINEAR, -4)});
    EXPECT_DOUBLE_EQ(manual.Evaluate(0.25, kR), 2.375);
    EXPECT_DOUBLE_EQ(manual.Evaluate(0.125, kR), 1.546875);
    // The same tangent as automatic slope 4 times ease factor 0.5.
    const Curve semi({MakeKey(0, 1, INTERP_HERMITE_SEMIAUTO, 99, 0.5), MakeKey(0.5, 3, INTERP_LINEAR, -4)});
    EXPECT_EQ(semi.GetKeyFrameValueD1(0), 4);
    EXPECT_EQ(semi.GetKeyFrameValueD2(0), 0.5);
    EXPECT_EQ(semi.GetHermiteVelocity(0), 2);
    EXPECT_DOUBLE_EQ(semi.Evaluate(0.25, kR), 2.375);
    // Slopes 2, 0, -2: rate + rate^2 - rate^3.
    const Curve automatic({MakeKey(0, 0, INTERP_HERMITE_AUTO), MakeKey(0.5, 1, INTERP_HERMITE_AUTO),
                           MakeKey(1, 0, INTERP_HERMITE_AUTO)});
    EXPECT_EQ(automatic.GetKeyFrameValueD1(0), 2);
    EXPECT_EQ(automatic.GetKeyFrameValueD1(1), 0);
    EXPECT_EQ(automatic.GetKeyFrameValueD1(2), -2);
    EXPECT_EQ(automatic.GetKeyFrameValueD2(2), -2);
    EXPECT_DOUBLE_EQ(automatic.Evaluate(0.25, kR), 0.625);
    const Curve unknown({MakeKey(0, 0, 77), MakeKey(1, 8)});
    EXPECT_DOUBLE_EQ(unknown.Evaluate(0.25, kR), 2) << "a kind that nobody knows is a line";
}

TEST_F(KeyFrame, TangentsOfKeysAtOnePlaceStayFinite) {
    const Curve curve({MakeKey(0.5, 1, INTERP_HERMITE_AUTO), MakeKey(0.5, 2, INTERP_HERMITE_AUTO)});
    EXPECT_EQ(curve.GetKeyFrameValueD1(0), 0);
    EXPECT_EQ(curve.CalcVelocity(0, 1), 0);
    EXPECT_EQ(curve.CalcVelocity(0, 7), 0);
    EXPECT_EQ(curve.Evaluate(0.499, kR), 1);
    EXPECT_EQ(curve.Evaluate(0.501, kR), 2);
}

TEST_F(KeyFrame, PeriodicValuesGoTheShorterWay) {
    Curve curve({MakeKey(0, 350), MakeKey(1, 10)});
    curve.mPeriodic.mValue = 360;
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(0.5), 360) << "not wrapped back";
    EXPECT_DOUBLE_EQ(curve.CalcVelocity(0, 1), 20);
    curve.mPeriodic.mValue = -360;
    EXPECT_DOUBLE_EQ(curve.GetInterpolatedValue(0.5), 180) << "a negative period is none";

    const auto nearest = [](double y0, double y1) { return Parameters_cls::GetValue1Periodic(y0, y1, 360); };
    EXPECT_EQ(nearest(10, 350), -10);
    EXPECT_EQ(nearest(350, 10), 370);
    EXPECT_EQ(nearest(0, 180), -180) << "a tie goes down to a higher value";
    EXPECT_EQ(nearest(180, 0), 360) << "and up to a lower one";
    EXPECT_EQ(nearest(5, 5), 5);
    EXPECT_EQ(nearest(3600, 20), 3620);
    EXPECT_EQ(nearest(20, 3650), 50);
    EXPECT_EQ(nearest(1e300, 3), 1e300) << "no digits left for a period";
    // A distance whose digits don't hold the rest of a period is gone in a moment, too.
    EXPECT_NEAR(nearest(-4e13, 7e29), -4e13, 180);
    EXPECT_NEAR(nearest(4e13, -7e29), 4e13, 180);
    EXPECT_TRUE(std::isfinite(nearest(-1e308, 1e308)));
}

TEST_F(KeyFrame, TextOfAKeyKeepsItsForm) {
    EXPECT_EQ(MakeKey(0.25, 1.5, INTERP_HERMITE, -2, 0.5).Serialize(),
              "0.250000000 3 1.500000 -2.000000 0.500000 \n");
    EXPECT_EQ(MakeKey(1 / 3.0, -1e20, 77).Serialize(),
              "0.333333333 77 -100000000000000000000.000000 0.000000 0.000000 \n");
    KeyFrame_cls key;
    key.mbSelected = true;
    key.ReadStrLine("\t0.125  4 7 -8e-1 .5 and more");
    EXPECT_EQ(key.Serialize(), "0.125000000 4 7.000000 -0.800000 0.500000 \n");
    EXPECT_TRUE(key.mbSelected);
    // Where a line stops making sense the rest keeps what it had.
    key.ReadStrLine("0.5 2 nan 3 3");
    EXPECT_EQ(key.Serialize(), "0.500000000 2 0.000000 -0.800000 0.500000 \n");
    key.ReadStrLine("0,75 1 1 1 1");
    EXPECT_EQ(key.mDoubleIndex, 0);
    KeyFrame_cls huge;
    huge.ReadStrLine("1e999 1e999 1 1 1");
    EXPECT_TRUE(std::isfinite(huge.mDoubleIndex));
    EXPECT_GT(huge.Serialize().length(), 300u);
}

} // namespace
