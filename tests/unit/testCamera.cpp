#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsPositionAndDirection.h"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "COMMON/clsMyVector.h"

namespace {

void ExpectVector(const double* v, double x, double y, double z, double tolerance = 1e-12) {
    EXPECT_NEAR(v[0], x, tolerance);
    EXPECT_NEAR(v[1], y, tolerance);
    EXPECT_NEAR(v[2], z, tolerance);
}

// Looks along +x at an anchor four units ahead, so that right is -y and up is z.
PositionAndDirection_cls Camera() {
    PositionAndDirection_cls camera;
    camera.Set(-3, 0, 0);
    camera.SetDirection(1);
    const double anchor[3] = {1, 0, 0};
    camera.SetAncPos(anchor);
    return camera;
}

} // namespace

TEST(Camera, trackBallKeepsDistanceAndFrame) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(-1.5, 1.5), step(-0.3, 0.3);
    PositionAndDirection_cls camera = Camera();
    for (int i = 0; i < 10000; ++i) {
        const double x = place(random), y = place(random);
        camera.TrackBall(x, y, x + step(random), y + step(random));
        ASSERT_NEAR(camera.GetDistanceToAnc(), 4, 1e-9) << i;
        ASSERT_NEAR(MyVector::GetNorm(camera.mFront), 1, 1e-12);
        ASSERT_NEAR(MyVector::GetNorm(camera.mUp), 1, 1e-12);
        ASSERT_NEAR(MyVector::GetScalarProduct(camera.mFront, camera.mUp), 0, 1e-12);
        double right[3];
        MyVector::GetCrossedVector(camera.mFront, camera.mUp, right);
        ASSERT_NEAR(MyVector::GetNormRelative(camera.mRight, right), 0, 1e-15);
        // It goes on looking at what it turns around.
        ASSERT_NEAR(camera.GetProjectedDistanceToAnc(), 4, 1e-6);
    }
}

TEST(Camera, trackBallTurnsInTheMiddleAndRollsAtTheRim) {
    PositionAndDirection_cls camera = Camera();
    camera.TrackBall(-0.1, 0, 0, 0); // the scene follows the pointer to the right: the camera goes left
    const double turn = std::atan(0.1);
    ExpectVector(camera.mPos, 1 - 4 * std::cos(turn), 4 * std::sin(turn), 0);
    ExpectVector(camera.mFront, std::cos(turn), -std::sin(turn), 0);
    ExpectVector(camera.mUp, 0, 0, 1);

    camera = Camera();
    camera.TrackBall(1, 0, 1, 0.1); // up the right rim
    ExpectVector(camera.mPos, -3, 0, 0);
    ExpectVector(camera.mUp, 0, -std::sin(turn), std::cos(turn));
}

TEST(Camera, trackBallBetweenMiddleAndRimDoesBoth) {
    PositionAndDirection_cls camera = Camera();
    camera.TrackBall(0.4, 0.6, 0.5, 0.6);
    const double sideways = std::atan(0.1 * (1 - 0.6 * 0.6));
    ExpectVector(camera.mPos, 1 - 4 * std::cos(sideways), 4 * std::sin(sideways), 0);
    EXPECT_GT(camera.mUp[1], 0.05); // over the middle to the right: up leans left

    camera = Camera();
    camera.TrackBall(0.5, 0.5, 0.5, 0.6);
    const double upward = std::atan(0.1 * (1 - 0.5 * 0.5));
    ExpectVector(camera.mPos, 1 - 4 * std::cos(upward), 0, -4 * std::sin(upward));
    EXPECT_LT(camera.mUp[1], -0.04);
}

TEST(Camera, trackBallIsLimitedForOneGesture) {
    PositionAndDirection_cls a = Camera(), b = Camera();
    a.TrackBall(-0.2, 0, 0, 0);
    b.TrackBall(-0.9, 0, 0, 0);
    EXPECT_TRUE(a.Position_cls::operator==(b) && a.Direction_cls::operator==(b));
    b = Camera();
    b.SetSensitivity(0.5);
    b.TrackBall(-0.4, 0, 0, 0);
    ExpectVector(b.mPos, a.mPos[0], a.mPos[1], a.mPos[2]);
}

TEST(Camera, zoomScalesTheDistanceAndNeverPassesTheAnchor) {
    PositionAndDirection_cls camera = Camera();
    camera.Zoom(0.1, 0.05);
    ExpectVector(camera.mPos, 1 - 4 * 1.03, 0, 0);
    camera = Camera();
    for (int i = 0; i < 20; ++i)
        camera.Zoom(0, -1.5);
    EXPECT_LT(camera.mPos[0], 1);
    EXPECT_GT(camera.GetDistanceToAnc(), 0);
    camera = Camera();
    camera.Set(1, 0, 0); // on the anchor
    camera.Zoom(0, 0.2);
    camera.TrackBall(0, 0, 0.1, 0.1);
    ExpectVector(camera.mPos, 1, 0, 0);
}

TEST(Camera, translateMovesAgainstTheMouseByMode) {
    PositionAndDirection_cls camera = Camera();
    camera.SetSensitivity(2);
    camera.SetAspectRatio(1.5);
    camera.Translate(0.1, 0.2, 4, nullptr);
    ExpectVector(camera.mPos, -3, 0.3, -0.4);
    camera.Translate(0.1, 0.2, 2, nullptr); // z alone
    ExpectVector(camera.mPos, -3, 0.3, -0.8);
    camera.mMove[2] = 0;
    camera.Translate(0.1, 0.2, 3, nullptr);
    ExpectVector(camera.mPos, -3, 0.6, -0.8);

    PositionAndDirection_cls other; // front -z, right x, up y
    camera.mMove[2] = 1;
    camera.Translate(0.1, 0.2, 0, &other);
    ExpectVector(camera.mPos, -3, 0.6, -1.2);
    camera.Translate(0.1, 0.2, 99, &other);
    ExpectVector(camera.mPos, -3, 0.9, -1.6);
}

