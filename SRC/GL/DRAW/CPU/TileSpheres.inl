// Ray-cast spheres. Included into a namespace once for each form of the kernels. The arithmetic is that of
// GL/Exact.frag and GL/ExactNear.frag.

/// Depth, light, fog and blending of eight pixels of a sphere that shows at `place`.
LANES_INLINE void PaintSphere(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                              const Lit_st& lit, int at, I8 mask, F8 depth, const V8& place,
                              const V8& normal) {
    const I8 z = ToDepth(depth);
    const I8 old = LoadDepths(pixels.z + at);
    if (look.bTest) mask = mask & (z <= old);
    if (!IsAny(mask)) return;
    if (look.bWrite) StoreDepths(pixels.z + at, mask ? z : old);
    Source8 source;
    if (look.bCartoon)
        LightCartoon(scene, lit, place, normal, source.c);
    else
        LightSmooth(scene, lit, place, normal, source.c);
    for (F8& c : source.c)
        c = Clamp01(c);
    if (scene.fog.mode != TileFog_st::NONE) {
        const F8 clear = GetClear(scene.fog, place.z < 0.0f ? -place.z : place.z);
        for (int k = 0; k < 3; ++k)
            source.c[k] = Splat(scene.fog.color[k]) + (source.c[k] - scene.fog.color[k]) * clear;
    }
    const float alpha = lit.diffuse[3] > 0.0f ? lit.diffuse[3] < 1.0f ? lit.diffuse[3] : 1.0f : 0.0f;
    source.alpha = Splat(alpha);
    if (look.blend == TileLook_st::ADDS) {
        source.buffered = Splat(look.bMultiplied ? 0.0f : alpha * alpha);
        Blend<TileLook_st::ADDS>(pixels, at, mask, source);
    } else if (alpha >= 1.0f) {
        Blend<TileLook_st::OVERWRITES>(pixels, at, mask, source);
    } else {
        source.buffered = Splat(look.bMultiplied ? alpha : alpha * alpha);
        Blend<TileLook_st::COVERS>(pixels, at, mask, source);
    }
}

// Around the eye, or cut by the near or far plane: what lies outside of those isn't drawn.
static void DrawNearSphere(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                           const Lit_st& lit, const TileRecord_st& ball) {
    const TileView_st& view = scene.view;
    const float perRadius = 1.0f / (ball.radius < 0.0f ? -ball.radius : ball.radius);
    const Part_st part = {0, pixels.width - 1, 0, pixels.height - 1};
    for (int row = 0; row < pixels.height; row += 2)
        for (int x = 0; x < pixels.width; x += 4) {
            const F8 px = ToFloat(Columns() + (pixels.left + x)) + 0.5f;
            const F8 py = ToFloat(Rows() + (pixels.bottom + row)) + 0.5f;
            const F8 planeX = px * view.scale[0] + view.offset[0];
            const F8 planeY = py * view.scale[1] + view.offset[1];
            V8 foot, ray = {planeX, planeY, Splat(-1.0f)};
            F8 share = Splat(1.0f);
            if (view.bPerspective) {
                share = 1.0f / Dot(ray, ray);
                const F8 along = (planeX * ball.x + planeY * ball.y - ball.z) * share;
                foot = {ray.x * along - ball.x, ray.y * along - ball.y, ray.z * along - ball.z};
            } else {
                ray.x = ray.y = Splat(0.0f);
                foot = {planeX - ball.x, planeY - ball.y, Splat(0.0f)};
            }
            const F8 rest = ball.radius * ball.radius - Dot(foot, foot);
            const F8 back = Root(Max(rest, Splat(0.0f)) * share);
            const V8 outward = {foot.x - ray.x * back, foot.y - ray.y * back, foot.z - ray.z * back};
            const V8 place = {outward.x + ball.x, outward.y + ball.y, outward.z + ball.z};
            const I8 mask = (rest >= 0.0f) & (place.z <= view.zRange[0]) & (place.z >= view.zRange[1]) &
                            InPart(x, row, part);
            if (!IsAny(mask)) continue;
            const F8 depth = view.bPerspective ? view.depthMap[0] + view.depthMap[1] / place.z
                                               : view.depthMap[0] + view.depthMap[1] * place.z;
            PaintSphere(scene, pixels, look, lit, row * TilePixels_st::kStride + x, mask, depth, place,
                        {outward.x * perRadius, outward.y * perRadius, outward.z * perRadius});
        }
}

