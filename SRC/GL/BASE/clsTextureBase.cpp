#include "GL/BASE/clsTextureBase.h"

#include <algorithm>

#include "GL/BASE/clsGLState.h"

void TextureBase_cls::DeleteTexture() {
    if (mTexture != 0 && IsGLContextCurrent()) glDeleteTextures(1, &mTexture);
    mTexture = 0;
}

void TextureBase_cls::DrawOnScreen2D(int w, int h, int quadW, int quadH, int x, int y,
                                     bool bKeepState) const {
    const GLAttribScope_cls attributes;
    const GLClientScope_cls client;
    Push2DMatrix(w, h);
    if (!bKeepState) {
        glDisable(GL_BLEND);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_LIGHTING);
        glEnable(GL_TEXTURE_2D);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glColor4f(1, 1, 1, 1);
    }
    BindTexture();
    const GLint corners[4][2] = {{x, y}, {x + quadW, y}, {x + quadW, y + quadH}, {x, y + quadH}};
    const GLint coords[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(2, GL_INT, 0, corners);
    glTexCoordPointer(2, GL_INT, 0, coords);
    glDrawArrays(GL_QUADS, 0, 4);
    Pop2DMatrix();
}

void TextureBase_cls::Push2DMatrix(int w, int h) {
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, std::max(w, 1), 0.0, std::max(h, 1), -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
}

void TextureBase_cls::Pop2DMatrix() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
}
