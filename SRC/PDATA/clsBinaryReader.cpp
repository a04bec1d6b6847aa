#include "PDATA/clsBinaryReader.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

#include "PDATA/RecordCopy.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr size_t kPieceBytes = 256 << 10;  // stays in the second-level cache
constexpr size_t kBlockBytes = 4 << 10;    // stays in the first-level cache while its items are unpacked
constexpr size_t kBytesForTwo = 4 << 20;   // from here on a second thread pays
constexpr size_t kBytesToStream = 8 << 20; // from here on the arrays don't stay in the cache anyway
constexpr size_t kGroup = 16;              // records after which every array has filled whole cache lines
constexpr size_t kPad = 16;                // read behind the last record
constexpr int kMaxType = 4;

using Bytes = const unsigned char* __restrict;

int ReadInt(const unsigned char* from) {
    int value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

void CopyTypeClamped(Bytes from, size_t stride, unsigned char* __restrict to, size_t number) {
    for (size_t i = 0; i < number; ++i)
        to[i] = static_cast<unsigned char>(std::clamp(ReadInt(from + stride * i), 0, kMaxType));
}

void CopyTypeByte(Bytes from, size_t stride, unsigned char* __restrict to, size_t number) {
    for (size_t i = 0; i < number; ++i)
        to[i] = static_cast<unsigned char>(std::min(ReadInt(from + stride * i) & 255, kMaxType));
}

// At least one group of records, and whole groups.
size_t RecordsIn(size_t bytes, size_t record) {
    return std::max<size_t>(1, bytes / std::max<size_t>(record, 4) / kGroup) * kGroup;
}

// Percentage and status bar as a reader by chunks would refresh them.
long long Interval(const SnapshotBody_st& job) {
    const long long number = job.mNumber;
    if (job.mbDefaultBody) return number > 2000000 ? 200000 : 100000;
    if (number > 50000000) return number / 50;
    if (number > 20000000) return number / 20;
    return 1000000;
}

} // namespace

BinaryReader_cls::BinaryReader_cls(const SnapshotBody_st& job) : mJob(job) {
    unsigned filled = 0;
    for (const int code : job.mBody) {
        const unsigned bit = GetBodyItemBit(code);
        if (bit != 0 && !(bit == PARTICLE_ID && !job.mArrays.mpID)) {
            // The last of two items for one array wins: forget the first.
            mItems.erase(std::remove_if(mItems.begin(), mItems.end(),
                                        [code](const Item_st& item) { return item.mCode == code; }),
                         mItems.end());
            mItems.push_back({code, mRecordBytes});
            filled |= bit;
        }
        mRecordBytes += static_cast<size_t>(GrammerBase_cls::GetBodyItemByte(code));
    }
    // What is adjusted at once had better stay in the cache.
    mbStream = job.mAdjust.IsNothing() && static_cast<size_t>(job.mNumber) * mRecordBytes >= kBytesToStream;
    mTailBits = filled & ~job.mArrays.mZeroBits;
    mClearBits = ~filled & ~job.mArrays.mZeroBits;
}

std::string BinaryReader_cls::Read() {
    const size_t number = static_cast<size_t>(mJob.mNumber);
    const int file = open(mJob.mPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) std::puts("Read Main Fails!!");
    ReadProgress_cls progress(mJob.mNumber, Interval(mJob));
    const bool bTwo = number * mRecordBytes >= kBytesForTwo && std::thread::hardware_concurrency() > 1;
    const size_t half = bTwo ? number / 2 / kGroup * kGroup : 0;
    std::thread helper;
    if (bTwo) {
        try {
            helper = std::thread([&] { ReadRange(file, 0, half, &progress); });
        } catch (const std::system_error&) {
            ReadRange(file, 0, half, &progress);
        }
    }
    ReadRange(file, half, number, &progress);
    if (helper.joinable()) helper.join();
    if (file < 0) return mJob.mPath + ": the file can't be opened, its particles are zero";
    close(file);
    if (mRead >= number) return std::string();
    return mJob.mPath + ": " + (mbNoMemory ? "No memory to read on" : "the file ends") + " after " +
           std::to_string(mRead.load()) + " of " + std::to_string(number) + " particles, the others are zero";
}

