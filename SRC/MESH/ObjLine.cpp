#include "MESH/ObjLine.h"

#include <array>
#include <cstdint>
#include <cstring>

#include <immintrin.h>

#include "COMMON/WideRegisters.h"

namespace {

constexpr size_t kRegisters = 64;      // characters in two of them
constexpr size_t kMostDigits = 15;     // all such integers are doubles
constexpr size_t kMostIndexDigits = 8; // of a corner
constexpr double kPower[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

using Order_t = std::array<uint8_t, 16>;
using Orders_t = std::array<std::array<Order_t, 16>, 16>;

/// Where the digits in front of a point and behind it come from when they stand together at the end of 16
/// bytes, with zeros before them.
constexpr Orders_t MakeOrders() {
    Orders_t orders{};
    for (size_t whole = 0; whole < 16; ++whole)
        for (size_t fraction = 0; fraction < 16; ++fraction) {
            const size_t number = whole + fraction;
            for (size_t k = 0; k < 16; ++k) {
                const size_t digit = k + number - 16; // of the number
                const bool bDigit = number <= kMostDigits && k + number >= 16;
                orders[whole][fraction][k] =
                    bDigit ? static_cast<uint8_t>(digit < whole ? digit : digit + 1) : uint8_t(0x80);
            }
        }
    return orders;
}

alignas(16) constexpr Orders_t kOrders = MakeOrders();

/// Which of 64 characters are this one.
MORENTIS_WIDE inline uint64_t Find(const __m256i& low, const __m256i& high, char c) {
    const __m256i wanted = _mm256_set1_epi8(c);
    const auto first = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(low, wanted)));
    const auto second = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(high, wanted)));
    return first | static_cast<uint64_t>(second) << 32;
}

MORENTIS_WIDE inline uint64_t FindDigits(const __m256i& low, const __m256i& high) {
    const __m256i nine = _mm256_set1_epi8(9), zero = _mm256_set1_epi8('0');
    const __m256i first = _mm256_subs_epu8(_mm256_xor_si256(low, zero), nine);
    const __m256i second = _mm256_subs_epu8(_mm256_xor_si256(high, zero), nine);
    return Find(first, second, 0);
}

/// The place of the first one (64: there is none), which is taken away.
MORENTIS_WIDE inline size_t TakeFirst(uint64_t* pMarks) {
    const size_t place = _tzcnt_u64(*pMarks);
    *pMarks = _blsr_u64(*pMarks);
    return place;
}

MORENTIS_WIDE inline __m256i LoadLine(const char* p, size_t from) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + from));
}

/// Digits below 10 as a number of the first eight and one of the last eight, in each half twice.
MORENTIS_WIDE inline __m256i AddUp(__m256i digits) {
    digits = _mm256_maddubs_epi16(digits, _mm256_set1_epi16(0x010a));
    digits = _mm256_madd_epi16(digits, _mm256_set1_epi32(0x00010064));
    digits = _mm256_packus_epi32(digits, digits);
    return _mm256_madd_epi16(digits, _mm256_set1_epi32(0x00012710));
}

MORENTIS_WIDE inline bool HasOthers(const __m256i& digits) {
    const __m256i others = _mm256_subs_epu8(digits, _mm256_set1_epi8(9));
    return _mm256_testz_si256(others, others) == 0;
}

MORENTIS_WIDE inline __m128i Load(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }

MORENTIS_WIDE inline __m256i LoadTwo(const void* pLow, const void* pHigh) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(Load(pLow)), Load(pHigh), 1);
}

/// Bits up to the lowest one, and with it.
MORENTIS_WIDE inline uint64_t UpTo(uint64_t marks) { return _blsmsk_u64(marks); }

