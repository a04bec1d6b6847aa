#include "IMPORT/clsDumpReader.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "IMPORT/ImportText.h"

namespace {

constexpr long long kLeastRow = 4;    // "1 2\n"
constexpr double kLongestEdge = 1e30; // of a box; longer ones are a mark for none

// Bounds of a tilted box are those of its corners; the origin lies further in.
void MakeTilted(const double bounds[3][3], ImportBox_st* pBox) {
    const double xy = bounds[0][2];
    const double xz = bounds[1][2];
    const double yz = bounds[2][2];
    const double low[3] = {bounds[0][0] - std::min({0.0, xy, xz, xy + xz}), bounds[1][0] - std::min(0.0, yz),
                           bounds[2][0]};
    const double high[3] = {bounds[0][1] - std::max({0.0, xy, xz, xy + xz}), bounds[1][1] - std::max(0.0, yz),
                            bounds[2][1]};
    for (int k = 0; k < 3; ++k) {
        pBox->mOrigin[k] = low[k];
        for (double& edge : pBox->mEdge[k])
            edge = 0.0;
        pBox->mEdge[k][k] = high[k] - low[k];
    }
    pBox->mEdge[1][0] = xy;
    pBox->mEdge[2][0] = xz;
    pBox->mEdge[2][1] = yz;
}

} // namespace

DumpReader_cls::DumpReader_cls(const std::string& path, const ImportChoice_st& choice)
    : mReader(path), mChoice(choice) {}

std::string_view DumpReader_cls::NeedLine(const char* what) {
    std::string_view line;
    if (!mReader.Next(&line)) mReader.Fail(std::string("the file ends where ") + what + " should stand");
    return line;
}

// "pp pp ff", perhaps behind "xy xz yz" or "abc origin".
void DumpReader_cls::ReadBounds(std::string_view words, ImportSnapshot_st* pSnap) {
    const std::vector<std::string> kinds = WordsOf(words);
    const bool bVectors = !kinds.empty() && kinds[0] == "abc";
    const bool bTilted = !kinds.empty() && kinds[0] == "xy";
    ImportBox_st& box = pSnap->mBox;
    box = ImportBox_st();
    box.mbThere = true;
    for (size_t k = 0; k < 3 && kinds.size() >= 3; ++k)
        box.mbPeriodic[k] = kinds[kinds.size() - 3 + k][0] == 'p';
    const size_t needed = bVectors ? 4 : bTilted ? 3 : 2;
    double bounds[3][3] = {};
    for (size_t k = 0; k < 3; ++k) {
        std::string_view line = NeedLine("the box");
        double numbers[4] = {};
        for (size_t i = 0; i < needed; ++i)
            if (!ReadNumber(TakeWord(&line), &numbers[i]) || !(std::fabs(numbers[i]) < kLongestEdge))
                mReader.Fail("is no line of a box");
        if (!bVectors && numbers[1] < numbers[0]) mReader.Fail("is no line of a box");
        std::copy_n(numbers, 3, bVectors ? box.mEdge[k] : bounds[k]);
        if (bVectors) box.mOrigin[k] = numbers[3];
    }
    if (!bVectors) MakeTilted(bounds, &box);
}

bool DumpReader_cls::NextHead(ImportSnapshot_st* pSnap) {
    for (; mRowsLeft > 0; --mRowsLeft)
        NeedLine("an atom");
    pSnap->mBox = ImportBox_st();
    pSnap->mbTime = false;
    bool bBegun = false;
    bool bNumber = false;
    bool bStep = false;
    bool bPhysical = false; // a time was given besides the step's number
    for (std::string_view line; mReader.Next(&line); bBegun = true) {
        if (Trim(line).empty()) continue;
        if (!StartsWith(line, "ITEM:")) mReader.Fail("is no \"ITEM:\" of a dump");
        line.remove_prefix(5);
        const std::string item(Trim(line));
        if (item == "TIMESTEP" || item == "TIME") {
            double time = 0;
            if (!ReadNumber(Trim(NeedLine("the time")), &time)) mReader.Fail("is no time");
            // A second step's number begins a new head: the one before was cut.
            if (item == "TIMESTEP" && bStep) bPhysical = bNumber = false;
            if (item == "TIMESTEP") bStep = true;
            if (item == "TIME" || !bPhysical) pSnap->mTime = time;
            bPhysical = bPhysical || item == "TIME";
            pSnap->mbTime = true;
        } else if (item == "NUMBER OF ATOMS") {
            bNumber = ReadNumber(Trim(NeedLine("the number of atoms")), &pSnap->mNumber);
            if (!bNumber || pSnap->mNumber < 0 || pSnap->mNumber > INT_MAX ||
                !mReader.CanHold(pSnap->mNumber, kLeastRow))
                mReader.Fail("is no number of atoms, or more than the file can hold");
        } else if (StartsWith(item, "BOX BOUNDS")) {
            ReadBounds(std::string_view(item).substr(10), pSnap);
        } else if (StartsWith(item, "ATOMS")) {
            if (!bNumber) mReader.Fail("the number of atoms is missing");
            if (item != mNames) {
                try {
                    mParser.SetColumns(WordsOf(std::string_view(item).substr(5)), mChoice);
                } catch (const ImportError_cls& error) {
                    mReader.Fail(error.what());
                }
                mNames = item;
            }
            if (mParser.AreScaled() && !pSnap->mBox.mbThere)
                mReader.Fail("positions are scaled, but there is no box");
            pSnap->mColumns = mParser.GetColumns();
            pSnap->mbTypesFromOne = true;
            mRowsLeft = pSnap->mNumber;
            return true;
        } else {
            NeedLine("the item's value"); // UNITS and the like
        }
    }
    if (bBegun) mReader.Fail("the file ends within the head of a time step");
    return false;
}

void DumpReader_cls::ReadBody(ImportSnapshot_st* pSnap) {
    pSnap->MakeRoom();
    std::vector<std::string_view> fields;
    for (size_t i = 0; mRowsLeft > 0; ++i) {
        std::string_view line;
        if (!mReader.Next(&line) || !mReader.IsLineWhole())
            mReader.Fail("the file ends after " + std::to_string(i) + " of " +
                         std::to_string(pSnap->mNumber) + " atoms");
        TakeWords(line, &fields);
        const std::string wrong = mParser.ParseRow(fields, i, pSnap);
        if (!wrong.empty()) mReader.Fail(wrong);
        --mRowsLeft;
    }
}
