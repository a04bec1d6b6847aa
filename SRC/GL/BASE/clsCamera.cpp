#include "GL/BASE/clsCamera.h"

#include <algorithm>
#include <cmath>

#include "GL/BASE/clsMarkPainter.h"

namespace {

using Point = MarkPainter_cls::Point;
using Shape = MarkPainter_cls::Shape;

constexpr double kWidest = 120.0; // degrees: a wider pyramid would be flat
constexpr int kSides = 24;

Point At(double x, double y, double z) { return {float(x), float(y), float(z)}; }

/// The pyramid of what it sees, a triangle on top of it.
void DrawBasic(MarkPainter_cls& painter, double angle) {
    const double half = std::tan(std::clamp(angle, 1.0, kWidest) * M_PI / 360.0);
    const Point corners[4] = {At(1, half, half), At(1, -half, half), At(1, -half, -half), At(1, half, -half)};
    painter.Draw(Shape::Loop, corners, 4);
    Point edges[8];
    for (int i = 0; i < 4; ++i) {
        edges[2 * i] = At(0, 0, 0);
        edges[2 * i + 1] = corners[i];
    }
    painter.Draw(Shape::Lines, edges, 8);
    const Point up[3] = {At(1, 0.6 * half, 1.2 * half), At(1, 0, 1.8 * half), At(1, -0.6 * half, 1.2 * half)};
    painter.Draw(Shape::Loop, up, 3);
}

/// The half sphere before it, and where its up is.
void DrawDome(MarkPainter_cls& painter) {
    constexpr double kRadius = 0.5;
    Point ring[kSides], upright[kSides / 2 + 1], level[kSides / 2 + 1];
    for (int i = 0; i < kSides; ++i) {
        const double angle = i * 2.0 * M_PI / kSides;
        ring[i] = At(0, kRadius * std::cos(angle), kRadius * std::sin(angle));
    }
    for (int i = 0; i <= kSides / 2; ++i) {
        const double angle = (i - kSides / 4) * 2.0 * M_PI / kSides;
        const double out = kRadius * std::cos(angle), across = kRadius * std::sin(angle);
        upright[i] = At(out, 0, across);
        level[i] = At(out, across, 0);
    }
    painter.Draw(Shape::Loop, ring, kSides);
    painter.Draw(Shape::Strip, upright, kSides / 2 + 1);
    painter.Draw(Shape::Strip, level, kSides / 2 + 1);
    const Point up[2] = {At(0, 0, kRadius), At(0, 0, 1.4 * kRadius)};
    painter.Draw(Shape::Lines, up, 2);
}

/// A cross along the axes, and around it two rings.
void DrawCrosshair(MarkPainter_cls& painter) {
    const Point cross[6] = {At(-1, 0, 0), At(1, 0, 0), At(0, -1, 0), At(0, 1, 0), At(0, 0, -1), At(0, 0, 1)};
    painter.Draw(Shape::Lines, cross, 6);
    Point flat[kSides], upright[kSides];
    for (int i = 0; i < kSides; ++i) {
        const double angle = i * 2.0 * M_PI / kSides;
        flat[i] = At(0.6 * std::cos(angle), 0.6 * std::sin(angle), 0);
        upright[i] = At(0.6 * std::cos(angle), 0, 0.6 * std::sin(angle));
    }
    painter.Draw(Shape::Loop, flat, kSides);
    painter.Draw(Shape::Loop, upright, kSides);
}

} // namespace

void Camera_cls::Draw(MarkPainter_cls& painter, Mode mode, double size, double angle) {
    const MarkScope_cls scope(painter);
    const double factors[3] = {size, size, size};
    painter.Scale(factors);
    if (mode == BASIC)
        DrawBasic(painter, angle);
    else if (mode == FISHEYE)
        DrawDome(painter);
    else
        DrawCrosshair(painter);
}
