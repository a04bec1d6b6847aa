#include "POVRAY/LinearPicture.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include <ImfRgbaFile.h>

#include "COMMON/SafeFile.h"
#include "POVRAY/PictureHead.h"

namespace {

constexpr size_t kMostBytes = size_t(1) << 30;

unsigned char Show(float light) {
    const float bound = light > 0.0f ? light < 1.0f ? light : 1.0f : 0.0f; // of no number, too
    return static_cast<unsigned char>(bound * 255.0f + 0.5f);
}

bool IsFit(long long w, long long h, long long mostPixels) {
    return w > 0 && h > 0 && w <= mostPixels && h <= mostPixels && w * h <= mostPixels;
}

wxImage ReadExr(const wxString& path, long long mostPixels) {
    Imf::RgbaInputFile file(path.utf8_string().c_str(), 1);
    const auto window = file.dataWindow();
    const long long w = (long long)window.max.x - window.min.x + 1;
    const long long h = (long long)window.max.y - window.min.y + 1;
    if (!IsFit(w, h, mostPixels)) return {};
    wxImage image(int(w), int(h), false);
    std::vector<Imf::Rgba> row(static_cast<size_t>(w));
    unsigned char* out = image.GetData();
    for (int y = window.min.y; y <= window.max.y; ++y) {
        // All rows stand at one place: a step of 0 bytes from row to row.
        file.setFrameBuffer(row.data() - window.min.x, 1, 0);
        file.readPixels(y);
        for (const Imf::Rgba& pixel : row)
            for (const float light : {float(pixel.r), float(pixel.g), float(pixel.b)})
                *out++ = Show(light);
    }
    return image;
}

/// Red, green and blue of one exponent, which four runs of bytes a line hold one behind the other (G. Ward,
/// "Real Pixels", Graphics Gems II); `at` is behind what is read. The bytes are known to be whole.
void ReadHdrLine(const std::string& bytes, size_t* pAt, std::vector<unsigned char>* pLine, size_t w) {
    size_t at = *pAt + 4; // two marks and the width
    for (size_t channel = 0; channel < 4; ++channel)
        for (size_t x = 0; x < w;) {
            const auto count = static_cast<unsigned char>(bytes[at++]);
            const bool bRepeated = count > 128;
            for (size_t left = bRepeated ? count - 128u : count; left > 0; --left, ++x) {
                if (x < w) (*pLine)[4 * x + channel] = static_cast<unsigned char>(bytes[at]);
                if (!bRepeated) ++at;
            }
            if (bRepeated) ++at;
        }
    *pAt = at;
}

wxImage ReadHdr(const std::string& bytes, int w, int h) {
    size_t at = bytes.find('\n', bytes.find("\n\n") + 2) + 1;
    const size_t width = static_cast<size_t>(w);
    const bool bPlain = bytes.size() == at + width * static_cast<size_t>(h) * 4;
    wxImage image(w, h, false);
    unsigned char* out = image.GetData();
    std::vector<unsigned char> line(4 * width);
    for (int y = 0; y < h; ++y) {
        if (bPlain) {
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), line.size(), line.begin());
            at += line.size();
        } else {
            ReadHdrLine(bytes, &at, &line, width);
        }
        for (size_t x = 0; x < width; ++x) {
            const float step = std::ldexp(1.0f, line[4 * x + 3] - 136);
            for (size_t k = 0; k < 3; ++k)
                *out++ = Show(step * (static_cast<float>(line[4 * x + k]) + 0.5f));
        }
    }
    return image;
}

} // namespace

wxImage ReadLinearPicture(const wxString& path, long long mostPixels) {
    std::string bytes;
    if (ReadWholeFile(path, kMostBytes, &bytes) != ReadFileResult::Ok) return {};
    const PictureHead_st head = ReadWholePicture(bytes);
    if (!IsFit(head.mW, head.mH, mostPixels)) return {};
    if (bytes.compare(0, 11, "#?RADIANCE\n") == 0) return ReadHdr(bytes, head.mW, head.mH);
    if (bytes.compare(0, 4, "v/1\x01") != 0) return {};
    try {
        return ReadExr(path, mostPixels);
    } catch (const std::exception&) { // the library's word for damaged files
        return {};
    }
}
