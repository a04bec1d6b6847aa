// Lists of nothing but points of one pixel. Included into a namespace once for each form of the kernels.

// Bits as a TileDot_st has them: of two particles, the row of each behind its colour.
LANES_INLINE void PackColors(const float (*pColor)[4], const uint32_t* pRows, uint64_t* pOut) {
    typedef uint16_t H8 __attribute__((vector_size(16)));
    const F8 own = Clamp01(Take(pColor[0]));
    H8 bits = __builtin_convertvector(ToInt(own * 65535.0f + 0.5f), H8);
    bits[3] = static_cast<uint16_t>(pRows[0]), bits[7] = static_cast<uint16_t>(pRows[1]);
    __builtin_memcpy(pOut, &bits, sizeof bits);
}

/// Eight particles, as arrays.
struct Dots8 {
    uint32_t place[8], row[8], tile[8];
    uint64_t color[8];
    int in; ///< those within the limits
};

LANES_INLINE void LayDots(const TileRun_st& run, const TileSeen_st& seen, int i,
                          const TileCanvas_cls::Range_st& limits, int across, Dots8& dots) {
    constexpr int kW = TileCanvas_cls::kTileW, kH = TileCanvas_cls::kTileH;
    I8 x, y, lastX, lastY, look;
    __builtin_memcpy(&x, seen.x0 + i, sizeof x), __builtin_memcpy(&y, seen.y0 + i, sizeof y);
    __builtin_memcpy(&lastX, seen.x1 + i, sizeof lastX), __builtin_memcpy(&lastY, seen.y1 + i, sizeof lastY);
    for (int k = 0; k < 8; ++k)
        look[k] = run.look[i + k];
    const I8 tx = x / kW, ty = y / kH;
    const I8 in = (lastX >= x) & (lastY >= y) & (tx >= limits.x0) & (tx < limits.x1) & (ty >= limits.y0) &
                  (ty < limits.y1);
    const I8 place = ToDepth(Take(seen.z + i)) | (x % kW) << 24 | (I8)((U8)look << 30);
    const I8 row = y % kH, tile = ty * across + tx;
    __builtin_memcpy(dots.place, &place, sizeof place);
    __builtin_memcpy(dots.row, &row, sizeof row);
    __builtin_memcpy(dots.tile, &tile, sizeof tile);
    const int left = run.count - i;
    dots.in = GetLanes(in) & (left < 8 ? (1 << left) - 1 : 0xff);
    for (int k = 0; k < 8; k += 2)
        PackColors(run.color + i + k, dots.row + k, dots.color + k);
}

static void MakeDots(const TileRun_st& run, const TileSeen_st& seen, const TileCanvas_cls::Range_st& limits,
                     int across, TileDots_st& out) {
    int n = 0;
    for (int i = 0; i < run.count; i += 8) {
        Dots8 dots;
        LayDots(run, seen, i, limits, across, dots);
        for (int k = 0; k < 8; ++k) {
            TileDot_st& dot = out.dot[n];
            dot.place = dots.place[k];
            __builtin_memcpy(dot.color, dots.color + k, sizeof dot.color);
            const float alpha = run.color[i + k][3];
            dot.alpha = alpha > 0.0f ? alpha < 1.0f ? alpha : 1.0f : 0.0f;
            out.tile[n] = dots.tile[k];
            n += dots.in >> k & 1;
        }
    }
    out.count = n;
}

/// As PaintDot has it, with all channels of a pixel at once.
template <TileLook_st::Blend BLEND>
static void DrawSameDots(TilePixels_st& pixels, const TileLook_st& look, const TileDot_st* pFirst,
                         const TileDot_st* pEnd) {
    typedef uint16_t H4 __attribute__((vector_size(8)));
    typedef int32_t I4 __attribute__((vector_size(16)));
    for (const TileDot_st* p = pFirst; p < pEnd; ++p) {
        const int at = static_cast<int>((p->color[1] >> 16) * static_cast<uint32_t>(TilePixels_st::kStride) +
                                        ((p->place >> 24) & 63u));
        const int32_t z = static_cast<int32_t>(p->place & 0xffffffu);
        if (look.bTest && z > pixels.z[at]) continue;
        if (look.bWrite) pixels.z[at] = z;
        H4 bits;
        __builtin_memcpy(&bits, p->color, sizeof bits);
        const float alpha = p->alpha;
        F4 source = __builtin_convertvector(__builtin_convertvector(bits, I4), F4) * (1.0f / 65535.0f);
        if (BLEND == TileLook_st::OVERWRITES) {
            source[3] = alpha;
        } else {
            source = source * alpha;
            source[3] = look.bMultiplied ? BLEND == TileLook_st::ADDS ? 0.0f : alpha : alpha * alpha;
        }
        float* const pPixel = pixels.c[0] + 4 * at;
        F4 old;
        __builtin_memcpy(&old, pPixel, sizeof old);
        if (BLEND == TileLook_st::ADDS) source = source + old;
        if (BLEND == TileLook_st::COVERS) source = source + old * (1.0f - alpha);
        const I4 cut = (I4)source & ~0x1fff;
        __builtin_memcpy(pPixel, &cut, sizeof cut);
    }
}

static void DrawDots(const TileScene_st& scene, TilePixels_st& pixels, const TileDot_st* pFirst,
                     const TileDot_st* pEnd) {
    for (const TileDot_st *p = pFirst, *pNext = p; p < pEnd; p = pNext) {
        const uint32_t which = p->place >> 30;
        while (pNext < pEnd && pNext->place >> 30 == which)
            ++pNext;
        const TileLook_st& look = scene.look[which];
        if (look.blend == TileLook_st::ADDS)
            DrawSameDots<TileLook_st::ADDS>(pixels, look, p, pNext);
        else if (look.blend == TileLook_st::COVERS)
            DrawSameDots<TileLook_st::COVERS>(pixels, look, p, pNext);
        else
            DrawSameDots<TileLook_st::OVERWRITES>(pixels, look, p, pNext);
    }
}
