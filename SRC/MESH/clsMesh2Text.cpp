#include "MESH/clsMesh2Text.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "COMMON/FreeMemory.h"
#include "COMMON/OnThreads.h"
#include "MESH/MeshFile.h"

namespace {

constexpr size_t kLanes = 64;

struct Facts_st {
    size_t mBrackets = 0;
    bool mbWords = false; ///< letters, braces, "#": whatever isn't of numbers
};

/// Of all characters, kLanes at a time.
Facts_st GetFacts(const char* p, const char* end) {
    Facts_st facts;
    unsigned char any = 0;
    while (static_cast<size_t>(end - p) >= kLanes) {
        unsigned char brackets[kLanes] = {}, seen[kLanes] = {};
        for (int round = 0; round < 255 && static_cast<size_t>(end - p) >= kLanes; ++round, p += kLanes)
            for (size_t i = 0; i < kLanes; ++i) {
                brackets[i] = static_cast<unsigned char>(brackets[i] + (p[i] == '>'));
                seen[i] = static_cast<unsigned char>(seen[i] | p[i] | (p[i] == '#' ? 0x80 : 0));
            }
        for (size_t i = 0; i < kLanes; ++i) {
            facts.mBrackets += brackets[i];
            any = static_cast<unsigned char>(any | seen[i]);
        }
    }
    for (; p < end; ++p) {
        facts.mBrackets += *p == '>' ? 1 : 0;
        any = static_cast<unsigned char>(any | *p | (*p == '#' ? 0x80 : 0));
    }
    facts.mbWords = (any & 0xC0) != 0;
    return facts;
}

} // namespace

bool IsMesh2Separator(char c) { return c != '\0' && std::strchr(" \t\r\n=,{}", c); }

Mesh2Text_cls::Mesh2Text_cls(MeshSource_cls& source)
    : mSource(source), mLength(source.GetLength()),
      mpBytes(static_cast<char*>(std::calloc(mLength + kMeshPad, 1))), mvChunks(mLength / kChunk + 1) {
    if (!mpBytes || !IsMemoryFree(mLength + kMeshPad))
        throw std::bad_alloc(); // what is read of it takes half as much
    EndMeshText(mpBytes.get() + mLength);
}

const char* Mesh2Text_cls::EndOf(size_t chunk) const {
    return Begin() + std::min((chunk + 1) * kChunk, mLength);
}

bool Mesh2Text_cls::ScanChunk(size_t k, char* pBuffer) {
    const size_t from = k * kChunk;
    const auto length = static_cast<size_t>(EndOf(k) - BeginOf(k));
    if (!mSource.Read(from, from + length, pBuffer)) return false;
    const Facts_st facts = GetFacts(pBuffer, pBuffer + length);
    Chunk_st& chunk = mvChunks[k];
    chunk.mBrackets = facts.mBrackets;
    const void* const first = std::memchr(pBuffer, '>', length);
    if (first) chunk.mFirst = static_cast<size_t>(static_cast<const char*>(first) - pBuffer);
    chunk.mbKept = facts.mbWords;
    if (facts.mbWords) std::copy_n(pBuffer, length, mpBytes.get() + from);
    return true;
}

bool Mesh2Text_cls::Scan(const std::atomic<bool>* pStop) {
    std::atomic<size_t> next{0};
    std::atomic<bool> bDone{true};
    OnThreads(GetMeshThreads(mLength), [&](int) {
        std::vector<char> buffer(std::min(kChunk, mLength + 1));
        for (size_t k = next++; k < mvChunks.size() && bDone; k = next++)
            if ((pStop && *pStop) || !ScanChunk(k, buffer.data())) bDone = false;
    });
    // Numbers follow words.
    for (size_t k = mvChunks.size() - 1; k > 0 && bDone; --k)
        if (mvChunks[k - 1].mbKept) Keep(BeginOf(k), EndOf(k));
    return bDone;
}

void Mesh2Text_cls::Keep(const char* from, const char* to) {
    for (size_t k = IndexOf(from); from < to && k <= IndexOf(to - 1); ++k) {
        const size_t at = k * kChunk;
        if (mvChunks[k].mbKept) continue;
        mSource.Read(at, at + static_cast<size_t>(EndOf(k) - BeginOf(k)), mpBytes.get() + at);
        mvChunks[k].mbKept = true;
    }
}

const char* Mesh2Text_cls::GetKeptEnd(const char* p) const {
    size_t k = IndexOf(p);
    if (p >= End() || !mvChunks[k].mbKept) return p;
    while (k + 1 < mvChunks.size() && mvChunks[k + 1].mbKept)
        ++k;
    return EndOf(k);
}

// Of what isn't kept nothing belongs to a word.
const char* Mesh2Text_cls::FindWord(const char* from, const char* to, const char* word) const {
    const size_t length = std::strlen(word);
    while (from < to) {
        const char* const end = std::min(GetKeptEnd(from), to);
        while (from < end) {
            const void* const found = memmem(from, static_cast<size_t>(end - from), word, length);
            if (!found) break;
            from = static_cast<const char*>(found) + length;
            if (IsMesh2Separator(*from)) return from;
        }
        from = end < to ? EndOf(IndexOf(end)) : to;
    }
    return nullptr;
}

const char* Mesh2Text_cls::FindBrace(const char* from, const char* to) const {
    while (from < to) {
        const char* const end = std::min(GetKeptEnd(from), to);
        const void* const found =
            end > from ? std::memchr(from, '}', static_cast<size_t>(end - from)) : nullptr;
        if (found) return static_cast<const char*>(found);
        from = end < to ? EndOf(IndexOf(end)) : to;
    }
    return nullptr;
}

const char* Mesh2Text_cls::Get(const char* from, const char* to, std::vector<char>* pBuffer) const {
    if (GetKeptEnd(from) >= to) return from;
    const auto length = static_cast<size_t>(to - from);
    pBuffer->resize(length + kMeshPad);
    const auto at = static_cast<size_t>(from - Begin());
    if (!mSource.Read(at, at + length, pBuffer->data())) std::memset(pBuffer->data(), 0, length);
    EndMeshText(pBuffer->data() + length);
    return pBuffer->data();
}

const char* Mesh2Text_cls::PassBracketFarFrom(const char* p) const {
    for (size_t k = IndexOf(p) + 1; k < mvChunks.size(); ++k)
        if (mvChunks[k].mFirst != kNone) return BeginOf(k) + mvChunks[k].mFirst + 1;
    return nullptr;
}

size_t Mesh2Text_cls::CountBrackets(const char* from, const char* to) const {
    size_t number = 0;
    for (size_t k = IndexOf(from); from < to; from = EndOf(k++)) {
        const char* const begin = BeginOf(k);
        const char* const end = std::min(EndOf(k), to);
        const bool bWhole = from == begin && end == EndOf(k);
        if (mvChunks[k].mbKept && !bWhole) {
            number += GetFacts(from, end).mBrackets;
            continue;
        }
        // From or up to behind the first.
        number += end == EndOf(k) ? mvChunks[k].mBrackets : 1;
        number -= from == begin ? 0 : 1;
    }
    return number;
}
