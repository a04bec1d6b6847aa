#include "FILTER/FilterFrame.h"

#include <epoxy/gl.h>

#include "COMMON/clsMyVector.h"
#include "FILTER/clsFilterData.h"
#include "GL/BASE/clsGLState.h"

void SetFrameColor(const FilterData_cls& data) {
    if (data.mbSelected)
        glColor4f(0.8f, 0.7f, 0.3f, 1.0f);
    else
        glColor4f(0.3f, 0.8f, 0.3f, 1.0f);
}

FilterPlacement_st::FilterPlacement_st(const FilterData_cls& data, double time) {
    data.mpCTranslate->GetInterpolatedValue(mPlace, time, Parameters_cls::kCurrent);
    data.mpCRotate->GetInterpolatedValue(mAngles, time, Parameters_cls::kCurrent);
    data.mpCScale->GetInterpolatedValue(mScale, time, Parameters_cls::kCurrent);
}

void FilterPlacement_st::Multiply() const {
    glTranslated(mPlace[0], mPlace[1], mPlace[2]);
    glRotated(mAngles[2], 0, 0, 1);
    glRotated(mAngles[0], 1, 0, 0);
    glRotated(mAngles[1], 0, 1, 0);
    glScaled(mScale[0], mScale[1], mScale[2]);
}

void FilterPlacement_st::Transform(float* p) const {
    double v[3];
    for (int i = 0; i < 3; ++i)
        v[i] = double(p[i]) * mScale[i];
    MyVector::Rotate(v, mAngles[1], 1);
    MyVector::Rotate(v, mAngles[0], 0);
    MyVector::Rotate(v, mAngles[2], 2);
    for (int i = 0; i < 3; ++i)
        p[i] = float(v[i] + mPlace[i]);
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
    const GLMatrixScope_cls matrix;
    SetFrameColor(data);
    FilterPlacement_st(data, time).Multiply();
    DrawUnitBox();
}