void BinaryReader_cls::ReadRange(int file, size_t first, size_t last, ReadProgress_cls* pProgress) {
    const size_t pieceNumber = RecordsIn(kPieceBytes, mRecordBytes);
    std::unique_ptr<unsigned char[]> buffer(
        new (std::nothrow) unsigned char[pieceNumber * mRecordBytes + kPad]);
    if (!buffer) mbNoMemory.store(true);
    bool bEnd = file < 0 || !buffer;
    while (first < last) {
        const size_t number = std::min(pieceNumber, last - first);
        const size_t filled = bEnd ? 0 : ReadPiece(file, buffer.get(), first, number);
        if (filled > 0) {
            Unpack(buffer.get(), first, filled);
            CountPlaces(buffer.get(), filled);
        }
        bEnd = bEnd || filled < number;
        ClearParticles(mJob.mArrays, mClearBits, first, first + number);
        ClearParticles(mJob.mArrays, mTailBits, first + filled, first + number);
        mJob.mAdjust.Apply(mJob.mArrays, first, first + number);
        pProgress->Add(static_cast<long long>(number));
        first += number;
    }
    FinishStreams();
}

// Returns the records to unpack. A record that the file's end cuts is one of them: its whole words stay,
// the others are zero.
size_t BinaryReader_cls::ReadPiece(int file, unsigned char* pBuffer, size_t first, size_t number) {
    const size_t record = mRecordBytes;
    const size_t wanted = number * record;
    const off_t start = static_cast<off_t>(mJob.mHeaderBytes) + static_cast<off_t>(first * record);
    size_t got = 0;
    while (got < wanted) {
        const ssize_t count = pread(file, pBuffer + got, wanted - got, start + static_cast<off_t>(got));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        got += static_cast<size_t>(count);
    }
    if (got == wanted) {
        mRead += number;
        return number;
    }
    mRead += got / record;
    const size_t whole = got - got % 4;
    const size_t cut = whole % record == 0 ? whole : whole - whole % record + record;
    std::memset(pBuffer + whole, 0, cut - whole);
    return cut / record;
}

// Of the records, as they are in the cache and the arrays may not be.
void BinaryReader_cls::CountPlaces(const unsigned char* pRecords, size_t number) {
    for (const Item_st& item : mItems)
        if (item.mCode == BODY_XYZ)
            mPlaceless +=
                static_cast<long long>(CountPlaceless(pRecords + item.mOffset, mRecordBytes, number));
}

void BinaryReader_cls::Unpack(const unsigned char* pRecords, size_t first, size_t number) const {
    if (mItems.empty()) return;
    const size_t block = RecordsIn(kBlockBytes, mRecordBytes);
    for (size_t start = 0; start < number; start += block) {
        const size_t count = std::min(block, number - start);
        for (const Item_st& item : mItems)
            UnpackItem(item, pRecords + start * mRecordBytes, first + start, count);
    }
}

void BinaryReader_cls::UnpackItem(const Item_st& item, const unsigned char* pRecords, size_t first,
                                  size_t number) const {
    const ParticleArrays_st& arrays = mJob.mArrays;
    const unsigned char* from = pRecords + item.mOffset;
    const size_t stride = mRecordBytes;
    switch (item.mCode) {
    case BODY_XYZ:
        CopyVectors(from, stride, arrays.mpPos + first, number, mbStream);
        break;
    case BODY_VXYZ:
        CopyVectors(from, stride, arrays.mpVel + first, number, mbStream);
        break;
    case BODY_RADIUS:
        CopyScalars(from, stride, arrays.mpRadius + first, number, mbStream);
        break;
    case BODY_ID:
        CopyScalars(from, stride, arrays.mpID + first, number, mbStream);
        break;
    case BODY_VALUE1:
        CopyScalars(from, stride, arrays.mpValue1 + first, number, mbStream);
        break;
    case BODY_TYPE:
        if (mJob.mbDefaultBody)
            CopyTypeClamped(from, stride, arrays.mpType + first, number);
        else
            CopyTypeByte(from, stride, arrays.mpType + first, number);
        break;
    default:
        break;
    }
}
