// Lists of nothing but points of one pixel. Included into a namespace once for each form of the kernels.

/// Two colours, and what each of them becomes.
LANES_INLINE void PackColors(const float (*pColor)[4], TileDot_st& a, TileDot_st& b) {
    const F8 own = Clamp01(Take(pColor[0]));
    const I8 bits = ToInt(own * 65535.0f + 0.5f);
    a.color[0] = static_cast<uint32_t>(bits[0] | bits[1] << 16), a.color[1] = static_cast<uint32_t>(bits[2]);
    b.color[0] = static_cast<uint32_t>(bits[4] | bits[5] << 16), b.color[1] = static_cast<uint32_t>(bits[6]);
    a.alpha = own[3], b.alpha = own[7];
}

static void MakeDots(const TileRun_st& run, const TileSeen_st& seen, const TileCanvas_cls::Range_st& limits,
                     int across, TileDots_st& out) {
    constexpr unsigned kW = TileCanvas_cls::kTileW, kH = TileCanvas_cls::kTileH;
    int n = 0;
    for (int i = 0; i < run.count; i += 8) {
        int32_t depth[8];
        const I8 z = ToDepth(Take(seen.z + i));
        __builtin_memcpy(depth, &z, sizeof depth);
        TileDot_st dots[8];
        for (int k = 0; k < 8; k += 2)
            PackColors(run.color + i + k, dots[k], dots[k + 1]);
        const int left = run.count - i;
        for (int k = 0; k < (left < 8 ? left : 8); ++k) {
            const unsigned x = static_cast<unsigned>(seen.x0[i + k]),
                           y = static_cast<unsigned>(seen.y0[i + k]);
            const int tx = static_cast<int>(x / kW), ty = static_cast<int>(y / kH);
            TileDot_st& dot = out.dot[n];
            dot = dots[k];
            dot.place = static_cast<uint32_t>(depth[k]) | (x % kW) << 24 |
                        static_cast<uint32_t>(run.look[i + k]) << 30;
            dot.color[1] |= (y % kH) << 16;
            out.tile[n] = static_cast<uint32_t>(ty * across + tx);
            const bool bIn = (seen.x1[i + k] >= seen.x0[i + k]) & (seen.y1[i + k] >= seen.y0[i + k]) &
                             (tx >= limits.x0) & (tx < limits.x1) & (ty >= limits.y0) & (ty < limits.y1);
            n += bIn ? 1 : 0;
        }
    }
    out.count = n;
}

template <TileLook_st::Blend BLEND>
static void DrawSameDots(TilePixels_st& pixels, const TileLook_st& look, const TileDot_st* pFirst,
                         const TileDot_st* pEnd) {
    for (const TileDot_st* p = pFirst; p < pEnd; ++p) {
        const Tint_st tint = {{Unpack(p->color[0]), Unpack(p->color[0] >> 16), Unpack(p->color[1]), p->alpha},
                              Splat(1.0f)};
        const int at = static_cast<int>((p->color[1] >> 16) * static_cast<uint32_t>(TilePixels_st::kStride) +
                                        ((p->place >> 24) & 63u));
        PaintDot<BLEND>(pixels, look, at, static_cast<int32_t>(p->place & 0xffffffu), tint);
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
