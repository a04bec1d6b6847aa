// Marks of things that look: the camera's path, its anchor.
#pragma once

class MarkPainter_cls;

class Camera_cls {
public:
    enum Mode { BASIC = 0, FISHEYE = 1, CROSSHAIR = 2 };

    /// Around the origin of the present coordinates; a camera looks along x, its up is z. `size` is its
    /// length, `angle` the opening angle in degrees.
    static void Draw(MarkPainter_cls& painter, Mode mode, double size, double angle);
};
