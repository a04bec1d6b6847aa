#include "BOND/BondFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include <emmintrin.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <wx/intl.h>

#include "COMMON/OnThreads.h"
#include "COMMON/TextSplit.h"
#include "COMMON/clsSplitPath.h"

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "files have little-endian numbers");

namespace {

constexpr long long kHeadBytes = 13;
constexpr char kHead[5] = {'b', 'o', 'n', 'd', '\0'};
constexpr size_t kPiece = 16384;      // pairs: what stays in the cache
constexpr size_t kFewPairs = 1 << 18; // not worth a second thread

class File_cls {
public:
    /// Pipes and the like aren't waited for.
    explicit File_cls(const wxString& path)
        : mFile(open(NarrowPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    ~File_cls() {
        if (mFile >= 0) close(mFile);
    }
    File_cls(const File_cls&) = delete;
    File_cls& operator=(const File_cls&) = delete;

    /// Empty, with the size set, or why it can't be read.
    wxString Check(long long* pSize) const {
        struct stat status;
        if (mFile < 0 || fstat(mFile, &status) != 0)
            return wxString::Format(_("The file can't be opened: %s."), wxString::FromUTF8(strerror(errno)));
        if (!S_ISREG(status.st_mode)) return _("This is no regular file.");
        *pSize = status.st_size;
        return {};
    }
    /// All of `bytes` from `start` on; false where the file ends before or can't be read.
    bool Read(void* pOut, size_t bytes, long long start) const {
        char* p = static_cast<char*>(pOut);
        while (bytes > 0) {
            const ssize_t got = pread(mFile, p, bytes, start);
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) return false;
            p += got;
            start += got;
            bytes -= static_cast<size_t>(got);
        }
        return true;
    }

private:
    int mFile;
};

/// Pairs from `begin` on into the columns.
void SetPairs(const unsigned* pPairs, size_t number, size_t begin, StickList_st* pList) {
    unsigned* pA = &pList->mvIndexA[begin];
    unsigned* pB = &pList->mvIndexB[begin];
    size_t k = 0;
    for (; k + 4 <= number; k += 4) {
        const __m128 low = _mm_loadu_ps(reinterpret_cast<const float*>(pPairs + 2 * k));
        const __m128 high = _mm_loadu_ps(reinterpret_cast<const float*>(pPairs + 2 * k + 4));
        _mm_storeu_ps(reinterpret_cast<float*>(pA + k), _mm_shuffle_ps(low, high, 0x88));
        _mm_storeu_ps(reinterpret_cast<float*>(pB + k), _mm_shuffle_ps(low, high, 0xdd));
    }
    for (; k < number; ++k) {
        pA[k] = pPairs[2 * k];
        pB[k] = pPairs[2 * k + 1];
    }
}

bool ReadPairs(const File_cls& file, size_t begin, size_t end, StickList_st* pList) {
    std::vector<unsigned> piece(2 * std::min(kPiece, end - begin));
    for (; begin < end; begin += kPiece) {
        const size_t number = std::min(kPiece, end - begin);
        if (!file.Read(piece.data(), number * 8, kHeadBytes + 8 * static_cast<long long>(begin)))
            return false;
        SetPairs(piece.data(), number, begin, pList);
    }
    return true;
}

wxString ReadBond(const File_cls& file, long long size, StickList_st* pList) {
    char head[kHeadBytes] = {};
    const size_t there = static_cast<size_t>(std::min(size, kHeadBytes));
    if (!file.Read(head, there, 0)) return _("The file can't be read.");
    if (std::memcmp(head, kHead, sizeof kHead) != 0)
        return _("A .bond file begins with the word \"bond\" and a zero byte, and this one doesn't.");
    if (size < kHeadBytes) return _("The file ends within the first 13 bytes.");
    int32_t count = 0;
    std::memcpy(&count, head + 9, sizeof count);
    if (count < 0) return wxString::Format(_("The number of sticks in its head is %d."), count);
    const long long expected = kHeadBytes + 8LL * count;
    if (size != expected)
        return wxString::Format(_("%d sticks take %lld bytes, and the file has %lld."), count, expected,
                                size);
    if (count == 0) return {};
    const size_t number = static_cast<size_t>(count);
    pList->Resize(number); // masks are 0 and weights 1
    std::atomic<bool> bGood{true};
    std::atomic<bool> bMemory{true};
    const size_t parts = number < kFewPairs ? 1 : 2;
    const size_t share = (number / parts / kPiece + 1) * kPiece;
    OnThreads(static_cast<int>(parts), [&](int worker) {
        const size_t part = static_cast<size_t>(worker);
        try {
            if (!ReadPairs(file, std::min(part * share, number), std::min((part + 1) * share, number), pList))
                bGood = false;
        } catch (const std::bad_alloc&) {
            bMemory = false;
        }
    });
    if (!bMemory) throw std::bad_alloc();
    if (bGood) return {};
    pList->Clear();
    return _("The file became shorter or can't be read.");
}

// Numbers of a line by the rules of scanf: blanks before each are passed over, none is needed between them.
class LineScan_cls {
public:
    LineScan_cls(const char* pBegin, const char* pEnd) : mpNext(pBegin), mpEnd(pEnd) {}