/// Where the three numbers of a line stand. Most lines are laid out as the one before them, so that nothing
/// needs to be worked out anew.
struct PlaceLayout_st {
    uint64_t mEnds = 0; ///< of the words
    uint64_t mPoints = 0;
    uint64_t mMinus = 0;
    size_t mFirst[3];          ///< digits
    __m256i mOrderAB, mOrderC; ///< as in kOrders
    __m256d mPower;
    __m128 mSigns;
};

/// False: the line is of another form.
MORENTIS_WIDE bool LayOut(uint64_t ends, uint64_t points, uint64_t minus, PlaceLayout_st* pLayout) {
    pLayout->mEnds = ends;
    pLayout->mPoints = points;
    pLayout->mMinus = minus;
    const Order_t* orders[3];
    double power[4] = {1.0, 1.0, 1.0, 1.0};
    uint32_t signs[4] = {0, 0, 0, 0};
    size_t begin = 0;
    for (size_t k = 0; k < 3; ++k) {
        const size_t point = TakeFirst(&points), end = TakeFirst(&ends);
        const uint32_t bMinus = begin < kRegisters ? uint32_t(minus >> begin & 1) : 0;
        begin += bMinus;
        // Where they don't follow each other, differences are huge.
        const size_t whole = point - begin, fraction = end - point - 1, number = whole + fraction;
        if (whole > kMostDigits || fraction > kMostDigits || number - 1 >= kMostDigits) {
            pLayout->mEnds = 0; // of no line
            return false;
        }
        pLayout->mFirst[k] = begin;
        orders[k] = &kOrders[whole][fraction];
        power[k] = kPower[fraction];
        signs[k] = bMinus << 31;
        begin = end + 1;
    }
    if (ends != 0) pLayout->mEnds = 0;
    pLayout->mOrderAB = LoadTwo(orders[0], orders[1]);
    pLayout->mOrderC = LoadTwo(orders[2], &kOrders[0][0]);
    pLayout->mPower = _mm256_loadu_pd(power);
    pLayout->mSigns = _mm_castsi128_ps(Load(signs));
    return ends == 0;
}

/// Three numbers from their digits. False: there are other characters among them.
MORENTIS_WIDE inline bool MakeFloats(const char* p, const PlaceLayout_st& layout, float* pTo) {
    const __m256i zero = _mm256_set1_epi8('0');
    __m256i ab = _mm256_xor_si256(LoadTwo(p + layout.mFirst[0], p + layout.mFirst[1]), zero);
    __m256i c = _mm256_xor_si256(_mm256_castsi128_si256(Load(p + layout.mFirst[2])), zero);
    ab = _mm256_shuffle_epi8(ab, layout.mOrderAB);
    c = _mm256_shuffle_epi8(c, layout.mOrderC);
    if (HasOthers(_mm256_max_epu8(ab, c))) return false;
    ab = AddUp(ab);
    c = AddUp(c);
    // First eights of a, b and c, then the last ones.
    const __m128i a2 = _mm256_castsi256_si128(ab), b2 = _mm256_extracti128_si256(ab, 1);
    const __m128i mixed = _mm_unpacklo_epi32(a2, b2), c2 = _mm256_castsi256_si128(c);
    const __m256d high = _mm256_cvtepi32_pd(_mm_unpacklo_epi64(mixed, c2));
    const __m256d low = _mm256_cvtepi32_pd(_mm_unpackhi_epi64(mixed, _mm_slli_si128(c2, 4)));
    const __m256d whole = _mm256_add_pd(_mm256_mul_pd(high, _mm256_set1_pd(1e8)), low);
    const __m128 plain = _mm256_cvtpd_ps(_mm256_div_pd(whole, layout.mPower));
    _mm_storeu_ps(pTo, _mm_xor_ps(plain, layout.mSigns));
    return true;
}

