#include "SCENE/clsLightSRC.h"

#include <algorithm>
#include <cmath>

#include "COMMON/UpdateBits.h"
#include "COMMON/clsMyVector.h"
#include "PARAM/clsCommandSetValue.h"

namespace {

constexpr int kFirstPickName = 10;
constexpr int kLightMask = UPDATE_LIGHT | UPDATE_TL | UPDATE_GL; // 262
// Squares of places, and strengths times whatever a shader makes of them, are numbers still.
constexpr double kFarthest = 1e15;
constexpr double kStrongest = 1e9;

/// Curves may hold or overshoot to anything.
double Tame(double value, double limit) {
    return std::isfinite(value) ? std::clamp(value, -limit, limit) : 0.0;
}

template <class ITEM, class T>
void Repair(const ConfItemList_cls& list, ITEM& item, T low, T high) {
    if (!(item.mValue >= low && item.mValue <= high)) list.SetToDefault(&item); // NaN, too
}

} // namespace

LightSRC_cls::LightSRC_cls(int number, const wxString& name, const PositionAndDirection_cls* pCCamera)
    : SceneObj_cls(name, true, true), mNumber(number), mUpdateMask(kLightMask), mpCCamera(pCCamera) {
    static const wxString kSuffix = "Strength";
    mObjectType = 1;
    mPickName = number + kFirstPickName;
    mpCStrength = new ParamGroup_cls(name + " Strength", 1, &kSuffix, mUpdateMask, false);
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
    mCConfItemListBase.Add(&mCFollowsCamera, "FollowsCamera=", "0");
    SetInitValues();
}

LightSRC_cls::~LightSRC_cls() { delete mpCStrength; }

void LightSRC_cls::SetInitValues() {
    const DirectEdit_cls direct;
    const bool bFill = mNumber == 1;
    const double place[3] = {1, 1, bFill ? -1.41421356 : 1.41421356};
    const double angles[3] = {0, bFill ? -45.0 : 45.0, bFill ? 45.0 : 225.0};
    const double scale[3] = {1, 1, 1};
    const double strength = bFill ? 0.1 : 1.0;
    SetConstant(*mpCTranslate, place);
    SetConstant(*mpCRotate, angles);
    SetConstant(*mpCScale, scale);
    SetConstant(*mpCStrength, &strength);
}

void LightSRC_cls::SetToDefault() {
    for (ConfItem_cls* item : std::initializer_list<ConfItem_cls*>{
             &mCType, &mCSpotAngle, &mCFade, &mCFadeDistance, &mCCastShadow, &mCLightArea, &mCLightAreaSize,
             &mCLightAreaQuality, &mCTarget, &mCVisible, &mCFollowsCamera})
        mCConfItemListBase.SetToDefault(item);
    SetInitValues();
}

void LightSRC_cls::CopyFromP(LightSRC_cls* pSrc) {
    const UndoBlock_cls block;
    CopyFromP_SceneObj(pSrc);
    PushSetValue(&mCType.mValue, pSrc->mCType.mValue, mUpdateMask);
    PushSetValue(&mCFade.mValue, pSrc->mCFade.mValue, mUpdateMask);
    PushSetValue(&mCSpotAngle.mValue, pSrc->mCSpotAngle.mValue, mUpdateMask);
    mpCStrength->CopyFromP(pSrc->mpCStrength);
    // What the numbers of its place mean.
    PushSetValue(&mCFollowsCamera.mValue, pSrc->mCFollowsCamera.mValue, mUpdateMask);
}

void LightSRC_cls::GetLightColor(double time, float* pOut) {
    double strength = 0.0;
    mpCStrength->GetInterpolatedValue(&strength, time, kCurrent);
    std::fill_n(pOut, 3, static_cast<float>(Tame(strength, kStrongest)));
    pOut[3] = 0.0f;
}