    void SkipBlanks() {
        while (mpNext < mpEnd && IsBlank(*mpNext))
            ++mpNext;
    }
    /// Past what an int holds it stays at its limits.
    bool ReadInt(int* pOut) {
        SkipBlanks();
        const char* p = mpNext;
        const bool bMinus = p < mpEnd && *p == '-';
        if (p < mpEnd && (*p == '-' || *p == '+')) ++p;
        const char* const digits = p;
        long long value = 0;
        for (; p < mpEnd && *p >= '0' && *p <= '9'; ++p)
            value = std::min(10 * value + (*p - '0'), 1LL << 40);
        if (p == digits) return false;
        *pOut = static_cast<int>(std::clamp(bMinus ? -value : value, static_cast<long long>(INT_MIN),
                                            static_cast<long long>(INT_MAX)));
        mpNext = p;
        return true;
    }
    bool ReadFloat(float* pOut) {
        SkipBlanks();
        const auto scanned = std::from_chars(mpNext, mpEnd, *pOut);
        if (scanned.ec == std::errc() && (scanned.ptr == mpEnd || IsBlank(*scanned.ptr))) return true;
        // Signs, hexadecimals, what is out of range or has letters behind it: as the C library has it.
        const char* const end = std::find_if(mpNext, mpEnd, IsBlank);
        const std::string word(mpNext, end);
        return std::sscanf(word.c_str(), "%f", pOut) == 1;
    }

private:
    const char* mpNext;
    const char* mpEnd;
};

struct TextStick_st {
    int a = 0;
    int b = 0;
    int bit = 0;
    float factor = 1.0f;
};

/// Returns the fields that were read; what a line leaves out is set as such lines mean it.
int ReadStickLine(const char* pBegin, const char* pEnd, TextStick_st* pStick) {
    LineScan_cls scan(pBegin, pEnd);
    if (!scan.ReadInt(&pStick->a)) return 0;
    if (!scan.ReadInt(&pStick->b)) return 1;
    if (!scan.ReadInt(&pStick->bit)) {
        pStick->bit = 0; // and the weight of the line before
        return 2;
    }
    // What is no number has no place in a picture, nor in a scene for POV-Ray.
    if (scan.ReadFloat(&pStick->factor) && !std::isnan(pStick->factor)) return 4;
    pStick->factor = 1.0f;
    return 3;
}

void PushBack(const TextStick_st& stick, StickList_st* pList) {
    pList->mvIndexA.push_back(static_cast<unsigned>(stick.a));
    pList->mvIndexB.push_back(static_cast<unsigned>(stick.b));
    pList->mvBit.push_back(static_cast<unsigned char>(stick.bit));
    pList->mvFactor.push_back(stick.factor);
}

wxString ReadTextFile(const File_cls& file, long long size, StickList_st* pList) {
    std::vector<char, BigAllocator_cls<char>> text(static_cast<size_t>(size));
    if (!file.Read(text.data(), text.size(), 0)) return _("The file became shorter or can't be read.");
    return ReadStickText(text.data(), text.size(), pList);
}

} // namespace

bool IsBondPath(const wxString& path) { return SplitPath_cls(path).mStrExt.CmpNoCase(".bond") == 0; }

wxString ReadStickText(const char* pText, size_t length, StickList_st* pList) {
    const char* const end = pText + length;
    const char* p = pText;
    if (length >= 3 && std::memcmp(p, "\xef\xbb\xbf", 3) == 0) p += 3; // some editors' mark of UTF-8
    TextStick_st stick;
    for (long long line = 1; p < end; ++line) {
        const void* pFound = std::memchr(p, '\n', static_cast<size_t>(end - p));
        const char* const lineEnd = pFound ? static_cast<const char*>(pFound) : end;
        const int fields = ReadStickLine(p, lineEnd, &stick);
        if (fields < 2) {
            if (std::all_of(p, lineEnd, IsBlank)) return {};
            return wxString::Format(
                fields == 0 ? _("Line %lld doesn't begin with a particle's number; the list ends there.")
                            : _("Line %lld has no second particle; the list ends there."),
                line);
        }
        PushBack(stick, pList);
        p = lineEnd < end ? lineEnd + 1 : end;
    }
    return {};
}

wxString ReadStickFile(const wxString& path, StickList_st* pList) {
    pList->Clear();
    const File_cls file(path);
    long long size = 0;
    const wxString reason = file.Check(&size);
    if (!reason.empty()) return reason;
    try {
        return IsBondPath(path) ? ReadBond(file, size, pList) : ReadTextFile(file, size, pList);
    } catch (const std::bad_alloc&) {
        pList->Clear();
        return wxString::Format(_("There isn't enough memory for its %lld bytes."), size);
    }
}
