// The middle of a square picture, or a whole one of another shape, at another size: each pixel of the result
// is the mean of the source under it, pixels at its edges weighted by the part that is covered. Works
// on several threads, whose number doesn't show in the result.
#pragma once

#include <cstdint>

#include "GL/BASE/ShownPart.h"
#include "IMAGE/HalfFloat.h"

/// The part of a source that a picture of w by h is made of. Of a square that is what has the picture's
/// shape: the whole width where w >= h, else the whole height. A source that isn't square has that shape
/// already, but for the rounding of its sides, and is taken whole. In source pixels, from the first row and
/// column.
struct MiddlePart_st {
    double mX = 0.0;
    double mY = 0.0;
    double mScaleX = 1.0; ///< source pixels a target pixel
    double mScaleY = 1.0;
};
MiddlePart_st GetMiddlePart(int srcW, int srcH, int w, int h);

/// Resample that part of `pSource` (srcW by srcH pixels of RGB) to `pTarget` (w by h of RGB). Means are cut
/// to whole numbers. Sizes are at least 1.
void ResampleMiddle(const unsigned char* pSource, int srcW, int srcH, unsigned char* pTarget, int w, int h);
/// The same of half floats, which become bytes by `table` on the way: RGBA, and of the source the shown part
/// alone, which holds all that the picture is made of.
void ResampleHalves(const std::uint16_t* pSource, const ShownPart_st& shown, int srcW, int srcH,
                    const HalfBytes& table, unsigned char* pTarget, int w, int h);
