// Bytes and words of a file, gzipped or not, from any place on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct gzFile_s;

class ByteFile_cls {
public:
    /// Throws ImportError_cls, as all calls do.
    explicit ByteFile_cls(const std::string& path);
    ~ByteFile_cls();
    ByteFile_cls(const ByteFile_cls&) = delete;
    ByteFile_cls& operator=(const ByteFile_cls&) = delete;

    /// The most bytes that it can have, unpacked.
    long long GetMostBytes() const { return mMostBytes; }
    long long Tell() const { return mBufferBegin + static_cast<long long>(mPlace); }
    void Seek(long long place);
    /// Up to `count` bytes; fewer at the end alone.
    size_t Read(char* pOut, size_t count);
    /// False where the file ends before.
    bool Skip(long long count);
    /// The next line without its end, of which a few thousand letters are kept; false at the end.
    bool NextLine(std::string* pLine);
    /// The next word between blanks and line ends; empty at the end. Good until the next call.
    std::string_view NextWord();
    /// Pass over words; false where the file ends before.
    bool SkipWords(long long count);
    /// Does this come next, behind blanks and line ends? Then it is passed over.
    bool TakeIfNext(std::string_view word);

    [[noreturn]] void Fail(const std::string& text) const;

private:
    /// More bytes behind those from mPlace on; false at the end.
    bool Fill();
    bool SkipBlanks();

    std::string mPath;
    gzFile_s* mpFile = nullptr;
    long long mMostBytes = 0;
    std::vector<char> mBuffer;
    long long mBufferBegin = 0; ///< place of its first byte in the file
    size_t mPlace = 0;          ///< of the next byte, in the buffer
    size_t mEnd = 0;
};
