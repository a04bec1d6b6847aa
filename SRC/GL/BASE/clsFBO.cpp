#include "GL/BASE/clsFBO.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include <wx/intl.h>

#include "COMMON/PictureFault.h"
#include "GL/BASE/clsGLInfo.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"

bool FBO_cls::msbSupported = true;
bool FBO_cls::msbInitialized = false;
bool FBO_cls::msbWhole = false;
std::vector<FBO_cls*> FBO_cls::msVpCStack;

namespace {

struct Format_st {
    GLint internal;
    GLenum format;
    GLenum type;
};

Format_st GetColourFormat(int depth, bool bFourth) {
    const GLenum format = bFourth ? GL_RGBA : GL_RGB;
    if (depth == 8) return {bFourth ? GL_RGBA8 : GL_RGB8, format, GL_UNSIGNED_BYTE};
    return {bFourth ? GL_RGBA16F : GL_RGB16F, format, GL_HALF_FLOAT};
}

bool HasSwizzle() { return epoxy_gl_version() >= 33 || epoxy_has_gl_extension("GL_ARB_texture_swizzle"); }

constexpr Format_st kDepthFormat = {GL_DEPTH24_STENCIL8, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8};

GLuint MakeTexture(const Format_st& format, int w, int h, GLint filter) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, format.internal, w, h, 0, format.format, format.type, nullptr);
    return texture;
}

/// What glClear makes of a colour: four half floats, rounded as this driver rounds.
using HalfColour = std::array<GLushort, 4>;

HalfColour FindHalfColour(const std::array<GLfloat, 4>& colour) {
    static std::array<GLfloat, 4> sColour = {0, 0, 0, 0};
    static HalfColour sHalf = {0, 0, 0, 0};
    if (colour == sColour) return sHalf;
    const GLAttribScope_cls attributes;
    const GLClientScope_cls client;
    GLint target = 0;
    GLuint framebuffer = 0;
    GLuint texture = MakeTexture(GetColourFormat(16, true), 1, 1, GL_NEAREST);
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &target);
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glDisable(GL_SCISSOR_TEST);
    glClear(GL_COLOR_BUFFER_BIT);
    glReadPixels(0, 0, 1, 1, GL_RGBA, GL_HALF_FLOAT, sHalf.data());
    glBindFramebuffer(GL_FRAMEBUFFER, GLuint(target));
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteTextures(1, &texture);
    sColour = colour;
    return sHalf;
}

/// Does a clear reach every bit of every pixel, with far depth and no stencil?
bool IsPlainClear() {
    GLboolean colour[4], depth;
    GLint stencil = 0, stencilValue = 0;
    GLdouble depthValue = 0.0;
    glGetBooleanv(GL_COLOR_WRITEMASK, colour);
    glGetBooleanv(GL_DEPTH_WRITEMASK, &depth);
    glGetIntegerv(GL_STENCIL_WRITEMASK, &stencil);
    glGetIntegerv(GL_STENCIL_CLEAR_VALUE, &stencilValue);
    glGetDoublev(GL_DEPTH_CLEAR_VALUE, &depthValue);
    return colour[0] && colour[1] && colour[2] && colour[3] && depth && (stencil & 0xff) == 0xff &&
           stencilValue == 0 && depthValue == 1.0;
}

// A driver of software fills memory ten times as fast as it draws a clear.
bool MayClearTextures(int depth) {
    return depth == 16 && GLInfo_cls::IsSoftware() &&
           (epoxy_gl_version() >= 44 || epoxy_has_gl_extension("GL_ARB_clear_texture")) && IsPlainClear();
}

} // namespace

FBO_cls::~FBO_cls() {
    msVpCStack.erase(std::remove(msVpCStack.begin(), msVpCStack.end(), this), msVpCStack.end());
    if (!IsGLContextCurrent()) return;
    if (mDepthTexture != 0) glDeleteTextures(1, &mDepthTexture);
    if (mFramebuffer != 0) glDeleteFramebuffers(1, &mFramebuffer);
}

void FBO_cls::Initialize() {
    if (msbInitialized) return;
    msbInitialized = true;
    msbSupported = epoxy_gl_version() >= 30 || epoxy_has_gl_extension("GL_ARB_framebuffer_object");
    if (msbSupported) msbSupported = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    if (!msbSupported) return;
    FBO_cls probe(16, 16);
    probe.MakeFBO(false);
    const GLAttribScope_cls attributes;
    msbSupported = probe.Attach();
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void FBO_cls::MakeFBO(bool bAlpha) {
    if (mbMade) return;
    const GLAttribScope_cls attributes(GL_TEXTURE_BIT);
    // Drivers store a fourth half float anyway; who knows of it reads pixels three times as fast.
    const bool bSpare = !bAlpha && mDepth == 16 && HasSwizzle();
    mTexture = MakeTexture(GetColourFormat(mDepth, bAlpha || bSpare), mW, mH, GL_LINEAR);
    if (bSpare) glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_A, GL_ONE);
    mDepthTexture = MakeTexture(kDepthFormat, mW, mH, GL_NEAREST);
    mbMade = true;
    if (!bAlpha && !bSpare) {
        // A driver may have no three-channel target; then a fourth is stored and read back as one.
        const bool bComplete = Attach();
        glBindFramebuffer(GL_FRAMEBUFFER, msVpCStack.empty() ? 0 : msVpCStack.back()->mFramebuffer);
        glDeleteFramebuffers(1, &mFramebuffer);
        mFramebuffer = 0;
        if (!bComplete) {
            DeleteTexture();
            mTexture = MakeTexture(GetColourFormat(mDepth, true), mW, mH, GL_LINEAR);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_A, GL_ONE);
        }
    }
    CheckGLErrors("MakeFBO");
}

