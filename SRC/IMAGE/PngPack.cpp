#include "IMAGE/PngPack.h"

#ifdef MORENTIS_LIBDEFLATE

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include <libdeflate.h>

namespace {

constexpr size_t kMostBytes = size_t(512)
                              << 20; // of the pixels; above it the toolkit's writer takes less memory
constexpr int kLevel = 1;
constexpr unsigned char kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr unsigned char kColor = 2, kColorAlpha = 6; // as the format numbers them

using Bytes = std::unique_ptr<unsigned char[]>;

/// As it comes, not zeroed; null where there is no memory.
Bytes Allocate(size_t size) { return Bytes(new (std::nothrow) unsigned char[size]); }

void PutNumber(std::uint32_t value, unsigned char* p) {
    for (int k = 0; k < 4; ++k)
        p[k] = static_cast<unsigned char>(value >> (24 - 8 * k) & 0xff);
}

void AddChunk(const char* kind, const unsigned char* pData, size_t length, std::string* pBytes) {
    unsigned char number[4];
    const auto add = [&](std::uint32_t value) {
        PutNumber(value, number);
        pBytes->append(reinterpret_cast<const char*>(number), sizeof number);
    };
    add(std::uint32_t(length));
    pBytes->append(kind, 4);
    std::uint32_t sum = libdeflate_crc32(0, kind, 4);
    if (length > 0) {
        pBytes->append(reinterpret_cast<const char*>(pData), length);
        sum = libdeflate_crc32(sum, pData, length);
    }
    add(sum);
}

/// A byte that tells the filter, which is none, then the pixels.
void FillRow(const unsigned char* pRGB, const unsigned char* pAlpha, size_t w, unsigned char* pOut) {
    *pOut++ = 0;
    if (!pAlpha) {
        std::memcpy(pOut, pRGB, 3 * w);
        return;
    }
    for (size_t x = 0; x < w; ++x, pOut += 4) {
        std::memcpy(pOut, pRGB + 3 * x, 3);
        pOut[3] = pAlpha[x];
    }
}

/// Null where memory is short.
Bytes Compress(const Bytes& rows, size_t size, size_t* pLength) {
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> packer(
        libdeflate_alloc_compressor(kLevel), &libdeflate_free_compressor);
    if (!packer) return nullptr;
    const size_t room = libdeflate_zlib_compress_bound(packer.get(), size);
    Bytes packed = Allocate(room);
    if (packed) *pLength = libdeflate_zlib_compress(packer.get(), rows.get(), size, packed.get(), room);
    return packed;
}

} // namespace

bool PackPNG(const unsigned char* pRGB, const unsigned char* pAlpha, int w, int h, std::string* pBytes) {
    if (w < 1 || h < 1) return false;
    const size_t columns = size_t(w), channels = pAlpha ? 4 : 3, row = 1 + columns * channels;
    if (row > kMostBytes / size_t(h)) return false;
    const Bytes rows = Allocate(row * size_t(h));
    if (!rows) return false;
    for (size_t y = 0; y < size_t(h); ++y)
        FillRow(pRGB + 3 * columns * y, pAlpha ? pAlpha + columns * y : nullptr, columns,
                rows.get() + row * y);
    size_t length = 0;
    const Bytes packed = Compress(rows, row * size_t(h), &length);
    if (!packed || length == 0) return false;
    unsigned char head[13] = {0, 0, 0, 0, 0, 0, 0, 0, 8, pAlpha ? kColorAlpha : kColor, 0, 0, 0};
    PutNumber(std::uint32_t(w), head);
    PutNumber(std::uint32_t(h), head + 4);
    std::string bytes(reinterpret_cast<const char*>(kSignature), sizeof kSignature);
    bytes.reserve(length + 100);
    AddChunk("IHDR", head, sizeof head, &bytes);
    AddChunk("IDAT", packed.get(), length, &bytes);
    AddChunk("IEND", nullptr, 0, &bytes);
    *pBytes = std::move(bytes);
    return true;
}

#else

bool PackPNG(const unsigned char*, const unsigned char*, int, int, std::string*) { return false; }

#endif
