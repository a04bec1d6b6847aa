#include "PDATA/GuessBox.h"

#include <algorithm>
#include <cmath>

#include "PDATA/GuessParts.h"

namespace {

using Numbers = std::vector<double>;

// The numbers at the start of a line.
Numbers ReadNumbers(const std::string& line) {
    Numbers numbers;
    for (const std::string& word : SplitWords(line)) {
        const auto number = WordNumber(word);
        if (!number || !std::isfinite(*number)) break;
        numbers.push_back(*number);
    }
    return numbers;
}

// The first two columns bound all corners of the slanted box, the third is xy, xz or yz.
void SetSlanted(const Numbers (&rows)[3], GuessBox_st* pBox) {
    const double xy = rows[0][2], xz = rows[1][2], yz = rows[2][2];
    const double lowX = rows[0][0] - std::min({0.0, xy, xz, xy + xz});
    const double highX = rows[0][1] - std::max({0.0, xy, xz, xy + xz});
    const double lowY = rows[1][0] - std::min(0.0, yz);
    const double highY = rows[1][1] - std::max(0.0, yz);
    pBox->mVector = {{{highX - lowX, 0, 0}, {xy, highY - lowY, 0}, {xz, yz, rows[2][1] - rows[2][0]}}};
}

// "pp", "ff", "pf": one word an axis, a letter for each of its two sides.
void ReadFlags(const Words& words, GuessBox_st* pBox) {
    std::vector<bool> flags;
    for (const std::string& word : words)
        if (word.size() <= 2 && word.find_first_not_of("pfsm") == std::string::npos)
            flags.push_back(word.find_first_not_of('p') == std::string::npos);
    pBox->mbTold = flags.size() == 3;
    if (pBox->mbTold) std::copy(flags.begin(), flags.end(), pBox->mbPeriodic.begin());
}

std::optional<GuessBox_st> FromBounds(const std::vector<std::string>& lines, size_t title) {
    if (title + 3 >= lines.size()) return std::nullopt;
    const Words words = SplitWords(lines[title]);
    const auto has = [&words](const char* word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    };
    Numbers rows[3];
    for (size_t k = 0; k < 3; ++k)
        rows[k] = ReadNumbers(lines[title + 1 + k]);
    const size_t least = has("abc") ? 4 : has("xy") ? 3 : 2;
    if (std::any_of(rows, rows + 3, [least](const Numbers& row) { return row.size() < least; }))
        return std::nullopt;
    GuessBox_st box;
    if (has("xy"))
        SetSlanted(rows, &box);
    else
        for (size_t k = 0; k < 3; ++k) {
            if (has("abc"))
                std::copy_n(rows[k].begin(), 3, box.mVector[k].begin());
            else
                box.mVector[k][k] = rows[k][1] - rows[k][0];
        }
    ReadFlags(words, &box);
    return box;
}

// The text between the quotes behind `key`; empty when there is none.
std::string Quoted(const std::string& line, const std::string& key) {
    const size_t begin = line.find(key + "=\"");
    if (begin == std::string::npos) return std::string();
    const size_t first = begin + key.size() + 2;
    const size_t end = line.find('"', first);
    return end == std::string::npos ? std::string() : line.substr(first, end - first);
}

std::optional<GuessBox_st> FromLattice(const std::string& line) {
    const Numbers numbers = ReadNumbers(Quoted(line, "Lattice"));
    if (numbers.size() != 9) return std::nullopt;
    GuessBox_st box;
    for (size_t i = 0; i < 9; ++i)
        box.mVector[i / 3][i % 3] = numbers[i];
    const Words flags = SplitWords(Quoted(line, "pbc"));
    box.mbTold = flags.size() == 3;
    for (size_t k = 0; box.mbTold && k < 3; ++k)
        box.mbPeriodic[k] = flags[k] == "T" || flags[k] == "1";
    return box;
}

double Volume(const GuessBox_st& box) {
    const auto& [a, b, c] = box.mVector;
    return a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

} // namespace

bool GuessBox_st::IsSlanted() const {
    for (size_t k = 0; k < 3; ++k)
        for (size_t i = 0; i < 3; ++i)
            if (i != k && mVector[k][i] != 0.0) return true;
    return false;
}

std::optional<GuessBox_st> FindGuessBox(const std::vector<std::string>& headLines) {
    std::optional<GuessBox_st> box;
    for (size_t i = 0; i < headLines.size() && !box; ++i)
        box = headLines[i].rfind("ITEM: BOX BOUNDS", 0) == 0 ? FromBounds(headLines, i)
                                                             : FromLattice(headLines[i]);
    if (box && (!std::isfinite(Volume(*box)) || Volume(*box) == 0.0)) return std::nullopt;
    return box;
}
