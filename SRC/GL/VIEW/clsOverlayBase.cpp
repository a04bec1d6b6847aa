#include "GL/VIEW/clsOverlayBase.h"

#include <wx/image.h>

#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsTextureBase.h"
#include "GL/VIEW/clsOverlay.h"

OverlayBase_cls::~OverlayBase_cls() {
    if (mTexture != 0 && IsGLContextCurrent()) glDeleteTextures(1, &mTexture);
}

void OverlayBase_cls::SetOffsetPos(int pos, int row, int w, int h) {
    const bool bLeft = pos == Overlay_cls::TOP_LEFT || pos == Overlay_cls::BTM_LEFT;
    const bool bTop = pos == Overlay_cls::TOP_LEFT || pos == Overlay_cls::TOP_RIGHT;
    mX = bLeft ? kMargin : w - kWidth;
    mY = bTop ? h - kHeight - kHeight * row : kMargin + kHeight * row;
}

void OverlayBase_cls::GenerateBufferRGBA(const wxImage& image) {
    mBufferW = image.GetWidth();
    mBufferH = image.GetHeight();
    const auto row = size_t(mBufferW);
    mVBuffer.assign(row * size_t(mBufferH) * 4, 0);
    for (size_t y = 0; y < size_t(mBufferH); ++y)
        for (size_t x = 0; x < row; ++x) {
            const unsigned char* from = image.GetData() + 3 * (y * row + x);
            unsigned char* to = &mVBuffer[4 * ((size_t(mBufferH) - 1 - y) * row + x)];
            std::copy_n(from, 3, to);
            to[3] = from[0] || from[1] || from[2] ? 255 : 0;
        }
}

void OverlayBase_cls::DeleteBufferRGBA() {
    mVBuffer.clear();
    mVBuffer.shrink_to_fit();
}

void OverlayBase_cls::Upload(GLuint* pTexture) const {
    const GLAttribScope_cls attributes(GL_TEXTURE_BIT);
    const GLClientScope_cls client;
    if (*pTexture == 0) glGenTextures(1, pTexture);
    glBindTexture(GL_TEXTURE_2D, *pTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, mBufferW, mBufferH, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 mVBuffer.data());
}

void OverlayBase_cls::DrawTexture(GLuint texture, int w, int h, GLenum destination, Target target) const {
    const GLAttribScope_cls attributes;
    const GLClientScope_cls client;
    const GLint corners[4][2] = {
        {mX, mY}, {mX + mBufferW, mY}, {mX + mBufferW, mY + mBufferH}, {mX, mY + mBufferH}};
    const GLint coords[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    TextureBase_cls::Push2DMatrix(w, h);
    glViewport(0, 0, w, h);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor4f(1, 1, 1, 1);
    if (target == Target::Window) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, destination);
    } else {
        glDisable(GL_BLEND); // else alpha would count twice when the buffer is laid over its image
    }
    glBindTexture(GL_TEXTURE_2D, texture);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(2, GL_INT, 0, corners);
    glTexCoordPointer(2, GL_INT, 0, coords);
    glDrawArrays(GL_QUADS, 0, 4);
    TextureBase_cls::Pop2DMatrix();
    glMatrixMode(GL_MODELVIEW);
}
