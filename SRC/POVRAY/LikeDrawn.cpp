#include "POVRAY/LikeDrawn.h"

#include <algorithm>
#include <cstddef>

#include <wx/intl.h>

#include "COMMON/SafeFile.h"

namespace {

constexpr size_t kHead = 8;    // of a PNG
constexpr size_t kAround = 12; // of its chunks: length, name, check sum
constexpr size_t kMostBytes = size_t(1) << 32;

size_t ReadLength(const std::string& bytes, size_t at, size_t width) {
    size_t value = 0;
    for (size_t i = 0; i < width; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

bool StartsWith(const std::string& bytes, size_t at, const std::string& with) {
    return bytes.compare(at, with.size(), with) == 0;
}

bool IsUnwanted(const std::string& bytes, size_t at, size_t length) {
    const std::string name = bytes.substr(at + 4, 4);
    return name == "tIME" || name == "gAMA" ||
           (name == "tEXt" && length > 7 && StartsWith(bytes, at + 8, "Comment"));
}

std::string LikeDrawnPng(const std::string& bytes) {
    std::string rest = bytes.substr(0, kHead);
    size_t at = kHead;
    while (at + kAround <= bytes.size()) {
        const size_t length = ReadLength(bytes, at, 4);
        if (length > bytes.size() - at - kAround) return bytes; // it isn't whole
        if (!IsUnwanted(bytes, at, length)) rest.append(bytes, at, length + kAround);
        at += length + kAround;
    }
    return at == bytes.size() ? rest : bytes;
}

/// Without the comments in front of its light.
std::string LikeDrawnJpeg(const std::string& bytes) {
    std::string rest = bytes.substr(0, 2);
    size_t at = 2;
    while (at + 4 <= bytes.size() && bytes[at] == '\xff' && bytes[at + 1] != '\xda') {
        const size_t length = 2 + ReadLength(bytes, at + 2, 2);
        if (length < 4 || length > bytes.size() - at) return bytes;
        if (bytes[at + 1] != '\xfe') rest.append(bytes, at, length);
        at += length;
    }
    return rest + bytes.substr(at);
}

/// Without the lines of its head that start with `mark`. The head ends where `isHead` says so of a line.
template <class ISHEAD>
std::string WithoutLines(const std::string& bytes, const std::string& mark, const ISHEAD& isHead) {
    size_t at = bytes.find('\n') + 1;
    std::string rest = bytes.substr(0, at);
    for (size_t end = bytes.find('\n', at); end != std::string::npos; end = bytes.find('\n', at)) {
        if (!isHead(at, end)) break;
        if (!StartsWith(bytes, at, mark)) rest.append(bytes, at, end + 1 - at);
        at = end + 1;
    }
    return rest + bytes.substr(at);
}

std::string LikeDrawnPpm(const std::string& bytes) {
    return WithoutLines(bytes, "#", [&bytes](size_t at, size_t) { return bytes[at] == '#'; });
}

std::string LikeDrawnHdr(const std::string& bytes) {
    return WithoutLines(bytes, "CREATION_TIME=", [](size_t at, size_t end) { return end > at; });
}

/// Its places are counted from the file's begin: the date becomes as many blanks.
std::string LikeDrawnExr(std::string bytes) {
    const std::string mark("creation\0string\0", 16);
    const size_t at = bytes.substr(0, 4096).find(mark);
    if (at == std::string::npos || at + mark.size() + 4 > bytes.size()) return bytes;
    const size_t text = at + mark.size() + 4;
    const auto length = static_cast<unsigned char>(bytes[text - 4]); // the lowest byte of four
    const size_t end = std::min(text + length, bytes.size());
    std::fill(bytes.begin() + std::ptrdiff_t(text), bytes.begin() + std::ptrdiff_t(end), ' ');
    return bytes;
}

} // namespace

std::string LikeDrawn(const std::string& bytes) {
    if (StartsWith(bytes, 0, "\x89PNG\r\n\x1a\n")) return LikeDrawnPng(bytes);
    if (StartsWith(bytes, 0, "\xff\xd8\xff")) return LikeDrawnJpeg(bytes);
    if (StartsWith(bytes, 0, "P6\n")) return LikeDrawnPpm(bytes);
    if (StartsWith(bytes, 0, "#?RADIANCE\n")) return LikeDrawnHdr(bytes);
    if (StartsWith(bytes, 0, "v/1\x01")) return LikeDrawnExr(bytes);
    return bytes;
}

wxString MakeLikeDrawn(const wxString& path) {
    std::string bytes;
    if (ReadWholeFile(path, kMostBytes, &bytes) != ReadFileResult::Ok)
        return wxString::Format(_("%s can't be read"), path);
    const std::string rest = LikeDrawn(bytes);
    const wxString reason = rest == bytes ? wxString() : WriteFileSafely(path, rest, ToDisk::Later);
    return reason.empty() ? reason : wxString::Format(_("%s could not be written: %s"), path, reason);
}
