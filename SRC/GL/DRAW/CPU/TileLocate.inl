// Where particles show on the screen. Included into a namespace once for each form of the kernels.

static void ToEye(const TileView_st& view, const TileRun_st& run, TileSeen_st& seen) {
    const float* m = view.model;
    for (int i = 0; i < run.count; ++i) {
        const float x = run.x[i], y = run.y[i], z = run.z[i];
        seen.x[i] = m[0] * x + m[4] * y + m[8] * z + m[12];
        seen.y[i] = m[1] * x + m[5] * y + m[9] * z + m[13];
        seen.z[i] = m[2] * x + m[6] * y + m[10] * z + m[14];
        seen.radius[i] = run.radius[i] * view.modelScale;
    }
}

/// The pixels whose middles lie in a square around a place; none where it isn't on the screen.
LANES_INLINE void SetBounds(TileSeen_st& seen, int i, float x, float y, float reachX, float reachY, float w,
                            float h, bool bSeen) {
    const float x0 = x - reachX + 0.5f, x1 = x + reachX + 0.5f; // of the first pixel, and behind the last
    const float y0 = y - reachY + 0.5f, y1 = y + reachY + 0.5f;
    const bool bIn = bSeen & (x1 >= 1.0f) & (x0 < w) & (y1 >= 1.0f) & (y0 < h);
    const float a = x0 > 0.0f ? x0 : 0.0f, b = x1 < w ? x1 : w;
    const float c = y0 > 0.0f ? y0 : 0.0f, d = y1 < h ? y1 : h;
    seen.x0[i] = bIn ? static_cast<int>(a) : 1;
    seen.x1[i] = bIn ? static_cast<int>(b) - 1 : 0;
    seen.y0[i] = bIn ? static_cast<int>(c) : 1;
    seen.y1[i] = bIn ? static_cast<int>(d) - 1 : 0;
}

// With depth d and rest = d * d - r * r the silhouette reaches r * sqrt(x * x + rest) / rest across.
template <bool PERSPECTIVE>
static void LocateBalls(const TileView_st& view, int count, float widening, TileSeen_st& seen) {
    const float perX = 1.0f / view.scale[0], perY = 1.0f / view.scale[1];
    const float w = static_cast<float>(view.width), h = static_cast<float>(view.height);
    const float margin = 0.0625f;
    const float nearest = view.zRange[0], farthest = view.zRange[1];
    for (int i = 0; i < count; ++i) {
        const float x = seen.x[i], y = seen.y[i], z = seen.z[i];
        const float own = seen.radius[i];
        const float r = (own < 0.0f ? -own : own) * widening;
        const bool bBetween = (z - r <= nearest) & (z + r >= farthest);
        const bool bCut = (z + r > nearest) | (z - r < farthest);
        float middleX, middleY, reachX, reachY;
        bool bAtEye = false;
        if (PERSPECTIVE) {
            const float depth = -z;
            bAtEye = depth <= r * 1.0001f;
            const float rest = depth * depth - r * r;
            const float per = 1.0f / (bAtEye ? 1.0f : rest);
            middleX = (x * depth * per - view.offset[0]) * perX;
            middleY = (y * depth * per - view.offset[1]) * perY;
            const float squareX = x * x + rest, squareY = y * y + rest;
            reachX = r * __builtin_sqrtf(squareX < 0.0f ? 0.0f : squareX) * per * perX + margin;
            reachY = r * __builtin_sqrtf(squareY < 0.0f ? 0.0f : squareY) * per * perY + margin;
        } else {
            middleX = (x - view.offset[0]) * perX;
            middleY = (y - view.offset[1]) * perY;
            reachX = r * perX + margin;
            reachY = r * perY + margin;
        }
        middleX = bAtEye ? 0.5f * w : middleX;
        middleY = bAtEye ? 0.5f * h : middleY;
        reachX = bAtEye ? w : reachX;
        reachY = bAtEye ? h : reachY;
        SetBounds(seen, i, middleX, middleY, reachX, reachY, w, h, bBetween);
        seen.bNear[i] = static_cast<uint8_t>(bCut | bAtEye);
    }
}