bool FBO_cls::Attach() {
    if (mFramebuffer == 0) glGenFramebuffers(1, &mFramebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexture, 0);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, mDepthTexture, 0);
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void FBO_cls::SetShown(const ShownPart_st& part) {
    mShown = msbWhole || part.IsEmpty() ? ShownPart_st{0, 0, mW, mH} : part;
}

ShownPart_st FBO_cls::GetTargetShown() {
    return msVpCStack.empty() ? ShownPart_st() : msVpCStack.back()->mShown;
}

void FBO_cls::Begin(bool bClear) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    msVpCStack.push_back(this);
    glBindTexture(GL_TEXTURE_2D, 0); // never sample what is drawn into
    if (!Attach()) {
        std::printf("Off-screen buffer of %d x %d is not complete\n", mW, mH);
        TellPictureFault(
            wxString::Format(_("an off-screen buffer of %d x %d can't be had from OpenGL"), mW, mH));
    }
    glViewport(0, 0, mW, mH);
    glScissor(mShown.mX, mShown.mY, mShown.mW, mShown.mH);
    if (mShown == ShownPart_st{0, 0, mW, mH})
        glDisable(GL_SCISSOR_TEST);
    else
        glEnable(GL_SCISSOR_TEST);
    glClearColor(0, 0, 0, 0);
    if (bClear) ClearTarget(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
}

void FBO_cls::End() {
    if (msVpCStack.empty() || msVpCStack.back() != this) return;
    msVpCStack.pop_back();
    glBindFramebuffer(GL_FRAMEBUFFER, msVpCStack.empty() ? 0 : msVpCStack.back()->mFramebuffer);
    glDeleteFramebuffers(1, &mFramebuffer);
    mFramebuffer = 0;
    glPopAttrib();
    CheckGLErrors("FBO_cls::End");
}

void FBO_cls::ClearTarget(GLbitfield bits) {
    const FBO_cls* pTarget = msVpCStack.empty() ? nullptr : msVpCStack.back();
    if (pTarget && pTarget->mbMade && MayClearTextures(pTarget->mDepth))
        pTarget->ClearTextures(bits);
    else
        glClear(bits);
}

// Depth and stencil share their pixels: one of them alone is left to OpenGL.
void FBO_cls::ClearTextures(GLbitfield bits) const {
    constexpr GLbitfield kDepth = GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT;
    constexpr GLuint kFar = 0xffffff00;
    const ShownPart_st& p = mShown;
    if (bits & GL_COLOR_BUFFER_BIT) {
        std::array<GLfloat, 4> colour;
        glGetFloatv(GL_COLOR_CLEAR_VALUE, colour.data());
        const HalfColour half = FindHalfColour(colour);
        glClearTexSubImage(mTexture, 0, p.mX, p.mY, 0, p.mW, p.mH, 1, GL_RGBA, GL_HALF_FLOAT, half.data());
    }
    if ((bits & kDepth) == kDepth)
        glClearTexSubImage(mDepthTexture, 0, p.mX, p.mY, 0, p.mW, p.mH, 1, kDepthFormat.format,
                           kDepthFormat.type, &kFar);
    else if (bits & kDepth)
        glClear(bits & kDepth);
}

void FBO_cls::ReadShown(GLenum format, GLenum type, void* pPixels) const {
    const GLClientScope_cls client;
    GLuint framebuffer = 0;
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexture, 0);
    glReadPixels(mShown.mX, mShown.mY, mShown.mW, mShown.mH, format, type, pPixels);
    glBindFramebuffer(GL_FRAMEBUFFER, msVpCStack.empty() ? 0 : msVpCStack.back()->mFramebuffer);
    glDeleteFramebuffers(1, &framebuffer);
}

float FBO_cls::GetLineWidthFactor(int size) {
    switch (size) {
    case 256:
        return 0.125f;
    case 512:
        return 0.25f;
    case 1024:
        return 0.5f;
    case 4096:
        return 2.0f;
    default:
        return 1.0f;
    }
}

void FBO_cls::DrawOnScreenSet(const GLPerspective_cls& perspective, int w, int h, bool bAdditive) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glViewport(0, 0, w, h);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();

    GLPerspective_cls flat = perspective;
    flat.mbPerspective = false;
    flat.mbFitWidth = false;
    flat.SetWindowSize(w, h);
    flat.SetClipSize(w, h);
    PositionAndDirection_cls camera;
    camera.Set(0, 0, -1);
    const double front[3] = {0, 0, -1};
    const double up[3] = {0, 1, 0};
    camera.Setv(front, up);
    flat.SetPerspectiveOnGL(camera);
    flat.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
    const double side = flat.GetClipAspectRatio();
    glScaled(side, side, side);

    glDisable(GL_LIGHTING);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor4f(1, 1, 1, 1);
    if (bAdditive) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    } else {
        glDisable(GL_BLEND);
    }
}

void FBO_cls::DrawOnScreenDraw(const FBO_cls* pSource, GLint filter) {
    if (pSource) {
        const GLClientScope_cls client;
        constexpr float corners[4][2] = {{-0.5f, -0.5f}, {0.5f, -0.5f}, {0.5f, 0.5f}, {-0.5f, 0.5f}};
        constexpr float coords[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        pSource->BindTexture();
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glVertexPointer(2, GL_FLOAT, 0, corners);
        glTexCoordPointer(2, GL_FLOAT, 0, coords);
        glDrawArrays(GL_QUADS, 0, 4);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    }
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
    CheckGLErrors("DrawOnScreenDraw");
}
