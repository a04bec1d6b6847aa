#include "POVRAY/PngChunks.h"

#include <cstdint>

#include <wx/intl.h>

#include "COMMON/SafeFile.h"

namespace {

constexpr size_t kHead = 8;    // of the file
constexpr size_t kAround = 12; // of a chunk: length, name, check sum
constexpr size_t kMostBytes = size_t(1) << 31;

uint32_t ReadLength(const std::string& bytes, size_t at) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

bool IsUnwanted(const std::string& bytes, size_t at, size_t length) {
    const std::string name = bytes.substr(at + 4, 4);
    return name == "tIME" || name == "gAMA" ||
           (name == "tEXt" && length > 7 && bytes.compare(at + 8, 7, "Comment") == 0);
}

} // namespace

std::string LikeDrawnPng(const std::string& bytes) {
    if (bytes.compare(0, kHead, "\x89PNG\r\n\x1a\n") != 0) return bytes;
    std::string rest = bytes.substr(0, kHead);
    size_t at = kHead;
    while (at + kAround <= bytes.size()) {
        const size_t length = ReadLength(bytes, at);
        if (length > bytes.size() - at - kAround) return bytes; // it isn't whole
        if (!IsUnwanted(bytes, at, length)) rest.append(bytes, at, length + kAround);
        at += length + kAround;
    }
    return at == bytes.size() ? rest : bytes;
}

wxString MakeLikeDrawn(const wxString& path) {
    std::string bytes;
    if (ReadWholeFile(path, kMostBytes, &bytes) != ReadFileResult::Ok)
        return wxString::Format(_("%s can't be read"), path);
    const std::string rest = LikeDrawnPng(bytes);
    return rest.size() == bytes.size() ? wxString() : WriteFileSafely(path, rest, ToDisk::Later);
}
