// A texture made from an image file, an image in memory or drawing with a device context.
#pragma once

#include <memory>
#include <vector>

#include <wx/string.h>

#include "GL/BASE/clsTextureBase.h"

class wxBitmap;
class wxDC;
class wxImage;
class wxMemoryDC;

/// Colour and alpha of an image as RGBA bytes; opaque where the image has no alpha.
std::vector<unsigned char> GenerateBufferRGBA(const wxImage& image);

class GLTexture_cls : public TextureBase_cls {
public:
    GLTexture_cls();
    ~GLTexture_cls() override;

    /// Draw into a bitmap of w by h until EndDC, black at first. The texture then has the red channel as
    /// its brightness; with `bAlpha` an alpha channel too, everywhere opaque.
    wxDC* BeginDC(int w, int h, bool bAlpha);
    void EndDC();
    void CopyFromImage(const wxImage& image);
    /// Any type that wxImage reads; `bFlip` turns it upside down, as GL counts rows from below. False and
    /// no texture when the file can't be read; nothing is said then.
    bool LoadImage(const wxString& path, bool bFlip);
    int GetWidth() const { return mW; }
    int GetHeight() const { return mH; }

private:
    void Upload(unsigned format, const void* pPixels);

    int mW = 0;
    int mH = 0;
    bool mbAlpha = false;
    std::unique_ptr<wxBitmap> mpCBitmap;
    std::unique_ptr<wxMemoryDC> mpCDC;
};
