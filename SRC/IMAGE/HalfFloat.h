// Light as graphics cards keep it, 16 bits a number, into bytes of a picture.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The byte of each half float (1 sign, 5 exponent and 10 fraction bits, IEEE 754), as the plain ones or as
/// a picture's exposure want it.
using HalfBytes = std::array<unsigned char, 0x10000>;
/// 0 and less become 0, 1 and more 255, between them the nearest byte; what is no number becomes 0.
const HalfBytes& GetPlainBytes();
/// `count` pixels of RGBA, of which RGB become bytes.
void ConvertHalfPixels(const std::uint16_t* pHalf, unsigned char* pBytes, size_t count,
                       const HalfBytes& table);
/// Means, cut to whole numbers, of `count` squares of two by two pixels of RGBA in two rows.
void HalveHalfPixels(const std::uint16_t* pRow, const std::uint16_t* pNext, unsigned char* pBytes,
                     size_t count, const HalfBytes& table);
