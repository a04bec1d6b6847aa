#include "IMPORT/ImportText.h"

#include <charconv>
#include <cstdint>
#include <cstdlib>

#include "COMMON/TextSplit.h"

namespace {

// strtod rounds rightly, too, but knows no end of the text and is slower.
float Strto(const char* p, float) { return std::strtof(p, nullptr); }
double Strto(const char* p, double) { return std::strtod(p, nullptr); }

template <class T>
bool ReadPlain(std::string_view text, T* pValue) {
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, *pValue);
    if (error == std::errc() && rest == end) return true;
    if (error == std::errc::result_out_of_range) {
        *pValue = Strto(std::string(text).c_str(), T());
        return rest == end;
    }
    return false;
}

template <class T>
bool ReadReal(std::string_view text, T* pValue) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    if (text.empty()) return false;
    if (ReadPlain(text, pValue)) return true;
    const size_t exponent = text.find_first_of("dD");
    if (exponent == std::string_view::npos || text.find_first_of("nN") != std::string_view::npos)
        return false;
    std::string plain(text);
    plain[exponent] = 'e';
    return ReadPlain(std::string_view(plain), pValue);
}

} // namespace

bool ReadNumber(std::string_view text, float* pValue) { return ReadReal(text, pValue); }
bool ReadNumber(std::string_view text, double* pValue) { return ReadReal(text, pValue); }

bool ReadNumber(std::string_view text, long long* pValue) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, *pValue);
    if (error == std::errc() && rest == end) return true;
    uint64_t large = 0;
    const auto [behind, wrong] = std::from_chars(text.data(), end, large);
    if (wrong == std::errc() && behind == end) {
        *pValue = static_cast<long long>(large);
        return true;
    }
    double value = 0;
    if (!ReadReal(text, &value) || !(value > -9e15 && value < 9e15)) return false;
    *pValue = static_cast<long long>(value);
    return static_cast<double>(*pValue) == value;
}

std::string_view TakeWord(std::string_view* pText) {
    size_t begin = 0;
    while (begin < pText->size() && IsBlank((*pText)[begin]))
        ++begin;
    size_t end = begin;
    while (end < pText->size() && !IsBlank((*pText)[end]))
        ++end;
    const std::string_view word = pText->substr(begin, end - begin);
    pText->remove_prefix(end);
    return word;
}

void TakeWords(std::string_view text, std::vector<std::string_view>* pWords) {
    pWords->clear();
    for (std::string_view word = TakeWord(&text); !word.empty(); word = TakeWord(&text))
        pWords->push_back(word);
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (std::string_view word = TakeWord(&text); !word.empty(); word = TakeWord(&text))
        words.emplace_back(word);
    return words;
}

void SplitFields(std::string_view line, char separator, std::vector<std::string_view>* pFields) {
    pFields->clear();
    for (bool bMore = true; bMore;) {
        const size_t end = line.find(separator);
        bMore = end != std::string_view::npos;
        std::string_view field = Trim(line.substr(0, end));
        if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
            field = Trim(field.substr(1, field.size() - 2));
        pFields->push_back(field);
        if (bMore) line.remove_prefix(end + 1);
    }
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}
