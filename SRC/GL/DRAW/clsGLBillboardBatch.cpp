#include "GL/DRAW/clsGLBillboardBatch.h"

#include <cstdio>

#include <epoxy/gl.h>

#include "GL/BASE/clsShaderProgram.h"
#include "GL/DRAW/UnlitBlend.h"

namespace {

// One blend function serves what covers and what adds, if colours come multiplied by their alpha and what
// adds says an alpha of 0. Which a billboard does is told by its alpha's sign.
const char* const kVertex = "#version 120\n"
                            "varying float covers;\n"
                            "void main() {\n"
                            "    gl_Position = ftransform();\n"
                            "    gl_TexCoord[0] = gl_MultiTexCoord0;\n"
                            "    gl_FrontColor = vec4(gl_Color.rgb, abs(gl_Color.a));\n"
                            "    gl_BackColor = gl_FrontColor;\n"
                            "    covers = gl_Color.a < 0.0 ? 0.0 : 1.0;\n"
                            "}\n";
const char* const kFragment = "#version 120\n"
                              "uniform sampler2D picture;\n"
                              "varying float covers;\n"
                              "void main() {\n"
                              "    vec4 color = texture2D(picture, gl_TexCoord[0].xy) * gl_Color;\n"
                              "    gl_FragColor = vec4(color.rgb * color.a, color.a * covers);\n"
                              "}\n";

// Shared by all views; lives as long as their contexts.
GLuint GetBlendingProgram() {
    static const ShaderProgram_cls* const spProgram = [] {
        auto* p = new ShaderProgram_cls;
        if (!p->Make(kVertex, kFragment))
            std::printf("Billboards that blend by turns are drawn in single calls: %s\n",
                        p->GetLog().c_str());
        return p;
    }();
    return spProgram->IsMade() ? spProgram->mProgram : 0;
}

/// The corners of the texture, over and over.
const std::vector<float>& GetTexCoords() {
    static const std::vector<float> sCoords = [] {
        const float corners[] = {0, 0, 1, 0, 1, 1, 0, 1};
        std::vector<float> coords;
        for (int i = 0; i < GLBillboardBatch_cls::kCapacity; ++i)
            coords.insert(coords.end(), corners, corners + 8);
        return coords;
    }();
    return sCoords;
}

} // namespace

// Fog works on the bare colour, and a texture that isn't there leaves the fixed pipeline's plain squares.
bool GLBillboardBatch_cls::HasOwnBlending() {
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    return width > 0 && !glIsEnabled(GL_FOG) && GetBlendingProgram() != 0;
}

GLBillboardBatch_cls::GLBillboardBatch_cls(std::vector<float>& storage, bool bColors, bool bEachBlends)
    : mbColors(bColors), mbEachBlends(bEachBlends) {
    const size_t room = static_cast<size_t>(kCapacity) * 28;
    if (storage.size() < room) storage.resize(room); // and never smaller: new room is filled
    mpPlaces = storage.data();
    mpColors = mpPlaces + static_cast<size_t>(kCapacity) * 12;
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, mpPlaces);
    glTexCoordPointer(2, GL_FLOAT, 0, GetTexCoords().data());
    if (mbEachBlends) {
        glUseProgram(GetBlendingProgram());
        SetUnlitBlend(false, true);
    }
    if (!mbColors) return;
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(4, GL_FLOAT, 0, mpColors);
}

GLBillboardBatch_cls::~GLBillboardBatch_cls() {
    Flush();
    if (mbEachBlends) glUseProgram(0);
    glPopClientAttrib();
}

void GLBillboardBatch_cls::Flush() {
    if (mCount == 0) return;
    glDrawArrays(GL_QUADS, 0, 4 * mCount);
    mCount = 0;
}
