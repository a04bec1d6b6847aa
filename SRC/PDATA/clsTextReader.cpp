#include "PDATA/clsTextReader.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>

#include "COMMON/Globals.h"
#include "PDATA/NumberScan.h"
#include "PDATA/RecordCopy.h"
#include "PDATA/clsGrammerBase.h"

/// A stretch of the file in memory, with the whole of the last line that begins in it and a NUL behind.
struct TextReader_cls::Chunk_st {
    std::vector<char> mBuffer;
    size_t mLength = 0;    ///< bytes in the buffer
    size_t mFirst = 0;     ///< where the first line that begins here begins
    size_t mLines = 0;     ///< lines that begin here
    size_t mLast = 0;      ///< where the last of them begins
    long long mOffset = 0; ///< of the buffer in the file
};

namespace {

constexpr size_t kChunkBytes = 256 << 10;
constexpr size_t kBehind = 4096;              // read along for the chunk's last line
constexpr size_t kLineMax = size_t(64) << 20; // a longer line is cut here
constexpr size_t kTail = 2 + kScanPad; // the byte before the chunk, the NUL, and what is looked at behind
constexpr int kThreadMax = 64;

size_t ReadAt(int file, char* to, size_t wanted, long long offset) {
    size_t got = 0;
    while (got < wanted) {
        const ssize_t count =
            pread(file, to + got, wanted - got, static_cast<off_t>(offset) + static_cast<off_t>(got));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        got += static_cast<size_t>(count);
    }
    return got;
}

// In runs of 255 so that the compiler can count in bytes, 16 or 32 at a time.
size_t CountLineEnds(const char* p, size_t length) {
    size_t sum = 0;
    while (length > 0) {
        const size_t run = std::min<size_t>(length, 255);
        unsigned char count = 0;
        for (size_t i = 0; i < run; ++i)
            count = static_cast<unsigned char>(count + (p[i] == '\n'));
        sum += count;
        p += run;
        length -= run;
    }
    return sum;
}

unsigned char TypeByte(int type) { return static_cast<unsigned char>(std::min(type & 255, 4)); }

/// The C library scans by the C locale in this thread while one of these lives.
class NumberLocale_cls {
public:
    NumberLocale_cls() : mBefore(uselocale(CLocale())) {}
    ~NumberLocale_cls() { uselocale(mBefore); }
    NumberLocale_cls(const NumberLocale_cls&) = delete;
    NumberLocale_cls& operator=(const NumberLocale_cls&) = delete;

private:
    static locale_t CLocale() {
        static const locale_t sLocale = newlocale(LC_ALL_MASK, "C", nullptr);
        return sLocale;
    }
    locale_t mBefore;
};

} // namespace

TextReader_cls::TextReader_cls(const SnapshotBody_st& job)
    : mJob(job), mClearBits(~job.mArrays.mZeroBits),
      mProgress(job.mNumber, job.mNumber > 2000000 ? 100000 : 50000) {
    for (const int code : job.mBody)
        AddColumns(code);
}

void TextReader_cls::AddColumns(int code) {
    const ParticleArrays_st& arrays = mJob.mArrays;
    const int number = GrammerBase_cls::GetBodyItemByte(code) / 4;
    for (int k = 0; k < number; ++k) {
        Column_st column;
        if (code == BODY_XYZ || code == BODY_VXYZ) {
            column.mpFloat = (code == BODY_XYZ ? arrays.mpPos : arrays.mpVel)[0] + k;
            column.mStride = 3;
        }
        if (code == BODY_RADIUS) column.mpFloat = arrays.mpRadius;
        if (code == BODY_VALUE1) column.mpFloat = arrays.mpValue1;
        if (code == BODY_ID) column.mpInt = arrays.mpID;
        if (code == BODY_TYPE) column.mpType = arrays.mpType;
        column.mbInt = code == BODY_ID || code == BODY_TYPE;
        mColumns.push_back(column);
    }
}

