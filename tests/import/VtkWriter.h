// Files of VTK that the tests write: arrays in all forms that the format knows.
#pragma once

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

/// The bytes of numbers, in this machine's order or the other one.
template <class T>
std::string VtkBytes(const std::vector<T>& numbers, bool bSwap) {
    std::string bytes;
    for (const T& number : numbers) {
        char one[sizeof(T)];
        std::memcpy(one, &number, sizeof one);
        if (bSwap) std::reverse(one, one + sizeof one);
        bytes.append(one, sizeof one);
    }
    return bytes;
}

inline std::string VtkBase64(const std::string& bytes) {
    static const char* const kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 3) {
        unsigned group = 0;
        for (size_t k = 0; k < 3; ++k)
            group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        for (size_t k = 0; k < 4; ++k)
            text += i + k > bytes.size() ? '=' : kLetters[group >> (18 - 6 * k) & 63];
    }
    return text;
}

/// How an XML file holds its arrays.
struct VtkForm_st {
    bool mbBig = false;  ///< the highest byte first
    bool mbWide = false; ///< 64 bits before the bytes
    size_t mBlock = 0;   ///< bytes that zlib packs at once; 0: nothing is packed
    bool mbBase64 = true;

    std::string Head(const std::vector<uint64_t>& numbers) const {
        if (mbWide) return VtkBytes(numbers, mbBig);
        return VtkBytes(std::vector<uint32_t>(numbers.begin(), numbers.end()), mbBig);
    }
    /// An array with what stands before it.
    template <class T>
    std::string Pack(const std::vector<T>& numbers) const {
        const std::string bytes = VtkBytes(numbers, mbBig);
        const auto code = [this](const std::string& text) { return mbBase64 ? VtkBase64(text) : text; };
        if (mBlock == 0) return code(Head({bytes.size()}) + bytes);
        std::vector<uint64_t> head = {(bytes.size() + mBlock - 1) / mBlock, mBlock, bytes.size() % mBlock};
        std::string packed;
        for (size_t i = 0; i < bytes.size(); i += mBlock) {
            const std::string block = bytes.substr(i, mBlock);
            std::string out(compressBound(block.size()), '\0');
            uLongf size = out.size();
            compress(reinterpret_cast<Bytef*>(out.data()), &size,
                     reinterpret_cast<const Bytef*>(block.data()), block.size());
            head.push_back(size);
            packed += out.substr(0, size);
        }
        return code(Head(head)) + code(packed);
    }
    std::string Root(const std::string& type) const {
        return "<?xml version=\"1.0\"?>\n<VTKFile type=\"" + type + "\" version=\"1.0\" byte_order=\"" +
               (mbBig ? "BigEndian" : "LittleEndian") + "\"" + (mbWide ? " header_type=\"UInt64\"" : "") +
               (mBlock > 0 ? " compressor=\"vtkZLibDataCompressor\"" : "") + ">";
    }
};
