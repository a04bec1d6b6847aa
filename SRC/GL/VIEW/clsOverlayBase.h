// A small picture with alpha on top of a view: made with a device context, kept as a texture, drawn at a
// corner.
#pragma once

#include <vector>

#include <epoxy/gl.h>
#include <wx/gdicmn.h>

class Overlay_cls;
class wxImage;

class OverlayBase_cls {
public:
    static constexpr int kWidth = 260; ///< of an item; pixels
    static constexpr int kHeight = 36;
    static constexpr int kMargin = 20;

    /// Where the pixels of an item go: into a window, over what is there, or as they are into a buffer with
    /// alpha that is laid over an image later.
    enum class Target { Window, Buffer };

    explicit OverlayBase_cls(const Overlay_cls* pOverlay) : mpCOverlay(pOverlay) {}
    ~OverlayBase_cls();
    OverlayBase_cls(const OverlayBase_cls&) = delete;
    OverlayBase_cls& operator=(const OverlayBase_cls&) = delete;

    /// Place of the lower left corner of item `row` at one of the corners (Overlay_cls::Pos) of a window of w
    /// by h pixels, y upward. Rows stack away from the edge.
    void SetOffsetPos(int pos, int row, int w, int h);
    wxPoint GetOffset() const { return wxPoint(mX, mY); }

    /// RGBA with the lowest row first: black becomes transparent, all else opaque.
    void GenerateBufferRGBA(const wxImage& image);
    void DeleteBufferRGBA();
    const std::vector<unsigned char>& GetBufferRGBA() const { return mVBuffer; }

protected:
    /// The buffer into a texture, made when it is 0.
    void Upload(GLuint* pTexture) const;
    /// The texture at the place, as large as the buffer was, in a target of w by h pixels.
    void DrawTexture(GLuint texture, int w, int h, GLenum destination, Target target) const;

    const Overlay_cls* mpCOverlay;
    int mX = 0;
    int mY = 0;
    int mBufferW = 0;
    int mBufferH = 0;
    std::vector<unsigned char> mVBuffer;
    GLuint mTexture = 0;
};
