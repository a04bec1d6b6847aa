// The text of a mesh2 file, gone through once. What has words in it is kept, that is some thousand lines at
// most; the numbers, nearly all of a long file, are read again piece by piece when their turn comes. So a
// file takes no memory of its size, which costs more time than to read it twice.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

class MeshSource_cls;

/// Is it one of those that stand between the words of a file?
bool IsMesh2Separator(char c);

/// Places are told as if all were in memory. What isn't kept is 0 there. What is thrown is std::bad_alloc.
class Mesh2Text_cls {
public:
    explicit Mesh2Text_cls(MeshSource_cls& source);

    /// Go through the file, on several threads. False: it can't be read, or shall not be any more.
    bool Scan(const std::atomic<bool>* pStop);
    const char* Begin() const { return mpBytes.get(); }
    const char* End() const { return mpBytes.get() + mLength; }
    size_t GetLength() const { return mLength; }

    /// Behind the first such word that a separator follows; null: there is none in [from, to).
    const char* FindWord(const char* from, const char* to, const char* word) const;
    /// The first closing brace in [from, to), or null.
    const char* FindBrace(const char* from, const char* to) const;

    /// Where what is kept at `p` ends, `p` itself if that isn't.
    const char* GetKeptEnd(const char* p) const;
    /// Have [from, to) kept, too.
    void Keep(const char* from, const char* to);
    /// Text of [from, to), wherever it is, with kMeshPad characters behind it.
    const char* Get(const char* from, const char* to, std::vector<char>* pBuffer) const;

    /// Behind the first closing bracket that stands about kChunk further on; null: there is none.
    const char* PassBracketFarFrom(const char* p) const;
    /// How many of them [from, to) has. Either is what PassBracketFarFrom told, or is kept.
    size_t CountBrackets(const char* from, const char* to) const;

private:
    static constexpr size_t kChunk = size_t(1) << 18; ///< bytes: small enough to stay near the processor
    static constexpr size_t kNone = SIZE_MAX;
    struct Chunk_st {
        size_t mBrackets = 0;  ///< closing ones
        size_t mFirst = kNone; ///< the first of them, bytes from where the chunk begins
        bool mbKept = false;
    };
    struct Free_st {
        void operator()(char* p) const { std::free(p); }
    };

    size_t IndexOf(const char* p) const { return static_cast<size_t>(p - Begin()) / kChunk; }
    const char* BeginOf(size_t chunk) const { return Begin() + chunk * kChunk; }
    const char* EndOf(size_t chunk) const;
    bool ScanChunk(size_t k, char* pBuffer);

    MeshSource_cls& mSource;
    const size_t mLength;
    std::unique_ptr<char[], Free_st> mpBytes; ///< pages that nothing is written to cost nothing
    std::vector<Chunk_st> mvChunks;
};
