// Grids of lines: the ground, flat frames of reference and a lattice.
#pragma once

#include "GL/BASE/TagObject.h"

class Grid_cls {
public:
    /// From `mMin` to `mMax` in `mCount` equal steps. None of less than 1; more than the limits below are the
    /// limit.
    struct Span_st {
        float mMin;
        float mMax;
        int mCount;
    };
    static constexpr int kMostFlat = 10000; ///< steps
    static constexpr int kMostCubic = 256;

    /// Lines in the plane z = 0 around the origin in the current colour: ten cells of `gridUnit` to each
    /// side, then ten of ten times that, and so on for `n` decades.
    static void DrawGridFlat(double gridUnit, int n);

    // In the current colour; needs a current OpenGL context. `pTags`, if any, takes the coordinates that the
    // lines stand for, in the grid's own coordinates.

    /// In the plane where x (y, z) is `position`.
    static void DrawBasicGridX(const Span_st& span, float position, Tags* pTags) {
        DrawBasicGrid(0, span, position, pTags);
    }
    static void DrawBasicGridY(const Span_st& span, float position, Tags* pTags) {
        DrawBasicGrid(1, span, position, pTags);
    }
    static void DrawBasicGridZ(const Span_st& span, float position, Tags* pTags) {
        DrawBasicGrid(2, span, position, pTags);
    }
    /// A cube of such planes along all three axes.
    static void DrawCubicGrid(const Span_st& span, Tags* pTags);

private:
    static void DrawBasicGrid(int normal, const Span_st& span, float position, Tags* pTags);
};

class Circle_cls {
public:
    /// Circles around the origin in the plane z = 0, their radii from `span.mMin` to `span.mMax`.
    static void DrawCircles(const Grid_cls::Span_st& span, Tags* pTags);
};
