#include "SCENE/clsLightSRC.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "COMMON/UpdateBits.h"
#include "COMMON/clsMyVector.h"

namespace {

constexpr int kFirstPickName = 10;
constexpr int kUpdateMask = UPDATE_LIGHT | UPDATE_TL | UPDATE_GL;

GLenum LightOf(int number) { return GL_LIGHT0 + static_cast<GLenum>(number); }

} // namespace

LightSRC_cls::LightSRC_cls(int number, const wxString& name)
    : SceneObj_cls(name, true, true), mNumber(number) {
    static const wxString kSuffix = "Strength";
    mObjectType = 1;
    mPickName = number + kFirstPickName;
    mpCStrength = new ParamGroup_cls(name + " Strength", 1, &kSuffix, kUpdateMask, false);
    mpCStrength->mpCSceneObj = this;
    mpCObjectGroup->mVpCChilds.push_back(mpCStrength);
    mCConfItemListBase.Add(&mCType, "Type=", "3");
    mCConfItemListBase.Add(&mCSpotAngle, "SpotAngle=", "35");
    mCConfItemListBase.Add(&mCFade, "Fade=", "0");
    mCConfItemListBase.Add(&mCFadeDistance, "FadeDistance=", "1");
    mCConfItemListBase.Add(&mCCastShadow, "CastShadow=", "1");
    mCConfItemListBase.Add(&mCLightArea, "LightArea=", "0");
    mCConfItemListBase.Add(&mCLightAreaSize, "LightAreaSize=", "0.2");
    mCConfItemListBase.Add(&mCLightAreaQuality, "LightAreaQuality=", "5");
    mCConfItemListBase.Add(&mCTarget, "Target=", "0");
    mCConfItemListBase.Add(&mCVisible, "Visible=", "1");

    const DirectEdit_cls direct;
    const bool bFill = number == 1;
    SetInitValueTrans(1, 1, bFill ? -1.41421356 : 1.41421356);
    SetInitValueRot(0, bFill ? -45 : 45, bFill ? 45 : 225);
    SetInitValueScale(1, 1, 1);
    const double strength = bFill ? 0.1 : 1.0;
    mpCStrength->SetKeyFrame(&strength, true, kCurrent);
}

LightSRC_cls::~LightSRC_cls() { delete mpCStrength; }

void LightSRC_cls::GetLightColor(double time, float* pOut) {
    double strength = 0.0;
    mpCStrength->GetInterpolatedValue(&strength, time, kCurrent);
    std::fill_n(pOut, 3, static_cast<float>(strength));
    pOut[3] = 0.0f;
}

void LightSRC_cls::GetLightInfo(double time, float* pPos, float* pAngles, bool bDirection,
                                SceneObj_cls* pBox) {
    double place[3];
    if (bDirection) {
        const std::array<double, 3> direction = GetVDirectionVector(time);
        std::copy(direction.begin(), direction.end(), place);
    } else {
        mpCTranslate->GetInterpolatedValue(place, time, kCurrent);
    }
    for (int i = 0; i < 3; ++i)
        pPos[i] = static_cast<float>(place[i]);
    pPos[3] = bDirection ? 0.0f : 1.0f;
    if (pBox) pBox->CalcRelativeVector(pPos, time);
    // The second one has a pi of its own, which old projects' shadows are made for.
    constexpr double kOddPi = 3.14149;
    const double x = static_cast<double>(pPos[0]);
    const double y = static_cast<double>(pPos[1]);
    pAngles[0] = static_cast<float>(std::atan2(y, x) * 180.0 / MyVector::PI + 180.0);
    pAngles[1] =
        static_cast<float>(std::atan2(static_cast<double>(pPos[2]), std::hypot(x, y)) * 180.0 / kOddPi);
}

void LightSRC_cls::GLSetPlace(unsigned light, double time) {
    float place[4];
    float angles[2];
    GetLightInfo(time, place, angles, mCType.mValue == TYPE_PARALLEL, nullptr);
    glLightfv(light, GL_POSITION, place);
    GLSetAttenuation(light);
    GLSetSpotEffect(light, time);
}

void LightSRC_cls::GLSetAttenuation(unsigned light) const {
    const float distance = std::max(mCFadeDistance.mValue, 1e-6f);
    const int fade = mCFade.mValue;
    glLightf(light, GL_CONSTANT_ATTENUATION, 1.0f);
    glLightf(light, GL_LINEAR_ATTENUATION, fade == FADE_POWER1 ? 1.0f / distance : 0.0f);
    glLightf(light, GL_QUADRATIC_ATTENUATION, fade == FADE_POWER2 ? 1.0f / (distance * distance) : 0.0f);
}

void LightSRC_cls::GLSetSpotEffect(unsigned light, double time) {
    if (mCType.mValue != TYPE_SPOT) {
        glLightf(light, GL_SPOT_CUTOFF, 180.0f);
        return;
    }
    float direction[4] = {0, 0, -1, 0};
    if (mCTarget.mValue <= TARGET_ORIGIN) {
        const std::array<double, 3> from = GetVDirectionVector(time);
        for (size_t i = 0; i < 3; ++i)
            direction[i] = static_cast<float>(-from[i]);
    }
    const float none[4] = {0, 0, 0, 0};
    glLightf(light, GL_SPOT_CUTOFF, static_cast<float>(std::clamp(mCSpotAngle.mValue, 0, 90)));
    glLightfv(light, GL_SPOT_DIRECTION, direction);
    glLightfv(light, GL_AMBIENT, none);
    glLightf(light, GL_SPOT_EXPONENT, 0.0f);
}

// A light that fades begins twice as bright.
void LightSRC_cls::GLSetColors(unsigned light, double time, bool bAmbient, bool bDiffuse) {
    const float none[4] = {0, 0, 0, 0};
    const float full[4] = {1, 1, 1, 0};
    float color[4];
    GetLightColor(time, color);
    if (mCFade.mValue != FADE_NONE)
        for (int c = 0; c < 3; ++c)
            color[c] *= 2.0f;
    glLightfv(light, GL_AMBIENT, bAmbient ? full : none);
    glLightfv(light, GL_DIFFUSE, bDiffuse ? color : none);
    glLightfv(light, GL_SPECULAR, bDiffuse ? color : none);
}

void LightSRC_cls::GLSetLightSourceComp(int index, double time, bool bAmbient, bool bDiffuse) {
    if (!mCVisible.mValue) return;
    const GLenum light = LightOf(index);
    glEnable(light);
    GLSetPlace(light, time);
    GLSetColors(light, time, bAmbient, bDiffuse);
}

void LightSRC_cls::GLSetLightSource(double time, bool bEnable, bool bShadowOption) {
    const GLenum light = LightOf(mNumber);
    if (!bEnable || !mCVisible.mValue) {
        glDisable(light);
        GLSetColors(light, time, false, false);
        return;
    }
    glEnable(light);
    GLSetPlace(light, time);
    const bool bOnlyAmbient = mNumber == 0 && bShadowOption && mCCastShadow.mValue;
    GLSetColors(light, time, mNumber == 0, !bOnlyAmbient);
}
