#include "GL/BASE/clsGLTexture.h"

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/log.h>

#include "GL/BASE/clsGLState.h"

std::vector<unsigned char> GenerateBufferRGBA(const wxImage& image) {
    const size_t count = static_cast<size_t>(image.GetWidth()) * static_cast<size_t>(image.GetHeight());
    std::vector<unsigned char> pixels(count * 4, 255);
    for (size_t i = 0; i < count; ++i) {
        for (size_t c = 0; c < 3; ++c)
            pixels[4 * i + c] = image.GetData()[3 * i + c];
        if (image.HasAlpha()) pixels[4 * i + 3] = image.GetAlpha()[i];
    }
    return pixels;
}

GLTexture_cls::GLTexture_cls() = default;
GLTexture_cls::~GLTexture_cls() = default;

void GLTexture_cls::Upload(unsigned format, const void* pPixels) {
    const GLClientScope_cls client;
    if (mTexture == 0) glGenTextures(1, &mTexture);
    BindTexture();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1); // rows of any width
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), mW, mH, 0, format, GL_UNSIGNED_BYTE, pPixels);
    CheckGLErrors("GLTexture_cls::Upload");
}

wxDC* GLTexture_cls::BeginDC(int w, int h, bool bAlpha) {
    mW = w;
    mH = h;
    mbAlpha = bAlpha;
    mpCBitmap = std::make_unique<wxBitmap>(w, h, 24);
    mpCDC = std::make_unique<wxMemoryDC>(*mpCBitmap);
    mpCDC->SetBackground(*wxBLACK_BRUSH);
    mpCDC->Clear();
    return mpCDC.get();
}

void GLTexture_cls::EndDC() {
    if (!mpCDC) return;
    mpCDC.reset();
    const wxImage image = mpCBitmap->ConvertToImage();
    mpCBitmap.reset();
    const size_t count = static_cast<size_t>(mW) * static_cast<size_t>(mH);
    const size_t channels = mbAlpha ? 2 : 1;
    std::vector<unsigned char> pixels(count * channels, 255);
    for (size_t i = 0; i < count; ++i)
        pixels[i * channels] = image.GetData()[3 * i];
    Upload(mbAlpha ? GL_LUMINANCE_ALPHA : GL_LUMINANCE, pixels.data());
}

void GLTexture_cls::CopyFromImage(const wxImage& image) {
    mW = image.GetWidth();
    mH = image.GetHeight();
    mbAlpha = image.HasAlpha();
    if (!mbAlpha) {
        Upload(GL_RGB, image.GetData());
        return;
    }
    Upload(GL_RGBA, GenerateBufferRGBA(image).data());
}

bool GLTexture_cls::LoadImage(const wxString& path, bool bFlip) {
    const wxLogNull quiet;
    wxImage image;
    DeleteTexture();
    if (!image.LoadFile(path)) return false;
    CopyFromImage(bFlip ? image.Mirror(false) : image);
    return true;
}
