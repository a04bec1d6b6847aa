// Numbers as text, digit for digit as sprintf writes them. What is no number is 0, and what is infinite the
// largest of float, as POV-Ray reads neither "nan" nor "inf".
#pragma once

#include <cstddef>
#include <string>

constexpr int kMostDecimals = 12;
/// Room for a float with kMostDecimals: sign, 39 digits, point.
constexpr size_t kMostFixed = 41 + kMostDecimals;

/// "%.*f" of a float, at most kMostDecimals. Writes up to kMostFixed characters, without a zero behind them.
/// \return what is behind the text.
char* PutFixed(char* p, float value, int decimals);
/// "%u". Writes up to 10 characters.
char* PutUnsigned(char* p, unsigned value);
/// "%.*f" of any double, whatever its length.
void AppendFixed(std::string* pText, double value, int decimals);
/// "%g".
void AppendGeneral(std::string* pText, double value);

/// How many decimals tell things apart that are so small: three at least, and more while a step of the last
/// one is above a hundredth of the smallest radius or a hundred-thousandth of the extent. What is 0, less, or
/// no number asks for nothing.
int GetNeededDecimals(double smallestRadius, double extent);
