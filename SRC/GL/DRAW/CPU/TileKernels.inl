// One form of the kernels, included into a namespace of its own.

#include "GL/DRAW/CPU/TileLanes.inl"
#include "GL/DRAW/CPU/TileLight.inl"
#include "GL/DRAW/CPU/TileLocate.inl"
#include "GL/DRAW/CPU/TileSpheres.inl"
#include "GL/DRAW/CPU/TileSprites.inl"

#include "GL/DRAW/CPU/TileDots.inl"

#ifdef TILE_WIDE
LANES_INLINE F8 FromHalves(const uint16_t* p) {
    __m128i bits;
    __builtin_memcpy(&bits, p, sizeof bits);
    return (F8)_mm256_cvtph_ps(bits);
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
LANES_INLINE F8 FromHalves(const uint16_t* p) {
    F8 v;
    for (int k = 0; k < 8; ++k)
        v[k] = FromHalf(p[k]);
    return v;
}
LANES_INLINE void ToHalves(F8 v, uint16_t* p) {
    for (int k = 0; k < 8; ++k)
        p[k] = ToHalf(v[k]);
}
#endif

// Eight pixels at a time: from one pixel behind the other to one plane a channel, and back.
typedef uint16_t H8 __attribute__((vector_size(16)));
LANES_INLINE void LoadEight(const uint16_t* p, TilePixels_st& pixels, int at) {
    for (int k = 0; pixels.bTogether && k < 8; k += 2)
        Put(pixels.c[0] + 4 * (at + k), FromHalves(p + 4 * k));
    if (pixels.bTogether) return;
    H8 two[4]; // pixels, one behind the other
    __builtin_memcpy(two, p, sizeof two);
    H8 redGreen[2], blueAlpha[2]; // four pixels each
    for (int k = 0; k < 2; ++k) {
        const H8 low = __builtin_shufflevector(two[2 * k], two[2 * k + 1], 0, 8, 1, 9, 2, 10, 3, 11);
        const H8 high = __builtin_shufflevector(two[2 * k], two[2 * k + 1], 4, 12, 5, 13, 6, 14, 7, 15);
        redGreen[k] = __builtin_shufflevector(low, high, 0, 8, 1, 9, 2, 10, 3, 11);
        blueAlpha[k] = __builtin_shufflevector(low, high, 4, 12, 5, 13, 6, 14, 7, 15);
    }
    const H8 channels[4] = {__builtin_shufflevector(redGreen[0], redGreen[1], 0, 1, 2, 3, 8, 9, 10, 11),
                            __builtin_shufflevector(redGreen[0], redGreen[1], 4, 5, 6, 7, 12, 13, 14, 15),
                            __builtin_shufflevector(blueAlpha[0], blueAlpha[1], 0, 1, 2, 3, 8, 9, 10, 11),
                            __builtin_shufflevector(blueAlpha[0], blueAlpha[1], 4, 5, 6, 7, 12, 13, 14, 15)};
    for (int k = 0; k < 4; ++k) {
        uint16_t halves[8];
        __builtin_memcpy(halves, &channels[k], sizeof halves);
        const F8 v = FromHalves(halves);
        __builtin_memcpy(pixels.c[k] + at, &v, sizeof v);
    }
}
LANES_INLINE void StoreEight(const TilePixels_st& pixels, int at, uint16_t* p) {
    for (int k = 0; pixels.bTogether && k < 8; k += 2)
        ToHalves(Take(pixels.c[0] + 4 * (at + k)), p + 4 * k);
    if (pixels.bTogether) return;
    H8 c[4];
    for (int k = 0; k < 4; ++k) {
        F8 v;
        uint16_t halves[8];
        __builtin_memcpy(&v, pixels.c[k] + at, sizeof v);
        ToHalves(v, halves);
        __builtin_memcpy(&c[k], halves, sizeof halves);
    }
    const H8 redGreen[2] = {__builtin_shufflevector(c[0], c[1], 0, 8, 1, 9, 2, 10, 3, 11),
                            __builtin_shufflevector(c[0], c[1], 4, 12, 5, 13, 6, 14, 7, 15)};
    const H8 blueAlpha[2] = {__builtin_shufflevector(c[2], c[3], 0, 8, 1, 9, 2, 10, 3, 11),
                             __builtin_shufflevector(c[2], c[3], 4, 12, 5, 13, 6, 14, 7, 15)};
    for (int k = 0; k < 2; ++k) {
        const H8 low = __builtin_shufflevector(redGreen[k], blueAlpha[k], 0, 1, 8, 9, 2, 3, 10, 11);
        const H8 high = __builtin_shufflevector(redGreen[k], blueAlpha[k], 4, 5, 12, 13, 6, 7, 14, 15);
        __builtin_memcpy(p + 16 * k, &low, sizeof low);
        __builtin_memcpy(p + 16 * k + 8, &high, sizeof high);
    }
}

typedef uint8_t B8 __attribute__((vector_size(8)));
LANES_INLINE U8 TakeStencil(const uint8_t* p) {
#ifdef TILE_WIDE
    return (U8)_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
#else
    B8 stencil;
    __builtin_memcpy(&stencil, p, sizeof stencil);
    return __builtin_convertvector(stencil, U8);
#endif
}
LANES_INLINE void LoadDepth(const uint32_t* p, TilePixels_st& pixels, int at) {
    U8 bits;
    __builtin_memcpy(&bits, p, sizeof bits);
    const U8 z = bits >> 8;
    const B8 stencil = __builtin_convertvector(bits & 0xff, B8);
    __builtin_memcpy(pixels.z + at, &z, sizeof z);
    __builtin_memcpy(pixels.stencil + at, &stencil, sizeof stencil);
}
LANES_INLINE void StoreDepth(const TilePixels_st& pixels, int at, uint32_t* p) {
    U8 z;
    __builtin_memcpy(&z, pixels.z + at, sizeof z);
    const U8 bits = z << 8 | TakeStencil(pixels.stencil + at);
    __builtin_memcpy(p, &bits, sizeof bits);
}

static void LoadTile(TileCanvas_cls& canvas, int tile, TilePixels_st& pixels) {
    const TileCanvas_cls::Rect_st rect = canvas.GetTileRect(tile);
    pixels.left = rect.left, pixels.bottom = rect.bottom;
    pixels.width = rect.width, pixels.height = rect.height;
    pixels.waiting = -1;
    for (float& z : pixels.normal[2])
        z = TilePixels_st::kNoNormal;
    if (!canvas.IsFilled(tile)) {
        uint16_t halves[8] = {};
        __builtin_memcpy(halves, canvas.GetBlankColor(), 8);
        __builtin_memcpy(halves + 4, halves, 8);
        const F8 color = FromHalves(halves); // twice
        if (pixels.bTogether)
            for (int i = 0; i < TilePixels_st::kRoom; i += 2)
                __builtin_memcpy(pixels.c[0] + 4 * i, &color, sizeof color);
        else
            for (int k = 0; k < 4; ++k)
                for (float& c : pixels.c[k])
                    c = color[k];
        __builtin_memset(pixels.stencil, static_cast<int>(canvas.GetBlankDepth() & 0xff),
                         sizeof pixels.stencil);
        pixels.nearest = static_cast<int32_t>(canvas.GetBlankDepth() >> 8);
        for (int32_t& z : pixels.z)
            z = pixels.nearest;
        return;
    }
    for (int row = 0; row < rect.height; ++row) {
        const size_t from = static_cast<size_t>(rect.bottom + row) * static_cast<size_t>(canvas.GetWidth()) +
                            static_cast<size_t>(rect.left);
        const int to = row * TilePixels_st::kStride;
        const uint16_t* pColor = canvas.GetColor() + 4 * from;
        const uint32_t* pDepth = canvas.GetDepth() + from;
        int x = 0;
        for (; x + 8 <= rect.width; x += 8)
            LoadEight(pColor + 4 * x, pixels, to + x), LoadDepth(pDepth + x, pixels, to + x);
        if (x == rect.width) continue;
        uint16_t halves[32] = {};
        uint32_t depths[8] = {};
        __builtin_memcpy(halves, pColor + 4 * x, 8 * static_cast<size_t>(rect.width - x));
        __builtin_memcpy(depths, pDepth + x, 4 * static_cast<size_t>(rect.width - x));
        LoadEight(halves, pixels, to + x), LoadDepth(depths, pixels, to + x);
    }
    pixels.nearest = 0xffffff;
    for (int row = 0; row < rect.height; ++row) {
        const int32_t* const p = pixels.z + row * TilePixels_st::kStride;
        for (int x = 0; x < rect.width; ++x)
            pixels.nearest = pixels.nearest < p[x] ? pixels.nearest : p[x];
    }
}

static void StoreTile(TileCanvas_cls& canvas, const TilePixels_st& pixels) {
    for (int row = 0; row < pixels.height; ++row) {
        const size_t to = static_cast<size_t>(pixels.bottom + row) * static_cast<size_t>(canvas.GetWidth()) +
                          static_cast<size_t>(pixels.left);
        const int from = row * TilePixels_st::kStride;
        uint16_t* pColor = canvas.GetColor() + 4 * to;
        uint32_t* pDepth = canvas.GetDepth() + to;
        int x = 0;
        for (; x + 8 <= pixels.width; x += 8)
            StoreEight(pixels, from + x, pColor + 4 * x), StoreDepth(pixels, from + x, pDepth + x);
        if (x == pixels.width) continue;
        uint16_t halves[32];
        uint32_t depths[8];
        StoreEight(pixels, from + x, halves), StoreDepth(pixels, from + x, depths);
        __builtin_memcpy(pColor + 4 * x, halves, 8 * static_cast<size_t>(pixels.width - x));
        __builtin_memcpy(pDepth + x, depths, 4 * static_cast<size_t>(pixels.width - x));
    }
}

template <TileLook_st::Blend BLEND>
static void DrawUnlit(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                      const TileRecord_st* pFirst, const TileRecord_st* pEnd) {
    if (look.kind == TileLook_st::SPRITE && !look.bFacing)
        return DrawFlatSprites<BLEND>(scene, pixels, look, pFirst, pEnd);
    for (const TileRecord_st* p = pFirst; p < pEnd; ++p)
        if (look.kind == TileLook_st::POINT)
            DrawPoint<BLEND>(pixels, look, *p);
        else
            DrawFacingSprite<BLEND>(scene, pixels, look, *p);
}

static void DrawRecords(const TileScene_st& scene, TilePixels_st& pixels, const TileRecord_st* pFirst,
                        const TileRecord_st* pEnd, const float* const* ppMaterials, uint32_t batch) {
    if (pFirst == pEnd) LightWaiting(scene, pixels, ppMaterials);
    for (const TileRecord_st *p = pFirst, *pNext = p; p < pEnd; p = pNext) {
        const uint32_t which = p->what & TileRecord_st::kLookMask;
        const TileLook_st& look = scene.look[which];
        if (look.bWrite) pixels.nearest = 0;
        while (pNext < pEnd && (pNext->what & TileRecord_st::kLookMask) == which)
            ++pNext;
        if (look.kind == TileLook_st::SPHERE) {
            DrawSpheres(scene, pixels, which, p, pNext, ppMaterials, batch);
            continue;
        }
        LightWaiting(scene, pixels, ppMaterials);
        if (look.blend == TileLook_st::ADDS)
            DrawUnlit<TileLook_st::ADDS>(scene, pixels, look, p, pNext);
        else if (look.blend == TileLook_st::COVERS)
            DrawUnlit<TileLook_st::COVERS>(scene, pixels, look, p, pNext);
        else
            DrawUnlit<TileLook_st::OVERWRITES>(scene, pixels, look, p, pNext);
    }
}

static constexpr TileKernels_st kKernels = {Locate, MakeDots, DrawDots, LoadTile, StoreTile, DrawRecords};
