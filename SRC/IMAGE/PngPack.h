// PNG files packed fast, for films whose pictures would else wait for the packing.
#pragma once

#include <string>

/// The bytes of a PNG file of w by h pixels, rows from the top: three bytes a pixel, and with `pAlpha` (null:
/// none) one of straight alpha. The pixels are those that went in, without filters; the same picture has the
/// same bytes. False, and nothing changed: this program was built without the library that packs, the picture
/// is too large to be packed at once, or memory is short.
bool PackPNG(const unsigned char* pRGB, const unsigned char* pAlpha, int w, int h, std::string* pBytes);
