#include "IMAGE/PngText.h"

#include <zlib.h>

#include <algorithm>

#include "IMAGE/PictureOrigin.h"

namespace {

constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";
constexpr size_t kSignatureBytes = 8;
constexpr size_t kHeaderEnd = 33;  // signature and the first chunk, which is always the same
constexpr size_t kFrameBytes = 12; // of a chunk: length and kind before it, checksum behind
constexpr size_t kLongestKey = 79; // as the format has it
constexpr size_t kWorthSmaller = 1024;
constexpr size_t kPiece = 65536;
constexpr size_t kMostChunks = 1000000; // of pixels in small pieces, too

void PutNumber(std::uint32_t value, std::string* pBytes) {
    for (int shift = 24; shift >= 0; shift -= 8)
        *pBytes += char(value >> shift & 0xff);
}

std::uint32_t GetNumber(const std::string& bytes, size_t at) {
    std::uint32_t value = 0;
    for (size_t k = 0; k < 4; ++k)
        value = value << 8 | static_cast<unsigned char>(bytes[at + k]);
    return value;
}

const Bytef* AsBytes(const char* pText) { return reinterpret_cast<const Bytef*>(pText); }

/// Of a chunk's kind and data.
std::uint32_t Checksum(const char* pBytes, size_t length) {
    return std::uint32_t(crc32_z(crc32_z(0, nullptr, 0), AsBytes(pBytes), length));
}

/// Empty when that fails.
std::string Compress(const std::string& text) {
    uLongf length = compressBound(uLong(text.size()));
    std::string bytes(length, '\0');
    if (compress2(reinterpret_cast<Bytef*>(bytes.data()), &length, AsBytes(text.data()), uLong(text.size()),
                  Z_BEST_COMPRESSION) != Z_OK)
        return std::string();
    bytes.resize(length);
    return bytes;
}

/// Empty, or what is wrong with it. Stops as soon as there is more than may be.
wxString Inflate(const char* pBytes, size_t length, std::string* pText) {
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) return SayDamaged();
    stream.next_in = const_cast<Bytef*>(AsBytes(pBytes));
    stream.avail_in = uInt(length);
    int state = Z_OK;
    std::string piece(kPiece, '\0');
    while (state == Z_OK && pText->size() <= kLongestOrigin) {
        stream.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_out = uInt(piece.size());
        state = inflate(&stream, Z_NO_FLUSH);
        pText->append(piece, 0, piece.size() - stream.avail_out);
    }
    inflateEnd(&stream);
    if (pText->size() > kLongestOrigin) return SayTooLong();
    return state == Z_STREAM_END ? wxString() : SayDamaged();
}

/// A chunk's data: key, two flags, language, key in that language, text.
wxString TakeText(const std::string& data, std::string* pText) {
    size_t at = data.find('\0') + 1;
    if (at == 0 || at + 2 > data.size()) return SayDamaged();
    const char compressed = data[at];
    const char method = data[at + 1];
    at += 2;
    for (int skipped = 0; skipped < 2; ++skipped) {
        at = data.find('\0', at) + 1;
        if (at == 0) return SayDamaged();
    }
    if (compressed == 1 && method == 0) return Inflate(data.data() + at, data.size() - at, pText);
    if (compressed != 0) return SayDamaged();
    *pText = data.substr(at);
    return wxString();
}

/// The key of a text chunk; empty for another chunk.
std::string GetKey(const PictureFile_cls& file, std::uint64_t at, size_t length) {
    std::string head;
    const std::uint64_t left = file.GetSize() - at;
    const auto some = size_t(std::min<std::uint64_t>({left, kLongestKey + 1, length}));
    if (!file.Read(at, some, &head)) return std::string();
    return head.find('\0') == std::string::npos ? std::string() : head.substr(0, head.find('\0'));
}

wxString ReadChunk(const PictureFile_cls& file, std::uint64_t at, size_t length, std::string* pText) {
    if (length > kLongestOrigin) return SayTooLong();
    std::string bytes; // kind, data, checksum
    if (!file.Read(at + 4, length + 8, &bytes)) return SayCutOff();
    if (Checksum(bytes.data(), length + 4) != GetNumber(bytes, length + 4)) return SayDamaged();
    return TakeText(bytes.substr(4, length), pText);
}

} // namespace

std::string MakePngText(const std::string& key, const std::string& text) {
    const std::string packed = text.size() > kWorthSmaller ? Compress(text) : std::string();
    std::string chunk;
    std::string data = "iTXt" + key;
    data += '\0';
    data += packed.empty() ? '\0' : '\1';
    data.append(3, '\0'); // the one method; no language
    data += packed.empty() ? text : packed;
    PutNumber(std::uint32_t(data.size() - 4), &chunk);
    chunk += data;
    PutNumber(Checksum(data.data(), data.size()), &chunk);
    return chunk;
}

void InsertPngChunks(const std::string& chunks, std::string* pBytes) {
    if (pBytes->size() < kHeaderEnd || pBytes->compare(0, kSignatureBytes, kSignature) != 0) return;
    pBytes->insert(kHeaderEnd, chunks);
}

bool IsPng(const PictureFile_cls& file) {
    std::string bytes;
    return file.Read(0, kSignatureBytes, &bytes) && bytes == kSignature;
}

void ReadPngTexts(const PictureFile_cls& file, PictureTexts* pTexts) {
    std::uint64_t at = kSignatureBytes;
    std::string head;
    for (size_t i = 0; i < kMostChunks && file.Read(at, 8, &head); ++i) {
        const size_t length = GetNumber(head, 0);
        const bool bText = head.compare(4, 4, "iTXt") == 0;
        const auto wanted = bText ? pTexts->find(GetKey(file, at + 8, length)) : pTexts->end();
        if (wanted != pTexts->end() && wanted->second.mText.empty() && wanted->second.mTrouble.empty())
            wanted->second.mTrouble = ReadChunk(file, at, length, &wanted->second.mText);
        at += kFrameBytes + length;
    }
}
