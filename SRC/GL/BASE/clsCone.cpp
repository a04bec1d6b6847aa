#include "GL/BASE/clsCone.h"

#include <cmath>

#include "GL/BASE/clsGLState.h"

namespace {

constexpr int kSides = 24;
constexpr double kRadius = 0.3;

/// A fan around `middle`; seen from outside it goes round counter-clockwise.
void DrawFan(float middle, bool bForward) {
    GLfloat fan[kSides + 2][3] = {{middle, 0.0f, 0.0f}};
    for (int i = 0; i <= kSides; ++i) {
        const double angle = (bForward ? i : -i) * 2.0 * M_PI / kSides;
        fan[i + 1][0] = 0.0f;
        fan[i + 1][1] = GLfloat(kRadius * std::cos(angle));
        fan[i + 1][2] = GLfloat(kRadius * std::sin(angle));
    }
    glVertexPointer(3, GL_FLOAT, 0, fan);
    glDrawArrays(GL_TRIANGLE_FAN, 0, kSides + 2);
}

} // namespace

void Cone_cls::Draw() {
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    DrawFan(1.0f, true);
    DrawFan(0.0f, false);
}