/// The squares of eight spheres on the screen and their rays; lengths in radii.
struct Cast8 {
    F8 screenX, screenY, perX, perY; ///< middle, pixels; radii a pixel
    F8 to[3];                        ///< direction from the eye
    F8 closeness;                    ///< radius over distance
    F8 middleDepth, thickness;
    I8 nearest; ///< the depth that no pixel comes before
    Part8 part;
};

/// The depth that no pixel of a sphere comes before.
LANES_INLINE I8 FindNearest(const Cast8& cast) {
    const float most = 1.001f; // of its thickness; with room for rounding
    const F8 close = cast.closeness * most;
    const I8 z = ToDepth(cast.middleDepth - cast.thickness * most / (1.0f - close));
    return (close < 1.0f) & (z > 1) ? z - 1 : SplatInt(0);
}

LANES_INLINE void CastSpheres(const TileView_st& view, const TilePixels_st& pixels, const V8& ball, F8 radius,
                              Cast8& cast) {
    F8 middleX = ball.x, middleY = ball.y, reachX = radius, reachY = radius;
    if (view.bPerspective) {
        const F8 depth = -ball.z;
        const F8 far = Root(ball.x * ball.x + ball.y * ball.y + ball.z * ball.z);
        const F8 per = 1.0f / far;
        cast.to[0] = ball.x * per, cast.to[1] = ball.y * per, cast.to[2] = ball.z * per;
        cast.closeness = radius * per;
        const F8 inverse = 1.0f / depth;
        cast.screenX = ball.x * inverse, cast.screenY = ball.y * inverse;
        const F8 turn = depth / radius;
        cast.perX = view.scale[0] * turn, cast.perY = view.scale[1] * turn;
        const F8 rest = depth * depth - radius * radius;
        const F8 perRest = 1.0f / rest;
        middleX = ball.x * depth * perRest, middleY = ball.y * depth * perRest;
        reachX = radius * Root(ball.x * ball.x + rest) * perRest;
        reachY = radius * Root(ball.y * ball.y + rest) * perRest;
        cast.middleDepth = view.depthMap[0] - view.depthMap[1] * inverse;
        cast.thickness = view.depthMap[1] * cast.closeness * inverse;
    } else {
        cast.to[0] = cast.to[1] = Splat(0.0f), cast.to[2] = Splat(-1.0f);
        cast.closeness = Splat(0.0f);
        cast.screenX = ball.x, cast.screenY = ball.y;
        cast.perX = view.scale[0] / radius, cast.perY = view.scale[1] / radius;
        cast.middleDepth = view.depthMap[0] + view.depthMap[1] * ball.z;
        cast.thickness = -view.depthMap[1] * radius;
    }
    const float pixelX = 1.0f / view.scale[0], pixelY = 1.0f / view.scale[1];
    cast.screenX = (cast.screenX - view.offset[0]) * pixelX;
    cast.screenY = (cast.screenY - view.offset[1]) * pixelY;
    middleX = (middleX - view.offset[0]) * pixelX, middleY = (middleY - view.offset[1]) * pixelY;
    reachX = reachX * pixelX + 0.0625f, reachY = reachY * pixelY + 0.0625f;
    cast.part = PartsOf(pixels, middleX - reachX, middleX + reachX, middleY - reachY, middleY + reachY);
    cast.nearest = FindNearest(cast);
}

