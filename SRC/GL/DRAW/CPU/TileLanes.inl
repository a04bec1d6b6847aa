// Eight numbers at a time. Included into a namespace once for each form of the kernels.

typedef float F8 __attribute__((vector_size(32)));
typedef int32_t I8 __attribute__((vector_size(32)));
typedef uint32_t U8 __attribute__((vector_size(32)));

#define LANES_INLINE static inline __attribute__((always_inline))

LANES_INLINE F8 Splat(float v) { return F8{v, v, v, v, v, v, v, v}; }
LANES_INLINE I8 SplatInt(int32_t v) { return I8{v, v, v, v, v, v, v, v}; }
// The second where the first is no number.
#ifdef TILE_WIDE
LANES_INLINE F8 Min(F8 a, F8 b) { return (F8)_mm256_min_ps((__m256)a, (__m256)b); }
LANES_INLINE F8 Max(F8 a, F8 b) { return (F8)_mm256_max_ps((__m256)a, (__m256)b); }
#else
LANES_INLINE F8 Min(F8 a, F8 b) { return a < b ? a : b; }
LANES_INLINE F8 Max(F8 a, F8 b) { return a > b ? a : b; }
#endif
LANES_INLINE F8 Clamp01(F8 v) { return Min(Max(v, Splat(0.0f)), Splat(1.0f)); }
LANES_INLINE F8 ToFloat(I8 v) { return __builtin_convertvector(v, F8); }
/// Towards zero.
LANES_INLINE I8 ToInt(F8 v) { return __builtin_convertvector(v, I8); }

#ifdef TILE_WIDE
LANES_INLINE F8 Root(F8 v) { return (F8)_mm256_sqrt_ps((__m256)v); }
LANES_INLINE int GetLanes(I8 mask) { return _mm256_movemask_ps((__m256)mask); }
LANES_INLINE I8 Gather(const uint32_t* p, I8 index) {
    return (I8)_mm256_i32gather_epi32(reinterpret_cast<const int*>(p), (__m256i)index, 4);
}
#else
LANES_INLINE F8 Root(F8 v) {
    for (int k = 0; k < 8; ++k)
        v[k] = __builtin_sqrtf(v[k]);
    return v;
}
LANES_INLINE int GetLanes(I8 mask) {
    int lanes = 0;
    for (int k = 0; k < 8; ++k)
        lanes |= (mask[k] & 1) << k;
    return lanes;
}
LANES_INLINE I8 Gather(const uint32_t* p, I8 index) {
    I8 v;
    for (int k = 0; k < 8; ++k)
        v[k] = static_cast<int32_t>(p[index[k]]);
    return v;
}
#endif

/// Of four columns of two rows; one by one they come faster than by Gather.
LANES_INLINE I8 TakeBytes(const uint8_t* pLow, const uint8_t* pHigh, const int32_t* pColumns) {
#ifdef TILE_WIDE
    __m128i bytes = _mm_cvtsi32_si128(pLow[pColumns[0]]);
    bytes = _mm_insert_epi8(bytes, pLow[pColumns[1]], 1);
    bytes = _mm_insert_epi8(bytes, pLow[pColumns[2]], 2);
    bytes = _mm_insert_epi8(bytes, pLow[pColumns[3]], 3);
    bytes = _mm_insert_epi8(bytes, pHigh[pColumns[0]], 4);
    bytes = _mm_insert_epi8(bytes, pHigh[pColumns[1]], 5);
    bytes = _mm_insert_epi8(bytes, pHigh[pColumns[2]], 6);
    bytes = _mm_insert_epi8(bytes, pHigh[pColumns[3]], 7);
    return (I8)_mm256_cvtepu8_epi32(bytes);
#else
    I8 v;
    for (int k = 0; k < 4; ++k)
        v[k] = pLow[pColumns[k]], v[k + 4] = pHigh[pColumns[k]];
    return v;
#endif
}

LANES_INLINE bool IsAny(I8 mask) { return GetLanes(mask) != 0; }
// Eight pixels are four columns of two rows: what is drawn is small, and leaves few of them unused.
LANES_INLINE I8 Columns() { return I8{0, 1, 2, 3, 0, 1, 2, 3}; }
LANES_INLINE I8 Rows() { return I8{0, 0, 0, 0, 1, 1, 1, 1}; }
typedef float F4 __attribute__((vector_size(16)));
#ifdef TILE_WIDE
LANES_INLINE F8 LoadPixels(const float* p) {
    return (F8)_mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(p)),
                                    _mm_loadu_ps(p + TilePixels_st::kStride), 1);
}
LANES_INLINE void StorePixels(float* p, F8 v) {
    _mm_storeu_ps(p, _mm256_castps256_ps128((__m256)v));
    _mm_storeu_ps(p + TilePixels_st::kStride, _mm256_extractf128_ps((__m256)v, 1));
}
#else
LANES_INLINE F8 LoadPixels(const float* p) {
    F4 low, high;
    __builtin_memcpy(&low, p, sizeof low);
    __builtin_memcpy(&high, p + TilePixels_st::kStride, sizeof high);
    return __builtin_shufflevector(low, high, 0, 1, 2, 3, 4, 5, 6, 7);
}
LANES_INLINE void StorePixels(float* p, F8 v) {
    const F4 low = __builtin_shufflevector(v, v, 0, 1, 2, 3);
    const F4 high = __builtin_shufflevector(v, v, 4, 5, 6, 7);
    __builtin_memcpy(p, &low, sizeof low);
    __builtin_memcpy(p + TilePixels_st::kStride, &high, sizeof high);
}
#endif
LANES_INLINE I8 LoadDepths(const int32_t* p) { return (I8)LoadPixels(reinterpret_cast<const float*>(p)); }
LANES_INLINE void StoreDepths(int32_t* p, I8 v) { StorePixels(reinterpret_cast<float*>(p), (F8)v); }

