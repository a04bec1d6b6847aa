// Lists of sticks, recorded logs, and the note that an import leaves.
#include <cmath>

#include "BOND/BondFile.h"
#include "BOND/StickList.h"
#include "COMMON/ActLine.h"
#include "FuzzFile.h"
#include "FuzzTargets.h"
#include "IMPORT/clsImportNote.h"

namespace {

void CheckSticks(const StickList_st& list, size_t bytes) {
    const size_t number = list.GetNumber();
    Promise(number <= bytes, "no more sticks than bytes");
    Promise(list.mvIndexB.size() == number, "sticks have two ends");
    for (const auto* column : {&list.mvBit, &list.mvBitFirst})
        Promise(column->empty() || column->size() == number, "a mask a stick or none");
    Promise(list.mvFactor.empty() || list.mvFactor.size() == number, "a weight a stick or none");
    for (size_t k = 0; k < number; ++k)
        Promise(list.GetBit(k) < 256 && list.GetBitFirst(k) < 256 && !std::isnan(list.GetFactor(k)),
                "a stick can be drawn");
}

} // namespace

void FuzzBond(const std::string& bytes) {
    const FuzzFile_cls file(bytes, ".bond");
    StickList_st list;
    const wxString reason = ReadStickFile(file.GetPath(), &list);
    Promise(reason.empty() || list.GetNumber() == 0, "a file is read whole or not at all");
    CheckSticks(list, bytes.size());
}

void FuzzSticks(const std::string& bytes) {
    StickList_st list;
    ReadStickText(bytes.data(), bytes.size(), &list);
    CheckSticks(list, bytes.size());
}

void FuzzRecord(const std::string& bytes) {
    const ActFile_st file = ReadActFile(bytes);
    Promise(file.mStrReason.empty() || file.mLines.empty(), "what is no record has no lines");
    for (const ActLine_st& line : file.mLines) {
        ActLine_st again;
        Promise(ReadActLine(WriteActLine(line), &again).empty(), "what is written can be read");
        Promise(again.mWords == line.mWords, "words are read as they were");
        for (const wxString& word : line.mWords) {
            double number = 0.0;
            double same = 0.0;
            if (!ReadActNumber(word, &number)) continue;
            Promise(ReadActNumber(WriteActNumber(number), &same) && same == number,
                    "numbers are read as they were");
            long count = 0;
            if (ReadActCount(word, -5, 5, &count))
                Promise(count >= -5 && count <= 5, "counts keep in bounds");
        }
    }
}

void FuzzNote(const std::string& bytes) {
    ImportNote_cls note;
    note.Read(bytes);
    ImportNote_cls again;
    again.Read(note.GetText());
    Promise(again.mSources == note.mSources && again.mTypeNames == note.mTypeNames &&
                again.mBody == note.mBody && again.mProject == note.mProject,
            "a note is read as it was");
}
