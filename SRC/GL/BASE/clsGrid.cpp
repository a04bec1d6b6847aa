#include "GL/BASE/clsGrid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "GL/BASE/clsGLState.h"

namespace {

using Span = Grid_cls::Span_st;
using Point = std::array<float, 3>;

/// The places of the lines along one axis.
std::vector<float> GetSteps(const Span& span, int most) {
    const int count = std::min(span.mCount, most);
    std::vector<float> steps;
    for (int i = 0; count > 0 && i <= count; ++i)
        steps.push_back(span.mMin + (span.mMax - span.mMin) * float(i) / float(count));
    return steps;
}

void AddTag(Tags* pTags, float value, const Point& place) {
    if (pTags) pTags->push_back({wxString::Format("%g", double(value)), {place[0], place[1], place[2]}});
}

void DrawPoints(const std::vector<Point>& points, GLenum mode) {
    if (points.empty()) return;
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, points.data());
    glDrawArrays(mode, 0, static_cast<GLsizei>(points.size()));
}

} // namespace

void Grid_cls::DrawGridFlat(double gridUnit, int n) {
    constexpr int kCells = 10;
    std::vector<float> points;
    const auto line = [&](double ax, double ay, double bx, double by) {
        for (const double v : {ax, ay, bx, by})
            points.push_back(static_cast<float>(v));
    };
    double unit = gridUnit;
    for (int decade = 0; decade < n; ++decade, unit *= 10.0) {
        const double reach = unit * kCells;
        for (int i = -kCells; i <= kCells; ++i) {
            // The inner cells belong to the decade below.
            if (decade > 0 && (i == -1 || i == 0 || i == 1)) {
                const double inner = unit;
                for (const double sign : {-1.0, 1.0}) {
                    line(i * unit, sign * inner, i * unit, sign * reach);
                    line(sign * inner, i * unit, sign * reach, i * unit);
                }
                continue;
            }
            line(i * unit, -reach, i * unit, reach);
            line(-reach, i * unit, reach, i * unit);
        }
    }
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, points.data());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(points.size() / 2));
}

void Grid_cls::DrawBasicGrid(int normal, const Span_st& span, float position, Tags* pTags) {
    const size_t along = normal == 0 ? 1 : 0;
    const size_t across = normal == 2 ? 1 : 2;
    std::vector<Point> points;
    for (const float step : GetSteps(span, kMostFlat)) {
        Point corner;
        corner.fill(position);
        for (const auto& [moving, fixed] : {std::pair(along, across), std::pair(across, along)}) {
            corner[fixed] = step;
            corner[moving] = span.mMax;
            points.push_back(corner);
            corner[moving] = span.mMin;
            points.push_back(corner);
            AddTag(pTags, step, corner);
        }
    }
    DrawPoints(points, GL_LINES);
}

void Grid_cls::DrawCubicGrid(const Span_st& span, Tags* pTags) {
    const std::vector<float> steps = GetSteps(span, kMostCubic);
    std::vector<Point> points;
    points.reserve(steps.size() * steps.size() * 6);
    for (const float a : steps)
        for (const float b : steps) {
            points.insert(points.end(), {{span.mMin, a, b}, {span.mMax, a, b}});
            points.insert(points.end(), {{a, span.mMin, b}, {a, span.mMax, b}});
            points.insert(points.end(), {{a, b, span.mMin}, {a, b, span.mMax}});
        }
    DrawPoints(points, GL_LINES);
    for (const float step : steps) {
        AddTag(pTags, step, {step, span.mMin, span.mMin});
        AddTag(pTags, step, {span.mMin, step, span.mMin});
        AddTag(pTags, step, {span.mMin, span.mMin, step});
    }
}

void Circle_cls::DrawCircles(const Grid_cls::Span_st& span, Tags* pTags) {
    constexpr int kSides = 72; // of 5 degrees
    std::vector<Point> points(kSides);
    for (const float radius : GetSteps(span, Grid_cls::kMostFlat)) {
        for (int i = 0; i < kSides; ++i) {
            const double angle = 2.0 * M_PI * i / kSides;
            points[size_t(i)] = {radius * float(std::cos(angle)), radius * float(std::sin(angle)), 0.0f};
        }
        DrawPoints(points, GL_LINE_LOOP);
        AddTag(pTags, radius, {radius, 0.0f, 0.0f});
    }
}