// Of small spheres that are far away what is quadratic in closeness doesn't count, and nothing need be
// divided.
enum class Paint { ANY, PLAIN, PLAIN_WITH_MATERIAL };
template <bool FAR, Paint PAINT>
static void DrawFarSphere(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                          const Lit_st& lit, const TileRecord_st& ball, uint32_t material, const Cast8& cast,
                          int lane) {
    const Part_st part = GetPart(cast.part, lane);
    const float radius = ball.radius < 0.0f ? -ball.radius : ball.radius;
    const F8 firstX = Splat(static_cast<float>(pixels.left) + 0.5f - cast.screenX[lane]);
    const F8 firstY = Splat(static_cast<float>(pixels.bottom) + 0.5f - cast.screenY[lane]);
    const F8 perX = Splat(cast.perX[lane]), perY = Splat(cast.perY[lane]);
    const V8 to = {Splat(cast.to[0][lane]), Splat(cast.to[1][lane]), Splat(cast.to[2][lane])};
    const F8 closeness = Splat(cast.closeness[lane]), thickness = Splat(cast.thickness[lane]);
    const F8 middleDepth = Splat(cast.middleDepth[lane]);
    const F8 one = Splat(1.0f);
    const bool bTest = PAINT != Paint::ANY || look.bTest;
    const I8 nearest = SplatInt(cast.nearest[lane]);
    for (int x = part.x0; x <= part.x1; x += 4) {
        const F8 acrossX = (ToFloat(Columns() + x) + firstX) * perX;
        const F8 forwardX = acrossX * to.x;
        const F8 squareX = acrossX * acrossX;
        for (int row = part.y0; row <= part.y1; row += 2) {
            const int at = row * TilePixels_st::kStride + x;
            if (bTest && !IsAny(LoadDepths(pixels.z + at) >= nearest)) continue;
            const F8 acrossY = (ToFloat(Rows() + row) + firstY) * perY;
            const F8 forward = forwardX + acrossY * to.y;
            const F8 square = squareX + acrossY * acrossY;
            const F8 turned = forward + closeness * square;
            const F8 longer = closeness * (forward + turned);
            const F8 shorter = FAR ? one - longer : one / (one + longer);
            const F8 rest = one - (square - forward * forward) * shorter;
            const I8 mask = (rest >= 0.0f) & InPart(x, row, part);
            const F8 depth = turned * shorter + Root(Max(rest * shorter, Splat(0.0f)));
            const F8 deep = closeness * depth;
            const F8 share = one - deep;
            const F8 thick = thickness * depth;
            const V8 normal = {share * acrossX - depth * to.x, share * acrossY - depth * to.y,
                               -(depth * to.z)};
            const F8 z = middleDepth - (FAR ? thick + thick * deep : thick / share);
            if (PAINT != Paint::ANY) {
                PutPlainSphere<PAINT == Paint::PLAIN_WITH_MATERIAL>(pixels, at, mask, z, normal, material);
                continue;
            }
            const V8 place = {ball.x + radius * normal.x, ball.y + radius * normal.y,
                              ball.z + radius * normal.z};
            PaintSphere(scene, pixels, look, lit, at, mask, z, place, normal);
        }
    }
}

// Where eight spheres in a row only leave their normals, and are small, all their blocks of pixels are listed
// first, those behind what stands already left out: one loop then draws them, whose length the processor need
// not guess for each sphere.
struct Blocks_st {
    static constexpr int kColumns = 2, kRows = 4; ///< of a sphere at most
    int count = 0;
    uint32_t place[8 * kColumns * kRows]; ///< in the tile, and the lane above it
};
constexpr int kBlockLane = 16; ///< its first bit

/// False: one of them is too large. Blocks don't reach beyond a row's end: what a sphere holds twice becomes
/// the same both times.
LANES_INLINE bool ListBlocks(const TilePixels_st& pixels, const Cast8& cast, int count, Blocks_st& blocks) {
    const I8 columns = (cast.part.x1 - cast.part.x0) >> 2, rows = (cast.part.y1 - cast.part.y0) >> 1;
    const I8 shown = (cast.part.x1 >= cast.part.x0) & (cast.part.y1 >= cast.part.y0);
    if (IsAny(shown & ((columns >= Blocks_st::kColumns) | (rows >= Blocks_st::kRows)))) return false;
    // Four bits a column, a byte a sphere.
    const I8 column = (SplatInt(2) << (rows & 3)) - 1;
    const I8 each = shown & (columns > 0 ? column | column << 4 : column);
    typedef uint8_t B8 __attribute__((vector_size(8)));
    const B8 bytes = __builtin_convertvector(each & 0xff, B8);
    uint64_t bits;
    __builtin_memcpy(&bits, &bytes, sizeof bits);
    if (count < 8) bits &= (uint64_t{1} << (8 * count)) - 1;
    const I8 last = SplatInt(TilePixels_st::kStride - 4);
    int32_t base[2][8];
    for (int k = 0; k < 2; ++k) {
        const I8 x = cast.part.x0 + 4 * k;
        const I8 at = (x > last ? last : x) + cast.part.y0 * TilePixels_st::kStride;
        __builtin_memcpy(base[k], &at, sizeof at);
    }
    int32_t nearest[8];
    __builtin_memcpy(nearest, &cast.nearest, sizeof nearest);
    int n = 0;
    for (; bits != 0; bits &= bits - 1) {
        const uint32_t bit = static_cast<uint32_t>(__builtin_ctzll(bits));
        const uint32_t lane = bit >> 3;
        const int at = base[bit >> 2 & 1][lane] + static_cast<int>(bit & 3) * (2 * TilePixels_st::kStride);
        blocks.place[n] = static_cast<uint32_t>(at) | lane << kBlockLane;
        n += IsAny(LoadDepths(pixels.z + at) >= nearest[lane]) ? 1 : 0;
    }
    blocks.count = n;
    return true;
}

