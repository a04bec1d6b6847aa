// Reading the body of a snapshot file into the arrays of a block, on any thread.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "PDATA/ParticleAdjust.h"
#include "PDATA/ParticleArrays.h"

class DataLoader_cls;
class wxString;

/// All that a body reader needs to know, copied before it starts.
struct SnapshotBody_st {
    std::string mPath;      ///< as the file system knows it
    int mDataType = 0;      ///< a DataType
    std::vector<int> mBody; ///< the record's codes
    bool mbDefaultBody = false;
    long long mHeaderBytes = 0; ///< bytes before the first record
    int mHeaderLines = 0;       ///< lines before the first particle
    int mNumber = 0;            ///< particles
    ParticleArrays_st mArrays;
    ParticleAdjust_st mAdjust;
    bool mbSortById = false;
};

/// The job of reading `number` particles from `path` by the loader's present settings.
SnapshotBody_st MakeSnapshotBody(const DataLoader_cls& loader, const wxString& path, int number,
                                 const ParticleArrays_st& arrays, bool bHasID);

/// Fill the arrays, adjust them and, if wanted, sort positions and IDs by ID. A file that ends early, a
/// line that doesn't fit: what was read stays, the rest is zero before adjusting, and the answer tells it, as
/// standard output does, in a line or two; empty where all is well. Standard output tells of particles whose
/// place can't be drawn as well, which is no damage; *pPlaceless is their number. Keeps
/// GThreadReaderPercentage up to date.
std::string ReadSnapshotBody(const SnapshotBody_st& job, long long* pPlaceless = nullptr);
/// Does such an answer tell that memory was short? The file may be whole then.
bool IsShortOfMemory(const std::string& damage);

/// Bits of the arrays that an item code fills; 0 for dummies and unknown codes.
unsigned GetBodyItemBit(int code);
/// Set the entries first to last - 1 of the arrays of `bits` (ParticleArrayBit) to zero.
void ClearParticles(const ParticleArrays_st& arrays, unsigned bits, size_t first, size_t last);

/// Progress of one read, fed by several threads.
class ReadProgress_cls {
public:
    /// Percentage and status bar are refreshed whenever `interval` particles more are done.
    ReadProgress_cls(long long number, long long interval) : mNumber(number), mInterval(interval) {}
    void Add(long long particles);

private:
    std::atomic<long long> mDone{0};
    long long mNumber;
    long long mInterval;
};
