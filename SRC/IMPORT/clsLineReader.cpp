#include "IMPORT/clsLineReader.h"

#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "IMPORT/ParticleSource.h"
#include "IMPORT/PlainFile.h"

namespace {

constexpr size_t kBuffer = size_t(1) << 20;
constexpr size_t kLongestLine = size_t(64) << 20;

} // namespace

LineReader_cls::LineReader_cls(const std::string& path) : mPath(path), mBuffer(kBuffer) {
    const int file = OpenPlainFile(path, &mMostBytes);
    mpFile = gzdopen(file, "rb");
    if (!mpFile) {
        close(file);
        throw ImportError_cls(path + ": memory is too short to open it");
    }
    gzbuffer(mpFile, 1 << 18);
    if (!gzdirect(mpFile)) mMostBytes *= kMostInflated;
}

LineReader_cls::~LineReader_cls() { gzclose(mpFile); }

bool LineReader_cls::Fill() {
    if (!mWrong.empty()) Fail(mWrong);
    if (mbEnd) return false;
    // The last line stays, so that it can come once more.
    std::memmove(mBuffer.data(), mBuffer.data() + mLast, mEnd - mLast);
    mEnd -= mLast;
    mBegin -= mLast;
    mLast = 0;
    if (mEnd == mBuffer.size()) {
        if (mBuffer.size() >= kLongestLine) Fail("has a line that is too long for text");
        mBuffer.resize(2 * mBuffer.size());
    }
    const int count = gzread(mpFile, mBuffer.data() + mEnd, static_cast<unsigned>(mBuffer.size() - mEnd));
    int error = Z_OK;
    const char* text = gzerror(mpFile, &error);
    if (count < 0 || error == Z_BUF_ERROR)
        mWrong = error == Z_BUF_ERROR ? "the compressed file is cut off" : std::string(text);
    mEnd += static_cast<size_t>(std::max(count, 0));
    mbEnd = count <= 0;
    if (mbEnd && !mWrong.empty()) Fail(mWrong);
    return count > 0;
}

bool LineReader_cls::Next(std::string_view* pLine) {
    mLast = mBegin;
    size_t looked = 0;
    for (;;) {
        const char* begin = mBuffer.data() + mBegin;
        const auto* end = static_cast<const char*>(std::memchr(begin + looked, '\n', mEnd - mBegin - looked));
        if (end) {
            *pLine = std::string_view(begin, static_cast<size_t>(end - begin));
            mBegin += pLine->size() + 1;
            mbWhole = true;
            break;
        }
        looked = mEnd - mBegin;
        if (Fill()) continue;
        if (mBegin == mEnd) return false;
        *pLine = std::string_view(mBuffer.data() + mBegin, mEnd - mBegin);
        mBegin = mEnd;
        mbWhole = false;
        break;
    }
    if (!pLine->empty() && pLine->back() == '\r') pLine->remove_suffix(1);
    ++mLine;
    return true;
}

void LineReader_cls::Back() {
    mBegin = mLast;
    --mLine;
}

bool LineReader_cls::CanHold(long long lines, long long least) const { return lines <= mMostBytes / least; }

void LineReader_cls::Fail(const std::string& text) const {
    throw ImportError_cls(mPath + ", line " + std::to_string(mLine) + ": " + text);
}
