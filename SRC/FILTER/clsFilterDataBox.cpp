#include "FILTER/clsFilterDataBox.h"

#include <cmath>

#include "FILTER/FilterFrame.h"
#include "GL/BASE/clsMarkPainter.h"
#include "GL/DRAW/PlaceMatrix.h"

namespace {

const wxString kSuffixes[3] = {"x", "y", "z"};
constexpr double kFarthest = 1e30; // what OpenGL's floats can work with

void Evaluate(ParamGroup_cls& group, double time, double out[3]) {
    group.GetInterpolatedValue(out, time, Parameters_cls::kCurrent);
}

/// Where the anchor is.
void DrawCross(MarkPainter_cls& painter) {
    static const MarkPainter_cls::Point kCross[6] = {{-0.1f, 0, 0}, {0.1f, 0, 0},  {0, -0.1f, 0},
                                                     {0, 0.1f, 0},  {0, 0, -0.1f}, {0, 0, 0.1f}};
    painter.Draw(MarkPainter_cls::Shape::Lines, kCross, 6);
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

void FilterDataBoxData_cls::ToScene(double* pPlace) const {
    for (size_t i = 0; i < 3; ++i)
        pPlace[i] += mpCAnchor->mVParams[i].mCurrentValue;
}

void FilterDataBoxData_cls::FromScene(double* pPlace) const {
    for (size_t i = 0; i < 3; ++i)
        pPlace[i] -= mpCAnchor->mVParams[i].mCurrentValue;
}

// The data are turned as other objects are, and then scaled along the scene's axes.
void FilterDataBoxData_cls::GetGuideAxes(int mode, double out[3][3]) const {
    SceneObj_cls::GetGuideAxes(mode, out);
}

void FilterDataBox_cls::GLDraw(MarkPainter_cls& painter, double time) const {
    const FilterDataBoxData_cls& data = *GetPCData();
    if (!data.mpCObjectGroup->mbVisible || !data.mCValid.mValue) return;
    FilterPlacement_st placement(data, time);
    double anchor[3];
    Evaluate(*data.mpCAnchor, time, anchor);
    for (int i = 0; i < 3; ++i)
        placement.mPlace[i] += anchor[i];
    if (data.mbSelected) data.GLDrawGuide(painter);
    const MarkScope_cls matrix(painter);
    SetFrameColor(painter, data);
    placement.Multiply(painter);
    DrawUnitBox(painter);
    DrawCross(painter);
}