TEST(Camera, pointAtKeepsUpWhereItCan) {
    PositionAndDirection_cls camera = Camera();
    const double target[3] = {-3, 5, 5};
    camera.PointAt(target);
    const double s = std::sqrt(0.5);
    ExpectVector(camera.mFront, 0, s, s);
    ExpectVector(camera.mUp, 0, -s, s);

    camera = Camera();
    const double below[3] = {-3, 0, -9};
    camera.PointAt(below);
    ExpectVector(camera.mFront, 0, 0, -1);
    ExpectVector(camera.mUp, 1, 0, 0);

    camera = Camera();
    camera.PointAt(camera.mPos);
    ExpectVector(camera.mFront, 0, 0, -1);
    ExpectVector(camera.mUp, 0, 1, 0);
}

TEST(Camera, matrixOfAPlacementTakesItsAxesAndItsPlace) {
    PositionAndDirection_cls rest, turned;
    rest.SetDirection(1);
    double m[16];
    rest.GetGLMatrix(m);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(m[i], i % 5 == 0 ? 1.0 : 0.0) << i;

    turned = rest;
    turned.Set(1, 2, 3);
    turned.RotateYPR(50, 20, -70);
    turned.GetGLMatrix(m);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(m[i], turned.mFront[i]);
        EXPECT_EQ(m[4 + i], -turned.mRight[i]) << "to the left, as y is beside x";
        EXPECT_EQ(m[8 + i], turned.mUp[i]);
        EXPECT_EQ(m[12 + i], i + 1.0);
    }
}

TEST(Projection, perspectiveAgreesWithValuesByHand) {
    const PositionAndDirection_cls camera = Camera();
    GLPerspective_cls view(400, 400, 90, 1, 11);
    double win[3];
    const double onAxis[3] = {1, 0, 0}, corner[3] = {1, -4, 4}, nearby[3] = {-2, 0, 0}, far[3] = {8, 0, 0};
    ASSERT_TRUE(view.Project(camera, onAxis, win));
    ExpectVector(win, 0, 0, 1.2 - 22.0 / 40, 1e-12);
    ASSERT_TRUE(view.Project(camera, corner, win));
    EXPECT_NEAR(win[0], 1, 1e-12);
    EXPECT_NEAR(win[1], 1, 1e-12);
    ASSERT_TRUE(view.Project(camera, nearby, win));
    EXPECT_NEAR(win[2], -1, 1e-12);
    ASSERT_TRUE(view.Project(camera, far, win));
    EXPECT_NEAR(win[2], 1, 1e-12);
    const double behind[3] = {-4, 0, 0};
    win[0] = 77;
    EXPECT_FALSE(view.Project(camera, behind, win));
    EXPECT_FALSE(view.Project(camera, camera.mPos, win));
    EXPECT_EQ(win[0], 77);
}

TEST(Projection, wideClipsWidenTheSquareAndTallOnesDoNot) {
    GLPerspective_cls view;
    EXPECT_EQ(view.mAngle, 35);
    view.SetClipSize(1000, 1000);
    EXPECT_EQ(view.GetSquareAngle(), 35);
    view.SetClipSize(300, 1000);
    EXPECT_EQ(view.GetSquareAngle(), 35);
    view.SetClipSize(2000, 1000);
    EXPECT_NEAR(view.GetSquareAngle(), 64.4709, 1e-4);
    // The height of the cut picture spans the angle itself, whatever the clip: y = 1/2 of the square.
    view.mAngle = 90;
    const PositionAndDirection_cls camera = Camera();
    const double top[3] = {1, 0, 4};
    double win[3];
    ASSERT_TRUE(view.Project(camera, top, win));
    EXPECT_NEAR(win[1], 0.5, 1e-5);
}

TEST(Projection, orthographicSpansTheAnchorDistance) {
    const PositionAndDirection_cls camera = Camera(); // half height 2
    GLPerspective_cls view(800, 400);
    view.mbPerspective = false;
    const double p[3] = {6, -2, 1};
    double win[3];
    ASSERT_TRUE(view.Project(camera, p, win));
    ExpectVector(win, 0.5, 0.5, 0.009);
    view.mbFitWidth = true;
    ASSERT_TRUE(view.Project(camera, p, win));
    ExpectVector(win, 1, 1, 0.009);
    const double behind[3] = {-103, 0, 0}; // orthographic views reach behind the eye
    ASSERT_TRUE(view.Project(camera, behind, win));
    EXPECT_NEAR(win[2], -0.1, 1e-12);
}

TEST(Projection, nonsenseNeverGivesInvalidNumbers) {
    PositionAndDirection_cls camera = Camera();
    camera.Set(1, 0, 0);
    const double inf = std::numeric_limits<double>::infinity();
    double m[16];
    for (const bool bPerspective : {false, true})
        for (const double angle : {-10.0, 0.0, 180.0, 360.0, inf})
            for (const double nearPlane : {-1.0, 0.0, 10.0}) {
                GLPerspective_cls view(0, -3, angle, nearPlane, 5);
                view.mbPerspective = bPerspective;
                view.GetProjectionMatrix(camera, m);
                for (const double value : m)
                    ASSERT_TRUE(std::isfinite(value)) << angle << " " << nearPlane;
            }
}
