#include "FILTER/clsSceneObjTexture.h"

#include <iterator>

namespace {

const char* const kPatterns[] = {"no normal pattern",
                                 "agate",
                                 "bozo",
                                 "bumps",
                                 "brick",
                                 "cells",
                                 "checker",
                                 "crackle",
                                 "dents",
                                 "facets",
                                 "marble",
                                 "function { f_ridged_mf(x, y, z, 0.07, 2.2,  7, 0.6, 0.9, 1) }"};
constexpr unsigned kRidged = 11;

template <class ITEM>
void AddLayers(ConfItemList_cls* pList, ITEM (&items)[SceneObjTexture_cls::kLayers], const char* pWord,
               const char* pDefault) {
    for (int layer = 0; layer < SceneObjTexture_cls::kLayers; ++layer)
        pList->Add(&items[layer], wxString::Format("%s%d=", pWord, layer), pDefault);
}

} // namespace

void SceneObjTexture_cls::AddTo(ConfItemList_cls* pList) {
    pList->Add(&mCShaderType, "ShaderType=", "2");
    pList->Add(&mCShininess, "Shininess=", "10");
    pList->Add(&mCTransmitType, "TransmitType=", "0");
    pList->Add(&mCAlpha, "Alpha=", "1");
    pList->Add(&mCReflectType, "ReflectType=", "0");
    pList->Add(&mCReflectMin, "ReflectMin=", "0.2");
    pList->Add(&mCReflectMax, "ReflectMax=", "0.5");
    pList->Add(&mCIOR, "IOR=", "1");
    AddLayers(pList, mCNormalPattern, "NormalPattern", "0");
    AddLayers(pList, mCNormalDegree, "NormalDegree", "0.3");
    AddLayers(pList, mCNormalScale, "NormalScale", "1");
}

void SceneObjTexture_cls::GetAlphaInfo(float (*pColors)[4]) const {
    for (int color = 0; color < 3; ++color)
        pColors[color][3] = mCTransmitType.mValue == TRANSMIT_NONE ? 1.0f : mCAlpha.mValue;
}

std::string SceneObjTexture_cls::GetStrPovInteriorOptions() const {
    return mCIOR.mValue == 1.0f ? std::string() : " ior " + PovOutF(double(mCIOR.mValue));
}

std::string SceneObjTexture_cls::GetStrPovFinishOptions() const {
    if (mCReflectType.mValue == REFLECT_NONE) return std::string();
    return " reflection{" + PovOutF(double(mCReflectMin.mValue)) + "," +
           PovOutF(double(mCReflectMax.mValue)) + "}";
}

bool SceneObjTexture_cls::HasPattern(int layer) const {
    return mCNormalPattern[layer].mValue > 0 && mCNormalPattern[layer].mValue < std::size(kPatterns);
}

std::string SceneObjTexture_cls::GetStrPovFunction() const {
    const bool bRidged = mCNormalPattern[0].mValue == kRidged || mCNormalPattern[1].mValue == kRidged;
    if (!bRidged) return std::string();
    return "#ifndef (f_ridged_mf)\n#declare f_ridged_mf = function { internal(59) }\n#end\n";
}

std::string SceneObjTexture_cls::GetStrPovNormalBase(int layer) const {
    const float scale = mCNormalScale[layer].mValue;
    const float scales[3] = {scale, scale, scale};
    return PovOut3f(kPatterns[mCNormalPattern[layer].mValue] +
                        (" " + PovOutF(double(mCNormalDegree[layer].mValue))) + " scale ",
                    scales, 4);
}

std::string SceneObjTexture_cls::GetStrPovNormal() const {
    const bool bFirst = HasPattern(0);
    if (!bFirst && !HasPattern(1)) return std::string();
    if (bFirst != HasPattern(1)) return "\tnormal {" + GetStrPovNormalBase(bFirst ? 0 : 1) + " }\n";
    std::string text = "\tnormal {\n\t\taverage\n\t\t\tnormal_map {\n";
    for (int layer = 0; layer < kLayers; ++layer)
        text += "\t\t\t [ 1.00 " + GetStrPovNormalBase(layer) + " ]\n";
    return text + "\t\t}\n\t}\n";
}
