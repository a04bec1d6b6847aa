#include "FuzzTargets.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "FuzzFile.h"
#include "PDATA/GrammarGuess.h"
#include "PDATA/SnapshotBody.h"
#include "PDATA/SnapshotHeader.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsDataLoader.h"

namespace {

struct Grammar_st {
    std::vector<int> mHead;
    std::vector<int> mBody;
};

// The default, one with dummies of every size, dumps with named columns, odd codes, more than 18 numbers.
const Grammar_st kGrammars[] = {
    {{0, 1}, {0, 1, 5, 6, 7, 8}},
    {{3, 1, 2, 0, 4}, {5, 7, 3, 0, 6, 4, 8}},
    {{2, 0, 2, 1, 2, 3, 2}, {6, 7, 0, 1, 8}},
    {{1}, {0, 99, -3, 0}},
    {{0, 1}, {4, 4, 0, 7}},
    {{1, 1, 0}, {6, 0, 2, 1, 8, 7}},
};
constexpr size_t kGrammarNumber = sizeof kGrammars / sizeof kGrammars[0];

void ReadBoth(const DataLoader_cls& loader, const wxString& path, size_t bytes) {
    const SnapshotHeader_st header = ReadSnapshotHeader(loader, path);
    Promise(header.mbOk || !header.mStrError.empty(), "a head that can't be used says why");
    if (!header.mbOk) return;
    Promise(header.mNumber >= 0 && size_t(header.mNumber) <= bytes, "no more particles than bytes");
    if (header.mNumber == 0) return;
    ArrayPool_cls pool(0);
    ParticleArrays_st arrays;
    if (!pool.AllocateParticles(size_t(header.mNumber), true, &arrays)) return;
    ReadSnapshotBody(MakeSnapshotBody(loader, path, header.mNumber, arrays, true));
    for (int i = 0; i < header.mNumber; ++i)
        Promise(arrays.mpType[i] <= 4, "types are 0 to 4");
    pool.FreeParticles(&arrays);
}

} // namespace

void Promise(bool bKept, const char* what) {
    if (bKept) return;
    std::fprintf(stderr, "broken promise: %s\n", what);
    std::abort();
}

void FuzzSnapshot(const std::string& bytes) {
    const FuzzFile_cls file(bytes);
    DataLoader_cls loader(nullptr);
    const size_t pick = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.back());
    const Grammar_st& grammar = kGrammars[pick % kGrammarNumber];
    loader.SetHeaderGrammer(grammar.mHead);
    loader.SetBodyGrammer(grammar.mBody);
    loader.mCItemVariableNumber.mValue = unsigned(pick % 3);
    loader.mCItemLogarithm.mValue = unsigned(pick % 2);
    for (int dataType = 0; dataType < 2; ++dataType) {
        loader.mCItemDataType.mValue = dataType;
        ReadBoth(loader, file.GetPath(), bytes.size());
    }
}

void FuzzGuess(const std::string& bytes) {
    const FuzzFile_cls file(bytes);
    DataLoader_cls present(nullptr);
    const GrammarGuess_st guess = GuessGrammar(file.GetPath(), present);
    Promise(guess.mbFound || !guess.mStrProblem.empty(), "no guess comes without a reason");
    if (!guess.mbFound) return;
    Promise(guess.mHead.size() <= 16 && guess.mBody.size() <= 16, "a guess fits the lists");
    // What was guessed must be readable.
    present.mCItemDataType.mValue = guess.mDataType;
    present.SetHeaderGrammer(guess.mHead);
    present.SetBodyGrammer(guess.mBody);
    ReadBoth(present, file.GetPath(), bytes.size());
}
