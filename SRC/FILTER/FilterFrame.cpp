#include "FILTER/FilterFrame.h"

#include <epoxy/gl.h>

#include "COMMON/clsMyVector.h"
#include "FILTER/clsFilterData.h"
#include "GL/BASE/clsMarkPainter.h"
#include "POVRAY/TEXT/clsPovSerialize.h"

void SetFrameColor(MarkPainter_cls& painter, const FilterData_cls& data) {
    if (data.mbSelected)
        data.SetMarkColor(painter, 0.8f, 0.7f, 0.3f);
    else
        data.SetMarkColor(painter, 0.3f, 0.8f, 0.3f);
}

FilterPlacement_st::FilterPlacement_st(const FilterData_cls& data, double time) {
    data.GetTranslation(time, mPlace);
    data.GetRotation(time, mAngles);
    data.GetScaling(time, mScale);
}

void FilterPlacement_st::Multiply() const {
    glTranslated(mPlace[0], mPlace[1], mPlace[2]);
    glRotated(mAngles[2], 0, 0, 1);
    glRotated(mAngles[0], 1, 0, 0);
    glRotated(mAngles[1], 0, 1, 0);
    glScaled(mScale[0], mScale[1], mScale[2]);
}

void FilterPlacement_st::Multiply(MarkPainter_cls& painter) const {
    painter.Translate(mPlace);
    painter.Rotate(mAngles[2], 2);
    painter.Rotate(mAngles[0], 0);
    painter.Rotate(mAngles[1], 1);
    painter.Scale(mScale);
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

std::string FilterPlacement_st::GetStrPovMatrix(int decimals) const {
    using Text = PovSerialize_cls;
    double rows[3][3] = {};
    for (int axis = 0; axis < 3; ++axis) {
        double(&v)[3] = rows[axis];
        v[axis] = mScale[axis];
        MyVector::Rotate(v, mAngles[1], 1);
        MyVector::Rotate(v, mAngles[0], 0);
        MyVector::Rotate(v, mAngles[2], 2);
    }
    std::string text = Text::PovOutRows("\tmatrix<", rows, decimals);
    for (int i = 0; i < 3; ++i)
        text += Text::PovOutF(mPlace[i], decimals) + (i < 2 ? "," : ">\n");
    return text;
}

void DrawUnitBox(MarkPainter_cls& painter) {
    static const MarkPainter_cls::Point kCorners[8] = {
        {-0.5f, -0.5f, -0.5f}, {0.5f, -0.5f, -0.5f}, {0.5f, 0.5f, -0.5f}, {-0.5f, 0.5f, -0.5f},
        {-0.5f, -0.5f, 0.5f},  {0.5f, -0.5f, 0.5f},  {0.5f, 0.5f, 0.5f},  {-0.5f, 0.5f, 0.5f}};
    static const int kEdges[24] = {0, 4, 1, 5, 2, 6, 3, 7, 0, 1, 1, 2, 2, 3, 3, 0, 4, 5, 5, 6, 6, 7, 7, 4};
    MarkPainter_cls::Point lines[24];
    for (int i = 0; i < 24; ++i)
        lines[i] = kCorners[kEdges[i]];
    painter.Draw(MarkPainter_cls::Shape::Lines, lines, 24);
}

void DrawFilterFrame(MarkPainter_cls& painter, const FilterData_cls& data, double time) {
    if (!data.mpCObjectGroup->mbVisible) return;
    const FilterPlacement_st placement(data, time);
    if (data.mbSelected) data.GLDrawGuide(painter);
    const MarkScope_cls matrix(painter);
    SetFrameColor(painter, data);
    placement.Multiply(painter);
    DrawUnitBox(painter);
}
