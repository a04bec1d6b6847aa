#include "GL/BASE/clsGLButton.h"

#include <cmath>

#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"

namespace {

void DrawFrame(GLenum mode, const GLfloat (*corners)[2]) {
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, corners);
    glDrawArrays(mode, 0, 4);
}

} // namespace

GLButton_cls::GLButton_cls(int anchorType, int x, int y) : mAnchorType(anchorType), mX(x), mY(y) {}

GLButton_cls::~GLButton_cls() = default;

void GLButton_cls::MakeTextureFromImage(const wxString& path) {
    mpCTexture = std::make_unique<GLTexture_cls>();
    if (!mpCTexture->LoadImage(path, true)) return;
    mWidth = mpCTexture->GetWidth();
    mHeight = mpCTexture->GetHeight();
}

void GLButton_cls::DrawButton(int w, int h, double scale, bool bActive) const {
    const auto px = [scale](double units) { return static_cast<int>(std::lround(units * scale)); };
    const int x = px(GetLeft(static_cast<int>(std::lround(w / scale))));
    const int width = px(mWidth), height = px(mHeight);
    const int y = h - px(mY) - height; // OpenGL counts from below
    const GLAttribScope_cls attributes;
    glDisable(GL_TEXTURE_2D);
    if (mbHover) {
        const GLfloat left = GLfloat(x), right = GLfloat(x + width), low = GLfloat(y),
                      high = GLfloat(y + height);
        const GLfloat corners[4][2] = {{left, low}, {right, low}, {right, high}, {left, high}};
        TextureBase_cls::Push2DMatrix(w, h);
        glColor4f(0.2f, 0.2f, 0.3f, 1.0f);
        DrawFrame(GL_QUADS, corners);
        glColor4f(0.3f, 0.3f, 0.5f, 1.0f);
        glLineWidth(1.0f);
        DrawFrame(GL_LINE_LOOP, corners);
        TextureBase_cls::Pop2DMatrix();
    }
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    if (bActive)
        glColor4f(0.9f, 0.9f, 1.0f, 1.0f);
    else
        glColor4f(0.3f, 0.3f, 0.29f, 1.0f);
    if (mpCTexture && mpCTexture->mTexture != 0) {
        glEnable(GL_TEXTURE_2D);
        mpCTexture->DrawOnScreen2D(w, h, width, height, x, y, true);
    } else {
        const GLfloat corners[4][2] = {{GLfloat(x + 2), GLfloat(y + 2)},
                                       {GLfloat(x + width - 2), GLfloat(y + 2)},
                                       {GLfloat(x + width - 2), GLfloat(y + height - 2)},
                                       {GLfloat(x + 2), GLfloat(y + height - 2)}};
        TextureBase_cls::Push2DMatrix(w, h);
        DrawFrame(GL_QUADS, corners);
        TextureBase_cls::Pop2DMatrix();
    }
}

bool GLButton_cls::IsMouseOnButton(int x, int y, int w) const {
    const int left = GetLeft(w);
    return x >= left && x < left + mWidth && y >= mY && y < mY + mHeight;
}

bool GLButton_cls::UpdateStatus(int x, int y, int w) {
    const bool bBefore = mbHover;
    mbHover = IsMouseOnButton(x, y, w);
    return mbHover != bBefore;
}
