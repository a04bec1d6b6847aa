#include "IMPORT/clsXyzReader.h"

#include <climits>
#include <cmath>

#include "COMMON/TextSplit.h"
#include "IMPORT/ImportText.h"

namespace {

constexpr long long kLeastRow = 4; // "1 2\n"
const char* const kPlain = "species:S:1:pos:R:3";

} // namespace

std::map<std::string, std::string> ReadXyzComment(std::string_view text) {
    std::map<std::string, std::string> pairs;
    while (!text.empty()) {
        const size_t end = text.find('=');
        if (end == std::string_view::npos) break;
        std::string_view before = text.substr(0, end);
        std::string_view key;
        for (std::string_view word = TakeWord(&before); !word.empty(); word = TakeWord(&before))
            key = word;
        text.remove_prefix(end + 1);
        while (!text.empty() && IsBlank(text.front()))
            text.remove_prefix(1);
        const char open = text.empty() ? ' ' : text.front();
        const char close = open == '[' ? ']' : open == '{' ? '}' : open;
        std::string_view value;
        if (open == '"' || open == '\'' || open == '[' || open == '{') {
            text.remove_prefix(1);
            value = text.substr(0, text.find(close));
            text.remove_prefix(value.size() < text.size() ? value.size() + 1 : value.size());
        } else {
            value = TakeWord(&text);
        }
        pairs[LowerCase(key)] = std::string(value);
    }
    return pairs;
}

XyzReader_cls::XyzReader_cls(const std::string& path, const ImportChoice_st& choice)
    : mReader(path), mChoice(choice) {}

void XyzReader_cls::SetProperties(const std::string& properties) {
    if (properties == mProperties) return;
    std::vector<std::string_view> parts;
    SplitFields(properties, ':', &parts);
    std::vector<std::string> names;
    for (size_t i = 0; i < parts.size(); i += 3) {
        long long count = 0;
        if (i + 2 >= parts.size() || !ReadNumber(parts[i + 2], &count) || count < 1 ||
            count > 1000 - static_cast<long long>(names.size()))
            mReader.Fail("\"Properties=" + properties + "\" can't be read");
        AddColumnNames(std::string(parts[i]), static_cast<size_t>(count), &names);
    }
    try {
        mParser.SetColumns(names, mChoice);
    } catch (const ImportError_cls& error) {
        mReader.Fail(error.what());
    }
    mProperties = properties;
}

void XyzReader_cls::ReadComment(std::string_view comment, ImportSnapshot_st* pSnap) {
    std::map<std::string, std::string> pairs = ReadXyzComment(comment);
    for (const char* name : {"step", "frame", "time"}) {
        double time = 0;
        if (pairs.count(name) && ReadNumber(Trim(pairs[name]), &time)) {
            pSnap->mTime = time;
            pSnap->mbTime = true;
        }
    }
    ImportBox_st& box = pSnap->mBox;
    if (pairs.count("lattice")) {
        const std::vector<std::string> words = WordsOf(pairs["lattice"]);
        for (size_t i = 0; i < 9; ++i)
            if (words.size() != 9 || !ReadNumber(words[i], &box.mEdge[i / 3][i % 3]) ||
                !std::isfinite(box.mEdge[i / 3][i % 3]))
                mReader.Fail("\"Lattice=\" must have nine numbers");
        box.mbThere = true;
    }
    const std::vector<std::string> origin = WordsOf(pairs["origin"]);
    for (size_t i = 0; i < origin.size() && i < 3; ++i)
        if (!ReadNumber(origin[i], &box.mOrigin[i])) mReader.Fail("\"Origin=\" must have three numbers");
    const std::vector<std::string> periodic = WordsOf(pairs["pbc"]);
    for (size_t i = 0; i < periodic.size() && i < 3; ++i)
        box.mbPeriodic[i] = periodic[i][0] == 'T' || periodic[i][0] == 't' || periodic[i][0] == '1';
    SetProperties(pairs.count("properties") ? pairs["properties"] : kPlain);
    if (mParser.AreScaled() && !box.mbThere) mReader.Fail("positions are scaled, but there is no box");
}

bool XyzReader_cls::NextHead(ImportSnapshot_st* pSnap) {
    std::string_view line;
    for (; mRowsLeft > 0; --mRowsLeft)
        if (!mReader.Next(&line)) mReader.Fail("the file ends within a frame");
    do
        if (!mReader.Next(&line)) return false;
    while (Trim(line).empty());
    pSnap->mBox = ImportBox_st();
    pSnap->mbTime = false;
    if (!ReadNumber(Trim(line), &pSnap->mNumber) || pSnap->mNumber < 0 || pSnap->mNumber > INT_MAX ||
        !mReader.CanHold(pSnap->mNumber, kLeastRow))
        mReader.Fail("is no number of atoms, or more than the file can hold");
    if (!mReader.Next(&line)) mReader.Fail("the file ends where a comment should stand");
    ReadComment(line, pSnap);
    pSnap->mColumns = mParser.GetColumns();
    pSnap->mbTypesFromOne = false;
    mRowsLeft = pSnap->mNumber;
    return true;
}

void XyzReader_cls::ReadBody(ImportSnapshot_st* pSnap) {
    pSnap->MakeRoom();
    std::vector<std::string_view> fields;
    for (size_t i = 0; mRowsLeft > 0; ++i, --mRowsLeft) {
        std::string_view line;
        if (!mReader.Next(&line))
            mReader.Fail("the file ends after " + std::to_string(i) + " of " +
                         std::to_string(pSnap->mNumber) + " atoms");
        TakeWords(line, &fields);
        const std::string wrong = mParser.ParseRow(fields, i, pSnap);
        if (!wrong.empty()) mReader.Fail(wrong);
    }
}
