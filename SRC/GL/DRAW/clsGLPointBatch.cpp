#include "GL/DRAW/clsGLPointBatch.h"

#include <epoxy/gl.h>

#include <cstdio>

#include "GL/DRAW/UnlitBlend.h"

namespace {

// The fixed pipeline but for the point's size, which rides in the texture coordinate.
const char* const kSizedVertex = "#version 120\n"
                                 "void main() {\n"
                                 "    gl_Position = ftransform();\n"
                                 "    gl_FrontColor = gl_Color;\n"
                                 "    gl_BackColor = gl_Color;\n"
                                 "    gl_FogFragCoord = abs((gl_ModelViewMatrix * gl_Vertex).z);\n"
                                 "    gl_PointSize = gl_MultiTexCoord0.x;\n"
                                 "}\n";

GLuint MakeSizedProgram() {
    if (epoxy_gl_version() < 21) return 0;
    const GLuint shader = glCreateShader(GL_VERTEX_SHADER);
    glShaderSource(shader, 1, &kSizedVertex, nullptr);
    glCompileShader(shader);
    GLuint program = glCreateProgram();
    glAttachShader(program, shader);
    glLinkProgram(program);
    glDeleteShader(shader);
    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked) return program;
    std::printf("Points of several sizes are drawn in single calls: the shader was refused\n");
    glDeleteProgram(program);
    return 0;
}

// Shared by all views; lives as long as their contexts.
GLuint GetSizedProgram() {
    static const GLuint sProgram = MakeSizedProgram();
    return sProgram;
}

} // namespace

bool GLPointBatch_cls::HasSizedPoints() { return GetSizedProgram() != 0; }

GLPointBatch_cls::GLPointBatch_cls(std::vector<float>& storage, bool bSized, bool bOverwrites)
    : mbSized(bSized), mbOverwrites(bOverwrites) {
    const size_t room = static_cast<size_t>(kCapacity) * kStride;
    if (storage.size() < room) storage.resize(room); // and never smaller: new room is filled
    mpData = storage.data();
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    constexpr GLsizei stride = kStride * sizeof(float);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, stride, mpData);
    glColorPointer(4, GL_FLOAT, stride, mpData + 3);
    if (!mbSized) return;
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(1, GL_FLOAT, stride, mpData + 7);
    glEnable(GL_VERTEX_PROGRAM_POINT_SIZE);
    glUseProgram(GetSizedProgram());
}

GLPointBatch_cls::~GLPointBatch_cls() {
    Flush();
    if (mbSized) {
        glUseProgram(0);
        glDisable(GL_VERTEX_PROGRAM_POINT_SIZE);
    }
    glPopClientAttrib();
}

void GLPointBatch_cls::Flush() {
    if (mCount == 0) return;
    const bool bBlend = !mbOverwrites || mMinAlpha < 1.0f;
    EnableUnlitBlend(bBlend);
    glDrawArrays(GL_POINTS, 0, mCount);
    mCount = 0;
    mMinAlpha = 1.0f;
}
