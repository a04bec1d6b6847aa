#include "FILTER/clsFilterGrid.h"

#include <epoxy/gl.h>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/clsMyVector.h"
#include "FILTER/FilterFrame.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGrid.h"
#include "GL/BASE/clsSphere.h"

namespace {

constexpr int kSphereLevel = 3;

/// Where a filter stands at a time.
struct Placement_st {
    double mPlace[3], mAngles[3], mScale[3];

    Placement_st(const FilterData_cls& data, double time) {
        data.mpCTranslate->GetInterpolatedValue(mPlace, time, Parameters_cls::kCurrent);
        data.mpCRotate->GetInterpolatedValue(mAngles, time, Parameters_cls::kCurrent);
        data.mpCScale->GetInterpolatedValue(mScale, time, Parameters_cls::kCurrent);
    }
    void Multiply() const {
        glTranslated(mPlace[0], mPlace[1], mPlace[2]);
        RotateZXY(mAngles);
        glScaled(mScale[0], mScale[1], mScale[2]);
    }
    /// A point of the filter in the scene.
    void Transform(float* p) const {
        double v[3];
        for (int i = 0; i < 3; ++i)
            v[i] = double(p[i]) * mScale[i];
        MyVector::Rotate(v, mAngles[1], 1);
        MyVector::Rotate(v, mAngles[0], 0);
        MyVector::Rotate(v, mAngles[2], 2);
        for (int i = 0; i < 3; ++i)
            p[i] = float(v[i] + mPlace[i]);
    }
};

} // namespace

FilterGridData_cls::FilterGridData_cls()
    : FilterData_cls(true, true), mpCColor(AddColorCurve("Color", "0.5 0.5 0.5 1")) {
    mCConfItemList.Add(&mCGridType, "GridType=", "0");
    mCConfItemList.Add(&mCGridMin, "GridMin=", "-1");
    mCConfItemList.Add(&mCGridMax, "GridMax=", "+1");
    mCConfItemList.Add(&mCGridLineNum, "GridLineNum=", "20");
    mCConfItemList.Add(&mCGridCoord, "GridCoord=", "1");
}

void FilterGrid_cls::GLDraw(double time) const {
    if (GetPCData()->mbSelected) DrawFilterFrame(*GetPCData(), time);
}

void FilterGrid_cls::GLDrawRealGrid(double time, Tags* pTags) const {
    const FilterGridData_cls& data = *GetPCData();
    if (!data.mCValid.mValue || !data.mCVisible.mValue) return;
    const Placement_st placement(data, time);
    const GLMatrixScope_cls matrix;
    float color[4];
    data.mpCColor->GetColor4fNormal(color, 0.0f);
    glColor4fv(color);
    placement.Multiply();
    Tags own;
    DrawShape(pTags && data.mCGridCoord.mValue ? &own : nullptr);
    for (TagObject_cls& tag : own) {
        placement.Transform(tag.mPos);
        pTags->push_back(tag);
    }
}

void FilterGrid_cls::DrawShape(Tags* pTags) const {
    const FilterGridData_cls& data = *GetPCData();
    const Grid_cls::Span_st span = {data.mCGridMin.mValue, data.mCGridMax.mValue, data.mCGridLineNum.mValue};
    switch (data.mCGridType.mValue) {
    case FilterGridData_cls::FLAT_XY:
        Grid_cls::DrawBasicGridZ(span, 0.0f, pTags);
        break;
    case FilterGridData_cls::FLAT_YZ:
        Grid_cls::DrawBasicGridX(span, 0.0f, pTags);
        break;
    case FilterGridData_cls::FLAT_XZ:
        Grid_cls::DrawBasicGridY(span, 0.0f, pTags);
        break;
    case FilterGridData_cls::CUBIC:
        Grid_cls::DrawCubicGrid(span, pTags);
        break;
    case FilterGridData_cls::CIRCLE:
        Circle_cls::DrawCircles(span, pTags);
        break;
    case FilterGridData_cls::SPHERICAL:
        if (!GpCSphere) break;
        GpCSphere->InitializeIfNot();
        GpCSphere->Draw(kSphereLevel);
        break;
    default:
        break;
    }
}
