// One light source: what it is, and how it becomes an OpenGL light. A placed object, whose strength can be
// key-framed like its place and direction.
#pragma once

#include "SCENE/clsSceneObj.h"

/// A tick that stands in files only while it is set: files without it are as they always were.
class ConfItemTick_cls final : public ConfScalar_cls<bool, CONFITEM_BOOL> {
public:
    wxString Serialize() override { return mValue ? ConfScalar_cls::Serialize() : wxString(); }
};

class LightSRC_cls final : public SceneObj_cls {
public:
    enum Type { TYPE_POINT = 0, TYPE_SPOT, TYPE_CYLINDER, TYPE_PARALLEL };
    enum Fade { FADE_NONE = 0, FADE_POWER1, FADE_POWER2 };
    static constexpr int kTargetAnchor = 2; ///< behind SceneObj_cls::TargetMode
    static constexpr int kMaxSpotAngle = 180;

    /// `number` 0 to 6 is the OpenGL light as well. Light 0 is the main light, light 1 a faint one that
    /// fills in from the other side. `pCCamera` is what lights that follow the camera follow.
    LightSRC_cls(int number, const wxString& name, const PositionAndDirection_cls* pCCamera);
    ~LightSRC_cls() override;

    /// As it was made.
    void SetToDefault();
    /// Take place, type, fade, spot angle, target, visibility and strength of another light, as one step.
    void CopyFromP(LightSRC_cls* pSrc);

    /// Red, green and blue are the strength at `time`, alpha is 0. Below 0 it takes light away.
    void GetLightColor(double time, float* pOut);
    /// What GL_POSITION takes: the direction that the light comes from and 0 (`bDirection`), else its place
    /// and 1; in the coordinates of `pBox` if there is one. `pAngles`: azimuth and height in degrees.
    void GetLightInfo(double time, float* pPos, float* pAngles, bool bDirection, SceneObj_cls* pBox);

    /// The light of a scene for POV-Ray; empty for one that is switched off. Coordinates have so many more
    /// decimals than usual.
    std::string GetStrPovLight(double time, int moreDecimals);

    // These need a current OpenGL context with the camera in the model-view matrix. Whatever stands in the
    // curves, OpenGL gets numbers that it can count with.

    /// Set OpenGL light `index` up; nothing for a light that is switched off. Of its strength it brings
    /// `share`.
    void GLSetLightSourceComp(int index, double time, bool bAmbient, bool bDiffuse, float share = 1.0f);
    /// The same on its own number, or switch it off. Only light 0 brings ambient light; with
    /// `bShadowOption` and shadows of its own it brings nothing else.
    void GLSetLightSource(double time, bool bEnable, bool bShadowOption);
    /// Its mark where UpdateCurrentObj has placed it; nothing for a light that is switched off. A click that
    /// picks finds what it may hit.
    void GLDraw(MarkPainter_cls& painter) const;

    void ToScene(double* pPlace) const override { ToWorld(pPlace, false); }
    void FromScene(double* pPlace) const override;
    void GetGuideAxes(int mode, double out[3][3]) const override;
    wxString GetShownName() const override;

    wxString Serialize();
    /// Reads on behind `line`, the marker of the light's block.
    void ReadStrLine(std::wistream& stream, const wxString& line);

    int mNumber;
    int mUpdateMask;
    ParamGroup_cls* mpCStrength; ///< owned
    ConfItemINT_cls mCType;      ///< a Type
    ConfItemINT_cls mCFade;      ///< a Fade
    ConfItemFLOAT_cls mCFadeDistance;
    ConfItemINT_cls mCSpotAngle; ///< cut-off, degrees: up to 90, and 180 for no cone at all
    ConfItemBOOL_cls mCCastShadow;
    ConfItemBOOL_cls mCLightArea; ///< this and the next two matter to a ray tracer only
    ConfItemFLOAT_cls mCLightAreaSize;
    static constexpr unsigned kMaxAreaQuality = 100;
    ConfItemUINT_cls mCLightAreaQuality; ///< lamps along a side, 1 to kMaxAreaQuality
    /// Place and rotation are the camera's: x is its front, y its left, z its up. Rotation 0 is a lamp
    /// on the camera.
    ConfItemTick_cls mCFollowsCamera;

private:
    void SetInitValues();
    void ToWorld(double* p, bool bDirection) const;
    std::array<double, 3> GetDirectionInWorld(double time);
    void RepairItems();
    std::string GetStrPovAttenuation() const;
    std::string GetStrPovAreaLight(float factor) const;
    void GLSetPlace(unsigned light, double time);
    void GLSetAttenuation(unsigned light) const;
    void GLSetSpotEffect(unsigned light, double time);
    void GLSetColors(unsigned light, double time, bool bAmbient, bool bDiffuse, float share = 1.0f);
    void GLDrawMark(MarkPainter_cls& painter, const double* place, double size) const;

    const PositionAndDirection_cls* mpCCamera;
};
