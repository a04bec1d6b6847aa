// A button drawn into a view.
#pragma once

#include <memory>

#include <wx/string.h>

class GLTexture_cls;

/// Places are units of the screen from the upper left corner of the canvas; a unit is as many pixels as the
/// screen's density says.
class GLButton_cls {
public:
    enum AnchorType { FROM_LEFT = 2, FROM_RIGHT = 3 };

    GLButton_cls(int anchorType, int x, int y);
    ~GLButton_cls();

    /// Of an image file; without one the button is a plain square. Needs a current OpenGL context.
    void MakeTextureFromImage(const wxString& path);
    /// Into a canvas of w by h pixels, `scale` of them a unit.
    void DrawButton(int w, int h, double scale, bool bActive) const;
    /// `x` and `y` in units, in a canvas that is `w` of them wide.
    bool IsMouseOnButton(int x, int y, int w) const;
    /// True when the pointer came onto the button, or left it.
    bool UpdateStatus(int x, int y, int w);

private:
    int GetLeft(int w) const { return mAnchorType == FROM_RIGHT ? w - mX : mX; }

    std::unique_ptr<GLTexture_cls> mpCTexture;
    bool mbHover = false;
    int mWidth = 24;
    int mHeight = 24;
    int mAnchorType;
    int mX;
    int mY;
};
