#include "GL/VIEW/clsKeptPicture.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"

void KeptPicture_cls::Read(wxSize size) {
    const size_t row = static_cast<size_t>(size.x) * 3;
    std::vector<unsigned char> upward(row * static_cast<size_t>(size.y));
    const GLClientScope_cls client;
    glReadBuffer(GL_BACK); // the front buffer of a window can't be read everywhere
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, size.x, size.y, GL_RGB, GL_UNSIGNED_BYTE, upward.data());
    mVPicture.resize(upward.size());
    for (size_t y = 0, last = static_cast<size_t>(size.y) - 1; y <= last; ++y)
        std::copy_n(upward.data() + (last - y) * row, row, mVPicture.data() + y * row);
    mPictureSize = size;
}
