// One dataset of an HDF5 file: sizes are checked before memory is taken, numbers become ours.
#pragma once

#include <string>

#include "IMPORT/clsHdf5File.h"

class Hdf5Data_cls {
public:
    /// Open it; it may have no more than rows and, of each, a few numbers, or with `bFrames` these for each
    /// of many frames. The file must stay open as long. Throws ImportError_cls, as all calls do.
    Hdf5Data_cls(const Hdf5File_cls& file, const std::string& name, bool bFrames);
    ~Hdf5Data_cls();
    Hdf5Data_cls(const Hdf5Data_cls&) = delete;
    Hdf5Data_cls& operator=(const Hdf5Data_cls&) = delete;

    size_t GetFrames() const { return mSizes[0]; } ///< 1 without frames
    size_t GetRows() const { return mSizes[1]; }
    size_t GetWidth() const { return mSizes[2]; }
    bool IsScalar() const { return mRank == 0; }
    /// Does it hold numbers? Numbers with names count.
    bool HasNumbers() const;
    /// The number that stands where nothing was written, if the file's writer has chosen one.
    bool GetFillNumber(long long* pNumber) const;
    /// Throws where there are other rows, or where a frame can't be in the bytes that the file has for it.
    void Need(size_t rows, size_t width) const;

    /// All rows of a frame. Four bytes come bit for bit, eight rounded.
    void ReadFloats(size_t frame, float* pOut) const;
    void ReadDoubles(size_t frame, double* pOut) const;
    /// Large numbers without sign keep their bits.
    void ReadIntegers(size_t frame, long long* pOut) const;

private:
    using Handle = Hdf5File_cls::Handle;
    void MakeCache(Handle list, size_t bytes);
    /// Rows from `begin` on of a frame, as the memory type `type`.
    void ReadRows(Handle type, size_t frame, size_t begin, size_t count, void* pOut) const;

    const Hdf5File_cls& mFile;
    std::string mName;
    Handle mData = -1;
    int mRank = 0;
    bool mbFrames;
    size_t mSizes[3] = {1, 1, 1}; ///< frames, rows, width
    bool mbStored = true;         ///< enough bytes of it are there
};
