// An off-screen picture: half-float colour in a texture, depth and stencil beside it. Buffers nest: what
// was being drawn into is drawn into again, its picture unharmed, when an inner buffer ends.
//
// Texture and renderbuffer are shared by all views; the framebuffer object belongs to one context, so it
// lives from Begin to End only.
#pragma once

#include <vector>

#include "GL/BASE/clsTextureBase.h"

class GLPerspective_cls;

class FBO_cls : public TextureBase_cls {
public:
    /// No GL object is made yet.
    FBO_cls(int w, int h) : mW(w), mH(h) {}
    ~FBO_cls() override;

    /// Look once whether this OpenGL can do it at all; see msbSupported.
    static void Initialize();

    /// Bits per channel (16: half float, or 8) for the next MakeFBO.
    void SetDepth(int bits) { mDepth = bits == 8 ? 8 : 16; }
    /// The GL objects, once; `bAlpha` keeps an alpha channel.
    void MakeFBO(bool bAlpha);
    int GetWidth() const { return mW; }
    int GetHeight() const { return mH; }

    /// Draw here until End. Attributes are saved, the viewport is the whole buffer. `bClear` starts with
    /// black, else colour and depth stay.
    void Begin(bool bClear);
    void End();

    /// Set the current target up for a picture shown as a centred square as wide as w by h: what is too
    /// high is cropped, what is too low leaves bands in the clear colour. `bAdditive` adds to what is there.
    static void DrawOnScreenSet(const GLPerspective_cls& perspective, int w, int h, bool bAdditive);
    /// Draw the picture and undo DrawOnScreenSet. `half` 1, 2: squeezed into the left, right half.
    static void DrawOnScreenDraw(const FBO_cls* pSource, int half);

    /// Lines keep their share of the picture whatever the buffer's size.
    static float GetLineWidthFactor(int size);

    static bool msbSupported;

private:
    bool Attach();

    bool mbMade = false;
    int mW;
    int mH;
    int mDepth = 16;
    GLuint mRenderbuffer = 0;
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
