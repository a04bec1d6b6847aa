#include "MESH/MeshNormals.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <immintrin.h>

#include "COMMON/DataLoops.h"
#include "COMMON/OnThreads.h"
#include "MESH/MeshFile.h"

namespace {

// Three numbers and a spare one: a place in memory of its own, added to at once.
typedef float Sum __attribute__((vector_size(16)));
using Sums = std::vector<Sum, BigAllocator_cls<Sum>>;

constexpr int kBatch = 256; // vertices that are worked on while they are in the cache

// Reciprocals of what lengths come to, 0 for those that are nothing or no number.
inline double GetScale(double square) {
    const double length = std::sqrt(square);
    const double scale = 1.0 / length;
    return (length > 0.0) & (length <= DBL_MAX) ? scale : 0.0;
}

inline void TriangleNormal(const float* a, const float* b, const float* c, float* out) {
    // Products in double: those of small or large floats would be lost.
    const double ux = double(b[0] - a[0]), uy = double(b[1] - a[1]), uz = double(b[2] - a[2]);
    const double vx = double(c[0] - b[0]), vy = double(c[1] - b[1]), vz = double(c[2] - b[2]);
    const double x = uy * vz - uz * vy, y = uz * vx - ux * vz, z = ux * vy - uy * vx;
    const double scale = GetScale(x * x + y * y + z * z);
    const bool bNone = scale == 0.0;
    out[0] = bNone ? 0.0f : float(x * scale);
    out[1] = bNone ? 0.0f : float(y * scale);
    out[2] = bNone ? 0.0f : float(z * scale);
}

/// The same from registers, whose fourth number counts for nothing.
MORENTIS_WIDE inline Sum WideNormal(const __m128& a, const __m128& b, const __m128& c) {
    constexpr int kNext = _MM_SHUFFLE(3, 0, 2, 1); // y z x
    const __m128 u = _mm_sub_ps(b, a), v = _mm_sub_ps(c, b);
    const __m256d u1 = _mm256_cvtps_pd(_mm_shuffle_ps(u, u, kNext));
    const __m256d v1 = _mm256_cvtps_pd(_mm_shuffle_ps(v, v, kNext));
    const __m256d zxy =
        _mm256_sub_pd(_mm256_mul_pd(_mm256_cvtps_pd(u), v1), _mm256_mul_pd(u1, _mm256_cvtps_pd(v)));
    const __m256d squares = _mm256_mul_pd(zxy, zxy);
    const __m128d zx = _mm256_castpd256_pd128(squares), y = _mm256_extractf128_pd(squares, 1);
    const __m128d square = _mm_add_sd(_mm_add_sd(_mm_unpackhi_pd(zx, zx), y), zx);
    const __m128d length = _mm_sqrt_sd(square, square);
    const __m128d scale = _mm_div_sd(_mm_set_sd(1.0), length);
    const __m128d good =
        _mm_and_pd(_mm_cmpgt_sd(length, _mm_setzero_pd()), _mm_cmple_sd(length, _mm_set_sd(DBL_MAX)));
    const __m128 unit = _mm256_cvtpd_ps(_mm256_mul_pd(zxy, _mm256_broadcastsd_pd(scale)));
    const __m128 mask = _mm_and_ps(_mm_shuffle_ps(_mm_castpd_ps(good), _mm_castpd_ps(good), 0),
                                   _mm_castsi128_ps(_mm_set_epi32(0, -1, -1, -1)));
    return Sum(_mm_and_ps(_mm_shuffle_ps(unit, unit, kNext), mask));
}

/// Adds the triangles' normals to the sums of vertices [from, to): each thread has its own, in the order of
/// the triangles, so that the result is that of one thread. They point where the means point.
struct NormalSums_st {
    const MeshInts& mFaces;
    const MeshFloats& mVertices;
    Sum* mpSums;
    unsigned mFrom;
    unsigned mWidth;

