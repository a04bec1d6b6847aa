#include "CONFITEM/ConfNumber.h"

#include <charconv>
#include <clocale>
#include <cstdlib>

#include <locale.h>

namespace {

template <class... FORMAT>
wxString ToText(FORMAT... format) {
    char buffer[64]; // the longest is -FLT_MAX with six decimals, 47 characters
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, format...);
    return wxString::FromAscii(buffer, static_cast<size_t>(end.ptr - buffer));
}

locale_t CLocale() {
    static const locale_t sLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return sLocale;
}

long ToLong(const wxString& text) { return strtol(text.ToAscii(), nullptr, 10); }
double ToDouble(const wxString& text) { return strtod_l(text.ToAscii(), nullptr, CLocale()); }

} // namespace

wxString ConfNumberToText(int value) { return ToText(value); }
wxString ConfNumberToText(unsigned value) { return ToText(value); }
wxString ConfNumberToText(float value) { return ToText(value, std::chars_format::fixed, 6); }
wxString ConfNumberToText(double value) { return ToText(value, std::chars_format::general, 6); }
wxString ConfNumberToText(bool value) { return value ? "1" : "0"; }

template <>
int ConfNumberFromText<int>(const wxString& text) {
    return static_cast<int>(ToLong(text));
}
template <>
unsigned ConfNumberFromText<unsigned>(const wxString& text) {
    return static_cast<unsigned>(ToLong(text));
}
template <>
float ConfNumberFromText<float>(const wxString& text) {
    return static_cast<float>(ToDouble(text));
}
template <>
double ConfNumberFromText<double>(const wxString& text) {
    return ToDouble(text);
}
template <>
bool ConfNumberFromText<bool>(const wxString& text) {
    return ToLong(text) != 0;
}
