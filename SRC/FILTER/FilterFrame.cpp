#include "FILTER/FilterFrame.h"

#include <epoxy/gl.h>

#include "FILTER/clsFilterData.h"
#include "GL/BASE/clsGLState.h"

void SetFrameColor(const FilterData_cls& data) {
    if (data.mbSelected)
        glColor4f(0.8f, 0.7f, 0.3f, 1.0f);
    else
        glColor4f(0.3f, 0.8f, 0.3f, 1.0f);
}

void RotateZXY(const double angles[3]) {
    glRotated(angles[2], 0, 0, 1);
    glRotated(angles[0], 1, 0, 0);
    glRotated(angles[1], 0, 1, 0);
}

void DrawUnitBox() {
    static const GLfloat kCorners[8][3] = {{-0.5f, -0.5f, -0.5f}, {0.5f, -0.5f, -0.5f}, {0.5f, 0.5f, -0.5f},
                                           {-0.5f, 0.5f, -0.5f},  {-0.5f, -0.5f, 0.5f}, {0.5f, -0.5f, 0.5f},
                                           {0.5f, 0.5f, 0.5f},    {-0.5f, 0.5f, 0.5f}};
    static const GLubyte kEdges[24] = {0, 4, 1, 5, 2, 6, 3, 7, 0, 1, 1, 2,
                                       2, 3, 3, 0, 4, 5, 5, 6, 6, 7, 7, 4};
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, kCorners);
    glDrawElements(GL_LINES, 24, GL_UNSIGNED_BYTE, kEdges);
}

void DrawFilterFrame(const FilterData_cls& data, double time) {
    if (!data.mpCObjectGroup->mbVisible) return;
    double place[3], angles[3], scale[3];
    data.mpCTranslate->GetInterpolatedValue(place, time, Parameters_cls::kCurrent);
    data.mpCRotate->GetInterpolatedValue(angles, time, Parameters_cls::kCurrent);
    data.mpCScale->GetInterpolatedValue(scale, time, Parameters_cls::kCurrent);
    const GLMatrixScope_cls matrix;
    SetFrameColor(data);
    glTranslated(place[0], place[1], place[2]);
    RotateZXY(angles);
    glScaled(scale[0], scale[1], scale[2]);
    DrawUnitBox();
}
