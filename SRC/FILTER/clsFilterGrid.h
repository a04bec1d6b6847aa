// A frame of reference in the scene: flat grids, a lattice, circles or a sphere.
#pragma once

#include <string>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "GL/BASE/TagObject.h"

class ColorCurve_cls;
class PovText_cls;

class FilterGridData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { FLAT_XY = 0, FLAT_YZ = 1, FLAT_XZ = 2, CUBIC = 3, CIRCLE = 4, SPHERICAL = 5 };

    FilterGridData_cls();

    ConfItemUINT_cls mCGridType;
    ConfItemFLOAT_cls mCGridMin;
    ConfItemFLOAT_cls mCGridMax;
    ConfItemINT_cls mCGridLineNum; ///< divisions
    ConfItemBOOL_cls mCGridCoord;  ///< labels
    ColorCurve_cls* const mpCColor;
};

class FilterGrid_cls final : public FilterOf_cls<FilterGridData_cls, FILTER_GRID> {
public:
    /// Its frame, while it is selected: the lines are there anyway.
    void GLDraw(MarkPainter_cls& painter, double time) const override;
    /// The grid itself, in the current line width; `pTags`, if any, takes its labels. Needs a current OpenGL
    /// context with the camera in the model-view matrix.
    void GLDrawRealGrid(double time, Tags* pTags) const;

    /// Its lines as solids of a scene for POV-Ray, whose picture has no sphere of them.
    std::string GetStrPovRealGrid(double time, const PovText_cls& pov) const;

private:
    void DrawShape(Tags* pTags) const;
};
