#include "FILTER/FilterShapes.h"

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsSphere.h"

namespace {

constexpr int kSphereLevel = 3;

struct Corner_st {
    GLfloat normal[3];
    GLfloat place[3];
};

void DrawQuads(const Corner_st* pCorners, GLsizei number) {
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, sizeof(Corner_st), pCorners->normal);
    glVertexPointer(3, GL_FLOAT, sizeof(Corner_st), pCorners->place);
    glDrawArrays(GL_QUADS, 0, number);
}

/// The faces across each axis, counter-clockwise as they are seen from outside.
void MakeCube(Corner_st* pOut) {
    static const float kRound[4][2] = {{-0.5f, -0.5f}, {0.5f, -0.5f}, {0.5f, 0.5f}, {-0.5f, 0.5f}};
    for (int axis = 0; axis < 3; ++axis)
        for (const float side : {-1.0f, 1.0f})
            for (int k = 0; k < 4; ++k) {
                const float* corner = kRound[side > 0.0f ? k : 3 - k];
                Corner_st& out = *pOut++;
                out = Corner_st();
                out.normal[axis] = side;
                out.place[axis] = side * 0.5f;
                out.place[(axis + 1) % 3] = corner[0];
                out.place[(axis + 2) % 3] = corner[1];
            }
}

} // namespace

void DrawSolidCube() {
    constexpr int kCorners = 24;
    static Corner_st sCorners[kCorners];
    static const bool sbMade = (MakeCube(sCorners), true);
    if (sbMade) DrawQuads(sCorners, kCorners);
}

void DrawSolidSquare() {
    static const Corner_st kCorners[4] = {{{0, 0, 1}, {-0.5f, -0.5f, 0}},
                                          {{0, 0, 1}, {0.5f, -0.5f, 0}},
                                          {{0, 0, 1}, {0.5f, 0.5f, 0}},
                                          {{0, 0, 1}, {-0.5f, 0.5f, 0}}};
    DrawQuads(kCorners, 4);
}

void DrawSolidSphere() {
    if (!GpCSphere) return;
    const GLMatrixScope_cls matrix;
    glScalef(0.5f, 0.5f, 0.5f);
    GpCSphere->InitializeIfNot();
    GpCSphere->Draw(kSphereLevel);
}
