#include "COMMON/clsMyVector.h"

namespace {

template <class T>
bool IsFinite(const T* v) {
    return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
}

template <class T>
bool NormalizeAny(T* v, T length) {
    // hypot does not overflow where a square would.
    const T norm = std::hypot(v[0], v[1], v[2]);
    if (!(norm > 0) || !std::isfinite(norm)) return false;
    for (int i = 0; i < 3; ++i)
        v[i] = v[i] / norm * length;
    return true;
}

template <class T>
bool OrthogonalizeAny(const T* a, T* b) {
    const T along = MyVector::GetScalarProduct(a, b);
    bool bLeft = false;
    for (int i = 0; i < 3; ++i) {
        b[i] -= along * a[i];
        bLeft |= std::fabs(b[i]) > T(1e-12);
    }
    return bLeft && IsFinite(b);
}

template <class T>
void RotateAny(T* v, T degrees, int axis) {
    if (axis < 0 || axis > 2) return;
    const double angle = MyVector::ToRadians(degrees);
    const double c = std::cos(angle), s = std::sin(angle);
    T& a = v[(axis + 1) % 3];
    T& b = v[(axis + 2) % 3];
    const double turned = a * c - b * s;
    b = static_cast<T>(a * s + b * c);
    a = static_cast<T>(turned);
}

template <class T>
void RotateAroundAny(T* v, const T* axis, T degrees) {
    double k[3] = {axis[0], axis[1], axis[2]};
    if (!MyVector::Normalize(k)) return;
    const double from[3] = {v[0], v[1], v[2]};
    double cross[3];
    MyVector::GetCrossedVector(k, from, cross);
    const double angle = MyVector::ToRadians(degrees);
    const double c = std::cos(angle), s = std::sin(angle);
    const double along = MyVector::GetScalarProduct(k, from) * (1.0 - c);
    for (int i = 0; i < 3; ++i)
        v[i] = static_cast<T>(from[i] * c + cross[i] * s + k[i] * along);
}

} // namespace

bool MyVector::Normalize(double* v, double length) { return NormalizeAny(v, length); }
bool MyVector::Normalize(float* v, float length) { return NormalizeAny(v, length); }
bool MyVector::Orthogonalize(const double* a, double* b) { return OrthogonalizeAny(a, b); }
bool MyVector::Orthogonalize(const float* a, float* b) { return OrthogonalizeAny(a, b); }
void MyVector::Rotate(double* v, double degrees, int axis) { RotateAny(v, degrees, axis); }
void MyVector::Rotate(float* v, float degrees, int axis) { RotateAny(v, degrees, axis); }
void MyVector::RotateAround(double* v, const double* axis, double degrees) {
    RotateAroundAny(v, axis, degrees);
}
void MyVector::RotateAround(float* v, const float* axis, float degrees) { RotateAroundAny(v, axis, degrees); }
