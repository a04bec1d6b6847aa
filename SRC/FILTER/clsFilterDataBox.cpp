#include "FILTER/clsFilterDataBox.h"

#include <cmath>

#include <epoxy/gl.h>

#include "FILTER/FilterFrame.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/PlaceMatrix.h"

namespace {

const wxString kSuffixes[3] = {"x", "y", "z"};
constexpr double kFarthest = 1e30; // what OpenGL's floats can work with

void Evaluate(ParamGroup_cls& group, double time, double out[3]) {
    group.GetInterpolatedValue(out, time, Parameters_cls::kCurrent);
}

/// Where the anchor is.
void DrawCross() {
    static const GLfloat kCross[6][3] = {{-0.1f, 0, 0}, {0.1f, 0, 0},  {0, -0.1f, 0},
                                         {0, 0.1f, 0},  {0, 0, -0.1f}, {0, 0, 0.1f}};
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, kCross);
    glDrawArrays(GL_LINES, 0, 6);
}

} // namespace

FilterDataBoxData_cls::FilterDataBoxData_cls()
    : FilterData_cls(true, true), mpCAnchor(MakeGroup("Filter Anchor", 3, kSuffixes)) {}

FilterDataBoxData_cls::~FilterDataBoxData_cls() = default;

// The anchor stays where it is, however the box is turned.
void FilterDataBoxData_cls::UpdateCurrentObj(double time) {
    FilterData_cls::UpdateCurrentObj(time);
    double anchor[3];
    Evaluate(*mpCAnchor, time, anchor);
    const PositionAndDirection_cls& at = mCCurrent;
    double place[3];
    for (int i = 0; i < 3; ++i)
        place[i] = at.mPos[i] + anchor[i] - anchor[0] * at.mFront[i] + anchor[1] * at.mRight[i] -
                   anchor[2] * at.mUp[i];
    mCCurrent.Set(place);
}

bool FilterDataBoxData_cls::GetMatrix(double out[16]) const {
    mCCurrent.GetGLMatrix(out);
    bool bFinite = true;
    for (int i = 0; i < 16; ++i) {
        if (i % 4 < 3) out[i] *= mCScaleCurrent[i % 4];
        bFinite = bFinite && std::fabs(out[i]) < kFarthest;
    }
    return bFinite;
}

void FilterDataBoxData_cls::PlaceNow(float* pPos) {
    UpdateCurrentObj(kCurrent);
    double matrix[16], place[3];
    if (!GetMatrix(matrix)) return;
    PlacePoint(matrix, pPos, place);
    for (int i = 0; i < 3; ++i)
        pPos[i] = float(place[i]);
}

void FilterDataBox_cls::GLDraw(double time) const {
    const FilterDataBoxData_cls& data = *GetPCData();
    if (!data.mpCObjectGroup->mbVisible || !data.mCValid.mValue) return;
    FilterPlacement_st placement(data, time);
    double anchor[3];
    Evaluate(*data.mpCAnchor, time, anchor);
    for (int i = 0; i < 3; ++i)
        placement.mPlace[i] += anchor[i];
    const GLMatrixScope_cls matrix;
    SetFrameColor(data);
    placement.Multiply();
    DrawUnitBox();
    DrawCross();
}
