#include "GL/DRAW/clsGLBillboardBatch.h"

#include <epoxy/gl.h>

namespace {

/// The corners of the texture, over and over.
const std::vector<float>& GetTexCoords() {
    static const std::vector<float> sCoords = [] {
        const float corners[] = {0, 0, 1, 0, 1, 1, 0, 1};
        std::vector<float> coords;
        for (int i = 0; i < GLBillboardBatch_cls::kCapacity; ++i)
            coords.insert(coords.end(), corners, corners + 8);
        return coords;
    }();
    return sCoords;
}

} // namespace

GLBillboardBatch_cls::GLBillboardBatch_cls(std::vector<float>& storage, bool bColors) : mbColors(bColors) {
    const size_t room = static_cast<size_t>(kCapacity) * 28;
    if (storage.size() < room) storage.resize(room); // and never smaller: new room is filled
    mpPlaces = storage.data();
    mpColors = mpPlaces + static_cast<size_t>(kCapacity) * 12;
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, mpPlaces);
    glTexCoordPointer(2, GL_FLOAT, 0, GetTexCoords().data());
    if (!mbColors) return;
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(4, GL_FLOAT, 0, mpColors);
}

GLBillboardBatch_cls::~GLBillboardBatch_cls() {
    Flush();
    glPopClientAttrib();
}

void GLBillboardBatch_cls::Flush() {
    if (mCount == 0) return;
    glDrawArrays(GL_QUADS, 0, 4 * mCount);
    mCount = 0;
}
