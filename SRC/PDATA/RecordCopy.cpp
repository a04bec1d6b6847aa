#include "PDATA/RecordCopy.h"

#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

template <size_t SIZE>
void CopyPlain(const unsigned char* __restrict from, size_t stride, unsigned char* __restrict to,
               size_t number) {
    for (size_t i = 0; i < number; ++i)
        std::memcpy(to + SIZE * i, from + stride * i, SIZE);
}

#ifdef __SSE2__

template <bool STREAM>
void Store(unsigned char* to, __m128i value) {
    if (STREAM)
        _mm_stream_si128(reinterpret_cast<__m128i*>(to), value);
    else
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value);
}

template <bool STREAM>
void Store(unsigned char* to, __m128 value) {
    Store<STREAM>(to, _mm_castps_si128(value));
}

__m128i LoadWord(const unsigned char* from) {
    int word;
    std::memcpy(&word, from, sizeof word);
    return _mm_cvtsi32_si128(word);
}

__m128 LoadFour(const unsigned char* from) {
    return _mm_castsi128_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)));
}

// Four records at a time; what is left is for CopyPlain.
template <bool STREAM>
size_t CopyScalarsByFour(const unsigned char* from, size_t stride, unsigned char* to, size_t number) {
    size_t i = 0;
    for (; i + 4 <= number; i += 4, from += 4 * stride) {
        const __m128i ab = _mm_unpacklo_epi32(LoadWord(from), LoadWord(from + stride));
        const __m128i cd = _mm_unpacklo_epi32(LoadWord(from + 2 * stride), LoadWord(from + 3 * stride));
        Store<STREAM>(to + 4 * i, _mm_unpacklo_epi64(ab, cd));
    }
    return i;
}

template <bool STREAM>
size_t CopyVectorsByFour(const unsigned char* from, size_t stride, unsigned char* to, size_t number) {
    size_t i = 0;
    for (; i + 4 <= number; i += 4, from += 4 * stride) {
        const __m128 a = LoadFour(from), b = LoadFour(from + stride);
        const __m128 c = LoadFour(from + 2 * stride), d = LoadFour(from + 3 * stride);
        const __m128 zx = _mm_shuffle_ps(a, b, _MM_SHUFFLE(0, 0, 2, 2)); // az az bx bx
        const __m128 zy = _mm_shuffle_ps(c, d, _MM_SHUFFLE(0, 0, 2, 2)); // cz cz dx dx
        Store<STREAM>(to + 12 * i, _mm_shuffle_ps(a, zx, _MM_SHUFFLE(2, 0, 1, 0)));
        Store<STREAM>(to + 12 * i + 16, _mm_shuffle_ps(b, c, _MM_SHUFFLE(1, 0, 2, 1)));
        Store<STREAM>(to + 12 * i + 32, _mm_shuffle_ps(zy, d, _MM_SHUFFLE(2, 1, 2, 0)));
    }
    return i;
}

bool IsAligned(const void* p) { return reinterpret_cast<uintptr_t>(p) % 16 == 0; }

#endif

} // namespace

void CopyScalars(const unsigned char* pFrom, size_t stride, void* pTo, size_t number, bool bStream) {
    unsigned char* to = static_cast<unsigned char*>(pTo);
    size_t done = 0;
#ifdef __SSE2__
    done = bStream && IsAligned(to) ? CopyScalarsByFour<true>(pFrom, stride, to, number)
                                    : CopyScalarsByFour<false>(pFrom, stride, to, number);
#endif
    CopyPlain<4>(pFrom + stride * done, stride, to + 4 * done, number - done);
}

void CopyVectors(const unsigned char* pFrom, size_t stride, void* pTo, size_t number, bool bStream) {
    unsigned char* to = static_cast<unsigned char*>(pTo);
    size_t done = 0;
#ifdef __SSE2__
    done = bStream && IsAligned(to) ? CopyVectorsByFour<true>(pFrom, stride, to, number)
                                    : CopyVectorsByFour<false>(pFrom, stride, to, number);
#endif
    CopyPlain<12>(pFrom + stride * done, stride, to + 12 * done, number - done);
}

void FinishStreams() {
#ifdef __SSE2__
    _mm_sfence();
#endif
}

namespace {

size_t CountOneByOne(const unsigned char* from, size_t stride, size_t number) {
    size_t count = 0;
    for (size_t i = 0; i < number; ++i) {
        float place[3];
        std::memcpy(place, from + stride * i, sizeof place);
        const float sum = place[0] + place[1] + place[2];
        count += !(sum - sum == 0.0f);
    }
    return count;
}

#ifdef __SSE2__
/// Zero where four times it is a number, and so is the sum of three such.
__m128 MeetNumbers(const unsigned char* from) {
    const __m128 twice = _mm_add_ps(LoadFour(from), LoadFour(from));
    const __m128 fourfold = _mm_add_ps(twice, twice);
    return _mm_sub_ps(fourfold, fourfold);
}

/// True: all of the places, an even number of them, surely are some. What is no number stays none in sums.
/// Sixteen bytes of each record must be there.
bool HaveAllPlaces(const unsigned char* from, size_t stride, size_t number) {
    __m128 even = _mm_setzero_ps(), odd = even;
    for (size_t i = 0; i < number; i += 2, from += 2 * stride) {
        even = _mm_add_ps(even, MeetNumbers(from));
        odd = _mm_add_ps(odd, MeetNumbers(from + stride));
    }
    const __m128 sum = _mm_add_ps(even, odd);
    return (_mm_movemask_ps(_mm_cmpeq_ps(sum, sum)) & 7) == 7;
}
#endif

} // namespace

size_t CountPlaceless(const unsigned char* pFrom, size_t stride, size_t number) {
    size_t count = 0;
#ifdef __SSE2__
    // Nearly all have one: a look at many at a time, and at each only where that finds something.
    constexpr size_t kMany = 256;
    for (; number > kMany; number -= kMany, pFrom += kMany * stride)
        if (!HaveAllPlaces(pFrom, stride, kMany)) count += CountOneByOne(pFrom, stride, kMany);
#endif
    return count + CountOneByOne(pFrom, stride, number);
}
