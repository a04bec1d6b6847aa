// What a picture shows of the square that its scene is drawn into: work on the rest is work for nothing.
#pragma once

/// A rectangle of pixels of a buffer, from its lower left corner.
struct ShownPart_st {
    int mX = 0;
    int mY = 0;
    int mW = 0;
    int mH = 0;
    bool IsEmpty() const { return mW <= 0 || mH <= 0; }
    bool operator==(const ShownPart_st& o) const {
        return mX == o.mX && mY == o.mY && mW == o.mW && mH == o.mH;
    }
};

/// The smallest that holds both; an empty one counts for nothing.
ShownPart_st JoinParts(const ShownPart_st& a, const ShownPart_st& b);

/// The middle of a square of `side` pixels that has the shape of w by h, as a file shows it: the whole width
/// where w >= h, else the whole height; and the pixels around it that filters at its edge look at.
ShownPart_st GetMiddleOfSquare(int side, int w, int h);

/// What a window of w by h shows of such a square, which is as wide as the window.
ShownPart_st GetPartInWindow(int side, int w, int h);
