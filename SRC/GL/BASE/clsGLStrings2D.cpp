#include "GL/BASE/clsGLStrings2D.h"

#include <epoxy/gl.h>

#include <GL/freeglut.h>

#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"

bool GLStrings2D_cls::msbGLUTInitialized = false;

namespace {

constexpr int kLineHeight = 24;

void* GetGlutFont(GLStrings2D_cls::Font font) {
    using Font = GLStrings2D_cls::Font;
    switch (font) {
    case Font::Helvetica10:
        return GLUT_BITMAP_HELVETICA_10;
    case Font::Helvetica18:
        return GLUT_BITMAP_HELVETICA_18;
    case Font::Fixed13:
        return GLUT_BITMAP_8_BY_13;
    case Font::Fixed15:
        return GLUT_BITMAP_9_BY_15;
    case Font::Times10:
        return GLUT_BITMAP_TIMES_ROMAN_10;
    case Font::Times24:
        return GLUT_BITMAP_TIMES_ROMAN_24;
    case Font::Helvetica12:
        break;
    }
    return GLUT_BITMAP_HELVETICA_12;
}

/// Pixels from line to line.
double GetHeight(GLStrings2D_cls::Font font) {
    using Font = GLStrings2D_cls::Font;
    switch (font) {
    case Font::Helvetica10:
    case Font::Times10:
        return 10;
    case Font::Helvetica18:
        return 18;
    case Font::Fixed13:
        return 13;
    case Font::Fixed15:
        return 15;
    case Font::Times24:
        return 24;
    case Font::Helvetica12:
        break;
    }
    return 12;
}

// The fonts hold Latin-1.
std::basic_string<unsigned char> ToLatin1(const wxString& text) {
    std::basic_string<unsigned char> bytes;
    for (const wxUniChar c : text)
        bytes.push_back(c.GetValue() < 256 ? static_cast<unsigned char>(c.GetValue()) : '?');
    return bytes;
}

} // namespace

void GLStrings2D_cls::InitializeGLUT() {
    if (msbGLUTInitialized) return;
    msbGLUTInitialized = true;
    int count = 1;
    char name[] = "dummy";
    char* arguments[] = {name, nullptr};
    glutInit(&count, arguments);
}

void GLStrings2D_cls::SetWindowGeometry(int w, int h) {
    mW = w > 0 ? w : 1;
    mH = h > 0 ? h : 1;
}

void GLStrings2D_cls::Draw(Font font, const wxString& text, int x, int y, bool bFromTop) const {
    if (text.empty()) return;
    InitializeGLUT();
    const GLAttribScope_cls attributes;
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    void* pFont = GetGlutFont(font);
    int baseline = bFromTop ? mH - y - 12 : y;
    std::basic_string<unsigned char> line;
    const auto flush = [&] {
        glWindowPos2i(x, baseline); // takes the current colour, and is never clipped away
        if (!line.empty()) glutBitmapString(pFont, line.c_str());
        line.clear();
        baseline -= kLineHeight;
    };
    for (const unsigned char c : ToLatin1(text)) {
        if (c == '\n')
            flush();
        else
            line.push_back(c);
    }
    flush();
}

void GLStrings2D_cls::DrawStrokes(Font font, const wxString& text, double x, double y, double factor) const {
    constexpr double kStrokeHeight = 152.4; // units of the stroke font, from descenders to ascenders
    if (text.empty()) return;
    InitializeGLUT();
    const GLAttribScope_cls attributes;
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    GLPerspective_cls::Push2DMatrix(mW, mH);
    const double scale = factor * GetHeight(font) / kStrokeHeight;
    glTranslated(x, y, 0.0);
    glScaled(scale, scale, 1.0);
    glutStrokeString(GLUT_STROKE_ROMAN, ToLatin1(text).c_str());
    GLPerspective_cls::Pop2DMatrix();
}
