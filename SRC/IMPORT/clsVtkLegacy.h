// VTK's legacy files: a few lines of text, and arrays in letters or in bytes, the highest one first.
#pragma once

#include <string>
#include <vector>

#include "IMPORT/VtkArray.h"

class ByteFile_cls;

class VtkLegacy_cls {
public:
    explicit VtkLegacy_cls(ByteFile_cls* pFile) : mFile(*pFile) {}
    /// Where all arrays of the points are; what else the file holds is passed over. Throws ImportError_cls.
    VtkLayout_st Read();

private:
    enum class Of { All, Points, Cells };

    void ReadHead();
    /// One section, whose first line has these words.
    void TakeSection(const std::vector<std::string>& words);
    bool TakeTopology(const std::vector<std::string>& words);
    bool TakeAttribute(const std::vector<std::string>& words);
    void TakeField(long long arrays);
    void TakeWords(long long count);
    void TakeMetadata();
    /// An array of these sizes stands here; it is kept where points have it.
    VtkArray_st TakeArray(const std::string& name, const std::string& kind, long long components,
                          long long tuples);
    void KeepArray(const VtkArray_st& array);
    long long NumberAt(const std::vector<std::string>& words, size_t i) const;

    ByteFile_cls& mFile;
    bool mbBinary = false;
    Of mOf = Of::All;
    long long mTuples = 0; ///< of the attributes that follow
    bool mbPoints = false; ///< they are there
    VtkPiece_st mPiece;
    VtkLayout_st mLayout;
};
