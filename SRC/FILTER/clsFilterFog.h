// Fades the scene with distance, and tints the background.
#pragma once

#include <memory>
#include <string>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class ColorCurve_cls;

class FilterFogData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { EXP = 0, EXP_2 = 1, LINEAR = 2 };

    FilterFogData_cls();
    ~FilterFogData_cls() override;

    void UpdateCurrentObj(double time) override;
    struct Values_st {
        float mDensity; ///< 1 over length
        float mAlpha;   ///< how much of it there is
        float mColor[4];
    };
    Values_st GetValues(double time) const;

    ConfItemUINT_cls mCFogType;
    ConfItemFLOAT_cls mCFogStart; ///< near and far distance of LINEAR
    ConfItemFLOAT_cls mCFogEnd;
    const std::unique_ptr<ParamGroup_cls> mpCFogParam; ///< density and alpha
    ColorCurve_cls* const mpCColor;
};

class FilterFog_cls final : public FilterOf_cls<FilterFogData_cls, FILTER_FOG> {
public:
    /// Background and fog of a scene for POV-Ray, whose fog is of one kind; empty without density.
    std::string GetStrPovFog(double time) const;

    /// The colour behind everything, from that of the background: RGB, which stays while the filter isn't
    /// valid.
    void MixClearColor(double time, float* pBackground) const;

    // Both do nothing while the filter isn't valid, and need a current OpenGL context.

    /// The clear colour, from that of the background.
    void SetGLClearColor(double time, const float* background) const;
    /// Fog of the fixed pipeline, which all shaders follow.
    void SetGLFog(double time) const;
};
