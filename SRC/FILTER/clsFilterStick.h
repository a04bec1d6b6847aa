// Draws connections between pairs of particles: bonds, links.
#pragma once

#include "BOND/clsPovObjectSticks.h"
#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsSceneObjTexture.h"
#include "GL/DRAW/clsGLSticks.h"

class FilterStickData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { LINE = 0, CYLINDER = 1 };
    enum Source : unsigned { LOAD_FILE = 0, CALCULATE = 1 };

    FilterStickData_cls();
    std::vector<ConfItemSTR_cls*> GetPaths() override { return {&mCStickPath}; }
    SceneObjTexture_cls* GetTexture() override { return &mCTexture; }

    ConfItemUINT_cls mCStickType;
    ConfItemFLOAT_cls mCStickRadius; ///< of a cylinder
    ConfItemINT_cls mCStickWidth;    ///< of a line, pixels
    ConfItemUINT_cls mCCalcType;
    ConfItemSTR_cls mCStickPath; ///< a pattern that gets the frame's number
    ConfItemUINT_cls mCCritType; ///< the rule of distances
    ConfItemFLOAT_cls mCCritA;
    ConfItemFLOAT_cls mCCritB;
    ConfItemUINT_cls mCSpecType; ///< 0 any types, 1 A with B
    ConfItemINT_cls mCSpecA;
    ConfItemINT_cls mCSpecB;
    SceneObjTexture_cls mCTexture;
};

class FilterStick_cls final : public FilterOf_cls<FilterStickData_cls, FILTER_STICK> {
public:
    void OnRemoved() override;
    /// The sticks of a frame's particles in a copy that has neighbours in the directions of `copyMask`
    /// (PovObjectSticks_cls). Needs a current OpenGL context with the copy's place in the model-view matrix.
    /// False: told to stop.
    bool GLDrawStick(const StickParticles_st& particles, unsigned copyMask, int frame);

private:
    wxString MakeList(const StickParticles_st& particles, int frame);

    PovObjectSticks_cls mSticks;
    GLSticks_cls mGLSticks;
};
