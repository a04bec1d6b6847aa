#include "BOND/PairScan.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstring>

#include <immintrin.h>

#include "COMMON/WideRegisters.h"

namespace {

constexpr size_t kWide = 8;
constexpr size_t kFewHits = 64; // more are sorted by comparing two at a time

using Order_t = std::array<uint8_t, kWide>;

/// For each choice of lanes, where those that are chosen come from when they move together.
constexpr std::array<Order_t, 256> MakeOrders() {
    std::array<Order_t, 256> orders{};
    for (unsigned bits = 0; bits < 256; ++bits) {
        size_t number = 0;
        for (unsigned lane = 0; lane < kWide; ++lane)
            if (bits >> lane & 1) orders[bits][number++] = static_cast<uint8_t>(lane);
    }
    return orders;
}

constexpr std::array<Order_t, 256> kOrders = MakeOrders();

// Choosing is done without a branch: who is near is too random to be guessed.
MORENTIS_WIDE size_t ScanWide(const PairScan_st& scan, const PairGrid_cls::Near_st& near, int* pIndex,
                              float* pSquare) {
    const __m256 ox = _mm256_set1_ps(scan.mOffset[0]), oy = _mm256_set1_ps(scan.mOffset[1]),
                 oz = _mm256_set1_ps(scan.mOffset[2]);
    const __m256 fx = _mm256_set1_ps(scan.mFrom[0]), fy = _mm256_set1_ps(scan.mFrom[1]),
                 fz = _mm256_set1_ps(scan.mFrom[2]);
    const __m256 limit = _mm256_set1_ps(scan.mLimit);
    const __m256i above = _mm256_set1_epi32(scan.mAbove);
    const float *x = near.x.data(), *y = near.y.data(), *z = near.z.data();
    const int* index = near.index.data();
    size_t passed = 0;
    for (size_t k = 0; k < static_cast<size_t>(near.number); k += kWide) {
        const __m256 dx = _mm256_sub_ps(_mm256_add_ps(_mm256_loadu_ps(x + k), ox), fx);
        const __m256 dy = _mm256_sub_ps(_mm256_add_ps(_mm256_loadu_ps(y + k), oy), fy);
        const __m256 dz = _mm256_sub_ps(_mm256_add_ps(_mm256_loadu_ps(z + k), oz), fz);
        const __m256 square =
            _mm256_add_ps(_mm256_add_ps(_mm256_mul_ps(dx, dx), _mm256_mul_ps(dy, dy)), _mm256_mul_ps(dz, dz));
        const __m256i indices = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(index + k));
        const __m256 good = _mm256_and_ps(_mm256_cmp_ps(square, limit, _CMP_LT_OQ),
                                          _mm256_castsi256_ps(_mm256_cmpgt_epi32(indices, above)));
        const auto bits = static_cast<unsigned>(_mm256_movemask_ps(good));
        long long packed;
        std::memcpy(&packed, kOrders[bits].data(), sizeof packed);
        const __m256i order = _mm256_cvtepu8_epi32(_mm_cvtsi64_si128(packed));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(pIndex + passed),
                            _mm256_permutevar8x32_epi32(indices, order));
        _mm256_storeu_ps(pSquare + passed, _mm256_permutevar8x32_ps(square, order));
        passed += static_cast<size_t>(_mm_popcnt_u32(bits));
    }
    return passed;
}

