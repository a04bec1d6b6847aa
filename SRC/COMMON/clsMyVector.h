// Vector functions on arrays of three numbers, the simple ones of any type. Angles are degrees.
#pragma once

#include <cmath>

class MyVector {
public:
    /// The pi of all camera and scene maths: shorter than the true one, and results must agree with it.
    static constexpr double PI = 3.14159;

    static double ToRadians(double degrees) { return degrees * PI / 180.0; }
    static double ToDegrees(double radians) { return radians * 180.0 / PI; }

    template <class T>
    static T GetScalarProduct(const T* a, const T* b) {
        return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    }
    /// a cross b; `out` may be one of them.
    template <class T>
    static void GetCrossedVector(const T* a, const T* b, T* out) {
        const T x = a[1] * b[2] - a[2] * b[1];
        const T y = a[2] * b[0] - a[0] * b[2];
        out[2] = a[0] * b[1] - a[1] * b[0];
        out[0] = x;
        out[1] = y;
    }
    template <class T>
    static T GetNorm(const T* v) {
        return std::sqrt(GetScalarProduct(v, v));
    }
    /// Distance of two points.
    template <class T>
    static T GetNormRelative(const T* a, const T* b) {
        const T d[3] = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
        return GetNorm(d);
    }

    /// Scale v to a length. False, with v as it was, when it is zero or not finite.
    static bool Normalize(double* v, double length = 1.0);
    /// Remove from b its part along the unit vector a. False when nothing is left: all components
    /// within 1e-12 of zero, or not finite.
    static bool Orthogonalize(const double* a, double* b);
    /// Turn v about a coordinate axis, 0 x, 1 y, 2 z; right-handed.
    static void Rotate(double* v, double degrees, int axis);
    /// Turn v about any axis, right-handed. The axis need not have unit length; a zero one turns nothing.
    static void RotateAround(double* v, const double* axis, double degrees);
};
