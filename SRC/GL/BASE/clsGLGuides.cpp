#include "GL/BASE/clsGLGuides.h"

#include <cmath>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsMarkPainter.h"

namespace {

using Point = MarkPainter_cls::Point;
using Shape = MarkPainter_cls::Shape;

constexpr float kLineWidth = 2.0f; // pixels of the window
constexpr double kHeadLength = 0.6;
constexpr double kHeadHalf = 0.1;
constexpr double kBoxHalf = 0.2;
constexpr int kRingPoints = 24;
/// Rings of x, y and z: where two lie in one plane, each is still to be had.
constexpr double kRadius[3] = {0.84, 0.92, 1.0};

/// Two unit vectors across a third.
struct Across_st {
    double mU[3];
    double mV[3];

    explicit Across_st(const double* pAxis) {
        double other[3] = {0, 0, 0};
        int least = 0;
        for (int i = 1; i < 3; ++i)
            if (std::fabs(pAxis[i]) < std::fabs(pAxis[least])) least = i;
        other[least] = 1.0;
        MyVector::GetCrossedVector(pAxis, other, mU);
        MyVector::Normalize(mU);
        MyVector::GetCrossedVector(pAxis, mU, mV);
    }
    Point At(const double* pFrom, double u, double v) const {
        Point point;
        for (size_t i = 0; i < 3; ++i)
            point[i] = float(pFrom[i] + u * mU[i] + v * mV[i]);
        return point;
    }
};

Point ToPoint(const double* p) { return {float(p[0]), float(p[1]), float(p[2])}; }

void DrawHead(MarkPainter_cls& painter, const double* pAxis, double length) {
    constexpr int kCorners = 8;
    const Across_st across(pAxis);
    double tip[3], base[3];
    for (int i = 0; i < 3; ++i) {
        tip[i] = pAxis[i] * length;
        base[i] = pAxis[i] * (length - kHeadLength);
    }
    Point fan[kCorners + 2];
    fan[0] = ToPoint(tip);
    for (int corner = 0; corner <= kCorners; ++corner) {
        const double angle = corner * M_PI / 4.0;
        fan[corner + 1] = across.At(base, kHeadHalf * std::cos(angle), kHeadHalf * std::sin(angle));
    }
    painter.Draw(Shape::Fan, fan, kCorners + 2);
}

void DrawBox(MarkPainter_cls& painter, const double* pAxis, double length) {
    static const int kFaces[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                     {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
    const Across_st across(pAxis);
    Point corners[8];
    for (int corner = 0; corner < 8; ++corner) {
        double from[3];
        for (int i = 0; i < 3; ++i)
            from[i] = pAxis[i] * (length + (corner & 4 ? kBoxHalf : -kBoxHalf));
        corners[corner] =
            across.At(from, corner & 2 ? kBoxHalf : -kBoxHalf, corner & 1 ? kBoxHalf : -kBoxHalf);
    }
    for (const auto& face : kFaces) {
        const Point fan[4] = {corners[face[0]], corners[face[1]], corners[face[2]], corners[face[3]]};
        painter.Draw(Shape::Fan, fan, 4);
    }
}

} // namespace

void GLGuides_cls::SetGLColor(MarkPainter_cls& painter, int dragAxis, int axis) {
    const float main = dragAxis < 0 ? 0.7f : dragAxis == axis ? 1.0f : 0.4f;
    const float others = dragAxis == axis ? 0.2f : 0.1f;
    painter.SetColor(axis == 0 ? main : others, axis == 1 ? main : others, axis == 2 ? main : others);
}

void GLGuides_cls::DrawArrow(MarkPainter_cls& painter, const double* pAxis, double length, Type type) {
    if (length == 0.0) return;
    const double end[3] = {pAxis[0] * length, pAxis[1] * length, pAxis[2] * length};
    const Point line[2] = {{0, 0, 0}, ToPoint(end)};
    painter.Draw(Shape::Lines, line, 2);
    if (type == SCALE)
        DrawBox(painter, pAxis, length);
    else
        DrawHead(painter, pAxis, length);
}

void GLGuides_cls::DrawRing(MarkPainter_cls& painter, const double* pAxis, double radius) {
    static const double kMiddle[3] = {0, 0, 0};
    const Across_st across(pAxis);
    Point ring[kRingPoints];
    for (int i = 0; i < kRingPoints; ++i) {
        const double angle = i * 2.0 * M_PI / kRingPoints;
        ring[i] = across.At(kMiddle, radius * std::cos(angle), radius * std::sin(angle));
    }
    painter.Draw(Shape::Loop, ring, kRingPoints);
}

void GLGuides_cls::DrawGuideRotation(MarkPainter_cls& painter, const double pAxes[3][3], int dragAxis) const {
    for (int axis = 0; axis < 3; ++axis) {
        const MarkName_cls name(painter, axis);
        SetGLColor(painter, dragAxis, axis);
        DrawRing(painter, pAxes[axis], kRadius[axis]);
    }
}

void GLGuides_cls::DrawGuide(MarkPainter_cls& painter, const double place[3], const double pAxes[3][3],
                             int dragAxis) const {
    const double size = kSize * painter.GetPixel(place);
    if (!(size > 0.0) || !std::isfinite(size)) return;
    const double factors[3] = {size, size, size};
    const MarkScope_cls scope(painter);
    painter.Translate(place);
    painter.Scale(factors);
    painter.SetDashes(0xFFFF);
    painter.SetHandle(kLineWidth);
    if (mType == ROTATE) {
        DrawGuideRotation(painter, pAxes, dragAxis);
    } else {
        for (int axis = 0; axis < 3; ++axis) {
            const MarkName_cls name(painter, axis);
            SetGLColor(painter, dragAxis, axis);
            DrawArrow(painter, pAxes[axis], 1.0, mType);
        }
    }
    painter.SetHandle(0.0f);
}