// From the camera's coordinates, for a light that follows it.
void LightSRC_cls::ToWorld(double* p, bool bDirection) const {
    if (!mCFollowsCamera.mValue || !mpCCamera) return;
    const double own[3] = {p[0], p[1], p[2]};
    for (int i = 0; i < 3; ++i)
        p[i] = Tame((bDirection ? 0.0 : mpCCamera->mPos[i]) + own[0] * mpCCamera->mFront[i] -
                        own[1] * mpCCamera->mRight[i] + own[2] * mpCCamera->mUp[i],
                    kFarthest);
}

void LightSRC_cls::FromScene(double* pPlace) const {
    if (!mCFollowsCamera.mValue || !mpCCamera) return;
    double way[3];
    for (int i = 0; i < 3; ++i)
        way[i] = pPlace[i] - mpCCamera->mPos[i];
    pPlace[0] = MyVector::GetScalarProduct<double>(way, mpCCamera->mFront);
    pPlace[1] = -MyVector::GetScalarProduct<double>(way, mpCCamera->mRight);
    pPlace[2] = MyVector::GetScalarProduct<double>(way, mpCCamera->mUp);
}

void LightSRC_cls::GetGuideAxes(int mode, double out[3][3]) const {
    SceneObj_cls::GetGuideAxes(mode, out);
    for (int axis = 0; axis < 3; ++axis)
        ToWorld(out[axis], true);
}

wxString LightSRC_cls::GetShownName() const { return wxString::Format(_("Light %d"), mNumber); }

std::array<double, 3> LightSRC_cls::GetDirectionInWorld(double time) {
    std::array<double, 3> direction = GetVDirectionVector(time);
    if (mCFollowsCamera.mValue && mCTarget.mValue == TARGET_ORIGIN) {
        // Its curves know the origin of the camera's coordinates alone.
        double place[3];
        GetTranslation(time, place);
        ToScene(place);
        const double way = std::hypot(place[0], place[1], place[2]);
        if (std::isfinite(way) && way > 0.0) return {place[0] / way, place[1] / way, place[2] / way};
    }
    if (!std::all_of(direction.begin(), direction.end(), [](double x) { return std::isfinite(x); }))
        direction = {-1.0, 0.0, 0.0}; // as without rotation
    ToWorld(direction.data(), true);
    return direction;
}

void LightSRC_cls::GetLightInfo(double time, float* pPos, float* pAngles, bool bDirection,
                                SceneObj_cls* pBox) {
    double place[3];
    if (bDirection) {
        const std::array<double, 3> direction = GetDirectionInWorld(time);
        std::copy(direction.begin(), direction.end(), place);
    } else {
        GetTranslation(time, place);
        for (double& p : place)
            p = Tame(p, kFarthest);
        ToWorld(place, false);
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

wxString LightSRC_cls::Serialize() {
    return SerializeBlock(wxString::Format("---LightSRC %d", mNumber),
                          {mpCTranslate, mpCRotate, mpCStrength});
}

// A value that no field could have given would leave the lists of the dialog empty.
void LightSRC_cls::RepairItems() {
    const ConfItemList_cls& list = mCConfItemListBase;
    Repair(list, mCType, int(TYPE_POINT), int(TYPE_PARALLEL));
    Repair(list, mCFade, int(FADE_NONE), int(FADE_POWER2));
    Repair(list, mCTarget, 0u, unsigned(kTargetAnchor));
    Repair(list, mCFadeDistance, 0.0f, 1e30f);
    Repair(list, mCLightAreaSize, 0.0f, 1e30f);
    mCSpotAngle.mValue = std::clamp(mCSpotAngle.mValue, 0, kMaxSpotAngle);
    mCLightAreaQuality.mValue = std::clamp(mCLightAreaQuality.mValue, 1u, kMaxAreaQuality);
}

void LightSRC_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    mCFollowsCamera.mValue = false; // what isn't there
    ReadBlock(stream, line, line, {mpCTranslate, mpCRotate, mpCStrength});
    RepairItems();
}
