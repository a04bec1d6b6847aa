// The flat ground grid.
#pragma once

class Grid_cls {
public:
    /// Lines in the plane z = 0 around the origin in the current colour: ten cells of `gridUnit` to each
    /// side, then ten of ten times that, and so on for `n` decades.
    static void DrawGridFlat(double gridUnit, int n);
};
