// A texture name and its owner. GL objects are deleted with a current context only; without one they go
// with their context.
#pragma once

#include <epoxy/gl.h>

class TextureBase_cls {
public:
    TextureBase_cls() = default;
    virtual ~TextureBase_cls() { DeleteTexture(); }
    TextureBase_cls(TextureBase_cls&& other) noexcept : mTexture(other.mTexture) { other.mTexture = 0; }
    TextureBase_cls(const TextureBase_cls&) = delete;
    TextureBase_cls& operator=(const TextureBase_cls&) = delete;

    void BindTexture() const { glBindTexture(GL_TEXTURE_2D, mTexture); }
    /// The whole texture as a quad at x, y of a window of w by h pixels, origin lower left. Unless
    /// `bKeepState` texturing, blending and depth test are set for a plain opaque copy.
    void DrawOnScreen2D(int w, int h, int quadW, int quadH, int x, int y, bool bKeepState) const;
    static void Push2DMatrix(int w, int h);
    static void Pop2DMatrix();

    GLuint mTexture = 0;

protected:
    void DeleteTexture();
};
