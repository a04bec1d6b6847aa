#include "IMAGE/PixelBuffer.h"

#include <cstdio>

bool PixelBuffer_cls::Allocate(int w, int h, int pixelBytes) {
    const size_t size = size_t(w) * size_t(h) * size_t(pixelBytes);
    if (mpBytes && mSize == size) return true;
    Free();
    mpBytes.reset(static_cast<unsigned char*>(std::malloc(size)));
    if (!mpBytes) {
        std::puts("mallc failed retry!!");
        mpBytes.reset(static_cast<unsigned char*>(std::malloc(size)));
        if (!mpBytes) std::puts("malloc retry failed!!");
    }
    mSize = mpBytes ? size : 0;
    return mpBytes != nullptr;
}
