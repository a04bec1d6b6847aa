#include "MESH/MeshNormals.h"

#include <cmath>

#include "COMMON/OnThreads.h"
#include "MESH/MeshFile.h"

namespace {

// Three numbers and a spare one: a place in memory of its own, added to at once.
typedef float Sum __attribute__((vector_size(16)));
using Sums = std::vector<Sum, BigAllocator_cls<Sum>>;

inline void TriangleNormal(const float* a, const float* b, const float* c, float* out) {
    // Products in double: those of small or large floats would be lost.
    const double ux = double(b[0] - a[0]), uy = double(b[1] - a[1]), uz = double(b[2] - a[2]);
    const double vx = double(c[0] - b[0]), vy = double(c[1] - b[1]), vz = double(c[2] - b[2]);
    const double x = uy * vz - uz * vy, y = uz * vx - ux * vz, z = ux * vy - uy * vx;
    const double length = std::sqrt(x * x + y * y + z * z);
    const double scale = length > 0.0 && std::isfinite(length) ? 1.0 / length : 0.0;
    const bool bNone = scale == 0.0;
    out[0] = bNone ? 0.0f : float(x * scale);
    out[1] = bNone ? 0.0f : float(y * scale);
    out[2] = bNone ? 0.0f : float(z * scale);
}

/// The sums of vertices [from, to): each thread has its own, in the order of the triangles, so that the
/// result is that of one thread. They point where the means point.
void AddTriangles(const MeshInts& faces, const MeshFloats& vertices, unsigned from, unsigned to, Sum* pSums) {
    const unsigned number = static_cast<unsigned>(vertices.size() / 3);
    const unsigned width = to - from;
    for (size_t i = 0; i + 2 < faces.size(); i += 3) {
        const unsigned a = unsigned(faces[i]), b = unsigned(faces[i + 1]), c = unsigned(faces[i + 2]);
        if (a - from >= width && b - from >= width && c - from >= width) continue;
        if (a >= number || b >= number || c >= number) continue;
        float n[3];
        TriangleNormal(&vertices[size_t(a) * 3], &vertices[size_t(b) * 3], &vertices[size_t(c) * 3], n);
        const Sum normal = {n[0], n[1], n[2], 0.0f};
        if (a - from < width) pSums[a] += normal;
        if (b - from < width) pSums[b] += normal;
        if (c - from < width) pSums[c] += normal;
    }
}

void StoreUnit(const Sum& sum, float* pOut) {
    const double x = double(sum[0]), y = double(sum[1]), z = double(sum[2]);
    const double length = std::sqrt(x * x + y * y + z * z);
    const bool bNone = !(length > 0.0) || !std::isfinite(length);
    const double scale = 1.0 / length;
    pOut[0] = bNone ? 0.0f : float(x * scale);
    pOut[1] = bNone ? 0.0f : float(y * scale);
    pOut[2] = bNone ? 1.0f : float(z * scale);
}

} // namespace

void MakeTriangleNormal(const float* pA, const float* pB, const float* pC, float* pOut) {
    TriangleNormal(pA, pB, pC, pOut);
}

void MakeVertexNormals(const MeshInts& faces, const MeshFloats& vertices, MeshFloats* pNormals) {
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
        AddTriangles(faces, vertices, unsigned(from), unsigned(to), sums.data());
        for (size_t i = from; i < to; ++i)
            StoreUnit(sums[i], pNormals->data() + 3 * i);
    });
}
