// OpenGL state for the length of a scope, and the error check of debug builds.
#pragma once

#include <epoxy/gl.h>

/// All server attributes.
class GLAttribScope_cls {
public:
    explicit GLAttribScope_cls(GLbitfield mask = GL_ALL_ATTRIB_BITS) { glPushAttrib(mask); }
    ~GLAttribScope_cls() { glPopAttrib(); }
    GLAttribScope_cls(const GLAttribScope_cls&) = delete;
    GLAttribScope_cls& operator=(const GLAttribScope_cls&) = delete;
};

/// Vertex array pointers and pixel storage of the client.
class GLClientScope_cls {
public:
    GLClientScope_cls() { glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT | GL_CLIENT_PIXEL_STORE_BIT); }
    ~GLClientScope_cls() { glPopClientAttrib(); }
    GLClientScope_cls(const GLClientScope_cls&) = delete;
    GLClientScope_cls& operator=(const GLClientScope_cls&) = delete;
};

/// One matrix of the given mode; the mode is GL_MODELVIEW afterwards.
class GLMatrixScope_cls {
public:
    explicit GLMatrixScope_cls(GLenum mode = GL_MODELVIEW) : mMode(mode) {
        glMatrixMode(mMode);
        glPushMatrix();
    }
    ~GLMatrixScope_cls() {
        glMatrixMode(mMode);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
    }
    GLMatrixScope_cls(const GLMatrixScope_cls&) = delete;
    GLMatrixScope_cls& operator=(const GLMatrixScope_cls&) = delete;

private:
    GLenum mMode;
};

/// Is a context current, so that GL objects can be deleted?
bool IsGLContextCurrent();

/// Debug builds: print what went wrong since the last check, with the stage's name. True if nothing did.
bool CheckGLErrors(const char* stage);
/// Was memory too short for OpenGL since its errors were last asked for? Asks for them all.
bool HasGLRunOutOfMemory();
