#include "PDATA/SnapshotBody.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/clsSplitPath.h"
#include "PDATA/ParticleColumns.h"
#include "PDATA/clsBinaryReader.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsTextReader.h"

namespace {

// Positions and IDs in the order of their IDs, equal ones in the file's order. Velocity, radius, type and
// value stay where they are: the sorted order serves the search for a position by its ID alone.
// False: memory was short, and the order is the file's.
bool SortById(const ParticleArrays_st& arrays, size_t number) {
    if (!arrays.mpID || std::is_sorted(arrays.mpID, arrays.mpID + number)) return true;
    std::unique_ptr<uint64_t[]> keys(new (std::nothrow) uint64_t[number]);
    std::unique_ptr<float[][3]> pos(new (std::nothrow) float[number][3]);
    if (!keys || !pos) return false;
    for (size_t i = 0; i < number; ++i)
        keys[i] = static_cast<uint64_t>(static_cast<uint32_t>(arrays.mpID[i]) ^ 0x80000000u) << 32 | i;
    std::sort(keys.get(), keys.get() + number);
    for (size_t i = 0; i < number; ++i) {
        std::memcpy(pos[i], arrays.mpPos[keys[i] & 0xffffffffu], sizeof pos[i]);
        arrays.mpID[i] = static_cast<int>(static_cast<uint32_t>(keys[i] >> 32) ^ 0x80000000u);
    }
    std::memcpy(arrays.mpPos, pos.get(), number * sizeof pos[0]);
    return true;
}

template <class T>
void Clear(T* array, size_t first, size_t last) {
    if (array) std::memset(static_cast<void*>(array + first), 0, (last - first) * sizeof(T));
}

template <class READER>
std::string ReadWith(const SnapshotBody_st& job, long long& placeless) {
    READER reader(job);
    std::string damage = reader.Read();
    placeless = reader.GetPlaceless();
    return damage;
}

} // namespace

SnapshotBody_st MakeSnapshotBody(const DataLoader_cls& loader, const wxString& path, int number,
                                 const ParticleArrays_st& arrays, bool bHasID) {
    SnapshotBody_st job;
    job.mPath = NarrowPath(path);
    job.mDataType = loader.mCItemDataType.mValue;
    job.mBody = loader.GetBodyGrammer();
    job.mbDefaultBody = loader.IsDefaultBody();
    job.mHeaderBytes = loader.GetHeaderByte();
    job.mHeaderLines = loader.GetHeaderLine();
    job.mNumber = std::max(number, 0);
    job.mArrays = arrays;
    if (!bHasID) job.mArrays.mpID = nullptr;
    std::copy_n(loader.mCItemTranslate.mValue, 3, job.mAdjust.mTranslate);
    job.mAdjust.mScale = loader.mCItemScale.mValue;
    job.mAdjust.mScaleValue = loader.mCItemScaleValue1.mValue;
    job.mAdjust.mbLogarithm = loader.mCItemLogarithm.mValue == VALUE1_LOG10;
    job.mbSortById = loader.mCItemVariableNumber.mValue == NUMBER_SORTED;
    return job;
}

std::string ReadSnapshotBody(const SnapshotBody_st& job, long long* pPlaceless) {
    if (pPlaceless) *pPlaceless = 0;
    if (job.mNumber <= 0) return std::string();
    long long placeless = 0;
    const size_t number = static_cast<size_t>(job.mNumber);
    std::string damage;
    try {
        damage = job.mDataType == DATA_TEXT ? ReadWith<TextReader_cls>(job, placeless)
                                            : ReadWith<BinaryReader_cls>(job, placeless);
    } catch (const std::bad_alloc&) {
        ClearParticles(job.mArrays, ~0u, 0, number);
        damage = job.mPath + ": No memory to read the file, its particles are zero";
    }
    if (job.mbSortById && !SortById(job.mArrays, number))
        damage += (damage.empty() ? "" : "\n") + job.mPath + ": No memory to sort " + std::to_string(number) +
                  " particles by ID";
    if (!damage.empty()) std::puts(damage.c_str());
    if (placeless > 0)
        std::printf("%s: %lld of %d particles aren't drawn, their place is no number or too far\n",
                    job.mPath.c_str(), placeless, job.mNumber);
    if (pPlaceless) *pPlaceless = placeless;
    return damage;
}

bool IsShortOfMemory(const std::string& damage) {
    return damage.find(": No memory to ") != std::string::npos;
}

unsigned GetBodyItemBit(int code) {
    unsigned bit = 0;
    ForEachColumn([&bit, code](const auto& column) {
        if (column.mItem == code && code != kNoItem) bit = column.mBit;
    });
    return bit;
}

void ClearParticles(const ParticleArrays_st& arrays, unsigned bits, size_t first, size_t last) {
    if (first >= last) return;
    ForEachColumn([&](const auto& column) {
        if (bits & column.mBit) Clear(arrays.*column.mpArray, first, last);
    });
}

void ReadProgress_cls::Add(long long particles) {
    const long long before = mDone.fetch_add(particles, std::memory_order_relaxed);
    const long long now = before + particles;
    if (before / mInterval == now / mInterval) return;
    // 100 says that nobody reads any more: that is the thread's last word.
    const long long percentage = std::min<long long>(99, 100 * now / std::max<long long>(mNumber, 1));
    GThreadReaderPercentage.store(static_cast<int>(percentage), std::memory_order_relaxed);
    PostMenuEvent(ID_REFRESH_SB);
}
