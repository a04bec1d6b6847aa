#include "COMMON/TextSplit.h"

#include <algorithm>

std::vector<std::string> SplitWords(const std::string& line) {
    std::vector<std::string> words;
    auto word = std::find_if_not(line.begin(), line.end(), IsBlank);
    while (word != line.end()) {
        const auto end = std::find_if(word, line.end(), IsBlank);
        words.emplace_back(word, end);
        word = std::find_if_not(end, line.end(), IsBlank);
    }
    return words;
}

std::string FirstWord(const std::string& line) {
    const auto word = std::find_if_not(line.begin(), line.end(), IsBlank);
    return std::string(word, std::find_if(word, line.end(), IsBlank));
}

std::vector<std::string> SplitLines(const std::string& text, size_t most, bool bWhole) {
    std::vector<std::string> lines;
    size_t pos = 0;
    while (pos < text.size() && lines.size() < most) {
        size_t end = text.find('\n', pos);
        if (end == std::string::npos) {
            if (!bWhole) break;
            end = text.size();
        }
        lines.push_back(text.substr(pos, end - pos));
        pos = end + 1;
    }
    return lines;
}

bool ReadTextLine(std::wistream& stream, std::wstring* pLine, size_t longest) {
    do {
        if (!std::getline(stream, *pLine)) return false;
    } while (pLine->size() > longest);
    while (!pLine->empty() && pLine->back() == L'\r')
        pLine->pop_back();
    return true;
}
