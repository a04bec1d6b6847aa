#include "IMAGE/PixelBuffer.h"

#include <cstdio>

bool PixelBuffer_cls::Allocate(int w, int h, int channels) {
    const size_t size = size_t(w) * size_t(h) * size_t(channels);
    mpBytes.reset(static_cast<unsigned char*>(std::malloc(size)));
    if (mpBytes) return true;
    std::puts("mallc failed retry!!");
    mpBytes.reset(static_cast<unsigned char*>(std::malloc(size)));
    if (!mpBytes) std::puts("malloc retry failed!!");
    return mpBytes != nullptr;
}
