#include "GL/BASE/clsFBO.h"

#include <algorithm>
#include <cstdio>

#include <wx/intl.h>

#include "COMMON/PictureFault.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"

bool FBO_cls::msbSupported = true;
bool FBO_cls::msbInitialized = false;
std::vector<FBO_cls*> FBO_cls::msVpCStack;

namespace {

struct ColourFormat {
    GLint internal;
    GLenum format;
    GLenum type;
};

ColourFormat GetFormat(int depth, bool bAlpha) {
    const GLenum format = bAlpha ? GL_RGBA : GL_RGB;
    if (depth == 8) return {bAlpha ? GL_RGBA8 : GL_RGB8, format, GL_UNSIGNED_BYTE};
    return {bAlpha ? GL_RGBA16F : GL_RGB16F, format, GL_HALF_FLOAT};
}

GLuint MakeColourTexture(const ColourFormat& format, int w, int h) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, format.internal, w, h, 0, format.format, format.type, nullptr);
    return texture;
}

} // namespace

FBO_cls::~FBO_cls() {
    msVpCStack.erase(std::remove(msVpCStack.begin(), msVpCStack.end(), this), msVpCStack.end());
    if (!IsGLContextCurrent()) return;
    if (mRenderbuffer != 0) glDeleteRenderbuffers(1, &mRenderbuffer);
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
    mTexture = MakeColourTexture(GetFormat(mDepth, bAlpha), mW, mH);
    glGenRenderbuffers(1, &mRenderbuffer);
    glBindRenderbuffer(GL_RENDERBUFFER, mRenderbuffer);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, mW, mH);
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    mbMade = true;
    if (!bAlpha) {
        // A driver may have no three-channel target; then a fourth is stored and read back as one.
        const bool bComplete = Attach();
        glBindFramebuffer(GL_FRAMEBUFFER, msVpCStack.empty() ? 0 : msVpCStack.back()->mFramebuffer);
        glDeleteFramebuffers(1, &mFramebuffer);
        mFramebuffer = 0;
        if (!bComplete) {
            DeleteTexture();
            mTexture = MakeColourTexture(GetFormat(mDepth, true), mW, mH);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_A, GL_ONE);
        }
    }
    CheckGLErrors("MakeFBO");
}

bool FBO_cls::Attach() {
    if (mFramebuffer == 0) glGenFramebuffers(1, &mFramebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexture, 0);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, mRenderbuffer);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_STENCIL_ATTACHMENT, GL_RENDERBUFFER, mRenderbuffer);
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
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
    glClearColor(0, 0, 0, 0);
    glClear(bClear ? GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT
                   : GL_STENCIL_BUFFER_BIT);
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
    glClear((bAdditive ? 0u : GL_COLOR_BUFFER_BIT) | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
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

void FBO_cls::DrawOnScreenDraw(const FBO_cls* pSource, int half) {
    if (pSource) {
        const GLClientScope_cls client;
        const float left = half == 2 ? 0.0f : -0.5f;
        const float right = half == 1 ? 0.0f : 0.5f;
        const float corners[4][2] = {{left, -0.5f}, {right, -0.5f}, {right, 0.5f}, {left, 0.5f}};
        const float coords[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        pSource->BindTexture();
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glVertexPointer(2, GL_FLOAT, 0, corners);
        glTexCoordPointer(2, GL_FLOAT, 0, coords);
        glDrawArrays(GL_QUADS, 0, 4);
    }
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
    CheckGLErrors("DrawOnScreenDraw");
}
