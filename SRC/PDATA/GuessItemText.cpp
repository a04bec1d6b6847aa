// Text with "ITEM:" sections: the sections make the header, the names behind "ITEM: ATOMS" the columns.
#include <algorithm>
#include <map>

#include <wx/intl.h>

#include "PDATA/GuessParts.h"
#include "PDATA/clsGrammerBase.h"

namespace {

bool StartsWith(const std::string& line, const char* text) { return line.rfind(text, 0) == 0; }

/// The header's lines as one code each, and where the particles begin.
struct Sections_st {
    std::vector<int> mCodes;
    size_t mFirstParticle = 0;
    Words mColumns;
    wxString mStrProblem;
};

Sections_st ReadSections(const std::vector<std::string>& lines) {
    Sections_st sections;
    int next = HEAD_DUMMY; // what the line behind a section's title holds
    for (size_t i = 0; i < lines.size(); ++i) {
        const bool bTitle = StartsWith(lines[i], "ITEM:");
        sections.mCodes.push_back(bTitle ? HEAD_DUMMY : next);
        next = HEAD_DUMMY;
        if (StartsWith(lines[i], "ITEM: TIMESTEP")) next = HEAD_TIME;
        if (StartsWith(lines[i], "ITEM: NUMBER OF ATOMS")) next = HEAD_NUMBER;
        if (!StartsWith(lines[i], "ITEM: ATOMS")) continue;
        const Words words = SplitWords(lines[i]);
        sections.mColumns.assign(words.begin() + 2, words.end());
        sections.mFirstParticle = i + 1;
        break;
    }
    const auto& codes = sections.mCodes;
    if (sections.mFirstParticle == 0)
        sections.mStrProblem = _("The header has no \"ITEM: ATOMS\" line with the names of the columns.");
    else if (std::find(codes.begin(), codes.end(), HEAD_NUMBER) == codes.end())
        sections.mStrProblem =
            _("The header has no \"ITEM: NUMBER OF ATOMS\" section, so the count is unknown.");
    return sections;
}

// Codes of the columns' names; triples stand side by side or nowhere.
int CodeOfName(const std::string& name) {
    static const std::map<std::string, int> sCodes = {
        {"id", BODY_ID}, {"type", BODY_TYPE}, {"radius", BODY_RADIUS}};
    const auto found = sCodes.find(name);
    return found == sCodes.end() ? BODY_DUMMY : found->second;
}

bool IsTriple(const Words& columns, size_t at, const Words& names) {
    return at + 3 <= columns.size() &&
           std::equal(names.begin(), names.end(), columns.begin() + static_cast<std::ptrdiff_t>(at));
}

// Names that are positions or velocities one by one, image flags, or words: none of them a Value1.
bool IsNoScalar(const std::string& name) {
    static const Words sNames = {"x",  "y",   "z",       "xu",  "yu",   "zu",    "xs", "ys",
                                 "zs", "xsu", "ysu",     "zsu", "vx",   "vy",    "vz", "ix",
                                 "iy", "iz",  "element", "id",  "type", "radius"};
    return std::find(sNames.begin(), sNames.end(), name) != sNames.end();
}

/// Reads the columns' names from left to right into a body list.
class ColumnReader_cls {
public:
    ColumnReader_cls(const std::vector<std::string>& lines, const Sections_st& sections,
                     GrammarGuess_st* pGuess)
        : mLines(lines), mSections(sections), mColumns(sections.mColumns), mGuess(*pGuess) {}

