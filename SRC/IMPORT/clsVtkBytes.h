// The bytes of an array of a VTK file, one after the other: out of base64 and zlib's blocks where they are.
#pragma once

#include <memory>
#include <vector>

#include "IMPORT/VtkArray.h"

struct z_stream_s;

class VtkBytes_cls {
public:
    /// Throws ImportError_cls, as Read does.
    VtkBytes_cls(ByteFile_cls* pFile, const VtkArray_st& array);
    ~VtkBytes_cls();
    VtkBytes_cls(const VtkBytes_cls&) = delete;
    VtkBytes_cls& operator=(const VtkBytes_cls&) = delete;
    void Read(char* pOut, size_t count);

private:
    size_t TakeLetters(char* pOut, size_t count);
    void TakeStored(char* pOut, size_t count);
    unsigned long long TakeHeadNumber();
    void ReadBlockHead();
    void NextBlock();
    void Inflate(char* pOut, size_t count);
    [[noreturn]] void FailCut() const;

    ByteFile_cls* mpFile;
    const VtkArray_st& mArray;
    std::vector<char> mLetters; ///< of base64, not decoded yet
    size_t mLetter = 0;
    unsigned char mGroup[3] = {0, 0, 0}; ///< decoded, not taken yet
    size_t mGroupBegin = 0;
    size_t mGroupEnd = 0;
    std::unique_ptr<z_stream_s> mpStream;
    std::vector<unsigned long long> mBlocks; ///< their bytes, as stored
    size_t mBlock = 0;                       ///< the next one
    unsigned long long mStoredLeft = 0;      ///< of the block
    std::vector<char> mStored;
};