    bool IsMine(unsigned vertex) const { return vertex - mFrom < mWidth; }
    const float* At(unsigned vertex) const { return mVertices.data() + size_t(vertex) * 3; }
    void Add(unsigned a, unsigned b, unsigned c, const Sum& normal) const {
        if (IsMine(a)) mpSums[a] += normal;
        if (IsMine(b)) mpSums[b] += normal;
        if (IsMine(c)) mpSums[c] += normal;
    }
};

void AddPlain(const NormalSums_st& sums, size_t face) {
    const int* const p = &sums.mFaces[face];
    const unsigned a = unsigned(p[0]), b = unsigned(p[1]), c = unsigned(p[2]);
    if (!sums.IsMine(a) && !sums.IsMine(b) && !sums.IsMine(c)) return;
    const unsigned number = static_cast<unsigned>(sums.mVertices.size() / 3);
    if (a >= number || b >= number || c >= number) return;
    float n[3];
    TriangleNormal(sums.At(a), sums.At(b), sums.At(c), n);
    sums.Add(a, b, c, Sum{n[0], n[1], n[2], 0.0f});
}

MORENTIS_WIDE void AddWide(const NormalSums_st& sums) {
    const unsigned last = static_cast<unsigned>(sums.mVertices.size() / 3) - 1;
    const int* const faces = sums.mFaces.data();
    for (size_t i = 0; i + 2 < sums.mFaces.size(); i += 3) {
        const unsigned a = unsigned(faces[i]), b = unsigned(faces[i + 1]), c = unsigned(faces[i + 2]);
        if (!sums.IsMine(a) && !sums.IsMine(b) && !sums.IsMine(c)) continue;
        // Behind the last vertex there is no fourth number.
        if (a >= last || b >= last || c >= last)
            AddPlain(sums, i);
        else
            sums.Add(
                a, b, c,
                WideNormal(_mm_loadu_ps(sums.At(a)), _mm_loadu_ps(sums.At(b)), _mm_loadu_ps(sums.At(c))));
    }
}

void AddTriangles(const NormalSums_st& sums, bool bWide) {
    if (bWide) return AddWide(sums);
    for (size_t i = 0; i + 2 < sums.mFaces.size(); i += 3)
        AddPlain(sums, i);
}

MORENTIS_DATA_LOOP void MakeScales(const double* pSquare, int count, double* pScale) {
    for (int i = 0; i < count; ++i)
        pScale[i] = GetScale(pSquare[i]);
}

void StoreUnits(const Sum* pSums, int count, float* pOut) {
    double square[kBatch] = {}, scale[kBatch];
    for (int i = 0; i < count; ++i) {
        const double x = double(pSums[i][0]), y = double(pSums[i][1]), z = double(pSums[i][2]);
        square[i] = x * x + y * y + z * z;
    }
    MakeScales(square, count, scale);
    for (int i = 0; i < count; ++i) {
        const bool bNone = scale[i] == 0.0;
        *pOut++ = bNone ? 0.0f : float(double(pSums[i][0]) * scale[i]);
        *pOut++ = bNone ? 0.0f : float(double(pSums[i][1]) * scale[i]);
        *pOut++ = bNone ? 1.0f : float(double(pSums[i][2]) * scale[i]);
    }
}

} // namespace

void MakeTriangleNormal(const float* pA, const float* pB, const float* pC, float* pOut) {
    TriangleNormal(pA, pB, pC, pOut);
}

void MakeVertexNormals(const MeshInts& faces, const MeshFloats& vertices, MeshFloats* pNormals, bool bWide) {
    const size_t number = vertices.size() / 3;
    Sums sums(number);
    pNormals->resize(number * 3);
    const int threads = GetMeshThreads(faces.size() * sizeof(int));
    OnThreads(threads, [&](int k) {
        const auto at = [&](int part) {
            return number * static_cast<size_t>(part) / static_cast<size_t>(threads);
        };
        const size_t from = at(k), to = at(k + 1);
        for (size_t i = from; i < to; ++i)
            sums[i] = Sum{0.0f, 0.0f, 0.0f, 0.0f};
        AddTriangles({faces, vertices, sums.data(), unsigned(from), unsigned(to - from)}, bWide);
        for (size_t i = from; i < to; i += kBatch)
            StoreUnits(&sums[i], int(std::min(to - i, size_t(kBatch))), pNormals->data() + 3 * i);
    });
}
