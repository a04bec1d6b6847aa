#include "IMPORT/VtkArray.h"

#include <algorithm>
#include <utility>

#include "IMPORT/PlainFile.h"
#include "IMPORT/StopSignal.h"
#include "IMPORT/clsByteFile.h"
#include "IMPORT/clsVtkBytes.h"

namespace {

constexpr size_t kPieceBytes = size_t(1) << 16;

void ReadLetters(ByteFile_cls* pFile, const VtkArray_st& array, size_t first,
                 const std::vector<NumberTarget_st>& targets) {
    std::vector<std::vector<const NumberTarget_st*>> byComponent(array.mComponents);
    for (const NumberTarget_st& target : targets)
        byComponent[target.mComponent].push_back(&target);
    pFile->Seek(array.mBegin);
    for (long long i = 0; i < array.mTuples; ++i) {
        for (const auto& component : byComponent) {
            std::string_view word = pFile->NextWord();
            // It reaches into the tag behind the array where there is no blank before that.
            const long long beyond = pFile->Tell() - array.mEnd;
            if (beyond > 0) word.remove_suffix(std::min(word.size(), static_cast<size_t>(beyond)));
            if (word.empty())
                pFile->Fail(array.mName + " ends after " + std::to_string(i) + " of " +
                            std::to_string(array.mTuples));
            for (const NumberTarget_st* pTarget : component)
                if (!TakeWordAsNumber(word, first + static_cast<size_t>(i), *pTarget))
                    pFile->Fail(array.mName + ": \"" + std::string(word.substr(0, 40)) +
                                "\" can't be such a number");
        }
    }
}

void ReadBytes(ByteFile_cls* pFile, const VtkArray_st& array, size_t first,
               const std::vector<NumberTarget_st>& targets) {
    const size_t tupleBytes = array.mComponents * SizeOf(array.mKind);
    const size_t tuples = std::max<size_t>(1, kPieceBytes / tupleBytes);
    std::vector<char> piece(tuples * tupleBytes);
    VtkBytes_cls bytes(pFile, array);
    for (size_t left = static_cast<size_t>(array.mTuples); left > 0;) {
        const size_t here = std::min(left, tuples);
        bytes.Read(piece.data(), here * tupleBytes);
        if (!TakeNumbers(piece.data(), array.mKind, array.mbSwap, array.mComponents, here, first, targets))
            pFile->Fail(array.mName + " should hold whole numbers");
        first += here;
        left -= here;
    }
}

} // namespace

bool FindNumberKind(const std::string& name, NumberKind* pKind) {
    using Kind = NumberKind;
    static const std::pair<const char*, Kind> kKinds[] = {{"float", Kind::Float32},
                                                          {"double", Kind::Float64},
                                                          {"char", Kind::Int8},
                                                          {"signed_char", Kind::Int8},
                                                          {"unsigned_char", Kind::UInt8},
                                                          {"short", Kind::Int16},
                                                          {"unsigned_short", Kind::UInt16},
                                                          {"int", Kind::Int32},
                                                          {"unsigned_int", Kind::UInt32},
                                                          {"long", Kind::Int64},
                                                          {"unsigned_long", Kind::UInt64},
                                                          {"vtkIdType", Kind::Int32},
                                                          {"vtktypeint64", Kind::Int64},
                                                          {"vtktypeuint64", Kind::UInt64},
                                                          {"vtktypeint32", Kind::Int32},
                                                          {"vtktypeuint32", Kind::UInt32},
                                                          {"long_long", Kind::Int64},
                                                          {"unsigned_long_long", Kind::UInt64},
                                                          {"Float32", Kind::Float32},
                                                          {"Float64", Kind::Float64},
                                                          {"Int8", Kind::Int8},
                                                          {"UInt8", Kind::UInt8},
                                                          {"Int16", Kind::Int16},
                                                          {"UInt16", Kind::UInt16},
                                                          {"Int32", Kind::Int32},
                                                          {"UInt32", Kind::UInt32},
                                                          {"Int64", Kind::Int64},
                                                          {"UInt64", Kind::UInt64}};
    for (const auto& [word, kind] : kKinds) {
        if (name != word) continue;
        *pKind = kind;
        return true;
    }
    return false;
}

void CheckVtkArray(const ByteFile_cls& file, const VtkArray_st& array) {
    const long long room = std::min(array.mEnd, file.GetMostBytes()) - array.mBegin;
    long long needed = array.CountBytes();
    if (array.mCoding == VtkCoding::Letters)
        needed = 2 * array.CountNumbers() - 1;
    else if (array.mbCompressed)
        needed /= kMostInflated;
    if (array.mCoding == VtkCoding::Base64) needed = needed / 3 * 4;
    if (room < needed && array.mTuples > 0)
        file.Fail(array.mName + " should have " + std::to_string(array.CountNumbers()) +
                  " numbers, more than the file can hold");
}

void ReadVtkArray(ByteFile_cls* pFile, const VtkArray_st& array, size_t first,
                  const std::vector<NumberTarget_st>& targets) {
    ThrowIfStopped();
    if (array.mTuples == 0) return;
    if (array.mCoding == VtkCoding::Letters)
        ReadLetters(pFile, array, first, targets);
    else
        ReadBytes(pFile, array, first, targets);
}
