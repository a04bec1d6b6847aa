#include "MESH/Mesh2Vectors.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "COMMON/DigitScan.h"
#include "COMMON/clsAsciiReader.h"
#include "MESH/clsMesh2Text.h"

namespace {

constexpr int kExactDigits = 9; // that AsciiReader_cls takes whole
constexpr double kPower[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Is it one that POV-Ray, too, takes for a number, and for the same?
bool IsNumber(const char* p, const char* end) {
    bool bDigit = false;
    for (; p < end; ++p) {
        bDigit = bDigit || IsDigit(*p);
        if (!IsDigit(*p) && !std::strchr(" \t\r\n.+-", *p)) return false;
    }
    return bDigit;
}

/// Behind the terminator, if nothing stands before it that ends or begins a vector; else null.
inline const char* Pass(const char* p, const char* end, char terminator) {
    for (; p < end; ++p) {
        if (*p == terminator) return p + 1;
        if (*p == '<' || *p == '>' || *p == '\0') break;
    }
    return nullptr;
}

const char* PassOdd(const char* p, const char* end, char terminator, bool& bStrict) {
    const char* const behind = Pass(p, end, terminator);
    bStrict = bStrict && behind && IsNumber(p, behind - 1);
    return behind;
}

// Of most numbers eight characters hold the digits, the point among them and what ends them, so that nothing
// hangs on a number's length: the point is taken out, and the digits are put together as ScanDigits does.
/// A number of a few digits with a point; null: it is another, and nothing was done.
inline const char* TakeShort(const char* p, const char* end, char terminator, float& value) {
    static constexpr double kSign[] = {1.0, -1.0}; // as good as random: no branch
    const auto sign = static_cast<size_t>(*p == '-');
    p += sign;
    uint64_t eight;
    std::memcpy(&eight, p, sizeof eight);
    eight ^= 0x3030303030303030; // digits become 0 to 9
    const uint64_t others = (eight | (eight + 0x7676767676767676)) & 0x8080808080808080;
    const uint64_t behind = others & (others - 1);
    if (others == 0) return nullptr;
    const int point = __builtin_ctzll(others) / 8;
    const int last = behind == 0 ? 8 : __builtin_ctzll(behind) / 8;
    if (p[point] != '.' || p[last] != terminator || p + last >= end || last < 2) return nullptr;
    const uint64_t whole = ((others ^ behind) >> 7) - 1;
    eight = ((eight & whole) | ((eight >> 8) & ~whole)) << 8 * (9 - last);
    eight = 10 * eight + (eight >> 8);
    eight = ((eight & 0x000000ff000000ff) * 0x000f424000000064 +
             ((eight >> 16) & 0x000000ff000000ff) * 0x0000271000000001) >>
            32;
    value = static_cast<float>(kSign[sign] * (static_cast<double>(eight) / kPower[last - point - 1]));
    return p + last + 1;
}

/// A number as AsciiReader_cls reads it, and what stands behind its terminator; null: nothing may be there.
const char* TakeAny(const char* p, const char* end, char terminator, float& value, bool& bStrict) {
    const char* const from = p;
    while (*p == ' ')
        ++p;
    const double sign = *p == '-' ? -1.0 : 1.0;
    p += *p == '-' ? 1 : 0;
    uint64_t digits = 0;
    const char* const first = p;
    p = ScanDigits(p, digits);
    auto number = p - first;
    const char* point = p;
    if (*p == '.') {
        point = ++p;
        p = ScanDigits(p, digits);
        number += p - point;
    }
    if (*p == terminator && number > 0 && number <= kExactDigits && p < end) {
        value = static_cast<float>(sign * (static_cast<double>(digits) / kPower[p - point]));
        return p + 1;
    }
    value = AsciiReader_cls::fast_atof32(from);
    return PassOdd(from, end, terminator, bStrict);
}

const char* TakeAny(const char* p, const char* end, char terminator, int& value, bool& bStrict) {
    const char* const from = p;
    while (*p == ' ')
        ++p;
    uint64_t digits = 0;
    const char* const first = p;
    p = ScanDigits(p, digits);
    if (*p == terminator && p > first && p - first <= kExactDigits && p < end) {
        value = static_cast<int>(digits);
        return p + 1;
    }
    value = AsciiReader_cls::fast_atoi(from);
    return PassOdd(from, end, terminator, bStrict);
}

inline const char* Take(const char* p, const char* end, char terminator, float& value, bool& bStrict) {
    const char* const behind = TakeShort(p, end, terminator, value);
    return behind ? behind : TakeAny(p, end, terminator, value, bStrict);
}

inline const char* Take(const char* p, const char* end, char terminator, int& value, bool& bStrict) {
    uint64_t digits = 0;
    const char* const behind = ScanDigits(p, digits);
    if (*behind != terminator || behind == p || behind - p > kExactDigits || behind >= end)
        return TakeAny(p, end, terminator, value, bStrict);
    value = static_cast<int>(digits);
    return behind + 1;
}

/// Up to the next bracket. What stands there is strict where it is what may stand between vectors.
inline const char* PassGap(const char* p, const char* end, bool bDigits, bool& bStrict) {
    for (; p < end && *p != '<' && *p != '>'; ++p)
        if (*p != ',' && *p != '\n' && *p != '\t' && *p != ' ' && *p != '\r')
            bStrict = bStrict && bDigits && IsDigit(*p);
    return p;
}

/// What stands between two vectors is most often what stood there before.
class Gap_cls {
public:
    /// From `p` to the bracket at `to`.
    void Learn(const char* p, const char* to) {
        mLength = to - p;
        mMask = mLength < 8 ? ~uint64_t(0) >> 8 * (7 - mLength) : 0; // with the bracket
        mText = Load(p) & mMask;
    }
    /// The bracket behind the same; null: there is something else.
    const char* Pass(const char* p, const char* end) const {
        return mMask != 0 && (Load(p) & mMask) == mText && p + mLength < end ? p + mLength : nullptr;
    }

private:
    static uint64_t Load(const char* p) {
        uint64_t eight;
        std::memcpy(&eight, p, sizeof eight);
        return eight;
    }
    uint64_t mText = 0;
    uint64_t mMask = 0; ///< 0: none is known
    std::ptrdiff_t mLength = 0;
};

/// So many vectors of [p, end) to `pTo`. False: brackets don't stand in pairs with three numbers each.
template <class T>
bool TakeVectors(const char* p, const char* end, size_t vectors, T* pTo, bool bDigits, bool& bStrict) {
    Gap_cls gap;
    for (size_t i = 0; i < vectors; ++i, pTo += 3) {
        if (const char* const same = gap.Pass(p, end)) {
            p = same;
        } else {
            const char* const from = p;
            p = PassGap(p, end, bDigits, bStrict);
            if (p == end || *p != '<') return false;
            if (!bDigits) gap.Learn(from, p);
        }
        p = Take(p + 1, end, ',', pTo[0], bStrict);
        if (p) p = Take(p, end, ',', pTo[1], bStrict);
        if (p) p = Take(p, end, '>', pTo[2], bStrict);
        if (!p) return false;
    }
    bStrict = PassGap(p, end, bDigits, bStrict) == end && bStrict;
    return true;
}

unsigned FindMost(const int* begin, const int* end) {
    unsigned most = 0;
    for (const int* p = begin; p < end; ++p)
        most = std::max(most, unsigned(*p));
    return most;
}

} // namespace

void Mesh2Vectors_cls::Set(Mesh2Text_cls& text, const char* begin, const char* end, MeshFloats* pFloats) {
    mpFloats = pFloats;
    Cut(text, begin, end);
}

void Mesh2Vectors_cls::Set(Mesh2Text_cls& text, const char* begin, const char* end, MeshInts* pInts,
                           bool bDigits) {
    mpInts = pInts;
    mbDigits = bDigits;
    Cut(text, begin, end);
}

void Mesh2Vectors_cls::Cut(Mesh2Text_cls& text, const char* begin, const char* end) {
    if (!begin) return;
    mpText = &text;
    const char* p = begin;
    while (p < end && IsMesh2Separator(*p))
        ++p;
    mNumber = static_cast<size_t>(std::max(AsciiReader_cls::fast_atoi(p), 0));
    while (p < end && IsDigit(*p))
        ++p;
    while (p < end) {
        Piece_st piece;
        piece.mpBegin = p;
        const char* const behind = text.PassBracketFarFrom(p);
        piece.mpEnd = p = behind && behind <= end ? behind : end;
        piece.mVectors = text.CountBrackets(piece.mpBegin, piece.mpEnd);
        mvPieces.push_back(piece);
    }
}

void Mesh2Vectors_cls::MakeRoom() {
    size_t first = 0;
    for (Piece_st& piece : mvPieces) {
        piece.mFirst = first;
        mbRest = mbRest || piece.mVectors > mNumber - first;
        piece.mVectors = std::min(piece.mVectors, mNumber - first);
        first += piece.mVectors;
    }
    if (mpFloats) mpFloats->resize(3 * first);
    if (mpInts) mpInts->resize(3 * first);
}

void Mesh2Vectors_cls::ReadPiece(size_t k, std::vector<char>* pBuffer) {
    Piece_st& piece = mvPieces[k];
    const char* const begin = mpText->Get(piece.mpBegin, piece.mpEnd, pBuffer);
    const char* const end = begin + (piece.mpEnd - piece.mpBegin);
    if (mpFloats) {
        piece.mbPlain = TakeVectors(begin, end, piece.mVectors, mpFloats->data() + 3 * piece.mFirst, mbDigits,
                                    piece.mbStrict);
        return;
    }
    int* const to = mpInts->data() + 3 * piece.mFirst;
    piece.mbPlain = TakeVectors(begin, end, piece.mVectors, to, mbDigits, piece.mbStrict);
    piece.mMost = FindMost(to, to + 3 * piece.mVectors);
}

template <class T, class LIST>
void Mesh2Vectors_cls::FinishList(LIST& list) {
    const auto bad =
        std::find_if(mvPieces.begin(), mvPieces.end(), [](const Piece_st& piece) { return !piece.mbPlain; });
    if (bad == mvPieces.end()) return;
    list.resize(3 * bad->mFirst);
    const char* p = bad->mpBegin;
    const char* const end = mvPieces.back().mpEnd;
    mpText->Keep(p, end);
    // A vector has its own ">" within the block, or it isn't whole.
    for (size_t i = bad->mFirst; i < mNumber && AsciiReader_cls::SearchChar(&p, '<', end); ++i) {
        const char* close = ++p;
        if (!AsciiReader_cls::SearchChar(&close, '>', end)) return;
        T values[3];
        for (int k = 0; k < 3; ++k) {
            values[k] = T();
            if (p > close) continue;
            if constexpr (std::is_same_v<T, int>)
                values[k] = AsciiReader_cls::ReadInt(&p, k < 2 ? ',' : '>');
            else
                values[k] = AsciiReader_cls::ReadFloat(&p, k < 2 ? ',' : '>');
        }
        p = close;
        list.insert(list.end(), values, values + 3);
    }
}

void Mesh2Vectors_cls::Finish() {
    if (mpFloats) FinishList<float>(*mpFloats);
    if (mpInts) FinishList<int>(*mpInts);
}

bool Mesh2Vectors_cls::HasCount() const {
    const size_t there = mpFloats ? mpFloats->size() : mpInts ? mpInts->size() : 0;
    return there == 3 * mNumber && !mbRest;
}

bool Mesh2Vectors_cls::IsStrict() const {
    return std::all_of(mvPieces.begin(), mvPieces.end(),
                       [](const Piece_st& piece) { return piece.mbPlain && piece.mbStrict; });
}

unsigned Mesh2Vectors_cls::GetMost() const {
    unsigned most = 0;
    for (const Piece_st& piece : mvPieces) {
        if (!piece.mbPlain) return FindMost(mpInts->data(), mpInts->data() + mpInts->size());
        most = std::max(most, piece.mMost);
    }
    return most;
}
