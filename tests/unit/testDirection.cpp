#include "GL/BASE/clsDirection.h"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "COMMON/clsMyVector.h"

namespace {

void ExpectVector(const double* v, double x, double y, double z, double tolerance = 1e-5) {
    EXPECT_NEAR(v[0], x, tolerance);
    EXPECT_NEAR(v[1], y, tolerance);
    EXPECT_NEAR(v[2], z, tolerance);
}

void ExpectOrthonormal(const Direction_cls& d) {
    EXPECT_NEAR(MyVector::GetNorm(d.mFront), 1, 1e-12);
    EXPECT_NEAR(MyVector::GetNorm(d.mUp), 1, 1e-12);
    EXPECT_NEAR(MyVector::GetScalarProduct(d.mFront, d.mUp), 0, 1e-12);
    double right[3];
    MyVector::GetCrossedVector(d.mFront, d.mUp, right);
    ExpectVector(d.mRight, right[0], right[1], right[2], 1e-12);
}

// An object at rest, as the scene places it.
Direction_cls AtRest() {
    const double front[3] = {1, 0, 0}, up[3] = {0, 0, 1};
    Direction_cls d;
    d.Setv(front, up);
    return d;
}

} // namespace

TEST(Direction, anObjectAtRestHasLeftForY) {
    const Direction_cls d = AtRest();
    ExpectVector(d.mRight, 0, -1, 0, 0);
}

TEST(Direction, brokenFramesAreRepaired) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double z[3] = {0, 0, 2}, minusZ[3] = {0, 0, -5}, none[3] = {0, 0, 0}, bad[3] = {nan, 1, 0};
    const double* const pairs[][2] = {{z, minusZ}, {none, z}, {z, none}, {bad, z}, {z, bad}};
    for (const auto& pair : pairs) {
        Direction_cls d = AtRest();
        d.Setv(pair[0], pair[1]);
        ExpectVector(d.mFront, 0, 0, -1, 0);
        ExpectVector(d.mUp, 0, 1, 0, 0);
        ExpectVector(d.mRight, 1, 0, 0, 0);
    }
}

TEST(Direction, frontWinsOverUp) {
    const double front[3] = {0, 3, 0}, up[3] = {1, 1, 0};
    Direction_cls d;
    d.Setv(front, up);
    ExpectVector(d.mFront, 0, 1, 0, 1e-15);
    ExpectVector(d.mUp, 1, 0, 0, 1e-15);
    ExpectVector(d.mRight, 0, 0, -1, 1e-15);
}

TEST(Direction, anInvalidUpIsReplacedByAnAxisThatIsNotFront) {
    Direction_cls d;
    d.mUp[1] = 0;
    d.mUp[2] = 7; // along front
    d.RejectInvalidDirection();
    ExpectVector(d.mUp, 1, 0, 0, 0);
    d.mFront[0] = -2;
    d.mFront[2] = 0;
    d.RejectInvalidDirection();
    ExpectVector(d.mUp, 0, 1, 0, 0);
    const Direction_cls before = d;
    d.RejectInvalidDirection();
    EXPECT_TRUE(before == d);
}

TEST(Direction, axisViewsLookAlongTheirAxis) {
    Direction_cls d;
    for (int mode = 1; mode <= 6; ++mode) {
        d.SetDirection(mode);
        double front[3] = {0, 0, 0};
        front[(mode - 1) / 2] = mode % 2 == 0 ? -1 : 1;
        ExpectVector(d.mFront, front[0], front[1], front[2], 0);
        ExpectVector(d.mUp, 0, mode >= 5, mode < 5, 0);
        ExpectOrthonormal(d);
    }
    const Direction_cls before = d;
    d.SetDirection(0);
    d.SetDirection(7);
    EXPECT_TRUE(before == d);
}

TEST(Direction, turnsGoTheWayTheSceneTurns) {
    Direction_cls d = AtRest();
    d.RotateYaw(90);
    ExpectVector(d.mFront, 0, 1, 0);
    d = AtRest();
    d.RotatePitch(30);
    ExpectVector(d.mFront, std::sqrt(0.75), 0, -0.5);
    d = AtRest();
    d.RotateRoll(90);
    ExpectVector(d.mUp, 0, -1, 0);
    ExpectVector(d.mFront, 1, 0, 0);
}

TEST(Direction, anglesComeBackFromTheFrame) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> full(1, 359), half(-89, 89), roll(-89, 269);
    for (int i = 0; i < 1000; ++i) {
        const double y = full(random), p = half(random), r = roll(random);
        Direction_cls d = AtRest();
        d.RotateYPR(y, p, r);
        d.UpdateYPR(false);
        // The short pi makes a full turn 0.0003 degrees too small.
        EXPECT_NEAR(d.mYaw, y, 1e-3);
        EXPECT_NEAR(d.mPitch, p, 1e-3);
        EXPECT_NEAR(d.mRoll, r, 1e-3);
    }
}

TEST(Direction, anglesGrowThroughTheSeam) {
    Direction_cls d = AtRest();
    d.RotateYaw(5);
    d.UpdateYPR(true);
    for (int i = 0; i < 80; ++i) {
        d.RotateYaw(10);
        d.UpdateYPR(true);
    }
    EXPECT_NEAR(d.mYaw, 805, 0.01);
    EXPECT_EQ(d.mTurnYaw, 2);
    for (int i = 0; i < 120; ++i) {
        d.RotateYaw(-10);
        d.UpdateYPR(true);
    }
    EXPECT_NEAR(d.mYaw, -395, 0.01);
    d = AtRest();
    for (int i = 0; i < 50; ++i) {
        d.RotateRoll(10);
        d.UpdateYPR(true);
    }
    EXPECT_NEAR(d.mRoll, 500, 0.01);
}

TEST(Direction, lookingStraightDownHasAnglesToo) {
    Direction_cls d;
    for (const int mode : {5, 6}) {
        d.SetDirection(mode);
        d.UpdateYPR(true);
        EXPECT_NEAR(d.mPitch, mode == 5 ? -90 : 90, 1e-3);
        EXPECT_TRUE(std::isfinite(d.mYaw));
        EXPECT_EQ(d.mRoll, 0);
    }
}
