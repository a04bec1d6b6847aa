// Fast number scanners for big text files whose numbers are plain, such as meshes. They know no exponents,
// look at no locale and read no byte behind the terminator or the text's NUL.
#pragma once

class AsciiReader_cls {
public:
    /// Advance to the next `wanted` before `end`; false and a null cursor when there is none.
    static bool SearchChar(const char** ppCursor, char wanted, const char* end);
    /// Skip blanks and a sign: -1 for "-", else 1; *ppRest stands behind.
    static int _space_sign(const char* text, const char** ppRest);
    /// Blanks, sign, digits, "." and digits. Digits past what 32 bits hold count as zeros, or are
    /// left out behind the point.
    static float fast_atof32(const char* text);
    /// Blanks, sign, digits; stays at the limits of int.
    static int fast_atoi(const char* text);
    /// Scan the number at the cursor, then move it behind the next terminator, or to the text's NUL.
    static float ReadFloat(const char** ppCursor, char terminator);
    static int ReadInt(const char** ppCursor, char terminator);
};
