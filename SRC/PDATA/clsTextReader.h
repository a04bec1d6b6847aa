// Reads the lines of a text snapshot, one line a particle, with several threads. Which thread reads a line
// changes nothing in the result.
//
// The file is worked off in chunks that stay in the cache. A thread takes the next chunk, counts the lines
// that begin in it, hands the number of the first line behind it to whoever has the next chunk, and then
// reads its own lines.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "PDATA/SnapshotBody.h"

class TextReader_cls {
public:
    explicit TextReader_cls(const SnapshotBody_st& job);
    /// Read, clear and adjust all particles. The numbers are those that sscanf gives with "%f" and "%d"
    /// for each column in the C locale: a column that doesn't convert ends its line, and what is missing
    /// stays zero. Of a type the lowest byte counts, and over 4 it is 4. Tells what the file lacks; empty:
    /// nothing.
    std::string Read();
    /// Particles read that have no place (CountPlaceless).
    long long GetPlaceless() const { return mPlaceless; }

private:
    /// One number of a line; all targets null: a float that is thrown away.
    struct Column_st {
        float* mpFloat = nullptr;
        int* mpInt = nullptr;
        unsigned char* mpType = nullptr;
        size_t mStride = 1; ///< elements from one particle to the next
        bool mbInt = false;
    };
    struct Chunk_st;

    void AddColumns(int code);
    void Work(int file);
    static void WaitTurn(int turn);
    void LoadChunk(int file, size_t index, Chunk_st* pChunk) const;
    void LoadLineEnd(int file, Chunk_st* pChunk) const;
    void ReadLines(const Chunk_st& chunk, long long firstLine);
    size_t ReadLine(const char* pLine, size_t particle, const char** ppRest) const;
    size_t ReadOddLine(const char* pLine, size_t particle) const;
    std::string Finish(bool bOpened);

    const SnapshotBody_st& mJob;
    std::vector<Column_st> mColumns;
    unsigned mClearBits; ///< arrays that aren't zero yet
    long long mSize = 0; ///< of the file when it was opened
    size_t mChunkNumber = 0;
    std::atomic<size_t> mNextChunk{0};
    std::atomic<int> mWorkers{0}; ///< threads that had memory to work with
    /// Lines that begin before chunk k, plus one; 0 while unknown (release / acquire).
    std::unique_ptr<std::atomic<long long>[]> mLinesBefore;
    std::atomic<long long> mShortLines{0}; ///< lines that lack a number
    std::atomic<long long> mPlaceless{0};
    std::atomic<long long> mFirstShort{-1}; ///< the first of these, from 0
    ReadProgress_cls mProgress;
};
