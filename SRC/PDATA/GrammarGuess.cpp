#include "PDATA/GrammarGuess.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

#include <wx/intl.h>

#include "PDATA/GuessParts.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr size_t kSample = 64 << 10;
constexpr size_t kMaxLines = 4000;
constexpr size_t kMaxItem = GrammerBase_cls::kMaxItem;

// Text has no control characters but blanks and line ends; bytes over 127 are letters of some alphabet.
bool IsText(const std::string& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) {
        const unsigned char code = static_cast<unsigned char>(c);
        return code >= 32 || IsBlank(static_cast<char>(code));
    });
}

bool IsWideText(const std::string& bytes) {
    return bytes.compare(0, 2, "\xff\xfe") == 0 || bytes.compare(0, 2, "\xfe\xff") == 0;
}

} // namespace

GrammarGuess_st GuessGrammar(const wxString& path, const GrammerBase_cls& present) {
    const FileStart_st start = ReadFileStart(path, kSample);
    GrammarGuess_st guess;
    if (!start.mStrError.empty())
        guess.mStrProblem = start.mStrError;
    else if (start.mBytes.empty())
        guess.mStrProblem = _("The file is empty.");
    else if (IsWideText(start.mBytes))
        guess.mStrProblem = _("This is text of two bytes a character. Save it as plain or UTF-8 text.");
    else
        guess = IsText(start.mBytes) ? GuessText(start, present) : GuessBinary(start, present);
    guess.mbFound = guess.mStrProblem.empty();
    if (guess.mHead.size() > kMaxItem || guess.mBody.size() > kMaxItem) {
        guess.mHead.clear();
        guess.mBody.clear();
    }
    return guess;
}

std::vector<std::string> SampleLines(const FileStart_st& start) {
    return SplitLines(start.mBytes, kMaxLines, static_cast<long long>(start.mBytes.size()) >= start.mSize);
}

std::optional<double> WordNumber(const std::string& word) {
    const char* first = word.c_str() + (word[0] == '+' ? 1 : 0);
    const char* last = word.c_str() + word.size();
    double number = 0;
    const auto scanned = std::from_chars(first, last, number);
    if (scanned.ptr != last || scanned.ec == std::errc::invalid_argument) return std::nullopt;
    return number;
}

std::optional<long long> WordInteger(const std::string& word) {
    const char* first = word.c_str() + (word[0] == '+' ? 1 : 0);
    const char* last = word.c_str() + word.size();
    long long number = 0;
    const auto scanned = std::from_chars(first, last, number);
    if (scanned.ptr != last || scanned.ec != std::errc()) return std::nullopt;
    return number;
}

std::vector<int> PackDummies(const std::vector<int>& codes, size_t first) {
    if (codes.size() <= kMaxItem) return codes;
    std::vector<int> packed(codes.begin(),
                            codes.begin() + static_cast<std::ptrdiff_t>(std::min(first, codes.size())));
    for (size_t i = packed.size(); i < codes.size();) {
        size_t run = 0;
        while (i + run < codes.size() && codes[i + run] == BODY_DUMMY)
            ++run;
        if (run == 0) packed.push_back(codes[i++]);
        i += run;
        packed.insert(packed.end(), run / 10, BODY_DUMMY10);
        packed.insert(packed.end(), run % 10 / 3, BODY_DUMMY3);
        packed.insert(packed.end(), run % 10 % 3, BODY_DUMMY);
    }
    return packed;
}

void DropLastDummies(std::vector<int>* pCodes) {
    while (!pCodes->empty() && pCodes->back() >= BODY_DUMMY && pCodes->back() <= BODY_DUMMY10)
        pCodes->pop_back();
}

std::vector<wxString> NumberNames(const std::vector<int>& body) {
    static const std::vector<wxString> sNames[] = {{"x", "y", "z"},
                                                   {"Vx", "Vy", "Vz"},
                                                   {"Dummy"},
                                                   std::vector<wxString>(3, "Dummy"),
                                                   std::vector<wxString>(10, "Dummy"),
                                                   {"Radius"},
                                                   {"ID"},
                                                   {"Type"},
                                                   {"Value1"}};
    std::vector<wxString> names;
    for (const int code : body)
        if (code >= BODY_XYZ && code <= BODY_VALUE1)
            names.insert(names.end(), sNames[code].begin(), sNames[code].end());
    return names;
}

void AddTextRecords(const std::vector<std::string>& lines, size_t first, GrammarGuess_st* pGuess) {
    const std::vector<wxString> names = NumberNames(pGuess->mBody);
    for (size_t i = first; i < lines.size() && pGuess->mRecords.size() < 3; ++i) {
        const Words words = SplitWords(lines[i]);
        std::vector<wxString> cells;
        for (size_t k = 0; k < std::min(names.size(), words.size()); ++k)
            cells.push_back(names[k] + "=" + wxString::FromUTF8(words[k].c_str()));
        pGuess->mRecords.push_back(cells);
    }
}
