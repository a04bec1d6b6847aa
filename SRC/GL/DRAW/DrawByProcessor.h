// Particles of a list drawn by the processor in place of OpenGL, where it can and where that is faster.
#pragma once

#include <functional>

#include "GL/DRAW/clsArrayAndIndex.h"
#include "GL/DRAW/clsSequentialLooks.h"

class ViewScale_cls;

struct ProcessorPass_st {
    const SnapData_cls& snap;
    const ArrayAndIndex_cls* pList;
    int number;
    const SequentialLooks_st& looks;
    float stepping; ///< what downsizing does to alpha
    bool bFaded;    ///< weights between 0 and 1 may stand in the list
    int lightNumber;
    bool bFlat;    ///< quads in the plane of the view need no corners of their own
    bool bShifted; ///< quads that face the eye turn to another place
    /// RGBA of points and billboards where another rule than that of their class holds; false: this one isn't
    /// drawn. From several threads at once.
    std::function<bool(const ArrayAndIndex_cls& entry, float* pColor)> color = nullptr;
};

/// With the state of OpenGL that the particles are to be drawn with, and what is bound as the texture of
/// billboards. False: OpenGL must draw them.
bool DrawByProcessor(const ProcessorPass_st& pass, const ViewScale_cls& view);
