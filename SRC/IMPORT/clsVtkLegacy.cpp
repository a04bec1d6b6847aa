#include "IMPORT/clsVtkLegacy.h"

#include <algorithm>
#include <cstdint>

#include "IMPORT/ImportText.h"
#include "IMPORT/clsByteFile.h"

namespace {

constexpr long long kMostTuples = 1ll << 34;
constexpr long long kMostComponents = 10000;
const uint16_t kOrder = 1;

bool IsLittleEndian() { return *reinterpret_cast<const unsigned char*>(&kOrder) == 1; }

/// "Particle%20ID" with its blank.
std::string Unescape(const std::string& name) {
    std::string plain;
    for (size_t i = 0; i < name.size(); ++i) {
        const std::string digits = name[i] == '%' ? name.substr(i + 1, 2) : std::string();
        if (digits.size() == 2 && digits.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos) {
            plain += static_cast<char>(std::stoi(digits, nullptr, 16));
            i += 2;
        } else {
            plain += name[i];
        }
    }
    return plain;
}

bool IsOneOf(const std::string& word, const std::vector<std::string>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

} // namespace

long long VtkLegacy_cls::NumberAt(const std::vector<std::string>& words, size_t i) const {
    long long number = 0;
    if (i >= words.size() || !ReadNumber(words[i], &number) || number < 0 || number > kMostTuples)
        mFile.Fail("\"" + words[0] + "\" should be followed by other numbers");
    return number;
}

VtkArray_st VtkLegacy_cls::TakeArray(const std::string& name, const std::string& kind, long long components,
                                     long long tuples) {
    VtkArray_st array;
    array.mName = Unescape(name);
    if (components > kMostComponents) mFile.Fail(array.mName + " has too many components");
    array.mComponents = static_cast<size_t>(components);
    array.mTuples = components == 0 ? 0 : tuples;
    array.mCoding = mbBinary ? VtkCoding::Plain : VtkCoding::Letters;
    array.mbSwap = IsLittleEndian();
    array.mBegin = mFile.Tell();
    const bool bBits = kind == "bit";
    if (!bBits && !FindNumberKind(kind, &array.mKind))
        mFile.Fail(array.mName + ": \"" + kind + "\" is no kind of number");
    bool bThere = true;
    if (!mbBinary)
        bThere = array.CountNumbers() <= mFile.GetMostBytes() && mFile.SkipWords(array.CountNumbers());
    else
        bThere = mFile.Skip(bBits ? (array.CountNumbers() + 7) / 8 : array.CountBytes());
    if (!bThere) mFile.Fail("ends within " + array.mName);
    array.mEnd = mFile.Tell();
    if (bBits && mbBinary) array.mTuples = 0; // eight in a byte: nothing that a column could be
    return array;
}

void VtkLegacy_cls::KeepArray(const VtkArray_st& array) {
    if (mOf == Of::Points && array.mTuples == mPiece.mPoints && array.mComponents > 0 &&
        array.mComponents <= kMostVtkComponents)
        mPiece.mData.push_back(array);
    const std::string name = LowerCase(array.mName);
    if (mOf != Of::All || array.CountNumbers() != 1 || (name != "time" && name != "timevalue")) return;
    const long long place = mFile.Tell();
    NumberTarget_st target;
    target.mpDoubles = &mLayout.mTime;
    ReadVtkArray(&mFile, array, 0, {target});
    mFile.Seek(place);
    mLayout.mbTime = true;
}

// Words of a line each; their bytes have lengths of several forms, which nobody needs here.
void VtkLegacy_cls::TakeWords(long long count) {
    std::string line;
    if (mbBinary) mFile.Fail("holds words in binary form, which can't be passed over");
    for (; count > 0; --count)
        if (!mFile.NextLine(&line)) mFile.Fail("ends within words");
}

void VtkLegacy_cls::TakeMetadata() {
    std::string line;
    while (mFile.NextLine(&line) && !Trim(line).empty()) {
    }
}

void VtkLegacy_cls::TakeField(long long arrays) {
    for (; arrays > 0; --arrays) {
        std::string line;
        do {
            if (!mFile.NextLine(&line)) mFile.Fail("ends within a FIELD");
            if (Trim(line) == "METADATA") {
                TakeMetadata();
                line.clear();
            }
        } while (Trim(line).empty());
        const std::vector<std::string> words = WordsOf(line);
        if (words.size() != 4) mFile.Fail("\"" + words[0].substr(0, 40) + "\" is no array of a FIELD");
        const long long components = NumberAt(words, 1);
        const long long tuples = NumberAt(words, 2);
        if (words[3] == "string")
            TakeWords(components > kMostComponents ? kMostTuples : components * tuples);
        else
            KeepArray(TakeArray(words[0], words[3], components, tuples));
    }
}

// Cells of all kinds; since version 5 as two arrays.
bool VtkLegacy_cls::TakeTopology(const std::vector<std::string>& words) {
    if (words[0] == "CELL_TYPES") {
        TakeArray(words[0], "int", 1, NumberAt(words, 1));
        return true;
    }
    if (!IsOneOf(words[0], {"VERTICES", "LINES", "POLYGONS", "TRIANGLE_STRIPS", "CELLS"})) return false;
    const long long count = NumberAt(words, 1);
    const long long size = NumberAt(words, 2);
    if (!mFile.TakeIfNext("OFFSETS")) {
        TakeArray(words[0], "int", 1, size);
        return true;
    }
    std::string line;
    mFile.NextLine(&line);
    TakeArray(words[0], std::string(Trim(line)), 1, count);
    if (!mFile.TakeIfNext("CONNECTIVITY") || !mFile.NextLine(&line)) mFile.Fail("CONNECTIVITY is missing");
    TakeArray(words[0], std::string(Trim(line)), 1, size);
    return true;
}

// What points or cells have: "SCALARS name kind [components]" and the like.
bool VtkLegacy_cls::TakeAttribute(const std::vector<std::string>& words) {
    struct Form_st {
        const char* mWord;
        long long mComponents; ///< 0: told by the line's last word
    };
    static const Form_st kForms[] = {{"SCALARS", 0},    {"VECTORS", 3},      {"NORMALS", 3},
                                     {"TENSORS", 9},    {"TENSORS6", 6},     {"TEXTURE_COORDINATES", 0},
                                     {"GLOBAL_IDS", 1}, {"PEDIGREE_IDS", 1}, {"EDGE_FLAGS", 1}};
    for (const Form_st& form : kForms) {
        if (words[0] != form.mWord) continue;
        if (words.size() < 3) mFile.Fail("\"" + words[0] + "\" should have a name and a kind");
        const bool bTexture = words[0] == "TEXTURE_COORDINATES"; // its kind stands last
        long long components = form.mComponents;
        if (components == 0)
            components = bTexture ? NumberAt(words, 2) : words.size() > 3 ? NumberAt(words, 3) : 1;
        if (bTexture && words.size() < 4) mFile.Fail("TEXTURE_COORDINATES should have a kind");
        std::string line;
        if (words[0] == "SCALARS" && mFile.TakeIfNext("LOOKUP_TABLE")) mFile.NextLine(&line);
        KeepArray(TakeArray(words[1], words[bTexture ? 3 : 2], components, mTuples));
        return true;
    }
    if (words[0] == "COLOR_SCALARS") {
        TakeArray("colours", mbBinary ? "unsigned_char" : "float", NumberAt(words, 2), mTuples);
        return true;
    }
    if (words[0] == "LOOKUP_TABLE") {
        TakeArray("colours", mbBinary ? "unsigned_char" : "float", 4, NumberAt(words, 2));
        return true;
    }
    return false;
}

void VtkLegacy_cls::TakeSection(const std::vector<std::string>& words) {
    if (words[0] == "DATASET") {
        if (words.size() < 2 || !IsOneOf(words[1], {"POLYDATA", "UNSTRUCTURED_GRID", "STRUCTURED_GRID"}))
            mFile.Fail("\"" + (words.size() < 2 ? "" : words[1]) + "\" is no data set of points");
    } else if (words[0] == "POINTS") {
        if (words.size() < 3) mFile.Fail("POINTS should have a number and a kind");
        if (mbPoints) mFile.Fail("has points twice");
        mPiece.mPoints = NumberAt(words, 1);
        mPiece.mPos = TakeArray("POINTS", words[2], 3, mPiece.mPoints);
        mbPoints = true;
    } else if (words[0] == "POINT_DATA" || words[0] == "CELL_DATA") {
        mOf = words[0] == "POINT_DATA" ? Of::Points : Of::Cells;
        mTuples = NumberAt(words, 1);
        if (mOf == Of::Points && mTuples != mPiece.mPoints)
            mFile.Fail("POINT_DATA is of " + std::to_string(mTuples) + " points, but there are " +
                       std::to_string(mPiece.mPoints));
    } else if (words[0] == "FIELD") {
        TakeField(NumberAt(words, 2));
    } else if (words[0] == "METADATA") {
        TakeMetadata();
    } else if (words[0] != "DIMENSIONS" && !TakeTopology(words) && !TakeAttribute(words)) {
        mFile.Fail("\"" + words[0].substr(0, 40) + "\" is no word of this format");
    }
}

void VtkLegacy_cls::ReadHead() {
    std::string line;
    mFile.NextLine(&line); // the version
    mFile.NextLine(&line); // the title
    if (!mFile.NextLine(&line)) mFile.Fail("ends within its head");
    const std::string form(Trim(line));
    if (form != "ASCII" && form != "BINARY")
        mFile.Fail("\"ASCII\" or \"BINARY\" should stand in the third line");
    mbBinary = form == "BINARY";
}

VtkLayout_st VtkLegacy_cls::Read() {
    ReadHead();
    for (std::string line; mFile.NextLine(&line);) {
        const std::vector<std::string> words = WordsOf(line);
        if (!words.empty()) TakeSection(words);
    }
    if (!mbPoints) mFile.Fail("there are no points in it");
    mLayout.mPieces.push_back(mPiece);
    return mLayout;
}
