#include "FILTER/clsFilterGrid.h"

#include <epoxy/gl.h>

#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/FilterFrame.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGrid.h"
#include "GL/BASE/clsSphere.h"
#include "POVRAY/TEXT/clsPovObjectGrid.h"
#include "POVRAY/TEXT/clsPovText.h"

namespace {

constexpr int kSphereLevel = 3;
constexpr double kPovLine = 0.002; // half of a line's thickness

} // namespace

FilterGridData_cls::FilterGridData_cls()
    : FilterData_cls(true, true), mpCColor(AddColorCurve("Color", "0.5 0.5 0.5 1")) {
    mCConfItemList.Add(&mCGridType, "GridType=", "0");
    mCConfItemList.Add(&mCGridMin, "GridMin=", "-1");
    mCConfItemList.Add(&mCGridMax, "GridMax=", "+1");
    mCConfItemList.Add(&mCGridLineNum, "GridLineNum=", "20");
    mCConfItemList.Add(&mCGridCoord, "GridCoord=", "1");
}

void FilterGrid_cls::GLDraw(MarkPainter_cls& painter, double time) const {
    DrawFilterFrame(painter, *GetPCData(), time);
}

void FilterGrid_cls::GLDrawRealGrid(double time, Tags* pTags) const {
    const FilterGridData_cls& data = *GetPCData();
    if (!data.mCValid.mValue || !data.mCVisible.mValue) return;
    const FilterPlacement_st placement(data, time);
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

// As a view shows it: switched off, moved, in its colour; a plain scene has all grids, grey, where they are.
std::string FilterGrid_cls::GetStrPovRealGrid(double time, const PovText_cls& pov) const {
    const FilterGridData_cls& data = *GetPCData();
    const PovObjectGrid_cls::Span_st span = {double(data.mCGridMin.mValue), double(data.mCGridMax.mValue),
                                             data.mCGridLineNum.mValue, kPovLine, pov.GetDecimals(6)};
    float color[4] = {0.5f, 0.5f, 0.5f, 1.0f};
    std::string placed;
    if (pov.GetOptions().mbLikeView) {
        if (!data.mCValid.mValue || !data.mCVisible.mValue) return std::string();
        data.mpCColor->GetColor4fNormal(color, 0.0f);
        placed = FilterPlacement_st(data, time).GetStrPovMatrix(pov.GetDecimals(6));
    }
    const std::string ending = PovObjectGrid_cls::GetStrPovTexture(color) + placed;
    switch (data.mCGridType.mValue) {
    case FilterGridData_cls::FLAT_XY:
        return PovObjectGrid_cls::GetStrPovBasicGridZ(span, 0.0, ending);
    case FilterGridData_cls::FLAT_YZ:
        return PovObjectGrid_cls::GetStrPovBasicGridX(span, 0.0, ending);
    case FilterGridData_cls::FLAT_XZ:
        return PovObjectGrid_cls::GetStrPovBasicGridY(span, 0.0, ending);
    case FilterGridData_cls::CUBIC:
        return PovObjectGrid_cls::GetStrPovBasicGridCubic(span, ending);
    case FilterGridData_cls::CIRCLE:
        return PovObjectGrid_cls::GetStrPovGridCircular(span, ending);
    default:
        return std::string();
    }
}
