// Lines of a text file, gzipped or not, in bounded memory.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct gzFile_s;

class LineReader_cls {
public:
    /// Throws ImportError_cls for what is no plain file or may not be read, and all calls for what is cut.
    explicit LineReader_cls(const std::string& path);
    ~LineReader_cls();
    LineReader_cls(const LineReader_cls&) = delete;
    LineReader_cls& operator=(const LineReader_cls&) = delete;

    /// The next line without its end, good until the next call; false at the end of the file.
    bool Next(std::string_view* pLine);
    /// The last line comes once more.
    void Back();
    /// Did the last line end with a line feed? One that doesn't may be cut.
    bool IsLineWhole() const { return mbWhole; }
    /// Can there be so many lines of `least` bytes each? A count is checked before memory is taken for it.
    bool CanHold(long long lines, long long least) const;
    /// Throws what is wrong, with the file and the number of the last line.
    [[noreturn]] void Fail(const std::string& text) const;
    const std::string& GetPath() const { return mPath; }

private:
    bool Fill();

    std::string mPath;
    gzFile_s* mpFile = nullptr;
    long long mMostBytes = 0;
    std::vector<char> mBuffer;
    size_t mBegin = 0; ///< of what isn't given yet
    size_t mEnd = 0;
    size_t mLast = 0; ///< where the last line began
    bool mbEnd = false;
    std::string mWrong; ///< told once the lines before it are given
    bool mbWhole = true;
    long long mLine = 0;
};