size_t ScanPlain(const PairScan_st& scan, const PairGrid_cls::Near_st& near, int* pIndex, float* pSquare) {
    constexpr size_t kLanes = 4;
    const __m128 ox = _mm_set1_ps(scan.mOffset[0]), oy = _mm_set1_ps(scan.mOffset[1]),
                 oz = _mm_set1_ps(scan.mOffset[2]);
    const __m128 fx = _mm_set1_ps(scan.mFrom[0]), fy = _mm_set1_ps(scan.mFrom[1]),
                 fz = _mm_set1_ps(scan.mFrom[2]);
    const __m128 limit = _mm_set1_ps(scan.mLimit);
    const __m128i above = _mm_set1_epi32(scan.mAbove);
    const float *x = near.x.data(), *y = near.y.data(), *z = near.z.data();
    const int* index = near.index.data();
    size_t passed = 0;
    for (size_t k = 0; k < static_cast<size_t>(near.number); k += kLanes) {
        const __m128 dx = _mm_sub_ps(_mm_add_ps(_mm_loadu_ps(x + k), ox), fx);
        const __m128 dy = _mm_sub_ps(_mm_add_ps(_mm_loadu_ps(y + k), oy), fy);
        const __m128 dz = _mm_sub_ps(_mm_add_ps(_mm_loadu_ps(z + k), oz), fz);
        const __m128 square =
            _mm_add_ps(_mm_add_ps(_mm_mul_ps(dx, dx), _mm_mul_ps(dy, dy)), _mm_mul_ps(dz, dz));
        const __m128i indices = _mm_loadu_si128(reinterpret_cast<const __m128i*>(index + k));
        const __m128 good =
            _mm_and_ps(_mm_cmplt_ps(square, limit), _mm_castsi128_ps(_mm_cmpgt_epi32(indices, above)));
        auto bits = static_cast<unsigned>(_mm_movemask_ps(good));
        if (bits == 0) continue;
        alignas(16) float squares[kLanes];
        _mm_store_ps(squares, square);
        for (; bits != 0; bits &= bits - 1) {
            const int lane = __builtin_ctz(bits);
            pIndex[passed] = index[k + static_cast<size_t>(lane)];
            pSquare[passed++] = squares[lane];
        }
    }
    return passed;
}

/// Each goes where so many stand before it as there are smaller ones.
MORENTIS_WIDE void SortWide(int* pIndex, const float* pValue, size_t number, unsigned* pIndexOut,
                            float* pValueOut) {
    for (size_t k = number; k < number + kWide; ++k)
        pIndex[k] = INT_MAX;
    for (size_t k = 0; k < number; ++k) {
        const __m256i mine = _mm256_set1_epi32(pIndex[k]);
        size_t place = 0;
        for (size_t other = 0; other < number; other += kWide) {
            const __m256i others = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pIndex + other));
            const __m256 less = _mm256_castsi256_ps(_mm256_cmpgt_epi32(mine, others));
            place += static_cast<size_t>(_mm_popcnt_u32(static_cast<unsigned>(_mm256_movemask_ps(less))));
        }
        pIndexOut[place] = static_cast<unsigned>(pIndex[k]);
        if (pValue) pValueOut[place] = pValue[k];
    }
}

struct Hit_st {
    int index;
    float value;
};

void SortPlain(const int* pIndex, const float* pValue, size_t number, unsigned* pIndexOut, float* pValueOut) {
    if (!pValue) {
        std::copy_n(pIndex, number, pIndexOut);
        std::sort(pIndexOut, pIndexOut + number);
        return;
    }
    std::vector<Hit_st> hits(number);
    for (size_t k = 0; k < number; ++k)
        hits[k] = {pIndex[k], pValue[k]};
    std::sort(hits.begin(), hits.end(), [](const Hit_st& a, const Hit_st& b) { return a.index < b.index; });
    for (size_t k = 0; k < number; ++k) {
        pIndexOut[k] = static_cast<unsigned>(hits[k].index);
        pValueOut[k] = hits[k].value;
    }
}

} // namespace

size_t ScanNear(const PairScan_st& scan, const PairGrid_cls::Near_st& near, bool bWide, int* pIndex,
                float* pSquare) {
    return bWide ? ScanWide(scan, near, pIndex, pSquare) : ScanPlain(scan, near, pIndex, pSquare);
}

void SortHits(int* pIndex, const float* pValue, size_t number, bool bWide, unsigned* pIndexOut,
              float* pValueOut) {
    if (bWide && number <= kFewHits)
        SortWide(pIndex, pValue, number, pIndexOut, pValueOut);
    else
        SortPlain(pIndex, pValue, number, pIndexOut, pValueOut);
}
