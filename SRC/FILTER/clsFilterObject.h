// Puts a solid thing beside the particles: a box, a plane, a sphere, or a mesh from a file.
#pragma once

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsSceneObjTexture.h"

class FilterObjectData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { BOX = 0, PLANE = 1, SPHERE = 2, IMPORT = 3 };

    FilterObjectData_cls();

    ConfItemUINT_cls mCObjectType;
    ConfItemSTR_cls mCImportPath;            ///< a pattern that gets the frame's number
    ConfItemFLOATARRAY_cls mCArrayVector[3]; ///< columns of a mesh's matrix
    SceneObjTexture_cls mCTexture;
};

/// Its colours are ambient, diffuse and specular.
class FilterObject_cls final : public FilterOf_cls<FilterObjectData_cls, FILTER_OBJECT> {
public:
    void GLDraw(double time) const override;
    void OnSelected() override;
    void OnDeselected() override;
};
