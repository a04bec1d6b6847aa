// A cone along x: its tip at 1, its base across the origin, the radius 0.3.
#pragma once

class Cone_cls {
public:
    /// In the current colour; needs a current OpenGL context.
    static void Draw();
};
