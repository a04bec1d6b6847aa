// Light as graphics cards keep it, 16 bits a number, into bytes of a picture.
#pragma once

#include <cstddef>
#include <cstdint>

/// 0 and less become 0, 1 and more 255, between them the nearest byte; what is no number becomes 0. Half
/// floats of 1 sign, 5 exponent and 10 fraction bits (IEEE 754).
void ConvertHalfToBytes(const std::uint16_t* pHalf, unsigned char* pBytes, size_t count);
/// The same of `count` pixels of RGBA, of which RGB become bytes.
void ConvertHalfPixels(const std::uint16_t* pHalf, unsigned char* pBytes, size_t count);
