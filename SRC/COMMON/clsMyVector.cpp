#include "COMMON/clsMyVector.h"

bool MyVector::Normalize(double* v, double length) {
    // hypot does not overflow where a square would.
    const double norm = std::hypot(v[0], v[1], v[2]);
    if (!(norm > 0) || !std::isfinite(norm)) return false;
    for (int i = 0; i < 3; ++i)
        v[i] = v[i] / norm * length;
    return true;
}

bool MyVector::Orthogonalize(const double* a, double* b) {
    const double along = GetScalarProduct(a, b);
    bool bLeft = false;
    for (int i = 0; i < 3; ++i) {
        b[i] -= along * a[i];
        bLeft |= std::fabs(b[i]) > 1e-12;
    }
    return bLeft && std::isfinite(b[0]) && std::isfinite(b[1]) && std::isfinite(b[2]);
}

void MyVector::Rotate(double* v, double degrees, int axis) {
    if (axis < 0 || axis > 2) return;
    const double angle = ToRadians(degrees);
    const double c = std::cos(angle), s = std::sin(angle);
    double& a = v[(axis + 1) % 3];
    double& b = v[(axis + 2) % 3];
    const double turned = a * c - b * s;
    b = a * s + b * c;
    a = turned;
}

void MyVector::RotateAround(double* v, const double* axis, double degrees) {
    double k[3] = {axis[0], axis[1], axis[2]};
    if (!Normalize(k)) return;
    const double from[3] = {v[0], v[1], v[2]};
    double cross[3];
    GetCrossedVector(k, from, cross);
    const double angle = ToRadians(degrees);
    const double c = std::cos(angle), s = std::sin(angle);
    const double along = GetScalarProduct(k, from) * (1.0 - c);
    for (int i = 0; i < 3; ++i)
        v[i] = from[i] * c + cross[i] * s + k[i] * along;
}
