// Arrays of VTK files: where their numbers stand, and how.
#pragma once

#include <string>
#include <vector>

#include "IMPORT/RawNumbers.h"

class ByteFile_cls;

enum class VtkCoding {
    Letters, ///< numbers between blanks
    Plain,   ///< bytes alone
    Raw,     ///< bytes behind their number
    Base64   ///< as Raw, in letters
};

struct VtkArray_st {
    std::string mName;
    NumberKind mKind = NumberKind::Float32;
    size_t mComponents = 1;
    long long mTuples = 0;
    VtkCoding mCoding = VtkCoding::Letters;
    long long mBegin = 0;      ///< place in the file
    long long mEnd = 0;        ///< behind which none of it can stand
    bool mbSwap = false;       ///< bytes stand in the other order than ours
    bool mbWideHead = false;   ///< numbers of bytes have 64 bits
    bool mbCompressed = false; ///< by zlib, in blocks

    long long CountNumbers() const { return mTuples * static_cast<long long>(mComponents); }
    long long CountBytes() const { return CountNumbers() * static_cast<long long>(SizeOf(mKind)); }
};

/// Arrays of more components are no columns.
constexpr size_t kMostVtkComponents = 9;

/// The points of one file or of a part of it, with what each of them has.
struct VtkPiece_st {
    long long mPoints = 0;
    VtkArray_st mPos; ///< three components
    std::vector<VtkArray_st> mData;
};

/// What one file holds: points, or names of the files that do.
struct VtkLayout_st {
    struct File_st {
        std::string mPath;
        bool mbTime = false;
        double mTime = 0;
    };
    std::vector<VtkPiece_st> mPieces;
    std::vector<File_st> mFiles;
    bool mbCollection = false; ///< of files with times; else the files are parts of one snapshot
    bool mbTime = false;
    double mTime = 0;
};

/// The kind by its name, as in "unsigned_int", "vtkIdType" or "Float32"; false: no kind of number.
bool FindNumberKind(const std::string& name, NumberKind* pKind);
/// Throws ImportError_cls where the file can't hold so many numbers. Asked before memory is taken for them.
void CheckVtkArray(const ByteFile_cls& file, const VtkArray_st& array);
/// Components to the places of tuple `first` on. Throws ImportError_cls.
void ReadVtkArray(ByteFile_cls* pFile, const VtkArray_st& array, size_t first,
                  const std::vector<NumberTarget_st>& targets);