// A quad in the plane of the view lies wholly at one depth.
template <bool PERSPECTIVE>
static void LocateFlat(const TileView_st& view, int count, TileSeen_st& seen) {
    const float w = static_cast<float>(view.width), h = static_cast<float>(view.height);
    for (int i = 0; i < count; ++i) {
        const float z = seen.z[i];
        const float own = seen.radius[i];
        const float r = own < 0.0f ? -own : own;
        const bool bBetween = (z <= view.zRange[0]) & (z >= view.zRange[1]);
        const float per = PERSPECTIVE ? -1.0f / (bBetween ? z : -1.0f) : 1.0f;
        SetBounds(seen, i, (seen.x[i] * per - view.offset[0]) / view.scale[0],
                  (seen.y[i] * per - view.offset[1]) / view.scale[1], r * per / view.scale[0],
                  r * per / view.scale[1], w, h, bBetween);
        seen.bNear[i] = 0;
    }
}

LANES_INLINE float ToPlace(float v) {
    return static_cast<float>(static_cast<int>(v * 256.0f + 0.5f)) / 256.0f;
}

/// Left, bottom and edge of a point in pixels: one of an odd size lies around the middle of a pixel, one of
/// an even size around a corner.
static void LocatePoints(const TileScene_st& scene, const TileRun_st& run, const TileLook_st& look,
                         TileSeen_st& seen) {
    const TileView_st& view = scene.view;
    const float* m = view.both;
    const float w = static_cast<float>(view.width), h = static_cast<float>(view.height);
    const int edge = static_cast<int>(look.size < 1.0f ? 1.0f : look.size > 4096.0f ? 4096.0f : look.size);
    const float shift = edge % 2 == 0 ? 0.5f : 0.0f;
    for (int i = 0; i < run.count; ++i) {
        const float x = run.x[i], y = run.y[i], z = run.z[i];
        const float cx = m[0] * x + m[4] * y + m[8] * z + m[12];
        const float cy = m[1] * x + m[5] * y + m[9] * z + m[13];
        const float cz = m[2] * x + m[6] * y + m[10] * z + m[14];
        const float cw = m[3] * x + m[7] * y + m[11] * z + m[15];
        const bool bIn =
            (cw > 0.0f) & (cx >= -cw) & (cx <= cw) & (cy >= -cw) & (cy <= cw) & (cz >= -cw) & (cz <= cw);
        const float per = 0.5f / (bIn ? cw : 1.0f);
        // OpenGL's drivers know 256 places in a pixel.
        const float px = bIn ? ToPlace((cx * per + 0.5f) * w) : 0.0f;
        const float py = bIn ? ToPlace((cy * per + 0.5f) * h) : 0.0f;
        const int left = static_cast<int>(px + shift) - edge / 2;
        const int bottom = static_cast<int>(py + shift) - edge / 2;
        seen.x[i] = static_cast<float>(left);
        seen.y[i] = static_cast<float>(bottom);
        seen.z[i] = bIn ? cz * per + 0.5f : 1.0f;
        seen.radius[i] = static_cast<float>(edge);
        const int x1 = left + edge - 1, y1 = bottom + edge - 1;
        seen.x0[i] = !bIn ? 1 : left < 0 ? 0 : left;
        seen.y0[i] = !bIn ? 1 : bottom < 0 ? 0 : bottom;
        seen.x1[i] = !bIn ? 0 : x1 < view.width ? x1 : view.width - 1;
        seen.y1[i] = !bIn ? 0 : y1 < view.height ? y1 : view.height - 1;
        seen.bNear[i] = 0;
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
    ToEye(scene.view, run, seen);
    if (scene.fog.mode != TileFog_st::NONE) FogPoints(scene, seen, run);
    int kinds = 0, last = 0;
    for (int k = 0; k < TileScene_st::kLooks; ++k)
        if (bOccurs[k]) ++kinds, last = k;
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
