// One form of the kernels, included into a namespace of its own.

#include "GL/DRAW/CPU/TileLanes.inl"
#include "GL/DRAW/CPU/TileLocate.inl"
#include "GL/DRAW/CPU/TileSpheres.inl"
#include "GL/DRAW/CPU/TileSprites.inl"

#ifdef TILE_WIDE
LANES_INLINE void FromHalves(const uint16_t* p, float* pOut) {
    __m128i bits;
    __builtin_memcpy(&bits, p, sizeof bits);
    const F8 v = (F8)_mm256_cvtph_ps(bits);
    __builtin_memcpy(pOut, &v, sizeof v);
}
LANES_INLINE void ToHalves(F8 v, uint16_t* p) {
    const __m128i bits = _mm256_cvtps_ph((__m256)v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    __builtin_memcpy(p, &bits, sizeof bits);
}
#else
LANES_INLINE float FromHalf(uint16_t half) {
    const uint32_t sign = (half & 0x8000u) << 16;
    const uint32_t exponent = (half >> 10) & 31u;
    const uint32_t rest = half & 0x3ffu;
    uint32_t bits = sign | (exponent + 112u) << 23 | rest << 13;
    if (exponent == 31u) bits = sign | 0x7f800000u | rest << 13;
    float v;
    __builtin_memcpy(&v, &bits, sizeof v);
    if (exponent == 0u) v = (sign ? -1.0f : 1.0f) * static_cast<float>(rest) * 5.9604645e-8f;
    return v;
}
LANES_INLINE uint16_t ToHalf(float v) {
    uint32_t bits;
    __builtin_memcpy(&bits, &v, sizeof bits);
    const uint32_t sign = (bits >> 16) & 0x8000u;
    const uint32_t size = bits & 0x7fffffffu;
    if (size > 0x7f800000u) return static_cast<uint16_t>(sign | 0x7e00u);
    if (size == 0x7f800000u) return static_cast<uint16_t>(sign | 0x7c00u);
    if (size >= 0x47800000u) return static_cast<uint16_t>(sign | 0x7bffu); // the largest
    if (size >= 0x38800000u) return static_cast<uint16_t>(sign | ((size - 0x38000000u) >> 13));
    const float absolute = v < 0.0f ? -v : v;
    return static_cast<uint16_t>(sign | static_cast<uint32_t>(absolute * 16777216.0f));
}
LANES_INLINE void FromHalves(const uint16_t* p, float* pOut) {
    for (int k = 0; k < 8; ++k)
        pOut[k] = FromHalf(p[k]);
}
LANES_INLINE void ToHalves(F8 v, uint16_t* p) {
    for (int k = 0; k < 8; ++k)
        p[k] = ToHalf(v[k]);
}
#endif

/// Four pixels at a time: from one plane a channel to one pixel behind the other, or back.
LANES_INLINE void Turn(F4& a, F4& b, F4& c, F4& d) {
    const F4 ab0 = __builtin_shufflevector(a, b, 0, 4, 1, 5), ab1 = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const F4 cd0 = __builtin_shufflevector(c, d, 0, 4, 1, 5), cd1 = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    a = __builtin_shufflevector(ab0, cd0, 0, 1, 4, 5);
    b = __builtin_shufflevector(ab0, cd0, 2, 3, 6, 7);
    c = __builtin_shufflevector(ab1, cd1, 0, 1, 4, 5);
    d = __builtin_shufflevector(ab1, cd1, 2, 3, 6, 7);
}

/// `count` pixels, 1 to 4.
LANES_INLINE void LoadFour(const uint16_t* p, int count, TilePixels_st& pixels, int at) {
    uint16_t halves[16] = {};
    __builtin_memcpy(halves, p, 8 * static_cast<size_t>(count));
    float values[16];
    FromHalves(halves, values);
    FromHalves(halves + 8, values + 8);
    F4 v[4];
    __builtin_memcpy(v, values, sizeof v);
    Turn(v[0], v[1], v[2], v[3]);
    for (int k = 0; k < 4; ++k)
        __builtin_memcpy(pixels.c[k] + at, &v[k], sizeof v[k]);
}
LANES_INLINE void StoreFour(const TilePixels_st& pixels, int at, int count, uint16_t* p) {
    F4 v[4];
    for (int k = 0; k < 4; ++k)
        __builtin_memcpy(&v[k], pixels.c[k] + at, sizeof v[k]);
    Turn(v[0], v[1], v[2], v[3]);
    uint16_t halves[16];
    ToHalves(__builtin_shufflevector(v[0], v[1], 0, 1, 2, 3, 4, 5, 6, 7), halves);
    ToHalves(__builtin_shufflevector(v[2], v[3], 0, 1, 2, 3, 4, 5, 6, 7), halves + 8);
    __builtin_memcpy(p, halves, 8 * static_cast<size_t>(count));
}

static void LoadTile(TileCanvas_cls& canvas, int tile, TilePixels_st& pixels) {
    const TileCanvas_cls::Rect_st rect = canvas.GetTileRect(tile);
    pixels.left = rect.left, pixels.bottom = rect.bottom;
    pixels.width = rect.width, pixels.height = rect.height;
    if (!canvas.IsFilled(tile)) {
        for (auto& plane : pixels.c)
            __builtin_memset(plane, 0, sizeof plane);
        __builtin_memset(pixels.stencil, 0, sizeof pixels.stencil);
        for (int32_t& z : pixels.z)
            z = 0xffffff;
        return;
    }
    for (int row = 0; row < rect.height; ++row) {
        const size_t from = static_cast<size_t>(rect.bottom + row) * static_cast<size_t>(canvas.GetWidth()) +
                            static_cast<size_t>(rect.left);
        const int to = row * TilePixels_st::kStride;
        const uint16_t* pColor = canvas.GetColor() + 4 * from;
        const uint32_t* pDepth = canvas.GetDepth() + from;
        for (int x = 0; x < rect.width; x += 4)
            LoadFour(pColor + 4 * x, rect.width - x < 4 ? rect.width - x : 4, pixels, to + x);
        for (int x = 0; x < rect.width; ++x) {
            pixels.z[to + x] = static_cast<int32_t>(pDepth[x] >> 8);
            pixels.stencil[to + x] = static_cast<uint8_t>(pDepth[x]);
        }
    }
}

static void StoreTile(TileCanvas_cls& canvas, const TilePixels_st& pixels) {
    for (int row = 0; row < pixels.height; ++row) {
        const size_t to = static_cast<size_t>(pixels.bottom + row) * static_cast<size_t>(canvas.GetWidth()) +
                          static_cast<size_t>(pixels.left);
        const int from = row * TilePixels_st::kStride;
        uint16_t* pColor = canvas.GetColor() + 4 * to;
        uint32_t* pDepth = canvas.GetDepth() + to;
        for (int x = 0; x < pixels.width; x += 4)
            StoreFour(pixels, from + x, pixels.width - x < 4 ? pixels.width - x : 4, pColor + 4 * x);
        for (int x = 0; x < pixels.width; ++x)
            pDepth[x] = static_cast<uint32_t>(pixels.z[from + x]) << 8 | pixels.stencil[from + x];
    }
}

template <TileLook_st::Blend BLEND>
static void DrawUnlit(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                      const TileRecord_st& record) {
    if (look.kind == TileLook_st::POINT)
        DrawPoint<BLEND>(pixels, look, record);
    else if (look.bFacing)
        DrawFacingSprite<BLEND>(scene, pixels, look, record);
    else
        DrawFlatSprite<BLEND>(scene, pixels, look, record);
}

static void DrawRecords(const TileScene_st& scene, TilePixels_st& pixels, const TileRecord_st* pFirst,
                        const TileRecord_st* pEnd, const float* pMaterials) {
    Lit_st lit;
    uint32_t litLook = TileScene_st::kLooks; // whose material it is
    for (const TileRecord_st* p = pFirst; p < pEnd; ++p) {
        const uint32_t which = p->what & TileRecord_st::kLookMask;
        const TileLook_st& look = scene.look[which];
        if (look.kind == TileLook_st::SPHERE) {
            const float* pOwn =
                look.bMaterials ? pMaterials + 12 * static_cast<size_t>(p->color[0]) : nullptr;
            if (pOwn)
                PrepareLit(scene, pOwn, pOwn + 4, pOwn + 8, lit);
            else if (litLook != which)
                PrepareLit(scene, look.ambient, look.diffuse, look.specular, lit);
            litLook = pOwn ? static_cast<uint32_t>(TileScene_st::kLooks) : which;
            DrawSphere(scene, pixels, look, lit, *p);
        } else if (look.blend == TileLook_st::ADDS) {
            DrawUnlit<TileLook_st::ADDS>(scene, pixels, look, *p);
        } else if (look.blend == TileLook_st::COVERS) {
            DrawUnlit<TileLook_st::COVERS>(scene, pixels, look, *p);
        } else {
            DrawUnlit<TileLook_st::OVERWRITES>(scene, pixels, look, *p);
        }
    }
}

static constexpr TileKernels_st kKernels = {Locate, LoadTile, StoreTile, DrawRecords};