/// What stands behind the place, or null when it is of another form.
MORENTIS_WIDE inline const char* ReadPlace(const char* p, PlaceLayout_st* pLayout, float* pTo) {
    const __m256i low = LoadLine(p, 0), high = LoadLine(p, 32);
    const uint64_t line = Find(low, high, '\n');
    const uint64_t whole = UpTo(line);
    const uint64_t ends = (Find(low, high, ' ') | line) & whole;
    const uint64_t points = Find(low, high, '.') & whole;
    const uint64_t minus = Find(low, high, '-') & whole;
    if (line == 0) return nullptr;
    const bool bSame = ends == pLayout->mEnds && points == pLayout->mPoints && minus == pLayout->mMinus;
    if (!bSame && !LayOut(ends, points, minus, pLayout)) return nullptr;
    return MakeFloats(p, *pLayout, pTo) ? p + _tzcnt_u64(line) + 1 : nullptr;
}

/// The characters from `begin` to `end`, at most 8, as a number's digits behind zeros.
MORENTIS_WIDE inline uint64_t TakeDigits(const char* p, size_t begin, size_t end) {
    uint64_t eight;
    std::memcpy(&eight, p + begin, sizeof eight);
    return (eight ^ 0x3030303030303030) << (8 * (kMostIndexDigits - (end - begin)));
}

/// Three numbers of such digits, less 1. False: one of them is 0, or has other characters.
MORENTIS_WIDE inline bool MakeIndices(const __m256i& digits, int* pTo) {
    const __m256i sums = AddUp(digits);
    // a and b stand in front of the lower half, c and a one in front of the upper.
    const __m128i numbers =
        _mm_unpacklo_epi64(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
    const __m128i zero = _mm_cmpeq_epi32(numbers, _mm_setzero_si128());
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pTo), _mm_sub_epi32(numbers, _mm_set1_epi32(1)));
    return !HasOthers(digits) && _mm_testz_si128(zero, zero) != 0;
}

MORENTIS_WIDE inline bool MakeIndices(const uint64_t* pDigits, int* pTo) {
    return MakeIndices(_mm256_set_epi64x(1LL << 56, static_cast<long long>(pDigits[2]),
                                         static_cast<long long>(pDigits[1]),
                                         static_cast<long long>(pDigits[0])),
                       pTo);
}

struct FaceEnds_st {
    size_t mBegin[3];
    size_t mEnd[3];
};

/// Corners "v/t", "v//n" and "v/t/n"; `slashes` are those of the line.
MORENTIS_WIDE bool ReadSlashed(const char* p, const FaceEnds_st& ends, uint64_t slashes, int* pVertex,
                               int* pNormal) {
    uint64_t digits[3], normals[3] = {0, 0, 0};
    for (size_t k = 0; k < 3; ++k) {
        const size_t begin = ends.mBegin[k], end = ends.mEnd[k];
        const size_t slash = TakeFirst(&slashes), behind = pNormal ? TakeFirst(&slashes) : slash;
        if (slash - begin - 1 >= kMostIndexDigits || behind >= end) return false;
        digits[k] = TakeDigits(p, begin, slash);
        if (!pNormal) continue;
        if (end - behind - 2 >= kMostIndexDigits) return false;
        normals[k] = TakeDigits(p, behind + 1, end);
    }
    return MakeIndices(digits, pVertex) && (!pNormal || MakeIndices(normals, pNormal));
}

/// Where the numbers of a face stand that has nothing else.
struct FaceLayout_st {
    uint64_t mEnds = 0; ///< of the words
    size_t mBegin[2];   ///< of the second and third
    __m256i mShift;     ///< bits, so that digits stand behind zeros
};

MORENTIS_WIDE inline void LayOut(uint64_t ends, size_t first, size_t second, size_t last,
                                 FaceLayout_st* pLayout) {
    const auto shift = [](size_t digits) { return static_cast<long long>(8 * (kMostIndexDigits - digits)); };
    pLayout->mEnds = ends;
    pLayout->mBegin[0] = first + 1;
    pLayout->mBegin[1] = second + 1;
    pLayout->mShift = _mm256_set_epi64x(0, shift(last - second - 1), shift(second - first - 1), shift(first));
}

