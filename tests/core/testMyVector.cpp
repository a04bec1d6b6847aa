#include "COMMON/clsMyVector.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

void ExpectVector(const double* v, double x, double y, double z, double tolerance = 1e-12) {
    EXPECT_NEAR(v[0], x, tolerance);
    EXPECT_NEAR(v[1], y, tolerance);
    EXPECT_NEAR(v[2], z, tolerance);
}

} // namespace

TEST(MyVector, crossProductIsRightHandedAndMayOverwriteItsInput) {
    double a[3] = {1, 2, 3};
    const double b[3] = {-4, 5, 0.5};
    MyVector::GetCrossedVector(a, b, a);
    ExpectVector(a, -14, -12.5, 13);
    const float x[3] = {1, 0, 0}, y[3] = {0, 1, 0};
    float z[3];
    MyVector::GetCrossedVector(x, y, z);
    EXPECT_EQ(z[2], 1.0f);
}

TEST(MyVector, normalizeScalesToALengthAndRefusesWhatHasNone) {
    double v[3] = {0, 3, -4};
    EXPECT_TRUE(MyVector::Normalize(v, 10));
    ExpectVector(v, 0, 6, -8);
    double zero[3] = {0, 0, 0};
    EXPECT_FALSE(MyVector::Normalize(zero));
    ExpectVector(zero, 0, 0, 0);
    double bad[3] = {1, std::numeric_limits<double>::quiet_NaN(), 0};
    EXPECT_FALSE(MyVector::Normalize(bad));
    double huge[3] = {3e200, 4e200, 0};
    EXPECT_TRUE(MyVector::Normalize(huge));
    ExpectVector(huge, 0.6, 0.8, 0);
}

TEST(MyVector, orthogonalizeTellsWhenNothingIsLeft) {
    const double a[3] = {0.6, 0.8, 0};
    double b[3] = {1, 0, 5};
    EXPECT_TRUE(MyVector::Orthogonalize(a, b));
    ExpectVector(b, 0.64, -0.48, 5);
    double parallel[3] = {-6, -8, 0.9e-12};
    EXPECT_FALSE(MyVector::Orthogonalize(a, parallel));
    double almost[3] = {-6, -8, 2e-12};
    EXPECT_TRUE(MyVector::Orthogonalize(a, almost));
}

TEST(MyVector, rotationsUseTheShortPi) {
    double v[3] = {0, 1, 0};
    MyVector::Rotate(v, 90, 0);
    ExpectVector(v, 0, std::cos(3.14159 / 2), std::sin(3.14159 / 2), 1e-15);
    EXPECT_GT(v[1], 1e-6); // a true quarter turn would leave nothing
    double w[3] = {0, 0, 1};
    MyVector::Rotate(w, 30, 1);
    ExpectVector(w, std::sin(3.14159 / 6), 0, std::cos(3.14159 / 6), 1e-15);
    MyVector::Rotate(w, 77, 3);
    ExpectVector(w, std::sin(3.14159 / 6), 0, std::cos(3.14159 / 6), 1e-15);
}

TEST(MyVector, rotationAboutAnyAxisAgreesWithTheCoordinateAxes) {
    for (int axis = 0; axis < 3; ++axis) {
        double a[3] = {0.3, -2, 7}, b[3] = {0.3, -2, 7}, k[3] = {0, 0, 0};
        k[axis] = 5; // its length does not matter
        MyVector::Rotate(a, 123.4, axis);
        MyVector::RotateAround(b, k, 123.4);
        ExpectVector(b, a[0], a[1], a[2]);
    }
    double v[3] = {1, 0, 0};
    const double diagonal[3] = {1, 1, 1}, none[3] = {0, 0, 0};
    MyVector::RotateAround(v, diagonal, 120);
    ExpectVector(v, 0, 1, 0, 1e-5);
    MyVector::RotateAround(v, none, 90);
    ExpectVector(v, 0, 1, 0, 1e-5);
}