/// 2 to the power of v, to some 1e-7 of it; for v from -126 to 126.
LANES_INLINE F8 PowerOfTwo(F8 v) {
    v = Max(Min(v, Splat(126.0f)), Splat(-126.0f));
    const I8 whole = ToInt(v + Splat(256.5f)) - 256; // to the nearest
    const F8 f = v - ToFloat(whole);
    F8 r = Splat(1.5403530e-4f);
    r = r * f + Splat(1.3333558e-3f);
    r = r * f + Splat(9.6181291e-3f);
    r = r * f + Splat(5.5504109e-2f);
    r = r * f + Splat(2.4022651e-1f);
    r = r * f + Splat(6.9314718e-1f);
    r = r * f + Splat(1.0f);
    return (F8)((I8)r + (whole << 23));
}
LANES_INLINE F8 Exp(F8 v) { return PowerOfTwo(v * Splat(1.44269504f)); }
/// Of positive numbers, to some 1e-6.
LANES_INLINE F8 LogOfTwo(F8 v) {
    const I8 bits = (I8)v;
    I8 exponent = (bits >> 23) - 127;
    F8 m = (F8)((bits & 0x7fffff) | 0x3f800000);
    const I8 high = m > Splat(1.41421356f);
    m = high ? m * Splat(0.5f) : m;
    exponent = exponent - high; // true is -1
    const F8 t = (m - 1.0f) / (m + 1.0f);
    const F8 t2 = t * t;
    F8 r = Splat(0.412198f);
    r = r * t2 + Splat(0.5770780f);
    r = r * t2 + Splat(0.9617967f);
    r = r * t2 + Splat(2.8853900f);
    return r * t + ToFloat(exponent);
}

/// What fog of this strength leaves of a colour at a distance.
LANES_INLINE F8 GetClear(const TileFog_st& fog, F8 depth) {
    F8 clear;
    const F8 reach = Splat(fog.density) * depth;
    if (fog.mode == TileFog_st::EXP)
        clear = Exp(-reach);
    else if (fog.mode == TileFog_st::EXP2)
        clear = Exp(-(reach * reach));
    else
        clear = (Splat(fog.end) - depth) * Splat(1.0f / (fog.end - fog.start));
    return Clamp01(clear);
}

// A colour of a half-float buffer: what a half can't hold falls away, as the buffer's own arithmetic has it.
LANES_INLINE F8 CutToHalf(F8 v) { return (F8)((I8)v & ~0x1fff); }

/// Colour and alpha of eight pixels; a source with `alpha` and what of it goes into the buffer's alpha.
struct Source8 {
    F8 c[3];
    F8 alpha;
    F8 buffered;
};

template <TileLook_st::Blend BLEND>
LANES_INLINE void Blend(TilePixels_st& pixels, int at, I8 mask, const Source8& s) {
    const F8 rest = Splat(1.0f) - s.alpha;
    for (int k = 0; k < 4; ++k) {
        const F8 old = LoadPixels(pixels.c[k] + at);
        const F8 source = k < 3 ? s.c[k] : s.buffered;
        F8 sum;
        if (BLEND == TileLook_st::OVERWRITES)
            sum = k < 3 ? source : s.alpha;
        else if (BLEND == TileLook_st::ADDS)
            sum = (k < 3 ? source * s.alpha : source) + old;
        else
            sum = (k < 3 ? source * s.alpha : source) + old * rest;
        StorePixels(pixels.c[k] + at, mask ? CutToHalf(sum) : old);
    }
}

/// Depth of 24 bits. The larger half of them are whole numbers already, and a half added to those would
/// count as one.
LANES_INLINE I8 ToDepth(F8 depth) {
    const F8 v = Clamp01(depth) * Splat(16777215.0f);
    return ToInt(v + (v < 8388608.0f ? Splat(0.5f) : Splat(0.0f)));
}

/// A record's first and last pixel in a tile, by its columns and rows.
struct Part_st {
    int x0, x1, y0, y1;
    bool IsEmpty() const { return x1 < x0 || y1 < y0; }
};

