#include "GL/VIEW/clsKeptPicture.h"

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"

void KeptPicture_cls::Read(wxSize size) {
    mRead.resize(static_cast<size_t>(size.x) * static_cast<size_t>(size.y));
    mPictureSize = size;
    const GLClientScope_cls client;
    glReadBuffer(GL_BACK); // the front buffer of a window can't be read everywhere
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, size.x, size.y, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                 mRead.data()); // as it lies there
}

const std::vector<unsigned char>& KeptPicture_cls::Get(int* pW, int* pH) const {
    *pW = mPictureSize.x;
    *pH = mPictureSize.y;
    const auto width = static_cast<size_t>(mPictureSize.x), height = static_cast<size_t>(mPictureSize.y);
    mVPicture.resize(3 * mRead.size());
    unsigned char* to = mVPicture.data();
    for (size_t y = height; y-- > 0;)
        for (size_t x = 0; x < width; ++x, to += 3) {
            const uint32_t pixel = mRead[y * width + x];
            to[0] = static_cast<unsigned char>(pixel >> 16);
            to[1] = static_cast<unsigned char>(pixel >> 8);
            to[2] = static_cast<unsigned char>(pixel);
        }
    return mVPicture;
}
