#include "GL/BASE/clsGLState.h"

#include <epoxy/glx.h>

#include <cstdio>

bool IsGLContextCurrent() { return glXGetCurrentContext() != nullptr; }

bool CheckGLErrors([[maybe_unused]] const char* stage) {
#ifdef NDEBUG
    return true;
#else
    bool bClean = true;
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
        std::printf("OpenGL error 0x%04x after %s\n", error, stage);
        bClean = false;
        if (error == GL_CONTEXT_LOST) break; // reported for ever
    }
    return bClean;
#endif
}

bool HasGLRunOutOfMemory() {
    bool bShort = false;
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
        bShort = bShort || error == GL_OUT_OF_MEMORY;
        if (error == GL_CONTEXT_LOST) break; // reported for ever
    }
    return bShort;
}
