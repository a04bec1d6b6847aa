// The seven light sources of the scene, of which the first few are in use, and the OpenGL state of the
// passes that draw with them. Their dialog, their time lines and their block in project files are not here
// yet: the lights stand as they begin.
#pragma once

#include <array>
#include <memory>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class LightSRC_cls;
class SceneObj_cls;

class LightSRCCtrl_cls {
public:
    static constexpr int kLightNumber = 7;

    LightSRCCtrl_cls();
    ~LightSRCCtrl_cls();
    LightSRCCtrl_cls(const LightSRCCtrl_cls&) = delete;
    LightSRCCtrl_cls& operator=(const LightSRCCtrl_cls&) = delete;

    /// Lights in use: the others always exist, but don't shine.
    int GetLightNumber() const;
    LightSRC_cls& GetLight(int index) const { return *mapCLight[static_cast<size_t>(index)]; }

    int GetNumberLightVisible() const;
    int GetNumberLightWithShadow() const;
    int GetFirstShadowedLight() const; ///< 0 when there is none
    int GetFirstValidLight() const;    ///< -1 when there is none
    /// LightSRC_cls::GetLightInfo of one of them.
    void GetLightInfo(double time, float* pPos, float* pAngles, int index, bool bDirection,
                      SceneObj_cls* pBox) const;
    /// Place all of them for a time.
    void UpdateCurrentObj(double time);

    // These need a current OpenGL context with the camera in the model-view matrix.

    void GLDisableAllLight() const;
    /// All lights in use; ambient light comes with the first one that is visible.
    void SetNonShadowLight(double time) const;
    /// The lights that throw no shadow, and ambient light.
    void SetBasicLight(double time, bool bShadowOption) const;
    /// One light alone as OpenGL light 0, without ambient light.
    void GLSetSingleDiffuse(int index, double time) const;

    ConfItemList_cls mCConfItemList;
    ConfItemINT_cls mCLightNumber;

private:
    void GLSetAllBlack() const;

    std::array<std::unique_ptr<LightSRC_cls>, kLightNumber> mapCLight;
};
