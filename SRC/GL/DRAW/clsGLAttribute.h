// How the particles of one class (type 0 to 3) look.
#pragma once

#include <istream>

#include <wx/string.h>

#include "COLORCURVE/clsColorCurve.h"
#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class DrawOption_cls;
class GLAttributeGUI_cls;
class PDataSequence_cls;
class ShaderCtrl_cls;
class wxWindow;

/// Values of the items below, as files hold them. DRAW_BOTH draws nothing.
enum DrawType : unsigned {
    DRAW_POINT = 0,
    DRAW_BILLBOARD = 1,
    DRAW_SPHERE = 2,
    DRAW_BOTH = 3,
    DRAW_HIDE = 4
};
/// Of spheres: finer meshes, or none. Billboards: LOW lie parallel to the picture, all others face the eye.
enum DrawQuality : unsigned { QUALITY_LOW = 0, QUALITY_MEDIUM = 1, QUALITY_HIGH = 2, QUALITY_EXACT = 3 };
enum BlendType : unsigned { BLEND_ALPHA = 0, BLEND_ADDITIVE = 1 };
enum RadiusType : unsigned { RADIUS_OF_DATA = 0, RADIUS_CONSTANT = 1 };
enum AlphaType : unsigned { ALPHA_CONSTANT = 0, ALPHA_BY_RADIUS = 1 }; ///< ALPHA_BY_RADIUS: its power -2

class GLAttribute_cls {
public:
    GLAttribute_cls(PDataSequence_cls* pSequence, int seqIndex, int index, DrawOption_cls* pDrawOption);
    ~GLAttribute_cls();
    GLAttribute_cls(const GLAttribute_cls&) = delete;
    GLAttribute_cls& operator=(const GLAttribute_cls&) = delete;

    /// The constant radius when "RadiusType=" is 1, else the factor on the data's radius.
    float GetRadiusFactor() const;
    wxWindow* InstantiateGUI(wxWindow* pParent);
    /// Load the billboard texture into GL; a file that can't be read is told and gives an empty one. UI
    /// thread with a current context.
    void RefreshTex();
    /// Bind the texture of the file that is set now.
    void BindTexture();

    /// The shaders and the sphere, shared by all; made at the first call, with a current context.
    static void InitializeShader(wxWindow* pParent, bool bEnable);
    static void DestructStaticMembers();
    wxString Serialize() const;
    void ReadStrLine(std::wistream& stream, const wxString& line);

    static ShaderCtrl_cls* mspCShaderCtrl; ///< null before the first view is drawn

    GLAttributeGUI_cls* mpCGUI = nullptr; ///< owned by its notebook
    PDataSequence_cls* mpCSequence;
    DrawOption_cls* mpCDrawOption;
    int mIndex;              ///< 0 to 3
    ColorCurve_cls mColor;   ///< points and billboards
    ColorCurve_cls mAmbient; ///< spheres
    ColorCurve_cls mDiffuse;
    ColorCurve_cls mSpecular;
    unsigned mTexture = 0;    ///< GL texture name
    wxString mStrTextureFile; ///< that it was made of
    ConfItemList_cls mConfList;
    ConfItemUINT_cls mDrawType;    ///< a DrawType
    ConfItemUINT_cls mDrawQuality; ///< a DrawQuality
    ConfItemUINT_cls mBlendType;   ///< a BlendType
    ConfItemUINT_cls mRadiusType;  ///< a RadiusType
    ConfItemFLOAT_cls mRadiusFactor;
    ConfItemFLOAT_cls mRadiusFactorForConst;
    ConfItemINT_cls mPointSize;   ///< pixels of the off-screen buffer
    ConfItemUINT_cls mAlphaType;  ///< an AlphaType
    ConfItemUINT_cls mShaderType; ///< a ShaderCtrl_cls::Type
    ConfItemFLOAT_cls mAlphaFactor;
    ConfItemFLOAT_cls mAlphaDependBase;
    ConfItemFLOAT_cls mAlphaMax;
    ConfItemSTR_cls mTexFileBillboard;
};