std::string TextReader_cls::Read() {
    const int file = open(mJob.mPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status;
    if (file >= 0 && fstat(file, &status) == 0 && S_ISREG(status.st_mode)) mSize = status.st_size;
    mChunkNumber = (static_cast<size_t>(mSize) + kChunkBytes - 1) / kChunkBytes;
    mLinesBefore = std::make_unique<std::atomic<long long>[]>(mChunkNumber + 1);
    mLinesBefore[0].store(1, std::memory_order_relaxed);
    const size_t wanted = static_cast<size_t>(std::clamp(GThreadNumberReadAscii.load(), 1, kThreadMax));
    std::vector<std::thread> helpers;
    while (helpers.size() + 1 < std::min(wanted, mChunkNumber)) {
        try {
            helpers.emplace_back([this, file] { Work(file); });
        } catch (const std::system_error&) {
            break;
        }
    }
    Work(file);
    for (std::thread& helper : helpers)
        helper.join();
    if (file >= 0) close(file);
    return Finish(file >= 0);
}

// Counting takes less than a thread's sleep, but a slow disk far longer.
void TextReader_cls::WaitTurn(int turn) {
    constexpr int kYields = 100;
    if (turn < kYields)
        std::this_thread::yield();
    else
        std::this_thread::sleep_for(std::chrono::microseconds(100));
}

void TextReader_cls::Work(int file) {
    const NumberLocale_cls locale;
    const long long linesNeeded = static_cast<long long>(mJob.mHeaderLines) + mJob.mNumber;
    Chunk_st chunk;
    try {
        chunk.mBuffer.resize(kChunkBytes + kBehind + kTail);
    } catch (const std::bad_alloc&) {
        return; // before a chunk is taken, which others would wait for
    }
    ++mWorkers;
    for (;;) {
        const size_t index = mNextChunk.fetch_add(1, std::memory_order_relaxed);
        if (index >= mChunkNumber) return;
        LoadChunk(file, index, &chunk);
        long long before;
        // The thread with the chunk before this one only has to count its lines.
        for (int turn = 0; (before = mLinesBefore[index].load(std::memory_order_acquire)) == 0; ++turn)
            WaitTurn(turn);
        mLinesBefore[index + 1].store(before + static_cast<long long>(chunk.mLines),
                                      std::memory_order_release);
        const long long firstLine = before - 1;
        if (firstLine >= linesNeeded) return;
        if (chunk.mLines == 0 || firstLine + static_cast<long long>(chunk.mLines) <= mJob.mHeaderLines)
            continue;
        LoadLineEnd(file, &chunk);
        ReadLines(chunk, firstLine);
    }
}

void TextReader_cls::LoadChunk(int file, size_t index, Chunk_st* pChunk) const {
    Chunk_st& chunk = *pChunk;
    // A line begins behind a line end: the byte before the chunk tells whether one begins with it.
    const size_t lead = index > 0 ? 1 : 0;
    chunk.mOffset = static_cast<long long>(index * kChunkBytes - lead);
    const size_t own = std::min(kChunkBytes, static_cast<size_t>(mSize) - index * kChunkBytes);
    if (chunk.mBuffer.size() < kChunkBytes + kBehind + kTail)
        chunk.mBuffer.resize(kChunkBytes + kBehind + kTail);
    char* text = chunk.mBuffer.data();
    chunk.mLength = ReadAt(file, text, lead + own + kBehind, chunk.mOffset);
    text[chunk.mLength] = '\0';
    // Line ends at 0 to last - 1 have the beginning of a line of this chunk behind them.
    const size_t last = std::min(chunk.mLength, lead + own - 1);
    chunk.mLines = CountLineEnds(text, last) + (lead == 0 ? 1 : 0);
    chunk.mFirst = 0;
    chunk.mLast = 0;
    if (chunk.mLines == 0) return;
    if (lead > 0)
        chunk.mFirst = static_cast<size_t>(static_cast<char*>(std::memchr(text, '\n', last)) - text) + 1;
    const void* end = memrchr(text, '\n', last);
    chunk.mLast = end ? static_cast<size_t>(static_cast<const char*>(end) - text) + 1 : 0;
}

// Reads on until the last line is whole.
void TextReader_cls::LoadLineEnd(int file, Chunk_st* pChunk) const {
    Chunk_st& chunk = *pChunk;
    size_t from = chunk.mLast;
    while (!std::memchr(chunk.mBuffer.data() + from, '\n', chunk.mLength - from)) {
        from = chunk.mLength;
        if (chunk.mLength >= kLineMax) return;
        if (chunk.mBuffer.size() < 2 * chunk.mLength + kTail) {
            try {
                chunk.mBuffer.resize(2 * chunk.mLength + kTail);
            } catch (const std::bad_alloc&) {
                return;
            }
        }
        const size_t got = ReadAt(file, chunk.mBuffer.data() + from, chunk.mBuffer.size() - kTail - from,
                                  chunk.mOffset + static_cast<long long>(from));
        if (got == 0) return;
        chunk.mLength += got;
        chunk.mBuffer[chunk.mLength] = '\0';
    }
}

void TextReader_cls::ReadLines(const Chunk_st& chunk, long long firstLine) {
    const long long behind = firstLine + static_cast<long long>(chunk.mLines);
    const long long head = mJob.mHeaderLines;
    const size_t first = static_cast<size_t>(std::max(firstLine - head, 0LL));
    const size_t last = static_cast<size_t>(std::min<long long>(behind - head, mJob.mNumber));
    ClearParticles(mJob.mArrays, mClearBits, first, last);
    const char* line = chunk.mBuffer.data() + chunk.mFirst;
    const char* const end = chunk.mBuffer.data() + chunk.mLength;
    const auto skip = [end](const char* from) {
        const void* found = std::memchr(from, '\n', static_cast<size_t>(end - from));
        return found ? static_cast<const char*>(found) + 1 : end;
    };
    for (long long i = firstLine; i < head; ++i)
        line = skip(line);
    long long shortLines = 0;
    long long firstShort = -1;
    for (size_t i = first; i < last; ++i) {
        const char* rest = line;
        if (ReadLine(line, i, &rest) < mColumns.size() && shortLines++ == 0)
            firstShort = static_cast<long long>(i) + head;
        line = skip(rest);
    }
    if (first < last) {
        const auto* const places = reinterpret_cast<const unsigned char*>(mJob.mArrays.mpPos + first);
        mPlaceless +=
            static_cast<long long>(CountPlaceless(places, sizeof *mJob.mArrays.mpPos, last - first));
    }
    mJob.mAdjust.Apply(mJob.mArrays, first, last);
    mProgress.Add(static_cast<long long>(last - first));
    if (shortLines == 0) return;
    mShortLines += shortLines;
    long long known = mFirstShort.load();
    while ((known < 0 || firstShort < known) && !mFirstShort.compare_exchange_weak(known, firstShort)) {
    }
}

// Returns how many columns were converted, and where to look for the line's end.
size_t TextReader_cls::ReadLine(const char* pLine, size_t particle, const char** ppRest) const {
    const char* p = pLine;
    size_t number = 0;
    for (const Column_st& column : mColumns) {
        while (IsLineBlank(*p))
            ++p;
        if (*p == '\n' || *p == '\0') break;
        const size_t at = particle * column.mStride;
        if (column.mbInt) {
            int value;
            if (!ScanInt(p, value)) return ReadOddLine(pLine, particle);
            if (column.mpInt) column.mpInt[at] = value;
            if (column.mpType) column.mpType[at] = TypeByte(value);
        } else {
            float value;
            if (!ScanFloat(p, value)) return ReadOddLine(pLine, particle);
            if (column.mpFloat) column.mpFloat[at] = value;
        }
        ++number;
    }
    *ppRest = p;
    return number;
}

// The slow road: what only the C library understands, such as hexadecimal numbers, "nan", or two numbers
// without a blank between them.
size_t TextReader_cls::ReadOddLine(const char* pLine, size_t particle) const {
    const std::string line(pLine, strcspn(pLine, "\n"));
    const char* p = line.c_str();
    size_t number = 0;
    for (const Column_st& column : mColumns) {
        const size_t at = particle * column.mStride;
        int length = 0;
        if (column.mbInt) {
            int value;
            if (std::sscanf(p, "%d%n", &value, &length) != 1) break;
            if (column.mpInt) column.mpInt[at] = value;
            if (column.mpType) column.mpType[at] = TypeByte(value);
        } else {
            float value;
            if (std::sscanf(p, "%f%n", &value, &length) != 1) break;
            if (column.mpFloat) column.mpFloat[at] = value;
        }
        p += length;
        ++number;
    }
    return number;
}

// Particles behind the file's end, and what the user should know.
std::string TextReader_cls::Finish(bool bOpened) {
    const long long known = mLinesBefore[mChunkNumber].load(std::memory_order_acquire);
    const long long number = mJob.mNumber;
    // Unknown: reading stopped at the last particle's line, somewhere before the end.
    const long long found =
        known == 0 && mWorkers > 0 ? number : std::clamp<long long>(known - 1 - mJob.mHeaderLines, 0, number);
    ClearParticles(mJob.mArrays, mClearBits, static_cast<size_t>(found), static_cast<size_t>(number));
    mJob.mAdjust.Apply(mJob.mArrays, static_cast<size_t>(found), static_cast<size_t>(number));
    const std::string& path = mJob.mPath;
    if (!bOpened) {
        std::puts("Read Main Fails!!");
        return path + ": the file can't be opened, its particles are zero";
    }
    if (mWorkers == 0) return path + ": No memory to read the file, its particles are zero";
    std::string text;
    if (found < number)
        text = path + ": the file ends after " + std::to_string(found) + " of " + std::to_string(number) +
               " particles, the others are zero";
    if (mShortLines > 0)
        text += (text.empty() ? path + ": " : "\n" + path + ": ") + std::to_string(mShortLines.load()) +
                " lines lack numbers or hold other text, the first is line " +
                std::to_string(mFirstShort.load() + 1);
    return text;
}