    void Read() {
        for (size_t at = 0; at < mColumns.size();)
            at += Take(at);
        if (Has(BODY_XYZ)) return;
        mGuess.mStrProblem =
            _("No columns x, y and z stand side by side in this order, so the positions can't be "
              "read. The columns are: ") +
            Joined();
    }

private:
    size_t Take(size_t at) {
        static const Words sPositions[] = {
            {"x", "y", "z"}, {"xu", "yu", "zu"}, {"xs", "ys", "zs"}, {"xsu", "ysu", "zsu"}};
        for (const Words& names : sPositions)
            if (!Has(BODY_XYZ) && IsTriple(mColumns, at, names)) {
                mGuess.mbFractions = names[0][1] == 's';
                if (mGuess.mbFractions)
                    Tell(_("The positions (%s) are fractions of the box: scale them in the data loader."),
                         names[0]);
                return Add(BODY_XYZ, 3);
            }
        if (!Has(BODY_VXYZ) && IsTriple(mColumns, at, {"vx", "vy", "vz"})) return Add(BODY_VXYZ, 3);
        const std::string& name = mColumns[at];
        const int code = CodeOfName(name);
        if (code != BODY_DUMMY && !Has(code)) return Add(code, 1);
        if (IsTypeVariable(at)) {
            Tell(_("The column \"%s\" holds small whole numbers and becomes the type."), name);
            return Add(BODY_TYPE, 1);
        }
        if (Has(BODY_VALUE1) || IsNoScalar(name)) return Add(BODY_DUMMY, 1);
        Tell(_("The column \"%s\" becomes Value1."), name);
        return Add(BODY_VALUE1, 1);
    }
    // Types that were worked out by a variable of the simulation's input.
    bool IsTypeVariable(size_t at) const {
        if (!StartsWith(mColumns[at], "v_") || Has(BODY_TYPE)) return false;
        if (std::find(mColumns.begin(), mColumns.end(), "type") != mColumns.end()) return false;
        for (size_t i = mSections.mFirstParticle; i < std::min(mLines.size(), mSections.mFirstParticle + 200);
             ++i) {
            const Words words = SplitWords(mLines[i]);
            const auto integer = at < words.size() ? WordInteger(words[at]) : std::nullopt;
            if (!integer || *integer < 0 || *integer > 9) return false;
        }
        return true;
    }
    size_t Add(int code, size_t columns) {
        mGuess.mBody.push_back(code);
        return columns;
    }
    void Tell(const wxString& format, const std::string& name) {
        wxString text = format;
        text.Replace("%s", wxString::FromUTF8(name.c_str()));
        mGuess.mReasons.push_back(text);
    }
    bool Has(int code) const {
        return std::find(mGuess.mBody.begin(), mGuess.mBody.end(), code) != mGuess.mBody.end();
    }
    wxString Joined() const {
        wxString text;
        for (const std::string& name : mColumns)
            text += (text.empty() ? "" : " ") + wxString::FromUTF8(name.c_str());
        return text;
    }
    const std::vector<std::string>& mLines;
    const Sections_st& mSections;
    const Words& mColumns;
    GrammarGuess_st& mGuess;
};

// A word in a line ends the reading of it: such a column must be the first that nobody needs.
void CutAtWords(const std::vector<std::string>& lines, const Sections_st& sections, GrammarGuess_st* pGuess) {
    if (sections.mFirstParticle >= lines.size()) return;
    const Words words = SplitWords(lines[sections.mFirstParticle]);
    size_t column = 0;
    for (size_t i = 0; i < pGuess->mBody.size(); ++i) {
        const size_t size = static_cast<size_t>(GrammerBase_cls::GetBodyItemByte(pGuess->mBody[i])) / 4;
        for (size_t k = column; k < std::min(column + size, words.size()); ++k) {
            if (WordNumber(words[k])) continue;
            const wxString name =
                wxString::FromUTF8(sections.mColumns[std::min(k, sections.mColumns.size() - 1)].c_str());
            pGuess->mBody.resize(i);
            pGuess->mReasons.push_back(wxString::Format(
                _("The column \"%s\" holds words: it and all behind it can't be read."), name));
            if (std::find(pGuess->mBody.begin(), pGuess->mBody.end(), BODY_XYZ) == pGuess->mBody.end())
                pGuess->mStrProblem = wxString::Format(_("The column \"%s\" holds words and stands before "
                                                         "the positions, so they can't be read."),
                                                       name);
            return;
        }
        column += size;
    }
}

} // namespace

GrammarGuess_st GuessItemText(const std::vector<std::string>& lines) {
    GrammarGuess_st guess;
    guess.mDataType = DATA_TEXT;
    const Sections_st sections = ReadSections(lines);
    guess.mStrProblem = sections.mStrProblem;
    if (!guess.mStrProblem.empty()) return guess;
    guess.mReasons.push_back(
        wxString::Format(_("The header has %zu lines with \"ITEM:\" sections."), sections.mFirstParticle));
    ColumnReader_cls(lines, sections, &guess).Read();
    if (!guess.mStrProblem.empty()) return guess;
    CutAtWords(lines, sections, &guess);
    DropLastDummies(&guess.mBody);
    guess.mBody = PackDummies(guess.mBody, 0);
    guess.mHead = PackHead(sections.mCodes, &guess);
    if (guess.mStrProblem.empty()) guess.mStrProblem = CheckItemCounts(guess);
    if (guess.mStrProblem.empty()) AddTextRecords(lines, sections.mFirstParticle, &guess);
    return guess;
}
