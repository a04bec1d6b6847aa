// Points looked up in the table: once for every pixel of a picture. Four spheres are held against a point at
// a time; the last ones of a block may reach into the next one, as who throws a shadow on a point may be
// found in any block.
#include <cstdint>

#include <emmintrin.h>

#include "GL/DRAW/ShadowBlocks.h"
#include "GL/DRAW/clsShadowGrid.h"

namespace {

constexpr int kLanes = 4;
using Lanes_t = float __attribute__((vector_size(4 * kLanes)));
using Test_t = int __attribute__((vector_size(4 * kLanes)));

static_assert(kLanes - 1 == int(ShadowGrid_cls::kSpareEntries), "all but one may lie behind the last one");

Lanes_t Fill(float value) { return value - Lanes_t{}; }

bool IsAny(const Test_t& test) { return _mm_movemask_ps(reinterpret_cast<__m128>(test)) != 0; }

/// Of four entries, number by number.
struct Balls_st {
    explicit Balls_st(const float* p) {
        __m128 a = _mm_loadu_ps(p), b = _mm_loadu_ps(p + 4), c = _mm_loadu_ps(p + 8),
               d = _mm_loadu_ps(p + 12);
        _MM_TRANSPOSE4_PS(a, b, c, d);
        x = a;
        y = b;
        z = c;
        radius = d;
    }
    Lanes_t x, y, z, radius;
};

/// As ToBlock four times.
void ToBlocks(const Lanes_t& values, int32_t* pBlocks) {
    // What is no number goes to the second of the two.
    const __m128 limited = _mm_min_ps(_mm_max_ps(values, _mm_set1_ps(-ShadowBlocks::kFarthest)),
                                      _mm_set1_ps(ShadowBlocks::kFarthest));
    const __m128i whole = _mm_cvttps_epi32(limited);
    const __m128 above = _mm_cmplt_ps(limited, _mm_cvtepi32_ps(whole)); // -1 there
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pBlocks), _mm_add_epi32(whole, _mm_castps_si128(above)));
}

bool IsInFar(const ShadowShape_st& shape, const ShadowGrid_cls::Point_st& point, const float* p,
             const float* pEnd) {
    const Lanes_t x = Fill(point.place[0]), y = Fill(point.place[1]), z = Fill(point.place[2]);
    const Lanes_t start = Fill(shape.start), length = Fill(shape.length);
    for (; p < pEnd; p += 4 * kLanes) {
        const Balls_st balls(p);
        const Lanes_t right = x - balls.x, up = y - balls.y, along = z - balls.z, radius = balls.radius;
        if (IsAny((right * right + up * up < radius * radius) & (along >= start * radius) &
                  (along <= length * radius)))
            return true;
    }
    return false;
}

// The light's ray to the place meets the sphere, and the place lies between the shadow's ends.
bool IsInNear(const ShadowShape_st& shape, const ShadowGrid_cls::Point_st& point, const float* p,
              const float* pEnd) {
    const Lanes_t x = Fill(point.place[0]), y = Fill(point.place[1]), z = Fill(point.place[2]);
    const Lanes_t rayX = Fill(point.ray[0]), rayY = Fill(point.ray[1]), rayZ = Fill(point.ray[2]);
    const Lanes_t lightX = Fill(shape.light[0]), lightY = Fill(shape.light[1]);
    const Lanes_t lightZ = Fill(shape.light[2]);
    const Lanes_t start = Fill(shape.start * shape.start), length = Fill(shape.length * shape.length);
    for (; p < pEnd; p += 4 * kLanes) {
        const Balls_st balls(p);
        const Lanes_t wayX = x - balls.x, wayY = y - balls.y, wayZ = z - balls.z;
        const Lanes_t ahead = wayX * rayX + wayY * rayY + wayZ * rayZ;
        const Lanes_t offX = wayX - ahead * rayX, offY = wayY - ahead * rayY, offZ = wayZ - ahead * rayZ;
        const Lanes_t square = balls.radius * balls.radius;
        const Test_t met = offX * offX + offY * offY + offZ * offZ < square;
        if (!IsAny(met)) continue;
        const Lanes_t awayX = balls.x - lightX, awayY = balls.y - lightY, awayZ = balls.z - lightZ;
        const Lanes_t along = wayX * awayX + wayY * awayY + wayZ * awayZ + square;
        const Lanes_t unit = (awayX * awayX + awayY * awayY + awayZ * awayZ) * square;
        if (IsAny(met & (along >= Lanes_t{}) & (along * along >= start * unit) &
                  (along * along <= length * unit)))
            return true;
    }
    return false;
}

} // namespace

void ShadowGrid_cls::Locate(Point_st& point) const {
    int32_t block[4];
    if (!mShape.bNear) {
        ToBlocks(Lanes_t{point.place[0] * mPerBlock[0], point.place[1] * mPerBlock[1],
                         point.place[2] * mPerBlock[2], 0.0f},
                 block);
        point.block = ShadowBlocks::GetFarBlock(block);
        return;
    }
    const float x = point.place[0] - mTurned.light[0];
    const float y = point.place[1] - mTurned.light[1];
    const float z = point.place[2] - mTurned.light[2];
    const float far = _mm_cvtss_f32(_mm_sqrt_ss(_mm_set_ss(x * x + y * y + z * z)));
    const float perFar = 1.0f / far;
    point.ray[0] = x * perFar;
    point.ray[1] = y * perFar;
    point.ray[2] = z * perFar;
    ToBlocks(Lanes_t{point.ray[0] * mPerBlock[0], point.ray[1] * mPerBlock[0], point.ray[2] * mPerBlock[0],
                     far * mPerBlock[2]},
             block);
    point.block = ShadowBlocks::GetNearBlock(block);
}

bool ShadowGrid_cls::IsInShadow(const Point_st& point) const {
    const float* const pEntries = GetEntries().data();
    const float* const pEnd = pEntries + 4 * static_cast<ptrdiff_t>(GetStarts()[point.block + 1]);
    const float* p = pEntries + 4 * static_cast<ptrdiff_t>(GetStarts()[point.block]);
    if (p >= pEnd) return false;
    return mShape.bNear ? IsInNear(mTurned, point, p, pEnd) : IsInFar(mTurned, point, p, pEnd);
}
