// The middle of a square picture at another size: each pixel of the result is the mean of the source under
// it, pixels at its edges weighted by the part that is covered.
#pragma once

/// The part of a source that has the shape of a picture of w by h: the whole width where w >= h, else the
/// whole height. In source pixels, from the first row and column.
struct MiddlePart_st {
    double mX = 0.0;
    double mY = 0.0;
    double mScale = 1.0; ///< source pixels a target pixel, both ways where the source is square
};
MiddlePart_st GetMiddlePart(int srcW, int srcH, int w, int h);

/// Resample that part of `pSource` (srcW by srcH pixels of RGB) to `pTarget` (w by h of RGB). Means are cut
/// to whole numbers. Sizes are at least 1.
void ResampleMiddle(const unsigned char* pSource, int srcW, int srcH, unsigned char* pTarget, int w, int h);
