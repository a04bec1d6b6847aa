#include "GL/DRAW/clsShadowStencil.h"

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"

ShadowStencil_cls* ShadowStencil_cls::mspCurrent = nullptr;
bool ShadowStencil_cls::msbClamps = true;

namespace {

constexpr GLuint kCounter = 0x7f;
constexpr GLuint kAll = 0xff;
constexpr float kShownColor[3] = {0.35f, 0.45f, 0.8f};

// Without it a shader keeps what lies beyond the far plane; where that can't be made either, what volumes
// that reach so far hide before it is lost. The eye may still be in any of them.
bool HasDepthClamp() {
    return ShadowStencil_cls::msbClamps &&
           (epoxy_gl_version() >= 32 || epoxy_has_gl_extension("GL_ARB_depth_clamp"));
}

/// All of the screen, at the far end of what can be seen.
void DrawScreen() {
    const GLMatrixScope_cls projection(GL_PROJECTION);
    glLoadIdentity();
    const GLMatrixScope_cls model;
    glLoadIdentity();
    glBegin(GL_QUADS);
    glVertex3f(-1.0f, -1.0f, 1.0f);
    glVertex3f(1.0f, -1.0f, 1.0f);
    glVertex3f(1.0f, 1.0f, 1.0f);
    glVertex3f(-1.0f, 1.0f, 1.0f);
    glEnd();
}

// The whole, as drivers of software fill a rectangle in several times the time.
void ClearStencil() {
    const GLAttribScope_cls attributes(GL_SCISSOR_BIT);
    glDisable(GL_SCISSOR_TEST);
    glClear(GL_STENCIL_BUFFER_BIT);
}

void SetCounting() {
    glStencilMask(kCounter);
    glStencilFunc(GL_ALWAYS, 0, kAll);
    glStencilOpSeparate(GL_FRONT, GL_KEEP, GL_DECR_WRAP, GL_KEEP);
    glStencilOpSeparate(GL_BACK, GL_KEEP, GL_INCR_WRAP, GL_KEEP);
}

} // namespace

ShadowStencil_cls::ShadowStencil_cls(bool bShow) : mbShown(bShow), mbClamped(HasDepthClamp()) {
    mspCurrent = this;
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glStencilMask(kAll);
    glClearStencil(0);
    ClearStencil();
    glEnable(GL_STENCIL_TEST);
    SetCounting();
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_FOG);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    if (mbShown)
        glColor3fv(kShownColor);
    else
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    if (mbClamped) glEnable(GL_DEPTH_CLAMP);
}

ShadowStencil_cls::~ShadowStencil_cls() {
    if (mDepths != 0) glDeleteTextures(1, &mDepths);
    if (mbClamped) glDisable(GL_DEPTH_CLAMP);
    glPopAttrib();
    mspCurrent = nullptr;
}

void ShadowStencil_cls::Fold() {
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    glUseProgram(0);
    {
        const GLAttribScope_cls attributes(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT |
                                           GL_ENABLE_BIT);
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        glDisable(GL_DEPTH_TEST);
        glStencilMask(kAll);
        glStencilFunc(GL_NOTEQUAL, kFound, kCounter); // compares the counter with zero
        glStencilOp(GL_KEEP, GL_KEEP, GL_REPLACE);
        DrawScreen();
    }
    glUseProgram(static_cast<GLuint>(program));
    mCover.Clear();
}

// Nothing writes depths while volumes are counted.
void ShadowStencil_cls::BindDepths() {
    if (mDepths != 0) {
        glBindTexture(GL_TEXTURE_2D, mDepths);
        return;
    }
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGenTextures(1, &mDepths);
    glBindTexture(GL_TEXTURE_2D, mDepths);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, viewport[0], viewport[1], viewport[2],
                     viewport[3], 0);
}

// A pixel that is known needn't be looked at again.
ShadowStencil_cls::MarkScope_cls::MarkScope_cls() {
    glPushAttrib(GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT | GL_ENABLE_BIT | GL_TEXTURE_BIT);
    glDisable(GL_DEPTH_TEST);
    glStencilMask(kFound);
    glStencilFunc(GL_NOTEQUAL, kFound, kFound);
    glStencilOp(GL_KEEP, GL_KEEP, GL_REPLACE);
}

ShadowStencil_cls::MarkScope_cls::~MarkScope_cls() { glPopAttrib(); }

void ShadowStencil_cls::SelectShadowed() {
    glEnable(GL_STENCIL_TEST);
    glStencilMask(0);
    glStencilFunc(GL_NOTEQUAL, 0, kAll);
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
}

void ShadowStencil_cls::Fill(const float* pColor, bool bFar) {
    const GLAttribScope_cls attributes(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT |
                                       GL_CURRENT_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_FOG);
    glDisable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_ALWAYS);
    glDepthMask(bFar ? GL_TRUE : GL_FALSE);
    // Covers as far as its alpha says.
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4fv(pColor);
    DrawScreen();
}
