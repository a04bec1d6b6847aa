#include "GL/DRAW/PlaceMatrix.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFlat = 1e-12; // of the volume that the lengths of the axes would have

/// Rows of the matrix that multiplies by the determinant and inverts: products of columns.
void GetAdjugate(const double* m, double rows[3][3]) {
    for (int k = 0; k < 3; ++k) {
        const double* a = m + 4 * ((k + 1) % 3);
        const double* b = m + 4 * ((k + 2) % 3);
        for (int i = 0; i < 3; ++i)
            rows[k][i] = a[(i + 1) % 3] * b[(i + 2) % 3] - a[(i + 2) % 3] * b[(i + 1) % 3];
    }
}

double Dot(const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// Inverse of the upper 3 by 3 numbers, row by row.
bool Invert(const double* m, double rows[3][3]) {
    const double determinant = GetPlaceDeterminant(m);
    if (!(std::fabs(determinant) > 0.0)) return false;
    GetAdjugate(m, rows);
    for (int k = 0; k < 3; ++k)
        for (int i = 0; i < 3; ++i)
            rows[k][i] /= determinant;
    return true;
}

} // namespace

void PullDirection(const double* m, const double* pDirection, double* pOut) {
    for (int k = 0; k < 3; ++k)
        pOut[k] = Dot(m + 4 * k, pDirection);
}

double GetPlaceDeterminant(const double* m) {
    double rows[3][3];
    GetAdjugate(m, rows);
    const double determinant = Dot(rows[0], m);
    double volume = 1.0;
    for (int k = 0; k < 3; ++k)
        volume *= std::sqrt(Dot(m + 4 * k, m + 4 * k));
    return std::fabs(determinant) > kFlat * volume ? determinant : 0.0;
}

bool UnplacePoint(const double* m, const double* p, double* pOut) {
    double rows[3][3];
    if (!Invert(m, rows)) return false;
    const double way[3] = {p[0] - m[12], p[1] - m[13], p[2] - m[14]};
    for (int k = 0; k < 3; ++k)
        pOut[k] = Dot(rows[k], way);
    return true;
}

// A ball becomes an ellipsoid, of which the eye sees an ellipse: the image of a circle under the symmetric
// root of m m^T in the plane of the picture.
bool GetFacingCorners(const double* m, float* pOut) {
    double rows[3][3];
    if (!Invert(m, rows)) return false;
    double xx = 0.0, xy = 0.0, yy = 0.0;
    for (int k = 0; k < 3; ++k) {
        xx += m[4 * k] * m[4 * k];
        xy += m[4 * k] * m[4 * k + 1];
        yy += m[4 * k + 1] * m[4 * k + 1];
    }
    const double root = std::sqrt(std::max(xx * yy - xy * xy, 0.0));
    const double norm = std::sqrt(xx + yy + 2.0 * root);
    const double ellipse[3] = {(xx + root) / norm, xy / norm, (yy + root) / norm};
    static const double kCorners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (const double* corner : kCorners) {
        const double seen[3] = {ellipse[0] * corner[0] + ellipse[1] * corner[1],
                                ellipse[1] * corner[0] + ellipse[2] * corner[1], 0.0};
        for (int k = 0; k < 3; ++k)
            *pOut++ = float(Dot(rows[k], seen));
    }
    return true;
}
