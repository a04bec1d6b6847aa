// Numbers and words of other programs' text files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The whole text as a number, correctly rounded; Fortran's D counts as e, what is too large as infinite.
bool ReadNumber(std::string_view text, float* pValue);
bool ReadNumber(std::string_view text, double* pValue);
/// A whole number of up to 64 bits, with or without sign; 1.0 is one, too.
bool ReadNumber(std::string_view text, long long* pValue);

/// The next word between blanks; empty at the end. The text loses it.
std::string_view TakeWord(std::string_view* pText);
/// All words of it, in place of what the list holds; they point into the text.
void TakeWords(std::string_view text, std::vector<std::string_view>* pWords);
std::string_view Trim(std::string_view text);
std::vector<std::string> WordsOf(std::string_view text);
/// Fields between separators, blanks and quotes around them taken away.
void SplitFields(std::string_view line, char separator, std::vector<std::string_view>* pFields);
std::string LowerCase(std::string_view text);
bool StartsWith(std::string_view text, std::string_view start);
