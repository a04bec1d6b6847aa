// Reads the records of a binary snapshot: pieces of the file that stay in the processor's cache are
// unpacked at once into the arrays, by two threads for big files.
#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

#include "PDATA/SnapshotBody.h"

class BinaryReader_cls {
public:
    explicit BinaryReader_cls(const SnapshotBody_st& job);
    /// Read, clear and adjust all particles. The default record clamps types to 0..4; any other keeps
    /// their lowest byte and makes 4 of what is over 4. Tells what the file lacks; empty: nothing.
    std::string Read();
    /// Particles read that have no place (CountPlaceless).
    long long GetPlaceless() const { return mPlaceless; }

private:
    /// One item of the record that some array takes.
    struct Item_st {
        int mCode;
        size_t mOffset; ///< bytes before it in the record
    };

    void ReadRange(int file, size_t first, size_t last, ReadProgress_cls* pProgress);
    void CountPlaces(const unsigned char* pRecords, size_t number);
    size_t ReadPiece(int file, unsigned char* pBuffer, size_t first, size_t number);
    void Unpack(const unsigned char* pRecords, size_t first, size_t number) const;
    void UnpackItem(const Item_st& item, const unsigned char* pRecords, size_t first, size_t number) const;

    const SnapshotBody_st& mJob;
    std::vector<Item_st> mItems; ///< without dummies and unknown codes
    size_t mRecordBytes = 0;
    bool mbStream = false;        ///< write past the cache
    unsigned mClearBits = 0;      ///< arrays that the file has nothing for and that aren't zero yet
    unsigned mTailBits = 0;       ///< arrays to clear behind the end of a short file
    std::atomic<size_t> mRead{0}; ///< whole records found
    std::atomic<long long> mPlaceless{0};
    std::atomic<bool> mbNoMemory{false};
};
