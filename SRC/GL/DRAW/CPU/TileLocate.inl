// Where particles show on the screen. Included into a namespace once for each form of the kernels.

// Eight at a time; what lies behind the last of a run is worked on too, and nobody looks at it.

LANES_INLINE F8 Take(const float* p) {
    F8 v;
    __builtin_memcpy(&v, p, sizeof v);
    return v;
}
LANES_INLINE void Put(float* p, F8 v) { __builtin_memcpy(p, &v, sizeof v); }
LANES_INLINE void Put(int* p, I8 v) { __builtin_memcpy(p, &v, sizeof v); }
LANES_INLINE void Put(uint8_t* p, I8 mask) {
    typedef uint8_t B8 __attribute__((vector_size(8)));
    const B8 bytes = __builtin_convertvector(mask & 1, B8);
    __builtin_memcpy(p, &bytes, sizeof bytes);
}

/// A row of a matrix on a place, as GL has it.
LANES_INLINE F8 Apply(const float* m, F8 x, F8 y, F8 z) { return m[0] * x + m[4] * y + m[8] * z + m[12]; }

static void ToEye(const TileView_st& view, const TileRun_st& run, TileSeen_st& seen) {
    for (int i = 0; i < run.count; i += 8) {
        const F8 x = Take(run.x + i), y = Take(run.y + i), z = Take(run.z + i);
        Put(seen.x + i, Apply(view.model, x, y, z));
        Put(seen.y + i, Apply(view.model + 1, x, y, z));
        Put(seen.z + i, Apply(view.model + 2, x, y, z));
        Put(seen.radius + i, Take(run.radius + i) * view.modelScale);
    }
}

/// The pixels whose middles lie in a square around a place; none where it isn't on the screen.
LANES_INLINE void SetBounds(TileSeen_st& seen, int i, F8 x, F8 y, F8 reachX, F8 reachY,
                            const TileView_st& view, I8 seenAtAll) {
    const F8 w = Splat(static_cast<float>(view.width)), h = Splat(static_cast<float>(view.height));
    const F8 zero = Splat(0.0f);
    const F8 x0 = x - reachX + 0.5f, x1 = x + reachX + 0.5f; // of the first pixel, and behind the last
    const F8 y0 = y - reachY + 0.5f, y1 = y + reachY + 0.5f;
    const I8 in = seenAtAll & (x1 >= 1.0f) & (x0 < w) & (y1 >= 1.0f) & (y0 < h);
    Put(seen.x0 + i, in ? ToInt(Max(x0, zero)) : SplatInt(1));
    Put(seen.x1 + i, in ? ToInt(Max(Min(x1, w), zero)) - 1 : SplatInt(0));
    Put(seen.y0 + i, in ? ToInt(Max(y0, zero)) : SplatInt(1));
    Put(seen.y1 + i, in ? ToInt(Max(Min(y1, h), zero)) - 1 : SplatInt(0));
}

// With depth d and rest = d * d - r * r the silhouette reaches r * sqrt(x * x + rest) / rest across.
template <bool PERSPECTIVE>
static void LocateBalls(const TileView_st& view, int count, float widening, TileSeen_st& seen) {
    const float perX = 1.0f / view.scale[0], perY = 1.0f / view.scale[1];
    const F8 w = Splat(static_cast<float>(view.width)), h = Splat(static_cast<float>(view.height));
    const float margin = 0.0625f;
    const F8 one = Splat(1.0f), none = Splat(0.0f);
    for (int i = 0; i < count; i += 8) {
        const F8 x = Take(seen.x + i), y = Take(seen.y + i), z = Take(seen.z + i);
        const F8 own = Take(seen.radius + i);
        const F8 r = (own < 0.0f ? -own : own) * widening;
        const I8 between = (z - r <= view.zRange[0]) & (z + r >= view.zRange[1]);
        const I8 cut = (z + r > view.zRange[0]) | (z - r < view.zRange[1]);
        F8 middleX, middleY, reachX, reachY;
        I8 atEye = SplatInt(0);
        if (PERSPECTIVE) {
            const F8 depth = -z;
            atEye = depth <= r * 1.0001f;
            const F8 rest = depth * depth - r * r;
            const F8 per = 1.0f / (atEye ? one : rest);
            middleX = (x * depth * per - view.offset[0]) * perX;
            middleY = (y * depth * per - view.offset[1]) * perY;
            reachX = r * Root(Max(x * x + rest, none)) * per * perX + margin;
            reachY = r * Root(Max(y * y + rest, none)) * per * perY + margin;
        } else {
            middleX = (x - view.offset[0]) * perX;
            middleY = (y - view.offset[1]) * perY;
            reachX = r * perX + margin;
            reachY = r * perY + margin;
        }
        SetBounds(seen, i, atEye ? 0.5f * w : middleX, atEye ? 0.5f * h : middleY, atEye ? w : reachX,
                  atEye ? h : reachY, view, between);
        Put(seen.bNear + i, cut | atEye);
    }
}

