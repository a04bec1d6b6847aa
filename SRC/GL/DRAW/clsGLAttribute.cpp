#include "GL/DRAW/clsGLAttribute.h"

#include <epoxy/gl.h>

#include <wx/image.h>
#include <wx/log.h>

#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"

namespace {

wxString MakePrefix(int seqIndex, int index) { return wxString::Format("SEQ%dTYPE%d", seqIndex, index); }

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
    return mRadiusType.mValue == 1 ? mRadiusFactorForConst.mValue : mRadiusFactor.mValue;
}

void GLAttribute_cls::RefreshTex() {
    if (mTexture != 0) glDeleteTextures(1, &mTexture);
    glGenTextures(1, &mTexture);
    glBindTexture(GL_TEXTURE_2D, mTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    const wxLogNull quiet; // an unloadable file gives an empty texture
    wxImage image;
    if (image.LoadFile(FindRuntimeFile(mTexFileBillboard.mStrValue)))
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.GetWidth(), image.GetHeight(), 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, GenerateBufferRGBA(image).data());
    glBindTexture(GL_TEXTURE_2D, 0);
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