/// Those of the eight pixels from a column and row on that lie in a part.
LANES_INLINE I8 InPart(int x, int row, const Part_st& part) {
    return (Columns() + x <= part.x1) & (Rows() + row <= part.y1);
}

LANES_INLINE float Bounded(float v) { return v > -1e6f ? v < 1e6f ? v : 1e6f : -1e6f; }
LANES_INLINE int Floor(float v) {
    const int i = static_cast<int>(v);
    return v < static_cast<float>(i) ? i - 1 : i;
}
LANES_INLINE int Ceil(float v) { return -Floor(-v); }

/// Pixels whose middles lie from `low` to `high` (both counted), of a tile; its own columns and rows.
LANES_INLINE Part_st PartOf(const TilePixels_st& pixels, float lowX, float highX, float lowY, float highY) {
    Part_st part;
    part.x0 = Ceil(Bounded(lowX) - 0.5f) - pixels.left;
    part.x1 = Floor(Bounded(highX) - 0.5f) - pixels.left;
    part.y0 = Ceil(Bounded(lowY) - 0.5f) - pixels.bottom;
    part.y1 = Floor(Bounded(highY) - 0.5f) - pixels.bottom;
    part.x0 = part.x0 < 0 ? 0 : part.x0;
    part.y0 = part.y0 < 0 ? 0 : part.y0;
    part.x1 = part.x1 >= pixels.width ? pixels.width - 1 : part.x1;
    part.y1 = part.y1 >= pixels.height ? pixels.height - 1 : part.y1;
    return part;
}

/// The same for eight of them.
struct Part8 {
    I8 x0, x1, y0, y1;
};
LANES_INLINE F8 Bounded(F8 v) { return Min(Max(v, Splat(-1e6f)), Splat(1e6f)); }
LANES_INLINE I8 Floor(F8 v) {
    const I8 i = ToInt(v);
    return i + (v < ToFloat(i)); // true is -1
}
LANES_INLINE I8 Ceil(F8 v) { return -Floor(-v); }
LANES_INLINE Part8 PartsOf(const TilePixels_st& pixels, F8 lowX, F8 highX, F8 lowY, F8 highY) {
    Part8 part;
    part.x0 = Ceil(Bounded(lowX) - 0.5f) - pixels.left;
    part.x1 = Floor(Bounded(highX) - 0.5f) - pixels.left;
    part.y0 = Ceil(Bounded(lowY) - 0.5f) - pixels.bottom;
    part.y1 = Floor(Bounded(highY) - 0.5f) - pixels.bottom;
    part.x0 = part.x0 < 0 ? SplatInt(0) : part.x0;
    part.y0 = part.y0 < 0 ? SplatInt(0) : part.y0;
    part.x1 = part.x1 >= pixels.width ? SplatInt(pixels.width - 1) : part.x1;
    part.y1 = part.y1 >= pixels.height ? SplatInt(pixels.height - 1) : part.y1;
    return part;
}
LANES_INLINE Part_st GetPart(const Part8& parts, int lane) {
    return {parts.x0[lane], parts.x1[lane], parts.y0[lane], parts.y1[lane]};
}

LANES_INLINE float Unpack(uint32_t bits) { return static_cast<float>(bits & 0xffffu) * (1.0f / 65535.0f); }

struct V8 {
    F8 x, y, z;
};
static_assert(offsetof(TileRecord_st, radius) == 3 * sizeof(float), "place and radius are taken at once");
/// Eight records, or fewer, as lanes; the last one stands for those that lack.
LANES_INLINE void TakeRecords(const TileRecord_st* pFirst, int count, V8& place, F8& radius) {
    F4 row[8];
    for (int k = 0; k < 8; ++k)
        __builtin_memcpy(&row[k], &pFirst[k < count ? k : count - 1].x, sizeof row[k]);
    F8 pair[4]; // each with the one four behind
    for (int k = 0; k < 4; ++k)
        pair[k] = __builtin_shufflevector(row[k], row[k + 4], 0, 1, 2, 3, 4, 5, 6, 7);
    F8 xy[2], zr[2]; // x, x, y, y and z, z, radius, radius
    for (int k = 0; k < 2; ++k) {
        xy[k] = __builtin_shufflevector(pair[2 * k], pair[2 * k + 1], 0, 8, 1, 9, 4, 12, 5, 13);
        zr[k] = __builtin_shufflevector(pair[2 * k], pair[2 * k + 1], 2, 10, 3, 11, 6, 14, 7, 15);
    }
    place.x = __builtin_shufflevector(xy[0], xy[1], 0, 1, 8, 9, 4, 5, 12, 13);
    place.y = __builtin_shufflevector(xy[0], xy[1], 2, 3, 10, 11, 6, 7, 14, 15);
    place.z = __builtin_shufflevector(zr[0], zr[1], 0, 1, 8, 9, 4, 5, 12, 13);
    radius = __builtin_shufflevector(zr[0], zr[1], 2, 3, 10, 11, 6, 7, 14, 15);
}