// A quad in the plane of the view lies wholly at one depth.
template <bool PERSPECTIVE>
static void LocateFlat(const TileView_st& view, int count, TileSeen_st& seen) {
    for (int i = 0; i < count; i += 8) {
        const F8 z = Take(seen.z + i), own = Take(seen.radius + i);
        const F8 r = own < 0.0f ? -own : own;
        const I8 between = (z <= view.zRange[0]) & (z >= view.zRange[1]);
        const F8 per = PERSPECTIVE ? -1.0f / (between ? z : Splat(-1.0f)) : Splat(1.0f);
        SetBounds(seen, i, (Take(seen.x + i) * per - view.offset[0]) / view.scale[0],
                  (Take(seen.y + i) * per - view.offset[1]) / view.scale[1], r * per / view.scale[0],
                  r * per / view.scale[1], view, between);
        Put(seen.bNear + i, SplatInt(0));
    }
}

LANES_INLINE F8 ToPlace(F8 v) { return ToFloat(ToInt(v * 256.0f + 0.5f)) / 256.0f; }

/// Left, bottom and edge of a point in pixels: one of an odd size lies around the middle of a pixel, one of
/// an even size around a corner.
static void LocatePoints(const TileScene_st& scene, const TileRun_st& run, const TileLook_st& look,
                         TileSeen_st& seen) {
    const TileView_st& view = scene.view;
    const float* m = view.both;
    const float w = static_cast<float>(view.width), h = static_cast<float>(view.height);
    const int edge = static_cast<int>(look.size < 1.0f ? 1.0f : look.size > 4096.0f ? 4096.0f : look.size);
    const float shift = edge % 2 == 0 ? 0.5f : 0.0f;
    const I8 zero = SplatInt(0), one = SplatInt(1);
    for (int i = 0; i < run.count; i += 8) {
        const F8 x = Take(run.x + i), y = Take(run.y + i), z = Take(run.z + i);
        const F8 cx = Apply(m, x, y, z), cy = Apply(m + 1, x, y, z);
        const F8 cz = Apply(m + 2, x, y, z), cw = Apply(m + 3, x, y, z);
        const I8 in =
            (cw > 0.0f) & (cx >= -cw) & (cx <= cw) & (cy >= -cw) & (cy <= cw) & (cz >= -cw) & (cz <= cw);
        const F8 per = 0.5f / (in ? cw : Splat(1.0f));
        // OpenGL's drivers know 256 places in a pixel.
        const F8 px = in ? ToPlace((cx * per + 0.5f) * w) : Splat(0.0f);
        const F8 py = in ? ToPlace((cy * per + 0.5f) * h) : Splat(0.0f);
        const I8 left = ToInt(px + shift) - edge / 2;
        const I8 bottom = ToInt(py + shift) - edge / 2;
        Put(seen.x + i, ToFloat(left));
        Put(seen.y + i, ToFloat(bottom));
        Put(seen.z + i, in ? cz * per + 0.5f : Splat(1.0f));
        Put(seen.radius + i, Splat(static_cast<float>(edge)));
        const I8 x1 = left + (edge - 1), y1 = bottom + (edge - 1);
        const I8 lastX = SplatInt(view.width - 1), lastY = SplatInt(view.height - 1);
        Put(seen.x0 + i, in ? (left < 0 ? zero : left) : one);
        Put(seen.y0 + i, in ? (bottom < 0 ? zero : bottom) : one);
        Put(seen.x1 + i, in ? (x1 < view.width ? x1 : lastX) : zero);
        Put(seen.y1 + i, in ? (y1 < view.height ? y1 : lastY) : zero);
        Put(seen.bNear + i, zero);
    }
}

