#include "POVRAY/PictureHead.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

constexpr int kMostPixels = 1 << 20; // a side

bool IsSize(int w, int h) { return w > 0 && h > 0 && w <= kMostPixels && h <= kMostPixels; }

uint64_t ReadLittle(const std::string& bytes, size_t at, size_t width) {
    uint64_t value = 0;
    for (size_t i = width; i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
    return value;
}

/// Its rest is as long as its head says.
PictureHead_st ReadPpm(const std::string& bytes) {
    size_t at = 3;
    while (at < bytes.size() && bytes[at] == '#')
        at = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
    int w = 0, h = 0, most = 0, read = 0;
    const std::string head = bytes.substr(at, 64);
    if (std::sscanf(head.c_str(), "%d %d %d%n", &w, &h, &most, &read) != 3 || !IsSize(w, h)) return {};
    const size_t length = size_t(w) * size_t(h) * (most > 255 ? 6 : 3);
    return bytes.size() == at + size_t(read) + 1 + length ? PictureHead_st{w, h, false} : PictureHead_st{};
}

/// Four runs of bytes a line, each as long as the picture is wide: counts above 128 repeat a byte.
bool SkipHdrLine(const std::string& bytes, int w, size_t* pAt) {
    size_t at = *pAt;
    if (at + 4 > bytes.size() || bytes[at] != 2 || bytes[at + 1] != 2) return false;
    at += 4;
    for (int channel = 0; channel < 4; ++channel)
        for (int x = 0; x < w;) {
            if (at >= bytes.size()) return false;
            const int count = static_cast<unsigned char>(bytes[at]);
            if (count == 0) return false;
            x += count > 128 ? count - 128 : count;
            at += count > 128 ? 2 : size_t(count) + 1;
        }
    *pAt = at;
    return at <= bytes.size();
}

PictureHead_st ReadHdr(const std::string& bytes) {
    size_t at = bytes.find("\n\n");
    if (at == std::string::npos) return {};
    at += 2;
    int w = 0, h = 0;
    if (std::sscanf(bytes.substr(at, 64).c_str(), "-Y %d +X %d", &h, &w) != 2 || !IsSize(w, h)) return {};
    at = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
    const bool bPlain = bytes.size() == at + size_t(w) * size_t(h) * 4;
    for (int y = 0; y < h && !bPlain; ++y)
        if (!SkipHdrLine(bytes, w, &at)) return {};
    return {w, h, false};
}

/// A list of names, each with a type and as many bytes as it says; then where its pieces stand.
PictureHead_st ReadExr(const std::string& bytes) {
    constexpr size_t kPlaces = 8; // bytes of one
    PictureHead_st head;
    size_t at = 8;
    while (at < bytes.size() && bytes[at] != '\0') {
        const std::string name = bytes.c_str() + at;
        at += name.size() + 1;
        at = std::min(bytes.find('\0', std::min(at, bytes.size())), bytes.size() - 1) + 1; // the type
        if (at + 4 > bytes.size()) return {};
        const size_t length = ReadLittle(bytes, at, 4);
        at += 4;
        if (length > bytes.size() - at) return {};
        if (name == "dataWindow" && length == 16) {
            head.mW = int(ReadLittle(bytes, at + 8, 4) - ReadLittle(bytes, at, 4)) + 1;
            head.mH = int(ReadLittle(bytes, at + 12, 4) - ReadLittle(bytes, at + 4, 4)) + 1;
        }
        if (name == "channels") head.mbAlpha = bytes.compare(at, 2, "A\0", 2) == 0; // they are in order
        at += length;
    }
    ++at;
    if (!IsSize(head.mW, head.mH) || at + kPlaces > bytes.size()) return {};
    // The pieces follow the table of their places; the last one ends the file.
    const uint64_t first = ReadLittle(bytes, at, kPlaces);
    if (first <= at || first > bytes.size()) return {};
    uint64_t end = 0;
    for (; at + kPlaces <= first; at += kPlaces) {
        const uint64_t place = ReadLittle(bytes, at, kPlaces);
        if (place < first || place > bytes.size() || bytes.size() - place < 8) return {};
        end = std::max(end, place + 8 + ReadLittle(bytes, size_t(place) + 4, 4));
    }
    return end == bytes.size() ? head : PictureHead_st{};
}

} // namespace

PictureHead_st ReadWholePicture(const std::string& bytes) {
    if (bytes.compare(0, 3, "P6\n") == 0) return ReadPpm(bytes);
    if (bytes.compare(0, 11, "#?RADIANCE\n") == 0) return ReadHdr(bytes);
    if (bytes.compare(0, 4, "v/1\x01") == 0) return ReadExr(bytes);
    return {};
}
