// Where a box puts the data: a matrix of 4 by 4 numbers, column by column, as OpenGL has them.
#pragma once

/// Where a point of the data stands in the scene.
inline void PlacePoint(const double* m, const float* p, double* pOut) {
    for (int i = 0; i < 3; ++i)
        pOut[i] = m[i] * double(p[0]) + m[4 + i] * double(p[1]) + m[8 + i] * double(p[2]) + m[12 + i];
}

/// A direction of the scene such that its product with points of the data is, but for a constant, that of the
/// given one with where they stand.
void PullDirection(const double* m, const double* pDirection, double* pOut);
/// The way back of a scene's point into the data; false where the matrix has none.
bool UnplacePoint(const double* m, const double* p, double* pOut);
/// Of the upper 3 by 3 numbers; 0 or nearly so for what makes the data flat.
double GetPlaceDeterminant(const double* m);
/// Corners of a quad around a particle of radius 1, 12 numbers in data coordinates: on the screen it covers
/// what a ball there would, its sides along those of the picture as far as can be. `m` leads from the data to
/// the eye. False: the data are flat, and no quad faces the eye.
bool GetFacingCorners(const double* m, float* pOut);
