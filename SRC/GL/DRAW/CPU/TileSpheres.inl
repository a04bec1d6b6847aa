// Ray-cast spheres. Included into a namespace once for each form of the kernels. The arithmetic is that of
// GL/Exact.frag and GL/ExactNear.frag.

/// What the lights do to one material.
struct Lit_st {
    static constexpr int kLights = 8;
    const float* ambient;
    const float* diffuse;
    const float* specular;
    float always[3];
    float around[kLights][3], direct[kLights][3], bright[kLights][3];
};

LANES_INLINE bool IsFar(const TileLight_st& light) { return light.place[3] == 0.0f && !light.bSpot; }

LANES_INLINE void PrepareLit(const TileScene_st& scene, const float* ambient, const float* diffuse,
                             const float* specular, Lit_st& lit) {
    lit.ambient = ambient, lit.diffuse = diffuse, lit.specular = specular;
    float around[3] = {scene.around[0], scene.around[1], scene.around[2]};
    int n = 0;
    for (const TileLight_st& light : scene.lights) {
        for (int k = 0; k < 3; ++k) {
            if (IsFar(light)) around[k] += light.ambient[k];
            lit.around[n][k] = light.ambient[k] * ambient[k];
            lit.direct[n][k] = light.diffuse[k] * diffuse[k];
            lit.bright[n][k] = light.specular[k] * specular[k];
        }
        ++n;
    }
    for (int k = 0; k < 3; ++k)
        lit.always[k] = around[k] * ambient[k];
}

/// All particles have a shininess of 20.
LANES_INLINE F8 Gloss(F8 x) {
    const F8 x2 = x * x;
    const F8 x4 = x2 * x2;
    const F8 x8 = x4 * x4;
    return x8 * x8 * x4;
}

