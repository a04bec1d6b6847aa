#include "MESH/ObjChunk.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cstring>

#include "COMMON/DigitScan.h"
#include "COMMON/TextSplit.h"
#include "MESH/MeshFile.h"
#include "MESH/ObjLine.h"

static_assert(kMeshPad >= kLineReach && kMeshPad >= kScanPad, "lines are looked at past the end of the text");

namespace {

constexpr double kPower[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                             1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr uint64_t kWhole[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};
constexpr long kMostFraction = 22;             // powers that doubles hold exactly
constexpr long kMostDigits = 19;               // that 64 bits hold for sure
constexpr uint64_t kExact = uint64_t(1) << 53; // integers up to here are doubles
constexpr long kMostIndexDigits = 18;
constexpr size_t kRun = 1024; // lines that are read without a look at anything else

/// A backslash that lets the line go on behind the line feed: that place, else null.
inline const char* PassContinuation(const char* p) {
    if (*p != '\\') return nullptr;
    ++p;
    while (*p == '\r')
        ++p;
    return *p == '\n' ? p + 1 : nullptr;
}

inline const char* PassBlanks(const char* p) {
    for (;;) {
        while (IsLineBlank(*p))
            ++p;
        const char* const next = PassContinuation(p);
        if (!next) return p;
        p = next;
    }
}

inline bool IsEndOfWord(const char* p) { return IsBlank(*p) || PassContinuation(p); }

const char* PassLine(const char* p, const char* end) {
    const void* const found = std::memchr(p, '\n', static_cast<size_t>(end - p));
    return found ? static_cast<const char*>(found) + 1 : end;
}

/// The same for lines that may go on.
const char* PassRest(const char* p, const char* end) {
    if (*p == '\n') return p + 1;
    for (;;) {
        const char* const next = PassLine(p, end);
        const char* back = next - 1;
        while (back > p && back[-1] == '\r')
            --back;
        if (next == end || back == p || back[-1] != '\\') return next;
        p = next;
    }
}

/// Numbers with many digits or an exponent, rounded once.
const char* ReadLongNumber(const char* p, const char* end, double* pNumber, bool* pbGood) {
    const auto scanned = std::from_chars(p, end, *pNumber);
    if (scanned.ec == std::errc()) return scanned.ptr;
    *pNumber = 0.0;
    *pbGood = false;
    return scanned.ptr;
}

/// As ScanDigits for a few digits, as long as the numbers before. What stands behind is found by a guess that
/// the next number has as many digits: while the guess is checked the processor goes on there, instead of
/// waiting for the count. `last` is that of this kind of number, up to 7.
inline const char* ScanLikeLast(const char* p, uint64_t& digits, size_t& last) {
    uint64_t eight;
    std::memcpy(&eight, p, sizeof eight);
    eight ^= 0x3030303030303030;
    const uint64_t others = (eight | (eight + 0x7676767676767676)) & 0x8080808080808080;
    // The last digit's end must be where it was: a mask of so many bytes that are digits, and one that isn't.
    const uint64_t end = uint64_t(0x80) << (8 * last);
    if (__builtin_expect((others & (end | (end - 1))) != end, 0)) {
        const char* const there = ScanDigits(p, digits);
        if (there - p < 8) last = static_cast<size_t>(there - p);
        return there;
    }
    if (last == 0) return p;
    eight <<= 8 * (8 - last);
    eight = 10 * eight + (eight >> 8);
    eight = ((eight & 0x000000ff000000ff) * 0x000f424000000064 +
             ((eight >> 16) & 0x000000ff000000ff) * 0x0000271000000001) >>
            32;
    digits = kWhole[last] * digits + eight;
    return p + last;
}

/// A number that begins here. For digits that 32 bits hold it gives to the bit what
/// AsciiReader_cls::fast_atof32 does: their whole number as a double, divided once by the power of ten.
inline const char* ReadNumber(const char* p, const char* end, size_t& guess, float* pValue, bool* pbGood) {
    const uint32_t minus = *p == '-';
    p += minus | static_cast<unsigned>(*p == '+');
    const char* const start = p;
    uint64_t digits = 0;
    // Mostly one or two.
    for (unsigned digit = unsigned(*p) - '0'; digit <= 9; digit = unsigned(*++p) - '0')
        digits = 10 * digits + digit;
    long number = p - start;
    long fraction = 0;
    if (*p == '.') {
        const char* const point = ++p;
        p = ScanLikeLast(p, digits, guess);
        fraction = p - point;
        number += fraction;
    }
    double value = 0.0;
    if (number == 0) {
        *pbGood = false;
    } else if (number > kMostDigits || digits > kExact || fraction > kMostFraction || *p == 'e' ||
               *p == 'E') {
        p = ReadLongNumber(start, end, &value, pbGood);
        if (value > static_cast<double>(FLT_MAX)) {
            value = 0.0;
            *pbGood = false;
        }
    } else {
        value = static_cast<double>(digits) / kPower[fraction];
    }
    const float plain = static_cast<float>(value);
    uint32_t bits;
    std::memcpy(&bits, &plain, sizeof bits);
    bits ^= minus << 31; // signs are too random to branch on
    std::memcpy(pValue, &bits, sizeof bits);
    return p;
}

/// A whole number that isn't 0, `from` 0 on: those in front of the first are negative.
inline const char* ReadIndex(const char* p, size_t above, size_t& guess, int* pIndex, bool* pbBack) {
    const bool bMinus = *p == '-';
    if (bMinus || *p == '+') ++p;
    const char* const start = p;
    uint64_t digits = 0;
    p = ScanLikeLast(p, digits, guess);
    *pIndex = ObjChunk_cls::kNone;
    *pbBack = false;
    if (p == start) return nullptr;
    if (digits == 0 || digits > INT_MAX || p - start > kMostIndexDigits || above > INT_MAX) return p;
    *pbBack = bMinus;
    *pIndex = bMinus ? static_cast<int>(static_cast<long long>(above) - static_cast<long long>(digits))
                     : static_cast<int>(digits) - 1;
    return p;
}

} // namespace

void ObjChunk_cls::Parse(const char* begin, const char* end) {
    mpEnd = end;
    const auto most = size_t(end - begin);
    mVertex.Expect(most);
    mNormal.Expect(most);
    mFaceVertex.Expect(most);
    mFaceNormal.Expect(most);
    mBackVertex.Expect(most);
    mBackNormal.Expect(most);
    for (const char* p = begin; p < end;) {
        while (IsLineBlank(*p))
            ++p;
        if (p[0] == 'v' && IsLineBlank(p[1]))
            p = ParsePlaces(p, false);
        else if (p[0] == 'f' && IsLineBlank(p[1]))
            p = ParseFaces(p);
        else if (p[0] == 'v' && p[1] == 'n' && IsLineBlank(p[2]))
            p = ParsePlaces(p, true);
        else
            p = PassLine(p, end);
    }
}

/// As many lines as there are in a run, or one.
const char* ObjChunk_cls::ParsePlaces(const char* p, bool bNormals) {
    ObjList_cls<float>& list = bNormals ? mNormal : mVertex;
    const char* const text = p + (bNormals ? 3 : 2);
    if (!mbWide) return ParsePlace(text, &list);
    const size_t before = list.GetNumber();
    ObjRun_st run = {p, mpEnd, kRun};
    ReadPlainPlaces(bNormals, &run, list.Add(3 * kRun + 1));
    list.Cut(before + 3 * run.mNumber);
    return run.mNumber > 0 ? run.mpNext : ParsePlace(text, &list);
}

// From the first normals on, each face has a place for them.
const char* ObjChunk_cls::ParseFaces(const char* p) {
    if (!mbWide) return ParseFace(p + 2);
    const size_t before = mFaceVertex.GetNumber();
    int* const pVertex = mFaceVertex.Add(3 * kRun + 1);
    ObjRun_st run = {p, mpEnd, kRun};
    bool bNormals = !mFaceNormal.IsEmpty();
    if (!bNormals) {
        ReadPlainFaces(&run, pVertex, nullptr);
        bNormals = run.mNumber == 0 && before == 0;
    }
    if (bNormals) {
        run = {p, mpEnd, kRun};
        ReadPlainFaces(&run, pVertex, mFaceNormal.Add(3 * kRun + 1));
        mFaceNormal.Cut(before + 3 * run.mNumber);
    }
    mFaceVertex.Cut(before + 3 * run.mNumber);
    mFaces += run.mNumber;
    return run.mNumber > 0 ? run.mpNext : ParseFace(p + 2);
}

const char* ObjChunk_cls::ParsePlace(const char* p, ObjList_cls<float>* pList) {
    float* const pPlace = pList->Add(3);
    size_t guess = mGuess.mFraction;
    bool bGood = true;
    for (int k = 0; k < 3; ++k) {
        p = ReadNumber(PassBlanks(p), mpEnd, guess, pPlace + k, &bGood);
        bGood = bGood && IsEndOfWord(p);
        while (!IsEndOfWord(p)) // "1.5abc" is 1.5
            ++p;
    }
    mGuess.mFraction = guess;
    if (!bGood) ++mBadPlaces;
    return PassRest(p, mpEnd);
}

inline const char* ObjChunk_cls::ParseCorner(const char* p, Corner_st* pCorner) {
    p = ReadIndex(p, mVertex.GetNumber() / 3, mGuess.mVertex, &pCorner->mVertex, &pCorner->mbBackVertex);
    pCorner->mNormal = kNone;
    pCorner->mbBackNormal = false;
    if (!p || *p != '/') return p;
    int texture = 0;
    bool bBack = false;
    const char* next = ReadIndex(++p, 0, mGuess.mTexture, &texture, &bBack);
    if (next) p = next;
    if (*p != '/') return p;
    next = ReadIndex(++p, mNormal.GetNumber() / 3, mGuess.mNormal, &pCorner->mNormal, &pCorner->mbBackNormal);
    return next ? next : p;
}

/// Three numbers of corners with nothing else, as most faces of big files are. Null: it is something else.
const char* ObjChunk_cls::ParsePlainFace(const char* p) {
    uint64_t corner[3] = {0, 0, 0};
    uint64_t most = 0;
    for (int k = 0; k < 3; ++k) {
        const char* const start = p;
        p = ScanLikeLast(p, corner[k], mGuess.mVertex);
        if (p - start > kMostIndexDigits || *p != (k < 2 ? ' ' : '\n')) return nullptr;
        most |= corner[k] - 1; // 0, and no number at all, become large
        ++p;
    }
    if (most >= INT_MAX || !mFaceNormal.IsEmpty()) return nullptr;
    int* const pTo = mFaceVertex.Add(3);
    for (int k = 0; k < 3; ++k)
        pTo[k] = static_cast<int>(corner[k]) - 1;
    return p;
}

const char* ObjChunk_cls::ParseFace(const char* p) {
    ++mFaces;
    if (const char* const next = ParsePlainFace(p)) return next;
    const size_t vertices = mFaceVertex.GetNumber(), normals = mFaceNormal.GetNumber();
    const size_t backVertices = mBackVertex.GetNumber(), backNormals = mBackNormal.GetNumber();
    Corner_st first, last, corner;
    size_t number = 0;
    bool bGood = true;
    for (p = PassBlanks(p); *p != '\n' && *p != '#'; p = PassBlanks(p), ++number) {
        const char* const next = ParseCorner(p, &corner);
        if (!next || !(IsEndOfWord(next) || *next == '#')) {
            bGood = false;
            break;
        }
        p = next;
        if (number >= 2) AddTriangle(first, last, corner);
        (number == 0 ? first : last) = corner;
    }
    if (!bGood || number < 3) {
        ++mBadFaces;
        mFaceVertex.Cut(vertices);
        mFaceNormal.Cut(normals);
        mBackVertex.Cut(backVertices);
        mBackNormal.Cut(backNormals);
    }
    return PassRest(p, mpEnd);
}

void ObjChunk_cls::AddTriangle(const Corner_st& a, const Corner_st& b, const Corner_st& c) {
    const size_t at = mFaceVertex.GetNumber();
    if (!mFaceNormal.IsEmpty() || a.mNormal != kNone || b.mNormal != kNone || c.mNormal != kNone)
        AddNormals(a, b, c);
    int* const p = mFaceVertex.Add(3);
    p[0] = a.mVertex, p[1] = b.mVertex, p[2] = c.mVertex;
    if (!(a.mbBackVertex | b.mbBackVertex | c.mbBackVertex)) return;
    const bool bBack[3] = {a.mbBackVertex, b.mbBackVertex, c.mbBackVertex};
    for (size_t k = 0; k < 3; ++k)
        if (bBack[k]) *mBackVertex.Add(1) = at + k;
}

// The list begins with the first face that has normals.
void ObjChunk_cls::AddNormals(const Corner_st& a, const Corner_st& b, const Corner_st& c) {
    const size_t at = mFaceVertex.GetNumber();
    const size_t missing = at - mFaceNormal.GetNumber();
    if (missing > 0) {
        int* const pNone = mFaceNormal.Add(missing);
        for (size_t i = 0; i < missing; ++i)
            pNone[i] = kNone;
    }
    const Corner_st* const corners[3] = {&a, &b, &c};
    int* const p = mFaceNormal.Add(3);
    for (size_t k = 0; k < 3; ++k) {
        p[k] = corners[k]->mNormal;
        if (corners[k]->mbBackNormal) *mBackNormal.Add(1) = at + k;
    }
}
