#include "SCENE/clsLightSRCCtrl.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "SCENE/clsLightSRC.h"

namespace {

void SetBlack(int number) {
    static const float kNone[4] = {0, 0, 0, 0};
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(number);
    for (const GLenum color : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR})
        glLightfv(light, color, kNone);
}

} // namespace

LightSRCCtrl_cls::LightSRCCtrl_cls() {
    mCConfItemList.Add(&mCLightNumber, "LightNumber=", "2");
    for (int i = 0; i < kLightNumber; ++i)
        mapCLight[static_cast<size_t>(i)] =
            std::make_unique<LightSRC_cls>(i, wxString::Format("LightSRC%d", i));
}

LightSRCCtrl_cls::~LightSRCCtrl_cls() = default;

int LightSRCCtrl_cls::GetLightNumber() const { return std::clamp(mCLightNumber.mValue, 0, kLightNumber); }

int LightSRCCtrl_cls::GetNumberLightVisible() const {
    int count = 0;
    for (int i = 0; i < GetLightNumber(); ++i)
        count += GetLight(i).mCVisible.mValue;
    return count;
}

int LightSRCCtrl_cls::GetNumberLightWithShadow() const {
    int count = 0;
    for (int i = 0; i < GetLightNumber(); ++i)
        count += GetLight(i).mCCastShadow.mValue;
    return count;
}

int LightSRCCtrl_cls::GetFirstShadowedLight() const {
    for (int i = 0; i < GetLightNumber(); ++i)
        if (GetLight(i).mCVisible.mValue && GetLight(i).mCCastShadow.mValue) return i;
    return 0;
}

int LightSRCCtrl_cls::GetFirstValidLight() const {
    for (int i = 0; i < GetLightNumber(); ++i)
        if (GetLight(i).mCVisible.mValue) return i;
    return -1;
}

void LightSRCCtrl_cls::GetLightInfo(double time, float* pPos, float* pAngles, int index, bool bDirection,
                                    SceneObj_cls* pBox) const {
    GetLight(std::clamp(index, 0, kLightNumber - 1)).GetLightInfo(time, pPos, pAngles, bDirection, pBox);
}

void LightSRCCtrl_cls::UpdateCurrentObj(double time) {
    for (const auto& light : mapCLight)
        light->UpdateCurrentObj(time);
}

// The colours go to light 0 each time, as other passes count on.
void LightSRCCtrl_cls::GLDisableAllLight() const {
    for (int i = 0; i < kLightNumber; ++i) {
        glDisable(GL_LIGHT0 + static_cast<GLenum>(i));
        SetBlack(0);
    }
}

// Shaders sum lights by their colours and don't know which are switched on.
void LightSRCCtrl_cls::GLSetAllBlack() const {
    GLDisableAllLight();
    for (int i = 0; i < kLightNumber; ++i)
        SetBlack(i);
}

void LightSRCCtrl_cls::SetNonShadowLight(double time) const {
    GLSetAllBlack();
    const int first = GetFirstValidLight();
    for (int i = 0; i < GetLightNumber(); ++i)
        GetLight(i).GLSetLightSourceComp(i, time, i == first, true);
}

void LightSRCCtrl_cls::SetBasicLight(double time, bool bShadowOption) const {
    GLDisableAllLight();
    const int first = GetFirstValidLight();
    if (first >= 0)
        GetLight(first).GLSetLightSourceComp(first, time, true, !GetLight(first).mCCastShadow.mValue);
    for (int i = 0; i < kLightNumber; ++i)
        if (i != first)
            GetLight(i).GLSetLightSource(time, i < GetLightNumber() && !GetLight(i).mCCastShadow.mValue,
                                         bShadowOption);
}

void LightSRCCtrl_cls::GLSetSingleDiffuse(int index, double time) const {
    GLSetAllBlack();
    GetLight(std::clamp(index, 0, kLightNumber - 1)).GLSetLightSourceComp(0, time, false, true);
}