/// As DrawFarSphere has it.
template <bool FAR, bool MATERIALS>
static void DrawBlocks(TilePixels_st& pixels, const TileRecord_st* pFirst, uint32_t batch, const Cast8& cast,
                       const Blocks_st& blocks) {
    const F8 one = Splat(1.0f);
    const F8 along = ToFloat(Columns()), up = ToFloat(Rows());
    const F8 fromX = Splat(static_cast<float>(pixels.left) + 0.5f) - cast.screenX;
    const F8 fromY = Splat(static_cast<float>(pixels.bottom) + 0.5f) - cast.screenY;
    for (int i = 0; i < blocks.count; ++i) {
        const uint32_t lane = blocks.place[i] >> kBlockLane;
        const int at = static_cast<int>(blocks.place[i] & ((1u << kBlockLane) - 1u));
        const float x = static_cast<float>(at % TilePixels_st::kStride);
        const float row = static_cast<float>(at / TilePixels_st::kStride);
        const F8 toX = Splat(cast.to[0][lane]), toY = Splat(cast.to[1][lane]), toZ = Splat(cast.to[2][lane]);
        const F8 closeness = Splat(cast.closeness[lane]);
        const F8 acrossX = (along + x + Splat(fromX[lane])) * Splat(cast.perX[lane]);
        const F8 acrossY = (up + row + Splat(fromY[lane])) * Splat(cast.perY[lane]);
        const F8 forward = acrossX * toX + acrossY * toY;
        const F8 square = acrossX * acrossX + acrossY * acrossY;
        const F8 turned = forward + closeness * square;
        const F8 longer = closeness * (forward + turned);
        const F8 shorter = FAR ? one - longer : one / (one + longer);
        const F8 rest = one - (square - forward * forward) * shorter;
        const F8 depth = turned * shorter + Root(Max(rest * shorter, Splat(0.0f)));
        const F8 deep = closeness * depth;
        const F8 share = one - deep;
        const F8 thick = Splat(cast.thickness[lane]) * depth;
        const V8 normal = {share * acrossX - depth * toX, share * acrossY - depth * toY, -(depth * toZ)};
        const F8 z = Splat(cast.middleDepth[lane]) - (FAR ? thick + thick * deep : thick / share);
        PutPlainSphere<MATERIALS>(pixels, at, rest >= 0.0f, z, normal,
                                  MATERIALS ? batch << TilePixels_st::kMaterialBits | pFirst[lane].color[0]
                                            : 0);
    }
}

/// One material at a time.
class LitKeeper_cls {
public:
    LitKeeper_cls(const TileScene_st& scene, const TileLook_st& look) : mScene(scene), mLook(look) {}
    const Lit_st& Get(const float* pMaterial) {
        if (mbReady && pMaterial == mpOf) return mLit;
        if (pMaterial)
            PrepareLit(mScene, pMaterial, pMaterial + 4, pMaterial + 8, mLit);
        else
            PrepareLit(mScene, mLook.ambient, mLook.diffuse, mLook.specular, mLit);
        mpOf = pMaterial, mbReady = true;
        return mLit;
    }

private:
    const TileScene_st& mScene;
    const TileLook_st& mLook;
    const float* mpOf = nullptr;
    bool mbReady = false;
    Lit_st mLit;
};

