// The handles on a selected item: arrows that move it, boxes that scale it, rings that turn it. They keep
// their size on the screen.
#pragma once

class MarkPainter_cls;

class GLGuides_cls {
public:
    enum Type { TRANSLATE = 0, SCALE = 1, ROTATE = 2 };
    static constexpr double kSize = 40.0; ///< length of an arrow and a ring's radius, pixels of the window

    explicit GLGuides_cls(Type type) : mType(type) {}

    /// At a place of the scene. Row i of `pAxes` is the unit vector that handle i stands for. `dragAxis` is
    /// the one that a drag is locked to, -1 none. A click knows handle i by the name i.
    void DrawGuide(MarkPainter_cls& painter, const double place[3], const double pAxes[3][3],
                   int dragAxis) const;

private:
    void DrawGuideRotation(MarkPainter_cls& painter, const double pAxes[3][3], int dragAxis) const;
    static void DrawArrow(MarkPainter_cls& painter, const double* pAxis, double length, Type type);
    static void DrawRing(MarkPainter_cls& painter, const double* pAxis, double radius);
    static void SetGLColor(MarkPainter_cls& painter, int dragAxis, int axis);

    Type mType;
};
