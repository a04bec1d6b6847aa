#include "IMPORT/clsByteFile.h"

#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "COMMON/TextSplit.h"
#include "IMPORT/ParticleSource.h"
#include "IMPORT/PlainFile.h"

namespace {

constexpr size_t kBuffer = size_t(1) << 18;
constexpr size_t kLongestWord = size_t(1) << 12;
constexpr size_t kLongestLine = size_t(1) << 13; // what is kept of it

bool IsSpace(char c) { return c == '\n' || c == '\r' || IsBlank(c); }

} // namespace

ByteFile_cls::ByteFile_cls(const std::string& path) : mPath(path), mBuffer(kBuffer) {
    const int file = OpenPlainFile(path, &mMostBytes);
    mpFile = gzdopen(file, "rb");
    if (!mpFile) {
        close(file);
        Fail("memory is too short to open it");
    }
    gzbuffer(mpFile, 1 << 17);
    if (!gzdirect(mpFile)) mMostBytes *= kMostInflated;
}

ByteFile_cls::~ByteFile_cls() { gzclose(mpFile); }

void ByteFile_cls::Fail(const std::string& text) const { throw ImportError_cls(mPath + ": " + text); }

bool ByteFile_cls::Fill() {
    std::memmove(mBuffer.data(), mBuffer.data() + mPlace, mEnd - mPlace);
    mBufferBegin += static_cast<long long>(mPlace);
    mEnd -= mPlace;
    mPlace = 0;
    if (mEnd == mBuffer.size()) return false;
    const int count = gzread(mpFile, mBuffer.data() + mEnd, static_cast<unsigned>(mBuffer.size() - mEnd));
    int error = Z_OK;
    const char* text = gzerror(mpFile, &error);
    if (error == Z_BUF_ERROR) Fail("the compressed file is cut off");
    if (count < 0) Fail(text);
    mEnd += static_cast<size_t>(count);
    return count > 0;
}

void ByteFile_cls::Seek(long long place) {
    if (place >= mBufferBegin && place <= mBufferBegin + static_cast<long long>(mEnd)) {
        mPlace = static_cast<size_t>(place - mBufferBegin);
        return;
    }
    mPlace = mEnd = 0;
    mBufferBegin = place;
    if (place < 0 || place > mMostBytes || gzseek(mpFile, place, SEEK_SET) < 0)
        Fail("something should stand where the file doesn't reach");
}

size_t ByteFile_cls::Read(char* pOut, size_t count) {
    size_t done = 0;
    while (done < count) {
        if (mPlace == mEnd && !Fill()) break;
        const size_t here = std::min(count - done, mEnd - mPlace);
        std::memcpy(pOut + done, mBuffer.data() + mPlace, here);
        mPlace += here;
        done += here;
    }
    return done;
}

bool ByteFile_cls::Skip(long long count) {
    if (count < 0 || count > mMostBytes - Tell()) return false;
    Seek(Tell() + count);
    return true;
}

bool ByteFile_cls::NextLine(std::string* pLine) {
    pLine->clear();
    if (mPlace == mEnd && !Fill()) return false;
    for (;;) {
        const char* begin = mBuffer.data() + mPlace;
        const auto* end = static_cast<const char*>(std::memchr(begin, '\n', mEnd - mPlace));
        const size_t here = end ? static_cast<size_t>(end - begin) : mEnd - mPlace;
        pLine->append(begin, std::min(here, kLongestLine - std::min(kLongestLine, pLine->size())));
        mPlace += here + (end ? 1 : 0);
        if (end || (mPlace == mEnd && !Fill())) break;
    }
    if (!pLine->empty() && pLine->back() == '\r') pLine->pop_back();
    return true;
}

bool ByteFile_cls::SkipBlanks() {
    for (;;) {
        while (mPlace < mEnd && IsSpace(mBuffer[mPlace]))
            ++mPlace;
        if (mPlace < mEnd) return true;
        if (!Fill()) return false;
    }
}

std::string_view ByteFile_cls::NextWord() {
    if (!SkipBlanks()) return {};
    for (size_t length = 0;;) {
        while (mPlace + length < mEnd && !IsSpace(mBuffer[mPlace + length]))
            ++length;
        if (length > kLongestWord) Fail("has a word that is too long for a number");
        if (mPlace + length < mEnd || !Fill()) {
            const std::string_view word(mBuffer.data() + mPlace, length);
            mPlace += length;
            return word;
        }
    }
}

bool ByteFile_cls::SkipWords(long long count) {
    for (; count > 0; --count)
        if (NextWord().empty()) return false;
    return true;
}

bool ByteFile_cls::TakeIfNext(std::string_view word) {
    const long long place = Tell();
    bool bNext = SkipBlanks();
    while (bNext && mEnd - mPlace < word.size())
        bNext = Fill();
    bNext = bNext && std::string_view(mBuffer.data() + mPlace, word.size()) == word;
    if (bNext)
        mPlace += word.size();
    else
        Seek(place);
    return bNext;
}
