#include "FILTER/clsSceneObjTexture.h"

namespace {

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
