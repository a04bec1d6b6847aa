#include "GL/DRAW/DepthTarget.h"

#include <epoxy/gl.h>

namespace {

GLint GetAttachment(GLenum what) {
    GLint value = 0;
    glGetFramebufferAttachmentParameteriv(GL_DRAW_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, what, &value);
    return value;
}

} // namespace

unsigned GetDepthTarget() {
    GLint framebuffer = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
    if (framebuffer == 0 || GetAttachment(GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE) != GL_TEXTURE ||
        GetAttachment(GL_FRAMEBUFFER_ATTACHMENT_DEPTH_SIZE) != 24)
        return 0;
    return static_cast<unsigned>(GetAttachment(GL_FRAMEBUFFER_ATTACHMENT_OBJECT_NAME));
}
