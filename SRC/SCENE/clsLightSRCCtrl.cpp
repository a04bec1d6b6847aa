#include "SCENE/clsLightSRCCtrl.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "COMMON/UpdateBits.h"
#include "PARAM/ParamText.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCGUI.h"

namespace {

const char* const kMarker = "---AllLightSource";
const char* const kEnd = "---AllLightSourceEnd";

void SetBlack(int number) {
    static const float kNone[4] = {0, 0, 0, 0};
    const GLenum light = LightSRCCtrl_cls::GetLightType(number);
    for (const GLenum color : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR})
        glLightfv(light, color, kNone);
}

} // namespace

LightSRCCtrl_cls::LightSRCCtrl_cls()
    : mUpdateMask(UPDATE_LIGHT | UPDATE_TL | UPDATE_GL),
      mpCTopGroup(new ParamGroup_cls("Light Sources", 0, nullptr, mUpdateMask, false)) {
    mCConfItemList.Add(&mCLightNumber, "LightNumber=", "2");
    for (int i = 0; i < kLightNumber; ++i) {
        auto& light = mapCLight[static_cast<size_t>(i)];
        light = std::make_unique<LightSRC_cls>(i, wxString::Format("LightSRC%d", i), &mCCamera);
        light->mpCObjectGroup->mbOpen = false;
        mpCTopGroup->mVpCChilds.push_back(light->mpCObjectGroup);
    }
    UpdateTLShown();
}

LightSRCCtrl_cls::~LightSRCCtrl_cls() { delete mpCTopGroup; }

OwnedDialog_cls* LightSRCCtrl_cls::MakeDialog(wxWindow* pParent) {
    return new LightSRCGUI_cls(pParent, *this);
}

int LightSRCCtrl_cls::GetCurrentLight() const {
    return std::min(std::max(mCurrentLight, 0), GetLightNumber() - 1);
}

void LightSRCCtrl_cls::SelectLight(int index) {
    if (index < 0 || index >= GetLightNumber()) return;
    mCurrentLight = index;
    if (mOnSelect) mOnSelect(&GetLight(index));
    UpdateItems(true);
}

void LightSRCCtrl_cls::ShowObject(const SceneObj_cls* pObject) {
    for (int i = 0; i < GetLightNumber(); ++i)
        if (&GetLight(i) == pObject) {
            mCurrentLight = i;
            UpdateItems(true);
        }
}

void LightSRCCtrl_cls::AddLight() {
    const int number = GetLightNumber();
    if (number < kLightNumber) {
        const UndoBlock_cls block;
        PushSetValue(&mCLightNumber.mValue, number + 1, static_cast<int>(mUpdateMask));
        PushSetValue(&mCurrentLight, number, static_cast<int>(mUpdateMask));
    }
    UpdateTLShown();
    UpdateItems(true);
}

void LightSRCCtrl_cls::RemoveLight() {
    const int number = GetLightNumber();
    const int current = GetCurrentLight();
    if (current < 0) return;
    {
        const UndoBlock_cls block;
        for (int i = current; i + 1 < kLightNumber; ++i)
            GetLight(i).CopyFromP(&GetLight(i + 1));
        PushSetValue(&mCLightNumber.mValue, number - 1, static_cast<int>(mUpdateMask));
        PushSetValue(&mCurrentLight, std::max(std::min(current, number - 2), 0),
                     static_cast<int>(mUpdateMask));
    }
    UpdateTLShown();
    UpdateItems(true);
}

void LightSRCCtrl_cls::SetToDefault() {
    mCConfItemList.SetToDefault(&mCLightNumber);
    mCurrentLight = 0;
    for (const auto& light : mapCLight)
        light->SetToDefault();
}

void LightSRCCtrl_cls::UpdateTLShown() {
    for (int i = 0; i < kLightNumber; ++i)
        GetLight(i).mpCObjectGroup->mbVisible = i < GetLightNumber();
    mpCTopGroup->mbVisible = GetLightNumber() > 0;
    if (mOnRows) mOnRows();
}

Parameters_cls* LightSRCCtrl_cls::GetPCParamFromID(const wxString& id) const {
    return mpCTopGroup->GetPCParamFromID(id);
}

