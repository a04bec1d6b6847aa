// Text without names: lines of numbers behind a head in which one line tells how many there are.
#include <algorithm>
#include <cmath>
#include <set>

#include <wx/intl.h>

#include "PDATA/GuessParts.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr size_t kMaxHead = 40;  // lines in which the first particle is looked for
constexpr size_t kMaxRows = 200; // looked at to tell what a column holds

/// What the rows of one column have in common.
struct Column_st {
    bool mbNumber = true;
    bool mbInteger = true;
    bool mbConsecutive = true; ///< each is one more than the one before
    bool mbDistinct = true;
    double mMin = 0, mMax = 0;
    bool IsZero() const { return mbNumber && mMin == 0 && mMax == 0; }
};

bool IsDataLine(const Words& words) {
    return std::count_if(words.begin(), words.end(),
                         [](const std::string& word) { return WordNumber(word).has_value(); }) >= 3;
}

// The first line from which on a few lines have the same number of words, three numbers at least.
size_t FindFirstData(const std::vector<std::string>& lines) {
    for (size_t i = 0; i < std::min(lines.size(), kMaxHead); ++i) {
        const Words words = SplitWords(lines[i]);
        bool bData = IsDataLine(words);
        for (size_t k = i + 1; bData && k < std::min(i + 4, lines.size()); ++k) {
            const Words next = SplitWords(lines[k]);
            bData = next.size() == words.size() && IsDataLine(next);
        }
        if (bData) return i;
    }
    return lines.size();
}

// How many lines of particles the file has; by the mean length of the sample's when it goes on.
double EstimateRows(const FileStart_st& start, const std::vector<std::string>& lines, size_t first) {
    size_t rows = 0, head = 0, body = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        (i < first ? head : body) += lines[i].size() + 1;
        if (i >= first && !SplitWords(lines[i]).empty()) ++rows;
    }
    const double length = static_cast<double>(body) / static_cast<double>(rows);
    return std::round(static_cast<double>(start.mSize - static_cast<long long>(head)) / length);
}

// One code for each line of the head; empty when no line is the count. That is the one nearest to the number
// of lines: a file may hold several snapshots, or end early.
std::vector<int> GuessHead(const FileStart_st& start, const std::vector<std::string>& lines, size_t first) {
    std::vector<int> head(first, HEAD_DUMMY);
    const double rows = EstimateRows(start, lines, first);
    size_t count = first;
    double nearest = rows;
    for (size_t i = 0; i < first; ++i) {
        const Words words = SplitWords(lines[i]);
        const auto number = words.empty() ? std::nullopt : WordInteger(words[0]);
        if (!number || *number <= 0 || static_cast<double>(*number) > 1.25 * rows + 2) continue;
        const double distance = std::abs(static_cast<double>(*number) - rows);
        if (distance >= nearest) continue;
        nearest = distance;
        count = i;
    }
    if (count == first) return {};
    head[count] = HEAD_NUMBER;
    for (size_t i = 0; i < first; ++i) {
        const Words words = SplitWords(lines[i]);
        if (i == count || words.size() != 1 || !WordNumber(words[0])) continue;
        head[i] = HEAD_TIME;
        break;
    }
    return head;
}

std::vector<Column_st> LookAtColumns(const std::vector<std::string>& lines, size_t first) {
    std::vector<Column_st> columns(SplitWords(lines[first]).size());
    std::vector<std::set<long long>> seen(columns.size());
    std::vector<long long> before(columns.size(), 0);
    for (size_t i = first; i < std::min(lines.size(), first + kMaxRows); ++i) {
        const Words words = SplitWords(lines[i]);
        for (size_t k = 0; k < std::min(columns.size(), words.size()); ++k) {
            Column_st& column = columns[k];
            const auto number = WordNumber(words[k]);
            const auto integer = WordInteger(words[k]);
            column.mbNumber = column.mbNumber && number;
            column.mbInteger = column.mbInteger && integer;
            const long long value = integer.value_or(0);
            column.mbDistinct = column.mbDistinct && seen[k].insert(value).second;
            column.mbConsecutive = column.mbConsecutive &&
                                   (i == first || (integer && value > before[k] && value - 1 == before[k]));
            before[k] = value;
            column.mMin = i == first ? number.value_or(0) : std::min(column.mMin, number.value_or(0));
            column.mMax = i == first ? number.value_or(0) : std::max(column.mMax, number.value_or(0));
        }
    }
    return columns;
}

/// Gives each column a meaning by what it holds.
class ColumnGuess_cls {
public:
    ColumnGuess_cls(const std::vector<Column_st>& columns, size_t rows) : mColumns(columns), mRows(rows) {}

