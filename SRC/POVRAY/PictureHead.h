// Pictures of the formats that POV-Ray writes and nothing else here does: PPM, Radiance HDR and OpenEXR.
#pragma once

#include <string>

struct PictureHead_st {
    int mW = 0; ///< pixels
    int mH = 0;
    bool mbAlpha = false;
};

/// What the bytes of such a file are a picture of; a width of 0 where they are none, or not whole.
PictureHead_st ReadWholePicture(const std::string& bytes);
