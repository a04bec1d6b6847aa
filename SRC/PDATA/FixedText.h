// Numbers with six digits behind the point, character by character what printf makes of "%f" in the C locale,
// many times faster.
#pragma once

/// The longest text of a float: sign, 39 digits, point, six digits.
constexpr int kLongestFixed = 48;

/// Write `value` at `pOut`; the end of the text. There must be room for kLongestFixed characters.
char* PutFixed(char* pOut, float value);
/// The same for an int.
char* PutInteger(char* pOut, int value);
