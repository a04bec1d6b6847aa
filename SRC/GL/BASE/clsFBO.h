// An off-screen picture: half-float colour in a texture, depth and stencil beside it. Buffers nest: what
// was being drawn into is drawn into again, its picture unharmed, when an inner buffer ends.
//
// The textures of colour and depth are shared by all views; the framebuffer object belongs to one context, so
// it lives from Begin to End only.
#pragma once

#include <vector>

#include "GL/BASE/ShownPart.h"
#include "GL/BASE/clsTextureBase.h"

class GLPerspective_cls;

class FBO_cls : public TextureBase_cls {
public:
    /// No GL object is made yet.
    FBO_cls(int w, int h) : mW(w), mH(h), mShown{0, 0, w, h} {}
    ~FBO_cls() override;

    /// Look once whether this OpenGL can do it at all; see msbSupported.
    static void Initialize();

    /// Bits per channel (16: half float, or 8) for the next MakeFBO.
    void SetDepth(int bits) { mDepth = bits == 8 ? 8 : 16; }
    /// The GL objects, once; `bAlpha` keeps an alpha channel.
    void MakeFBO(bool bAlpha);
    int GetWidth() const { return mW; }
    int GetHeight() const { return mH; }

    /// Nobody looks at more than this part: from the next Begin on nothing else is drawn, cleared or read,
    /// and the rest holds whatever it held. At first it is the whole.
    void SetShown(const ShownPart_st& part);
    const ShownPart_st& GetShown() const { return mShown; }
    /// That of the buffer that is being drawn into; empty for the window.
    static ShownPart_st GetTargetShown();
    /// Parts don't count: all buffers are drawn whole. For tests.
    static bool msbWhole;

    /// Draw here until End. Attributes are saved, the viewport is the whole buffer, the clear colour is
    /// black. `bClear` starts with that, else all stays as it was.
    void Begin(bool bClear);
    void End();
    /// Of the present target: bits as of glClear, values and masks as they stand.
    static void ClearTarget(GLbitfield bits);
    /// The shown part's pixels, without a gap between rows. Whether it worked, OpenGL's errors tell.
    void ReadShown(GLenum format, GLenum type, void* pPixels) const;

    /// Set the current target up for a picture shown as a centred square as wide as w by h: what is too
    /// high is cropped, what is too low leaves bands. `bAdditive` adds to what is there.
    static void DrawOnScreenSet(const GLPerspective_cls& perspective, int w, int h, bool bAdditive);
    /// Draw the picture and undo DrawOnScreenSet. With GL_NEAREST, which is for pixels that stand on pixels,
    /// not with GL_LINEAR, a driver of software needs half the time for the same.
    static void DrawOnScreenDraw(const FBO_cls* pSource, GLint filter);

    /// Lines keep their share of the picture whatever the buffer's size.
    static float GetLineWidthFactor(int size);

    static bool msbSupported;

private:
    bool Attach();
    void ClearTextures(GLbitfield bits) const;

    bool mbMade = false;
    int mW;
    int mH;
    ShownPart_st mShown;
    int mDepth = 16;
    GLuint mDepthTexture = 0; ///< with stencil
    GLuint mFramebuffer = 0;

    static bool msbInitialized;
    static std::vector<FBO_cls*> msVpCStack;
};

/// Begin and End of a buffer as a scope.
class FBOScope_cls {
public:
    FBOScope_cls(FBO_cls& target, bool bClear) : mTarget(target) { mTarget.Begin(bClear); }
    ~FBOScope_cls() { mTarget.End(); }
    FBOScope_cls(const FBOScope_cls&) = delete;
    FBOScope_cls& operator=(const FBOScope_cls&) = delete;

private:
    FBO_cls& mTarget;
};