wxString LightSRCCtrl_cls::Serialize() {
    wxString text = wxString(kMarker) + "\n" + mCConfItemList.SerializeAll();
    for (int i = 0; i < GetLightNumber(); ++i)
        text += GetLight(i).Serialize();
    return text + kEnd + "\n";
}

// In the order in which they stand there, whatever their markers' numbers; those behind the seventh are
// skipped.
void LightSRCCtrl_cls::ReadLights(std::wistream& stream) {
    int read = 0;
    wxString line;
    for (auto before = stream.tellg(); ReadParamLine(stream, &line) && line != kEnd;
         before = stream.tellg()) {
        if (line.StartsWith("---") && !line.StartsWith("---LightSRC")) {
            GoBackTo(stream, before); // the end is missing: another block begins
            return;
        }
        if (line.Find("---LightSRC") != wxNOT_FOUND) {
            if (read < kLightNumber) GetLight(read).ReadStrLine(stream, line);
            ++read;
        } else if (read == 0) {
            mCConfItemList.ReadStrLineAll(line);
        }
    }
}

void LightSRCCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (line != kMarker) return;
    ReadLights(stream);
    mCLightNumber.mValue = GetLightNumber(); // seven exist
    mCurrentLight = std::max(GetCurrentLight(), 0);
}

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
        if (IsShadowed(i)) return i;
    return 0;
}

bool LightSRCCtrl_cls::IsShadowed(int index) const {
    return index >= 0 && index < GetLightNumber() && GetLight(index).mCVisible.mValue &&
           GetLight(index).mCCastShadow.mValue;
}

void LightSRCCtrl_cls::GetPosition(int index, double time, float* pPos) const {
    float angles[2];
    const bool bFar = GetLight(index).mCType.mValue == LightSRC_cls::TYPE_PARALLEL;
    GetLightInfo(time, pPos, angles, index, bFar, nullptr);
}

int LightSRCCtrl_cls::GetFirstValidLight() const {
    for (int i = 0; i < GetLightNumber(); ++i)
        if (GetLight(i).mCVisible.mValue) return i;
    return -1;
}

unsigned LightSRCCtrl_cls::GetLightType(int index) { return GL_LIGHT0 + static_cast<GLenum>(index); }

void LightSRCCtrl_cls::GetLightInfo(double time, float* pPos, float* pAngles, int index, bool bDirection,
                                    SceneObj_cls* pBox) const {
    GetLight(std::clamp(index, 0, kLightNumber - 1)).GetLightInfo(time, pPos, pAngles, bDirection, pBox);
}

std::string LightSRCCtrl_cls::GetStrPovLights(double time, int moreDecimals) const {
    std::string text;
    for (int i = 0; i < GetLightNumber(); ++i)
        text += GetLight(i).GetStrPovLight(time, moreDecimals);
    return text;
}

void LightSRCCtrl_cls::UpdateCurrentObj(double time) {
    for (const auto& light : mapCLight)
        light->UpdateCurrentObj(time);
}

// The colours go to light 0 each time, as other passes count on.
void LightSRCCtrl_cls::GLDisableAllLight() const {
    for (int i = 0; i < kLightNumber; ++i) {
        glDisable(GetLightType(i));
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

void LightSRCCtrl_cls::SetBasicLight(double time, bool bShadowOption, float share) const {
    GLDisableAllLight();
    const int first = GetFirstValidLight();
    if (first >= 0)
        GetLight(first).GLSetLightSourceComp(first, time, true, !GetLight(first).mCCastShadow.mValue);
    for (int i = 0; i < kLightNumber; ++i)
        if (i != first)
            GetLight(i).GLSetLightSource(time, i < GetLightNumber() && !GetLight(i).mCCastShadow.mValue,
                                         bShadowOption);
    for (int i = 0; share > 0.0f && i < GetLightNumber(); ++i)
        if (IsShadowed(i)) GetLight(i).GLSetLightSourceComp(i, time, i == first, true, share);
}

void LightSRCCtrl_cls::GLSetSingleDiffuse(int index, double time) const {
    GLSetAllBlack();
    GetLight(std::clamp(index, 0, kLightNumber - 1)).GLSetLightSourceComp(0, time, false, true);
}

void LightSRCCtrl_cls::GLDraw(MarkPainter_cls& painter) const {
    for (int i = 0; i < GetLightNumber(); ++i)
        GetLight(i).GLDraw(painter);
}
