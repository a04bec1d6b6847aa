#include "IMPORT/clsVtkBytes.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "IMPORT/clsByteFile.h"

namespace {

constexpr size_t kPiece = 1 << 14;
constexpr unsigned long long kMostBlocks = 1 << 26;
constexpr unsigned char kNone = 0xff;
constexpr unsigned char kPad = 0xfe;
constexpr unsigned char kBlank = 0xfd;

std::array<unsigned char, 256> MakeTable() {
    std::array<unsigned char, 256> table;
    table.fill(kNone);
    const char* letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (unsigned char i = 0; i < 64; ++i)
        table[static_cast<unsigned char>(letters[i])] = i;
    table['='] = kPad;
    for (const char c : {' ', '\t', '\r', '\n'})
        table[static_cast<unsigned char>(c)] = kBlank;
    return table;
}

const std::array<unsigned char, 256> kTable = MakeTable();

} // namespace

VtkBytes_cls::VtkBytes_cls(ByteFile_cls* pFile, const VtkArray_st& array) : mpFile(pFile), mArray(array) {
    mpFile->Seek(array.mBegin);
    if (array.mCoding == VtkCoding::Plain) return;
    if (array.mbCompressed) {
        ReadBlockHead();
        return;
    }
    const unsigned long long bytes = TakeHeadNumber();
    if (bytes < static_cast<unsigned long long>(array.CountBytes()))
        mpFile->Fail(array.mName + " should have " + std::to_string(array.CountBytes()) + " bytes, but has " +
                     std::to_string(bytes));
}

VtkBytes_cls::~VtkBytes_cls() {
    if (mpStream) inflateEnd(mpStream.get());
}

void VtkBytes_cls::FailCut() const { mpFile->Fail(mArray.mName + " is cut off"); }

// Groups of four letters are three bytes; a padded one may be followed by others, as where a head ends.
size_t VtkBytes_cls::TakeLetters(char* pOut, size_t count) {
    size_t done = 0;
    unsigned char group[4];
    size_t filled = 0;
    while (done < count) {
        if (mGroupBegin < mGroupEnd) {
            pOut[done++] = static_cast<char>(mGroup[mGroupBegin++]);
            continue;
        }
        if (mLetter == mLetters.size()) {
            const long long left = mArray.mEnd - mpFile->Tell();
            mLetters.resize(static_cast<size_t>(std::clamp<long long>(left, 0, kPiece)));
            mLetters.resize(mpFile->Read(mLetters.data(), mLetters.size()));
            mLetter = 0;
            if (mLetters.empty()) return done;
        }
        const unsigned char value = kTable[static_cast<unsigned char>(mLetters[mLetter++])];
        if (value == kBlank) continue;
        if (value == kNone || (value == kPad && filled < 2))
            mpFile->Fail(mArray.mName + " holds letters that no base64 has");
        group[filled++] = value;
        if (filled < 4) continue;
        filled = 0;
        const size_t pads = (group[2] == kPad ? 1u : 0u) + (group[3] == kPad ? 1u : 0u);
        if (group[2] == kPad && group[3] != kPad)
            mpFile->Fail(mArray.mName + " holds letters that no base64 has");
        for (unsigned char& letter : group)
            letter = letter == kPad ? 0 : letter;
        mGroup[0] = static_cast<unsigned char>(group[0] << 2 | group[1] >> 4);
        mGroup[1] = static_cast<unsigned char>(group[1] << 4 | group[2] >> 2);
        mGroup[2] = static_cast<unsigned char>(group[2] << 6 | group[3]);
        mGroupBegin = 0;
        mGroupEnd = 3 - pads;
    }
    return done;
}

void VtkBytes_cls::TakeStored(char* pOut, size_t count) {
    const size_t done =
        mArray.mCoding == VtkCoding::Base64 ? TakeLetters(pOut, count) : mpFile->Read(pOut, count);
    if (done < count) FailCut();
}

unsigned long long VtkBytes_cls::TakeHeadNumber() {
    char bytes[8];
    const size_t size = mArray.mbWideHead ? 8 : 4;
    TakeStored(bytes, size);
    if (mArray.mbSwap) std::reverse(bytes, bytes + size);
    uint64_t wide = 0;
    uint32_t narrow = 0;
    std::memcpy(&wide, bytes, sizeof wide * (size == 8));
    std::memcpy(&narrow, bytes, sizeof narrow);
    return size == 8 ? wide : narrow;
}

// How many blocks, their size, that of the last one where it is smaller, and what each is stored as.
void VtkBytes_cls::ReadBlockHead() {
    const unsigned long long blocks = TakeHeadNumber();
    const unsigned long long size = TakeHeadNumber();
    const unsigned long long last = TakeHeadNumber();
    const auto needed = static_cast<unsigned long long>(mArray.CountBytes());
    const bool bFew = blocks <= kMostBlocks && size <= (1ull << 36);
    const unsigned long long all = !bFew || blocks == 0 ? 0 : (blocks - 1) * size + (last == 0 ? size : last);
    if (all < needed || last > size)
        mpFile->Fail(mArray.mName + " should have " + std::to_string(needed) + " bytes, but has others");
    for (unsigned long long i = 0; i < blocks; ++i)
        mBlocks.push_back(TakeHeadNumber());
    mpStream = std::make_unique<z_stream_s>();
    std::memset(mpStream.get(), 0, sizeof *mpStream);
    if (inflateInit(mpStream.get()) != Z_OK) mpFile->Fail("memory is too short to unpack it");
    mStored.resize(kPiece);
    NextBlock();
}

void VtkBytes_cls::NextBlock() {
    if (mBlock == mBlocks.size()) FailCut();
    mStoredLeft = mBlocks[mBlock++];
    inflateReset(mpStream.get());
    mpStream->avail_in = 0;
}

void VtkBytes_cls::Inflate(char* pOut, size_t count) {
    mpStream->next_out = reinterpret_cast<Bytef*>(pOut);
    mpStream->avail_out = static_cast<uInt>(count);
    while (mpStream->avail_out > 0) {
        if (mpStream->avail_in == 0 && mStoredLeft > 0) {
            const auto here = static_cast<size_t>(std::min<unsigned long long>(mStoredLeft, mStored.size()));
            TakeStored(mStored.data(), here);
            mStoredLeft -= here;
            mpStream->next_in = reinterpret_cast<Bytef*>(mStored.data());
            mpStream->avail_in = static_cast<uInt>(here);
        }
        const int result = inflate(mpStream.get(), Z_NO_FLUSH);
        if (result == Z_STREAM_END) {
            if (mpStream->avail_in > 0 || mStoredLeft > 0) FailCut();
            if (mpStream->avail_out > 0) NextBlock();
        } else if (result != Z_OK) {
            mpFile->Fail(mArray.mName + " can't be unpacked; it is damaged");
        }
    }
}

void VtkBytes_cls::Read(char* pOut, size_t count) {
    if (mArray.mbCompressed)
        Inflate(pOut, count);
    else
        TakeStored(pOut, count);
}