struct V8 {
    F8 x, y, z;
};
LANES_INLINE F8 Dot(const V8& a, const V8& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
LANES_INLINE F8 DotWith(const V8& a, const float* b) {
    return a.x * Splat(b[0]) + a.y * Splat(b[1]) + a.z * Splat(b[2]);
}

/// Direction to a light, half way from there to a viewer far away, and how much of it arrives.
LANES_INLINE F8 Reach(const TileLight_st& light, const V8& place, V8& to, V8& between) {
    to = {Splat(light.place[0]), Splat(light.place[1]), Splat(light.place[2])};
    F8 share = Splat(1.0f);
    if (light.place[3] != 0.0f) {
        const float w = 1.0f / light.place[3];
        to = {to.x * w - place.x, to.y * w - place.y, to.z * w - place.z};
        const F8 far = Root(Dot(to, to));
        share = Splat(1.0f) /
                (Splat(light.fades[0]) + far * (Splat(light.fades[1]) + far * Splat(light.fades[2])));
        const F8 per = Splat(1.0f) / Max(far, Splat(1e-30f));
        to = {to.x * per, to.y * per, to.z * per};
    }
    between = {to.x, to.y, to.z + 1.0f};
    const F8 per = Splat(1.0f) / Max(Root(Dot(between, between)), Splat(1e-30f));
    between = {between.x * per, between.y * per, between.z * per};
    if (light.bSpot) {
        const F8 along = -DotWith(to, light.along);
        F8 inside = Splat(1.0f);
        if (light.exponent != 0.0f)
            inside = PowerOfTwo(LogOfTwo(Max(along, Splat(1e-6f))) * Splat(light.exponent));
        share = along < light.cosCutoff ? Splat(0.0f) : share * inside;
    }
    return share;
}

LANES_INLINE void LightSmooth(const TileScene_st& scene, const Lit_st& lit, const V8& place, const V8& normal,
                              F8* pColor) {
    const F8 none = Splat(0.0f);
    for (int k = 0; k < 3; ++k)
        pColor[k] = Splat(lit.always[k]);
    int n = -1;
    for (const TileLight_st& light : scene.lights) {
        ++n;
        if (IsFar(light)) {
            const F8 facing = DotWith(normal, light.place);
            const F8 shine = DotWith(normal, light.along); // half way to the viewer
            const F8 direct = Max(facing, none);
            const F8 bright = facing > none ? Gloss(Max(shine, none)) : none;
            for (int k = 0; k < 3; ++k)
                pColor[k] = pColor[k] + direct * lit.direct[n][k] + bright * lit.bright[n][k];
            continue;
        }
        V8 to, between;
        const F8 share = Reach(light, place, to, between);
        const F8 facing = Dot(normal, to);
        const F8 direct = share * Max(facing, none);
        const F8 bright = facing > none ? share * Gloss(Max(Dot(normal, between), none)) : none;
        for (int k = 0; k < 3; ++k)
            pColor[k] =
                pColor[k] + share * lit.around[n][k] + direct * lit.direct[n][k] + bright * lit.bright[n][k];
    }
}

// In three flat tones without highlights, with an outline.
LANES_INLINE void LightCartoon(const TileScene_st& scene, const Lit_st& lit, const V8& place,
                               const V8& normal, F8* pColor) {
    const F8 none = Splat(0.0f);
    F8 towards = normal.z;
    if (scene.view.bPerspective) towards = -Dot(normal, place) / Root(Dot(place, place));
    const I8 outline = towards < scene.boldness;
    const F8 dark = Splat(scene.bLoneShadowLight ? 0.0f : 0.25f);
    F8 around[3], direct[3];
    for (int k = 0; k < 3; ++k)
        around[k] = Splat(scene.around[k]), direct[k] = none;
    for (const TileLight_st& light : scene.lights) {
        V8 to, between;
        const F8 share = Reach(light, place, to, between);
        const F8 strength = share * Max(Dot(normal, to), none);
        const F8 tone = strength > 0.75f   ? Splat(1.0f)
                        : strength > 0.35f ? Splat(0.75f)
                        : strength > 0.02f ? Splat(0.5f)
                                           : dark * Min(share, Splat(1.0f));
        for (int k = 0; k < 3; ++k) {
            around[k] = around[k] + share * Splat(light.ambient[k]);
            direct[k] = direct[k] + tone * Splat(light.diffuse[k]);
        }
    }
    for (int k = 0; k < 3; ++k)
        pColor[k] = outline ? none : around[k] * Splat(lit.ambient[k]) + direct[k] * Splat(lit.diffuse[k]);
}

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

/// The same for what is opaque, under far lights without fog. It asks nothing on the way: a branch that is
/// taken otherwise than the last time would cost more than what it saves.
LANES_INLINE void PaintPlainSphere(const TileScene_st& scene, TilePixels_st& pixels, const Lit_st& lit,
                                   int at, I8 mask, F8 depth, const V8& normal) {
    const I8 z = ToDepth(depth);
    const I8 old = LoadDepths(pixels.z + at);
    mask = mask & (z <= old);
    StoreDepths(pixels.z + at, mask ? z : old);
    const F8 none = Splat(0.0f);
    F8 color[3] = {Splat(lit.always[0]), Splat(lit.always[1]), Splat(lit.always[2])};
    int n = 0;
    for (const TileLight_st& light : scene.lights) {
        const F8 facing = DotWith(normal, light.place);
        const F8 direct = Max(facing, none);
        F8 bright = Gloss(Max(DotWith(normal, light.along), none));
        bright = facing > none ? bright : none;
        for (int k = 0; k < 3; ++k)
            color[k] = color[k] + direct * lit.direct[n][k] + bright * lit.bright[n][k];
        ++n;
    }
    for (int k = 0; k < 3; ++k) {
        float* p = pixels.c[k] + at;
        StorePixels(p, mask ? CutToHalf(Clamp01(color[k])) : LoadPixels(p));
    }
    float* p = pixels.c[3] + at;
    StorePixels(p, mask ? Splat(1.0f) : LoadPixels(p));
}

// Around the eye, or cut by the near or far plane: what lies outside of those isn't drawn.
static void DrawNearSphere(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                           const Lit_st& lit, const TileRecord_st& ball) {
    const TileView_st& view = scene.view;
    const float perRadius = 1.0f / ball.radius;
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

/// The square of a sphere on the screen and its rays; lengths in radii.
struct Cast_st {
    float screenX, screenY, perX, perY; ///< middle, pixels; radii a pixel
    float to[3];                        ///< direction from the eye
    float closeness;                    ///< radius over distance
    float middleDepth, thickness;
    Part_st part;
};

LANES_INLINE Cast_st CastSphere(const TileView_st& view, const TilePixels_st& pixels,
                                const TileRecord_st& ball) {
    Cast_st cast;
    float middleX = ball.x, middleY = ball.y, reachX = ball.radius, reachY = ball.radius;
    if (view.bPerspective) {
        const float depth = -ball.z;
        const float far = __builtin_sqrtf(ball.x * ball.x + ball.y * ball.y + ball.z * ball.z);
        const float per = 1.0f / far;
        cast.to[0] = ball.x * per, cast.to[1] = ball.y * per, cast.to[2] = ball.z * per;
        cast.closeness = ball.radius * per;
        const float inverse = 1.0f / depth;
        cast.screenX = ball.x * inverse, cast.screenY = ball.y * inverse;
        const float turn = depth / ball.radius;
        cast.perX = view.scale[0] * turn, cast.perY = view.scale[1] * turn;
        const float rest = depth * depth - ball.radius * ball.radius;
        const float perRest = 1.0f / rest;
        middleX = ball.x * depth * perRest, middleY = ball.y * depth * perRest;
        reachX = ball.radius * __builtin_sqrtf(ball.x * ball.x + rest) * perRest;
        reachY = ball.radius * __builtin_sqrtf(ball.y * ball.y + rest) * perRest;
        cast.middleDepth = view.depthMap[0] - view.depthMap[1] * inverse;
        cast.thickness = view.depthMap[1] * cast.closeness * inverse;
    } else {
        cast.to[0] = cast.to[1] = 0.0f, cast.to[2] = -1.0f;
        cast.closeness = 0.0f;
        cast.screenX = ball.x, cast.screenY = ball.y;
        cast.perX = view.scale[0] / ball.radius, cast.perY = view.scale[1] / ball.radius;
        cast.middleDepth = view.depthMap[0] + view.depthMap[1] * ball.z;
        cast.thickness = -view.depthMap[1] * ball.radius;
    }
    const float pixelX = 1.0f / view.scale[0], pixelY = 1.0f / view.scale[1];
    cast.screenX = (cast.screenX - view.offset[0]) * pixelX;
    cast.screenY = (cast.screenY - view.offset[1]) * pixelY;
    middleX = (middleX - view.offset[0]) * pixelX, middleY = (middleY - view.offset[1]) * pixelY;
    reachX = reachX * pixelX + 0.0625f, reachY = reachY * pixelY + 0.0625f;
    cast.part = PartOf(pixels, middleX - reachX, middleX + reachX, middleY - reachY, middleY + reachY);
    return cast;
}

/// The depth that no pixel of a sphere comes before.
LANES_INLINE int32_t FindNearest(const Cast_st& cast) {
    const float most = 1.001f; // of its thickness; with room for rounding
    const float depth = cast.middleDepth - cast.thickness * most / (1.0f - cast.closeness * most);
    const int32_t z = ToDepth(Splat(depth))[0];
    return cast.closeness * most < 1.0f && z > 1 ? z - 1 : 0;
}

// Of small spheres that are far away what is quadratic in closeness doesn't count, and nothing need be
// divided.
template <bool FAR, bool PLAIN>
static void DrawFarSphere(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                          const Lit_st& lit, const TileRecord_st& ball, const Cast_st& cast) {
    const Part_st& part = cast.part;
    const float firstX = static_cast<float>(pixels.left) + 0.5f - cast.screenX;
    const float firstY = static_cast<float>(pixels.bottom) + 0.5f - cast.screenY;
    const F8 one = Splat(1.0f);
    const bool bTest = PLAIN || look.bTest;
    const int32_t nearest = FindNearest(cast);
    for (int x = part.x0; x <= part.x1; x += 4) {
        const F8 acrossX = (ToFloat(Columns() + x) + firstX) * cast.perX;
        const F8 forwardX = acrossX * cast.to[0];
        const F8 squareX = acrossX * acrossX;
        for (int row = part.y0; row <= part.y1; row += 2) {
            const int at = row * TilePixels_st::kStride + x;
            if (bTest && !IsAny(LoadDepths(pixels.z + at) >= nearest)) continue;
            const F8 acrossY = (ToFloat(Rows() + row) + firstY) * cast.perY;
            const F8 forward = forwardX + acrossY * cast.to[1];
            const F8 square = squareX + acrossY * acrossY;
            const F8 turned = forward + cast.closeness * square;
            const F8 longer = cast.closeness * (forward + turned);
            const F8 shorter = FAR ? one - longer : one / (one + longer);
            const F8 rest = one - (square - forward * forward) * shorter;
            const I8 mask = (rest >= 0.0f) & InPart(x, row, part);
            const F8 depth = turned * shorter + Root(Max(rest * shorter, Splat(0.0f)));
            const F8 deep = cast.closeness * depth;
            const F8 share = one - deep;
            const F8 thick = cast.thickness * depth;
            const V8 normal = {share * acrossX - depth * cast.to[0], share * acrossY - depth * cast.to[1],
                               -(depth * cast.to[2])};
            const F8 z = cast.middleDepth - (FAR ? thick + thick * deep : thick / share);
            if (PLAIN) {
                PaintPlainSphere(scene, pixels, lit, at, mask, z, normal);
                continue;
            }
            const V8 place = {ball.x + ball.radius * normal.x, ball.y + ball.radius * normal.y,
                              ball.z + ball.radius * normal.z};
            PaintSphere(scene, pixels, look, lit, at, mask, z, place, normal);
        }
    }
}

static void DrawSphere(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                       const Lit_st& lit, const TileRecord_st& record) {
    constexpr float kFarCloseness = 0.003f;
    TileRecord_st ball = record;
    if (ball.radius < 0.0f) ball.radius = -ball.radius;
    if (record.what & TileRecord_st::kNear) return DrawNearSphere(scene, pixels, look, lit, ball);
    const Cast_st cast = CastSphere(scene.view, pixels, ball);
    if (cast.part.IsEmpty()) return;
    const bool bPlain = scene.bPlainLight && !look.bCartoon && look.bTest && look.bWrite &&
                        look.blend != TileLook_st::ADDS && lit.diffuse[3] >= 1.0f;
    const bool bFar = cast.closeness < kFarCloseness;
    if (bPlain && bFar)
        DrawFarSphere<true, true>(scene, pixels, look, lit, ball, cast);
    else if (bPlain)
        DrawFarSphere<false, true>(scene, pixels, look, lit, ball, cast);
    else if (bFar)
        DrawFarSphere<true, false>(scene, pixels, look, lit, ball, cast);
    else
        DrawFarSphere<false, false>(scene, pixels, look, lit, ball, cast);
}
