#include "COMMON/clsAsciiReader.h"

#include <climits>
#include <cstdint>
#include <cstring>

#include "COMMON/TextSplit.h"

namespace {

constexpr uint32_t kRoom = (UINT32_MAX - 9) / 10; // up to here another digit fits

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

void PassTerminator(const char** ppCursor, char terminator) {
    const char* cursor = *ppCursor;
    while (*cursor != '\0' && *cursor != terminator)
        ++cursor;
    *ppCursor = *cursor == '\0' ? cursor : cursor + 1;
}

} // namespace

bool AsciiReader_cls::SearchChar(const char** ppCursor, char wanted, const char* end) {
    const char* cursor = *ppCursor;
    *ppCursor = nullptr;
    if (!cursor || cursor >= end) return false;
    *ppCursor = static_cast<const char*>(std::memchr(cursor, wanted, static_cast<size_t>(end - cursor)));
    return *ppCursor != nullptr;
}

int AsciiReader_cls::_space_sign(const char* text, const char** ppRest) {
    while (IsBlank(*text))
        ++text;
    const int sign = *text == '-' ? -1 : 1;
    if (*text == '-' || *text == '+') ++text;
    *ppRest = text;
    return sign;
}

float AsciiReader_cls::fast_atof32(const char* text) {
    const int sign = _space_sign(text, &text);
    uint32_t digits = 0;
    double power = 1.0; // what the digits are to be divided by
    for (; IsDigit(*text); ++text) {
        if (digits <= kRoom)
            digits = 10 * digits + static_cast<uint32_t>(*text - '0');
        else
            power /= 10.0;
    }
    if (*text == '.')
        for (++text; IsDigit(*text) && digits <= kRoom; ++text) {
            digits = 10 * digits + static_cast<uint32_t>(*text - '0');
            power *= 10.0;
        }
    return static_cast<float>(sign * (static_cast<double>(digits) / power));
}

int AsciiReader_cls::fast_atoi(const char* text) {
    const int sign = _space_sign(text, &text);
    long long number = 0;
    for (; IsDigit(*text); ++text) {
        number = 10 * number + (*text - '0');
        if (number > INT_MAX) return sign < 0 ? INT_MIN : INT_MAX;
    }
    return static_cast<int>(sign * number);
}

float AsciiReader_cls::ReadFloat(const char** ppCursor, char terminator) {
    const float value = fast_atof32(*ppCursor);
    PassTerminator(ppCursor, terminator);
    return value;
}

int AsciiReader_cls::ReadInt(const char** ppCursor, char terminator) {
    const int value = fast_atoi(*ppCursor);
    PassTerminator(ppCursor, terminator);
    return value;
}
