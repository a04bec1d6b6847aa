// One light source: what it is, and how it becomes an OpenGL light. A placed object, whose strength can be
// key-framed like its place and direction.
#pragma once

#include "SCENE/clsSceneObj.h"

class LightSRC_cls final : public SceneObj_cls {
public:
    enum Type { TYPE_POINT = 0, TYPE_SPOT, TYPE_CYLINDER, TYPE_PARALLEL };
    enum Fade { FADE_NONE = 0, FADE_POWER1, FADE_POWER2 };

    /// `number` 0 to 6 is the OpenGL light as well. Light 0 is the main light, light 1 a faint one that
    /// fills in from the other side.
    LightSRC_cls(int number, const wxString& name);
    ~LightSRC_cls() override;

    /// Red, green and blue are the strength at `time`, alpha is 0.
    void GetLightColor(double time, float* pOut);
    /// What GL_POSITION takes: the direction that the light comes from and 0 (`bDirection`), else its place
    /// and 1; in the coordinates of `pBox` if there is one. `pAngles`: azimuth and height in degrees.
    void GetLightInfo(double time, float* pPos, float* pAngles, bool bDirection, SceneObj_cls* pBox);

    // These need a current OpenGL context with the camera in the model-view matrix.

    /// Set OpenGL light `index` up; nothing for a light that is switched off.
    void GLSetLightSourceComp(int index, double time, bool bAmbient, bool bDiffuse);
    /// The same on its own number, or switch it off. Only light 0 brings ambient light; with
    /// `bShadowOption` and shadows of its own it brings nothing else.
    void GLSetLightSource(double time, bool bEnable, bool bShadowOption);

    int mNumber;
    ParamGroup_cls* mpCStrength; ///< owned
    ConfItemINT_cls mCType;      ///< a Type
    ConfItemINT_cls mCFade;      ///< a Fade
    ConfItemFLOAT_cls mCFadeDistance;
    ConfItemINT_cls mCSpotAngle; ///< cut-off, degrees
    ConfItemBOOL_cls mCCastShadow;
    ConfItemBOOL_cls mCLightArea; ///< this and the next two matter to a ray tracer only
    ConfItemFLOAT_cls mCLightAreaSize;
    ConfItemUINT_cls mCLightAreaQuality;

private:
    void GLSetPlace(unsigned light, double time);
    void GLSetAttenuation(unsigned light) const;
    void GLSetSpotEffect(unsigned light, double time);
    void GLSetColors(unsigned light, double time, bool bAmbient, bool bDiffuse);
};
