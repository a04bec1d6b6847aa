#include "GL/BASE/ShownPart.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kAround = 2; // pixels: a row that rounding takes in, and its neighbour in a linear filter

/// Begin and length of the middle of `side` pixels; `share` of it is shown.
void SetMiddle(int side, double share, int* pBegin, int* pLength) {
    const double cut = (1.0 - share) / 2.0 * side;
    *pBegin = std::clamp(int(std::floor(cut)) - kAround, 0, side);
    *pLength = std::clamp(int(std::ceil(side - cut)) + kAround, 0, side) - *pBegin;
}

} // namespace

ShownPart_st JoinParts(const ShownPart_st& a, const ShownPart_st& b) {
    if (a.IsEmpty()) return b;
    if (b.IsEmpty()) return a;
    ShownPart_st both;
    both.mX = std::min(a.mX, b.mX);
    both.mY = std::min(a.mY, b.mY);
    both.mW = std::max(a.mX + a.mW, b.mX + b.mW) - both.mX;
    both.mH = std::max(a.mY + a.mH, b.mY + b.mH) - both.mY;
    return both;
}

ShownPart_st GetMiddleOfSquare(int side, int w, int h) {
    ShownPart_st part = {0, 0, side, side};
    if (w < 1 || h < 1) return part;
    if (w >= h)
        SetMiddle(side, double(h) / w, &part.mY, &part.mH);
    else
        SetMiddle(side, double(w) / h, &part.mX, &part.mW);
    return part;
}

ShownPart_st GetPartInWindow(int side, int w, int h) { return GetMiddleOfSquare(side, std::max(w, h), h); }
