// Text chunks of PNG files: the kind for UTF-8, which may be compressed ("iTXt"). Keys are of Latin letters.
#pragma once

#include <string>

#include "IMAGE/PictureTexts.h"

/// A chunk as it stands in a file; a long text is compressed. The text holds no NUL.
std::string MakePngText(const std::string& key, const std::string& text);
/// Put chunks before the pixels. Bytes that are no PNG stay as they are.
void InsertPngChunks(const std::string& chunks, std::string* pBytes);
bool IsPng(const PictureFile_cls& file);
/// The texts of the keys that are there, each the first of its key; those behind the pixels, too.
void ReadPngTexts(const PictureFile_cls& file, PictureTexts* pTexts);