    std::vector<int> Guess() {
        // With all three fractional, then with whole numbers among them, as on a lattice.
        const size_t pos = FindTriple(2, 0) < mColumns.size() ? FindTriple(2, 0) : FindTriple(0, 0);
        const size_t vel = pos < mColumns.size() ? FindVelocity(pos + 3) : mColumns.size();
        for (size_t i = 0; i < mColumns.size() && mColumns[i].mbNumber;) {
            const bool bTriple = i == pos || i == vel;
            mBody.push_back(i == pos ? BODY_XYZ : i == vel ? BODY_VXYZ : GuessScalar(mColumns[i]));
            i += bTriple ? 3 : 1;
        }
        DropLastDummies(&mBody);
        return PackDummies(mBody, 0);
    }

private:
    bool IsId(const Column_st& column) const {
        return mRows > 2 && column.mbInteger && column.mbDistinct && column.mMin >= 0 &&
               (column.mbConsecutive || column.mMax > 9);
    }
    // Three numbers side by side of which `fractions` have a point or an exponent and none counts up.
    size_t FindTriple(int fractions, size_t from) const {
        for (size_t i = from; i + 3 <= mColumns.size(); ++i) {
            int number = 0;
            bool bFits = true;
            for (size_t k = i; k < i + 3; ++k) {
                const Column_st& column = mColumns[k];
                number += column.mbInteger ? 0 : 1;
                bFits = bFits && column.mbNumber && !(column.mbInteger && IsId(column));
                // A column of small whole numbers may be the type, one of zeros a flat direction.
                bFits = bFits && (!column.mbInteger || column.IsZero() || fractions == 0);
            }
            if (bFits && number >= fractions) return i;
        }
        return mColumns.size();
    }
    size_t FindVelocity(size_t from) const {
        const size_t found = FindTriple(2, from);
        if (found < mColumns.size()) return found;
        for (size_t i = from; i + 3 <= mColumns.size(); ++i)
            if (mColumns[i].IsZero() && mColumns[i + 1].IsZero() && mColumns[i + 2].IsZero()) return i;
        return mColumns.size();
    }
    int GuessScalar(const Column_st& column) const {
        if (column.mbInteger && IsId(column) && !Has(BODY_ID)) return BODY_ID;
        if (column.mbInteger && column.mMin >= 0 && column.mMax <= 9 && !Has(BODY_TYPE)) return BODY_TYPE;
        return column.mbInteger || Has(BODY_VALUE1) ? BODY_DUMMY : BODY_VALUE1;
    }
    bool Has(int code) const { return std::find(mBody.begin(), mBody.end(), code) != mBody.end(); }

    const std::vector<Column_st>& mColumns;
    size_t mRows;
    std::vector<int> mBody;
};

// Have the lines as many numbers as the record, and whole ones where it wants them?
bool DoesBodyFit(const std::vector<int>& body, const std::vector<Column_st>& columns) {
    const std::vector<wxString> names = NumberNames(body);
    if (names.size() != columns.size() || names.empty()) return false;
    for (size_t i = 0; i < names.size(); ++i) {
        if (!columns[i].mbNumber) return false;
        if (!columns[i].mbInteger && (names[i] == "ID" || names[i] == "Type")) return false;
    }
    return true;
}

void GuessBody(const std::vector<std::string>& lines, size_t first, const GrammerBase_cls& present,
               GrammarGuess_st* pGuess) {
    const std::vector<Column_st> columns = LookAtColumns(lines, first);
    const std::vector<int> defaultBody{BODY_XYZ, BODY_VXYZ, BODY_RADIUS, BODY_ID, BODY_TYPE, BODY_VALUE1};
    if (DoesBodyFit(present.GetBodyGrammer(), columns)) {
        pGuess->mBody = present.GetBodyGrammer();
        pGuess->mReasons.push_back(_("The columns are those of the present format."));
        return;
    }
    if (DoesBodyFit(defaultBody, columns)) {
        pGuess->mBody = defaultBody;
        pGuess->mReasons.push_back(_("The columns are those of the default format."));
        return;
    }
    pGuess->mBody = ColumnGuess_cls(columns, std::min(lines.size() - first, kMaxRows)).Guess();
    pGuess->mReasons.push_back(
        _("What the columns hold was told by their numbers: look at the records below."));
    const auto& body = pGuess->mBody;
    if (std::find(body.begin(), body.end(), BODY_XYZ) != body.end()) return;
    const size_t word =
        static_cast<size_t>(std::find_if(columns.begin(), columns.end(),
                                         [](const Column_st& column) { return !column.mbNumber; }) -
                            columns.begin());
    pGuess->mStrProblem =
        word < columns.size()
            ? wxString::Format(_("Column %zu of the lines holds words (\"%s\"): the reader takes "
                                 "numbers only, and the positions stand behind it."),
                               word + 1, wxString::FromUTF8(SplitWords(lines[first])[word].c_str()))
            : _("No three columns side by side look like positions.");
}

// Comments may stand before the sections, but no particles.
bool HasItemSections(const std::vector<std::string>& lines) {
    for (size_t i = 0; i < std::min(lines.size(), kMaxHead); ++i)
        if (lines[i].rfind("ITEM:", 0) == 0) return true;
    return false;
}

} // namespace

GrammarGuess_st GuessText(const FileStart_st& start, const GrammerBase_cls& present) {
    const std::vector<std::string> lines = SampleLines(start);
    if (HasItemSections(lines)) return GuessItemText(lines);
    GrammarGuess_st guess;
    guess.mDataType = DATA_TEXT;
    const size_t first = FindFirstData(lines);
    if (first >= lines.size()) {
        guess.mStrProblem =
            _("The file is text, but its lines don't hold three or more numbers, separated by blanks.");
        return guess;
    }
    const std::vector<int> head = GuessHead(start, lines, first);
    if (head.empty()) {
        guess.mStrProblem = _("No line before the first particle tells how many particles there are.");
        return guess;
    }
    guess.mHead = PackHead(head, &guess);
    guess.mReasons.push_back(wxString::Format(
        _("Line %zu is the first particle's; the particle count stands before it."), first + 1));
    GuessBody(lines, first, present, &guess);
    if (guess.mStrProblem.empty()) guess.mStrProblem = CheckItemCounts(guess);
    if (guess.mStrProblem.empty()) AddTextRecords(lines, first, &guess);
    return guess;
}
