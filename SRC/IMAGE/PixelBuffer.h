// Bytes of a picture. Memory that can't be had is told and leaves the buffer empty: one image is lost then,
// not the program.
#pragma once

#include <cstdlib>
#include <memory>

class PixelBuffer_cls {
public:
    PixelBuffer_cls() = default;
    /// w * h pixels of `pixelBytes`, with no meaning yet; tried twice. Memory of that size is used again.
    bool Allocate(int w, int h, int pixelBytes);
    void Free() {
        mpBytes.reset();
        mSize = 0;
    }
    unsigned char* Get() { return mpBytes.get(); }
    const unsigned char* Get() const { return mpBytes.get(); }
    explicit operator bool() const { return mpBytes != nullptr; }

private:
    struct Free_st {
        void operator()(unsigned char* pBytes) const { std::free(pBytes); }
    };
    std::unique_ptr<unsigned char, Free_st> mpBytes;
    size_t mSize = 0;
};
