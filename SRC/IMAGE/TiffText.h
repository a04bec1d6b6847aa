// The texts of a TIFF file's first picture, of either byte order: what is shown (ImageDescription) and who
// made it (Software).
#pragma once

#include <string>

#include "IMAGE/PictureTexts.h"

/// Put both into the file, in the place of those that it had. Bytes that are no TIFF, and files that would
/// outgrow 4 GB, stay as they are. The texts hold no NUL.
void SetTiffTexts(const std::string& description, const std::string& software, std::string* pBytes);
bool IsTiff(const PictureFile_cls& file);
/// Those that are there.
void ReadTiffTexts(const PictureFile_cls& file, PictureText_st* pDescription, PictureText_st* pSoftware);
