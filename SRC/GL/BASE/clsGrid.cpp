#include "GL/BASE/clsGrid.h"

#include <vector>

#include "GL/BASE/clsGLState.h"

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
