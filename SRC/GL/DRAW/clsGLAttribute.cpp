#include "GL/DRAW/clsGLAttribute.h"

#include <epoxy/gl.h>

#include <algorithm>

#include <wx/filename.h>
#include <wx/image.h>
#include <wx/intl.h>
#include <wx/log.h>

#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/BASE/clsSphere.h"

ShaderCtrl_cls* GLAttribute_cls::mspCShaderCtrl = nullptr;

namespace {

wxString MakePrefix(int seqIndex, int index) { return wxString::Format("SEQ%dTYPE%d", seqIndex, index); }

/// A path in a text of one line, of any length.
wxString Shorten(const wxString& path) { return path.length() > 200 ? path.Left(200) + "..." : path; }

wxString MakeLabel(int index, const wxString& name) { return wxString::Format("Attrib %d : ", index) + name; }

} // namespace

GLAttribute_cls::GLAttribute_cls(PDataSequence_cls* pSequence, int seqIndex, int index,
                                 DrawOption_cls* pDrawOption)
    : mpCSequence(pSequence), mpCDrawOption(pDrawOption), mIndex(index),
      mColor(MakePrefix(seqIndex, index) + "Col", MakeLabel(index, "Color"), "1 0.8 0.2 1"),
      mAmbient(MakePrefix(seqIndex, index) + "Ambient", MakeLabel(index, "Ambient"), "0.2 0.16 0.04 1"),
      mDiffuse(MakePrefix(seqIndex, index) + "Diffuse", MakeLabel(index, "Diffuse"), "1 0.8 0.2 1"),
      mSpecular(MakePrefix(seqIndex, index) + "Specular", MakeLabel(index, "Specular"), "1 0.8 0.2 1") {
    const wxString prefix = MakePrefix(seqIndex, index);
    mConfList.Add(&mDrawType, prefix + "DrawType=", "0");
    mConfList.Add(&mDrawQuality, prefix + "DrawQuality=", "0");
    mConfList.Add(&mBlendType, prefix + "BlendType=", "0");
    mConfList.Add(&mRadiusType, prefix + "RadiusType=", "0");
    mConfList.Add(&mRadiusFactor, prefix + "RadiusFactor=", "1");
    mConfList.Add(&mRadiusFactorForConst, prefix + "RadiusFactorForConst=", "0.001");
    mConfList.Add(&mPointSize, prefix + "PointSize=", "10");
    mConfList.Add(&mAlphaType, prefix + "AlphaType=", "0");
    mConfList.Add(&mShaderType, prefix + "ShaderType=", "0");
    mConfList.Add(&mAlphaFactor, prefix + "AlphaFactro=", "1");
    mConfList.Add(&mAlphaDependBase, prefix + "AlphaDependBase=", "1");
    mConfList.Add(&mAlphaMax, prefix + "AlphaMax=", "1");
    mConfList.Add(&mTexFileBillboard, prefix + "TexFileBillboard=", "Texture/ParticleA.png");
}

GLAttribute_cls::~GLAttribute_cls() {
    if (mTexture != 0 && IsGLContextCurrent()) glDeleteTextures(1, &mTexture);
}

float GLAttribute_cls::GetRadiusFactor() const {
    return mRadiusType.mValue == RADIUS_CONSTANT ? mRadiusFactorForConst.mValue : mRadiusFactor.mValue;
}

void GLAttribute_cls::RefreshTex() {
    if (mTexture != 0) glDeleteTextures(1, &mTexture);
    glGenTextures(1, &mTexture);
    glBindTexture(GL_TEXTURE_2D, mTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    mStrTextureFile = mTexFileBillboard.mStrValue;
    const wxLogNull quiet; // the notice below tells more
    const wxString path = FindRuntimeFile(mStrTextureFile);
    wxImage image;
    GLint largest = 1024;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (!wxFileName::FileExists(path) || !image.LoadFile(path) || !image.IsOk())
        Notice("texture " + path,
               wxString::Format(_("The texture %s can't be read as an image. Billboards of "
                                  "attribute %d are plain squares."),
                                Shorten(path), mIndex));
    else if (std::max(image.GetWidth(), image.GetHeight()) > largest)
        Notice("texture " + path,
               wxString::Format(_("The texture %s is larger than %d x %d pixels, the most that this OpenGL "
                                  "takes. Billboards of attribute %d are plain squares."),
                                Shorten(path), largest, largest, mIndex));
    else
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.GetWidth(), image.GetHeight(), 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, GenerateBufferRGBA(image).data());
    glBindTexture(GL_TEXTURE_2D, 0);
}

// The file's name may have been changed by a field, by undo or by a project.
void GLAttribute_cls::BindTexture() {
    if (mTexture == 0 || mStrTextureFile != mTexFileBillboard.mStrValue) RefreshTex();
    glBindTexture(GL_TEXTURE_2D, mTexture);
}

void GLAttribute_cls::InitializeShader(wxWindow* pParent, bool bEnable) {
    if (mspCShaderCtrl) return;
    mspCShaderCtrl = new ShaderCtrl_cls;
    mspCShaderCtrl->InitializeShader(pParent, bEnable);
    GpCSphere = new Sphere_cls;
    GpCSphere->InitializeIfNot();
}

void GLAttribute_cls::DestructStaticMembers() {
    delete mspCShaderCtrl;
    mspCShaderCtrl = nullptr;
    delete GpCSphere;
    GpCSphere = nullptr;
}

wxString GLAttribute_cls::Serialize() const {
    // The list's own Serialize isn't const.
    return mAmbient.Serialize() + mDiffuse.Serialize() + mSpecular.Serialize() + mColor.Serialize() +
           const_cast<ConfItemList_cls&>(mConfList).SerializeAll();
}

void GLAttribute_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    for (ColorCurve_cls* pCurve : {&mAmbient, &mDiffuse, &mSpecular, &mColor})
        pCurve->ReadStrLine(stream, line);
    mConfList.ReadStrLineAll(line);
}
