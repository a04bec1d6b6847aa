#include "FILTER/clsFilterFog.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "COLORCURVE/clsColorCurve.h"
#include "POVRAY/TEXT/clsPovSerialize.h"

namespace {
const wxString kSuffixes[2] = {"deinsity", "alpha"}; // as files have them
} // namespace

FilterFogData_cls::FilterFogData_cls()
    : FilterData_cls(false, true), mpCFogParam(MakeGroup("Filter Parameter", 2, kSuffixes)),
      mpCColor(AddColorCurve("FogColor", "0.5 0.5 0.5 1")) {
    mCConfItemList.Add(&mCFogType, "FogType=", "0");
    mCConfItemList.Add(&mCFogStart, "FogStart=", "0");
    mCConfItemList.Add(&mCFogEnd, "FogEnd=", "1");
    const DirectEdit_cls direct;
    const double values[2] = {0.0, 1.0};
    mpCFogParam->SetKeyFrame(values, true, kCurrent);
}

FilterFogData_cls::~FilterFogData_cls() = default;

void FilterFogData_cls::UpdateCurrentObj(double time) {
    FilterData_cls::UpdateCurrentObj(time);
    double values[2];
    mpCFogParam->GetInterpolatedValue(values, time, kCurrent);
}

FilterFogData_cls::Values_st FilterFogData_cls::GetValues(double time) const {
    double param[2];
    mpCFogParam->GetInterpolatedValue(param, time, kCurrent);
    Values_st values;
    values.mDensity = float(param[0]);
    values.mAlpha = float(param[1]);
    mpCColor->GetColor4fScaled(values.mColor, 0.0f);
    return values;
}

void FilterFog_cls::SetGLClearColor(double time, const float* background) const {
    if (!GetPCData()->mCValid.mValue) return;
    float color[3] = {background[0], background[1], background[2]};
    MixClearColor(time, color);
    glClearColor(color[0], color[1], color[2], 1.0f);
}

void FilterFog_cls::MixClearColor(double time, float* pBackground) const {
    const FilterFogData_cls& data = *GetPCData();
    if (!data.mCValid.mValue) return;
    const FilterFogData_cls::Values_st fog = data.GetValues(time);
    // The background's red stands for all three.
    const float rest = (1.0f - fog.mAlpha) * pBackground[0];
    for (int i = 0; i < 3; ++i)
        pBackground[i] = fog.mColor[i] * fog.mAlpha + rest;
}

void FilterFog_cls::SetGLFog(double time) const {
    static const GLint kModes[] = {GL_EXP, GL_EXP2, GL_LINEAR};
    const FilterFogData_cls& data = *GetPCData();
    const unsigned type = data.mCFogType.mValue;
    if (!data.mCValid.mValue || type > FilterFogData_cls::LINEAR) return;
    const FilterFogData_cls::Values_st fog = data.GetValues(time);
    const float color[4] = {fog.mColor[0], fog.mColor[1], fog.mColor[2], fog.mAlpha};
    glFogfv(GL_FOG_COLOR, color);
    glFogi(GL_FOG_MODE, kModes[type]);
    if (type == FilterFogData_cls::LINEAR) {
        glFogf(GL_FOG_START, data.mCFogStart.mValue);
        glFogf(GL_FOG_END, data.mCFogEnd.mValue);
    } else
        glFogf(GL_FOG_DENSITY, std::max(fog.mDensity * fog.mAlpha, 0.0f)); // less is an error of OpenGL
    glEnable(GL_FOG);
}

std::string FilterFog_cls::GetStrPovFog(double time) const {
    using Text = PovSerialize_cls;
    const FilterFogData_cls& data = *GetPCData();
    if (!data.mCValid.mValue) return std::string();
    const FilterFogData_cls::Values_st fog = data.GetValues(time);
    const bool bLinear = data.mCFogType.mValue == FilterFogData_cls::LINEAR;
    if (!bLinear && fog.mDensity == 0.0f) return std::string();
    const double distance = bLinear ? 0.5 * double(data.mCFogEnd.mValue) : 1.0 / double(fog.mDensity);
    const float* const c = fog.mColor;
    const float behind[4] = {c[0], c[1], c[2], fog.mAlpha < 1.0f ? 1.0f : 1.0f - fog.mAlpha};
    const float within[4] = {c[0], c[1], c[2], 1.0f - fog.mAlpha};
    return Text::PovOut4f("background {rgbt ", behind, 4) + "}\nfog { \n\tdistance " +
           Text::PovOutF(distance) + "\n" + Text::PovOut4f("\tcolor rgbt ", within, 4) + "\n}\n";
}