MORENTIS_WIDE inline bool MakeIndices(const char* p, const FaceLayout_st& layout, int* pTo) {
    long long a, b, c;
    std::memcpy(&a, p, sizeof a);
    std::memcpy(&b, p + layout.mBegin[0], sizeof b);
    std::memcpy(&c, p + layout.mBegin[1], sizeof c);
    constexpr long long kOne = 0x3130303030303030; // the number 1
    const __m256i digits = _mm256_xor_si256(_mm256_set_epi64x(kOne, c, b, a), _mm256_set1_epi8('0'));
    return MakeIndices(_mm256_sllv_epi64(digits, layout.mShift), pTo);
}

/// As ReadPlace.
MORENTIS_WIDE inline const char* ReadFace(const char* p, FaceLayout_st* pLayout, int* pVertex, int* pNormal) {
    const __m256i low = LoadLine(p, 0), high = LoadLine(p, 32);
    const uint64_t line = Find(low, high, '\n');
    uint64_t marks = (Find(low, high, ' ') | line) & UpTo(line);
    if (!pNormal && line != 0 && marks == pLayout->mEnds && MakeIndices(p, *pLayout, pVertex))
        return p + _tzcnt_u64(line) + 1;
    const uint64_t all = marks;
    const size_t first = TakeFirst(&marks), second = TakeFirst(&marks), last = TakeFirst(&marks);
    if (last >= kRegisters || _tzcnt_u64(line) != last) return nullptr;
    const size_t a = first - 1, b = second - first - 2, c = last - second - 2; // digits but one
    if (!pNormal && (a | b | c) < kMostIndexDigits) {
        LayOut(all, first, second, last, pLayout);
        if (MakeIndices(p, *pLayout, pVertex)) return p + last + 1;
        pLayout->mEnds = 0;
    }
    const uint64_t within = (uint64_t(1) << last) - 1;
    const uint64_t slashes = Find(low, high, '/') & within;
    if (_mm_popcnt_u64(slashes) != (pNormal ? 6 : 3)) return nullptr;
    // Between the slashes, and behind a single one, there may be digits or nothing.
    const uint64_t known = FindDigits(low, high) | slashes | Find(low, high, ' ');
    if ((~known & within) != 0) return nullptr;
    const FaceEnds_st ends = {{0, first + 1, second + 1}, {first, second, last}};
    return ReadSlashed(p, ends, slashes, pVertex, pNormal) ? p + last + 1 : nullptr;
}

} // namespace

MORENTIS_WIDE void ReadPlainPlaces(bool bNormals, ObjRun_st* pRun, float* pTo) {
    const size_t head = bNormals ? 3 : 2;
    const char* p = pRun->mpNext;
    PlaceLayout_st layout{};
    size_t number = 0;
    for (; number < pRun->mNumber && p < pRun->mpEnd; ++number) {
        const bool bKind = bNormals ? p[0] == 'v' && p[1] == 'n' && p[2] == ' ' : p[0] == 'v' && p[1] == ' ';
        const char* const next = bKind ? ReadPlace(p + head, &layout, pTo + 3 * number) : nullptr;
        if (!next) break;
        p = next;
    }
    pRun->mpNext = p;
    pRun->mNumber = number;
}

MORENTIS_WIDE void ReadPlainFaces(ObjRun_st* pRun, int* pVertex, int* pNormal) {
    const char* p = pRun->mpNext;
    FaceLayout_st layout{};
    size_t number = 0;
    for (; number < pRun->mNumber && p < pRun->mpEnd && p[0] == 'f' && p[1] == ' '; ++number) {
        const char* const next =
            ReadFace(p + 2, &layout, pVertex + 3 * number, pNormal ? pNormal + 3 * number : nullptr);
        if (!next) break;
        p = next;
    }
    pRun->mpNext = p;
    pRun->mNumber = number;
}
