// The surface of a solid object. Most of it acts in ray-traced pictures.
#pragma once

#include <string>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "POVRAY/TEXT/clsPovSerialize.h"

class TexPropertyCtrl_cls;

class SceneObjTexture_cls : public PovSerialize_cls {
public:
    enum Transmit : unsigned { TRANSMIT_NONE = 0, TRANSMIT_PLAIN = 1, TRANSMIT_FILTERED = 2 };
    enum Reflect : unsigned { REFLECT_NONE = 0, REFLECT_MIRROR = 1, REFLECT_METAL = 2 };
    static constexpr int kLayers = 2; ///< of bump patterns

    /// The owner's keys, in the order of files.
    void AddTo(ConfItemList_cls* pList);
    /// Opacity of ambient, diffuse and specular colour, into their fourth components.
    void GetAlphaInfo(float (*pColors)[4]) const;

    // Of a scene for POV-Ray; each empty where the material has nothing of it.
    std::string GetStrPovInteriorOptions() const;
    std::string GetStrPovFinishOptions() const;
    /// The block of bumps, on lines of its own.
    std::string GetStrPovNormal() const;
    /// What must stand in front of a scene for that block.
    std::string GetStrPovFunction() const;

    ConfItemUINT_cls mCShaderType; ///< original, Gouraud, Phong, toon
    ConfItemINT_cls mCShininess;
    ConfItemUINT_cls mCReflectType;
    ConfItemFLOAT_cls mCReflectMin; ///< seen along the normal
    ConfItemFLOAT_cls mCReflectMax; ///< at a shallow angle
    ConfItemFLOAT_cls mCIOR;        ///< index of refraction
    ConfItemUINT_cls mCTransmitType;
    ConfItemFLOAT_cls mCAlpha; ///< opacity, unless TRANSMIT_NONE
    ConfItemUINT_cls mCNormalPattern[kLayers];
    ConfItemFLOAT_cls mCNormalDegree[kLayers];
    ConfItemFLOAT_cls mCNormalScale[kLayers];
    TexPropertyCtrl_cls* mpCDialogLink = nullptr; ///< edits this right now

private:
    bool HasPattern(int layer) const;
    std::string GetStrPovNormalBase(int layer) const;
};