/// Fog is the same all over a point: it goes into the colour.
static void FogPoints(const TileScene_st& scene, const TileSeen_st& eye, TileRun_st& run) {
    for (int i = 0; i < run.count; ++i) {
        if (scene.look[run.look[i]].kind != TileLook_st::POINT) continue;
        const float depth = eye.z[i] < 0.0f ? -eye.z[i] : eye.z[i];
        const float clear = GetClear(scene.fog, Splat(depth))[0];
        for (int k = 0; k < 3; ++k) {
            const float own = run.color[i][k];
            const float bounded = own > 0.0f ? own < 1.0f ? own : 1.0f : 0.0f;
            run.color[i][k] = scene.fog.color[k] + (bounded - scene.fog.color[k]) * clear;
        }
    }
}

static void LocateKind(const TileScene_st& scene, const TileRun_st& run, const TileLook_st& look,
                       TileSeen_st& seen) {
    const TileView_st& view = scene.view;
    if (look.kind == TileLook_st::POINT) {
        LocatePoints(scene, run, look, seen);
    } else if (look.kind == TileLook_st::SPHERE || (look.kind == TileLook_st::SPRITE && look.bFacing)) {
        const float widening = look.kind == TileLook_st::SPHERE ? 1.0f : 1.4143f;
        if (view.bPerspective)
            LocateBalls<true>(view, run.count, widening, seen);
        else
            LocateBalls<false>(view, run.count, widening, seen);
    } else if (look.kind == TileLook_st::SPRITE) {
        if (view.bPerspective)
            LocateFlat<true>(view, run.count, seen);
        else
            LocateFlat<false>(view, run.count, seen);
    } else {
        for (int i = 0; i < run.count; ++i)
            seen.x0[i] = seen.y0[i] = 0, seen.x1[i] = seen.y1[i] = -1;
    }
}

static void CopySeen(const TileSeen_st& from, int i, TileSeen_st& to) {
    to.x0[i] = from.x0[i], to.x1[i] = from.x1[i], to.y0[i] = from.y0[i], to.y1[i] = from.y1[i];
    to.bNear[i] = from.bNear[i];
    to.x[i] = from.x[i], to.y[i] = from.y[i], to.z[i] = from.z[i], to.radius[i] = from.radius[i];
}

static void Locate(const TileScene_st& scene, TileRun_st& run, TileSeen_st& seen) {
    bool bOccurs[TileScene_st::kLooks] = {};
    for (int i = 0; i < run.count; ++i)
        bOccurs[run.look[i]] = true;
    int kinds = 0, last = 0;
    for (int k = 0; k < TileScene_st::kLooks; ++k)
        if (bOccurs[k]) ++kinds, last = k;
    const bool bPoints = kinds == 1 && scene.look[last].kind == TileLook_st::POINT;
    if (!bPoints || scene.fog.mode != TileFog_st::NONE) ToEye(scene.view, run, seen);
    if (scene.fog.mode != TileFog_st::NONE) FogPoints(scene, seen, run);
    if (kinds <= 1) return LocateKind(scene, run, scene.look[last], seen);
    TileSeen_st one;
    const TileSeen_st eye = seen;
    for (int k = 0; k < TileScene_st::kLooks; ++k) {
        if (!bOccurs[k]) continue;
        one = eye;
        LocateKind(scene, run, scene.look[k], one);
        for (int i = 0; i < run.count; ++i)
            if (run.look[i] == k) CopySeen(one, i, seen);
    }
}