/// Opaque, and none is cut or around the eye.
LANES_INLINE bool AreAllPlain(const TileLook_st& look, const TileRecord_st* pFirst, int count,
                              const float* const* ppMaterials, uint32_t batch) {
    uint32_t what = 0;
    bool bOpaque = look.bMaterials || look.diffuse[3] >= 1.0f;
    for (int k = 0; k < count; ++k) {
        what |= pFirst[k].what;
        if (look.bMaterials)
            bOpaque &= ppMaterials[batch][12 * static_cast<size_t>(pFirst[k].color[0]) + 7] >= 1.0f;
    }
    return bOpaque && (what & TileRecord_st::kNear) == 0;
}

/// What comes in a row and has the same look.
static void DrawSpheres(const TileScene_st& scene, TilePixels_st& pixels, uint32_t which,
                        const TileRecord_st* pFirst, const TileRecord_st* pEnd,
                        const float* const* ppMaterials, uint32_t batch) {
    constexpr float kFarCloseness = 0.003f;
    const TileLook_st& look = scene.look[which];
    const bool bPlainLook =
        scene.bPlainLight && !look.bCartoon && look.bTest && look.bWrite && look.blend != TileLook_st::ADDS;
    LitKeeper_cls keeper(scene, look);
    for (const TileRecord_st* p = pFirst; p < pEnd; p += 8) {
        const int count = pEnd - p < 8 ? static_cast<int>(pEnd - p) : 8;
        V8 place;
        F8 radius;
        Cast8 cast;
        TakeRecords(p, count, place, radius);
        CastSpheres(scene.view, pixels, place, radius < 0.0f ? -radius : radius, cast);
        const int empty = GetLanes((cast.part.x1 < cast.part.x0) | (cast.part.y1 < cast.part.y0));
        const int far = GetLanes(cast.closeness < kFarCloseness);
        if (bPlainLook && (far == 0 || far == 0xff) && AreAllPlain(look, p, count, ppMaterials, batch)) {
            if (pixels.waiting != static_cast<int>(which)) LightWaiting(scene, pixels, ppMaterials);
            Blocks_st blocks;
            if (ListBlocks(pixels, cast, count, blocks)) {
                pixels.waiting = static_cast<int>(which);
                if (look.bMaterials)
                    far ? DrawBlocks<true, true>(pixels, p, batch, cast, blocks)
                        : DrawBlocks<false, true>(pixels, p, batch, cast, blocks);
                else
                    far ? DrawBlocks<true, false>(pixels, p, batch, cast, blocks)
                        : DrawBlocks<false, false>(pixels, p, batch, cast, blocks);
                continue;
            }
        }
        for (int lane = 0; lane < count; ++lane) {
            const TileRecord_st& ball = p[lane];
            const bool bNear = (ball.what & TileRecord_st::kNear) != 0;
            if (!bNear && (empty >> lane & 1)) continue;
            const bool bFar = far >> lane & 1;
            const float* pOwn =
                look.bMaterials ? ppMaterials[batch] + 12 * static_cast<size_t>(ball.color[0]) : nullptr;
            const bool bPlain = bPlainLook && !bNear && (pOwn ? pOwn[7] : look.diffuse[3]) >= 1.0f;
            if (!bPlain || pixels.waiting != static_cast<int>(which))
                LightWaiting(scene, pixels, ppMaterials);
            if (bPlain) {
                static const Lit_st sNone = {};
                const uint32_t material = batch << TilePixels_st::kMaterialBits | ball.color[0];
                pixels.waiting = static_cast<int>(which);
                if (pOwn && bFar)
                    DrawFarSphere<true, Paint::PLAIN_WITH_MATERIAL>(scene, pixels, look, sNone, ball,
                                                                    material, cast, lane);
                else if (pOwn)
                    DrawFarSphere<false, Paint::PLAIN_WITH_MATERIAL>(scene, pixels, look, sNone, ball,
                                                                     material, cast, lane);
                else if (bFar)
                    DrawFarSphere<true, Paint::PLAIN>(scene, pixels, look, sNone, ball, 0, cast, lane);
                else
                    DrawFarSphere<false, Paint::PLAIN>(scene, pixels, look, sNone, ball, 0, cast, lane);
                continue;
            }
            const Lit_st& lit = keeper.Get(pOwn);
            if (bNear)
                DrawNearSphere(scene, pixels, look, lit, ball);
            else if (bFar)
                DrawFarSphere<true, Paint::ANY>(scene, pixels, look, lit, ball, 0, cast, lane);
            else
                DrawFarSphere<false, Paint::ANY>(scene, pixels, look, lit, ball, 0, cast, lane);
        }
    }
}
