// Light on spheres, at once or when a tile is done. Included into a namespace once for each form of the
// kernels. The arithmetic is that of GL/Exact.frag.

/// What the lights do to one material.
struct Lit_st {
    static constexpr int kLights = 8;
    const float* ambient;
    const float* diffuse;
    const float* specular;
    float allAround[3], always[3]; ///< light from everywhere, and what of it comes back
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
    for (int k = 0; k < 3; ++k) {
        lit.allAround[k] = around[k];
        lit.always[k] = around[k] * ambient[k];
    }
}

/// All particles have a shininess of 20.
LANES_INLINE F8 Gloss(F8 x) {
    const F8 x2 = x * x;
    const F8 x4 = x2 * x2;
    const F8 x8 = x4 * x4;
    return x8 * x8 * x4;
}

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

/// What is opaque, under far lights without fog, is put down unlit, and its light waits until the tile is
/// done: most of what is drawn is hidden by then. It asks nothing on the way: a branch that is taken
/// otherwise than the last time would cost more than what it saves.
template <bool MATERIALS>
LANES_INLINE void PutPlainSphere(TilePixels_st& pixels, int at, I8 mask, F8 depth, const V8& normal,
                                 uint32_t material) {
    const I8 z = ToDepth(depth);
    const I8 old = LoadDepths(pixels.z + at);
    mask = mask & (z <= old);
    StoreDepths(pixels.z + at, mask ? z : old);
    const F8 own[3] = {normal.x, normal.y, normal.z};
    for (int k = 0; k < 3; ++k) {
        float* p = pixels.normal[k] + at;
        StorePixels(p, mask ? own[k] : LoadPixels(p));
    }
    if (!MATERIALS) return;
    int32_t* p = pixels.material + at;
    StoreDepths(p, mask ? SplatInt(static_cast<int32_t>(material)) : LoadDepths(p));
}

/// Colours of eight materials, a plane a channel: ambient, diffuse, specular.
struct Material8 {
    F8 c[3][3];
};

LANES_INLINE Material8 GetMaterials(const float* const* ppMaterials, const int32_t* pWhich, int lanes) {
    alignas(32) float c[3][3][8] = {};
    for (; lanes != 0; lanes &= lanes - 1) {
        const int lane = __builtin_ctz(static_cast<unsigned>(lanes));
        const uint32_t which = static_cast<uint32_t>(pWhich[lane]);
        const float* p = ppMaterials[which >> TilePixels_st::kMaterialBits] +
                         12 * static_cast<size_t>(which & ((1u << TilePixels_st::kMaterialBits) - 1u));
        for (int part = 0; part < 3; ++part)
            for (int k = 0; k < 3; ++k)
                c[part][k][lane] = p[4 * part + k];
    }
    Material8 out;
    __builtin_memcpy(&out, c, sizeof out);
    return out;
}

/// Light for what PutPlainSphere left behind.
template <bool MATERIALS>
static void LightPlainSpheres(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                              const float* const* ppMaterials) {
    Lit_st lit;
    PrepareLit(scene, look.ambient, look.diffuse, look.specular, lit);
    const F8 none = Splat(0.0f);
    for (int row = 0; row < pixels.height; ++row)
        for (int x = 0; x < pixels.width; x += 8) {
            const int at = row * TilePixels_st::kStride + x;
            V8 normal;
            __builtin_memcpy(&normal.z, pixels.normal[2] + at, sizeof normal.z);
            const I8 mask = normal.z < TilePixels_st::kNoNormal;
            if (!IsAny(mask)) continue;
            __builtin_memcpy(&normal.x, pixels.normal[0] + at, sizeof normal.x);
            __builtin_memcpy(&normal.y, pixels.normal[1] + at, sizeof normal.y);
            Material8 own;
            F8 color[3];
            if (MATERIALS) own = GetMaterials(ppMaterials, pixels.material + at, GetLanes(mask));
            for (int k = 0; k < 3; ++k)
                color[k] = MATERIALS ? lit.allAround[k] * own.c[0][k] : Splat(lit.always[k]);
            int n = 0;
            for (const TileLight_st& light : scene.lights) {
                const F8 facing = DotWith(normal, light.place);
                const F8 direct = Max(facing, none);
                F8 bright = Gloss(Max(DotWith(normal, light.along), none));
                bright = facing > none ? bright : none;
                for (int k = 0; k < 3; ++k)
                    color[k] = MATERIALS ? color[k] + direct * (light.diffuse[k] * own.c[1][k]) +
                                               bright * (light.specular[k] * own.c[2][k])
                                         : color[k] + direct * lit.direct[n][k] + bright * lit.bright[n][k];
                ++n;
            }
            for (int k = 0; k < 4; ++k) {
                F8 old;
                __builtin_memcpy(&old, pixels.c[k] + at, sizeof old);
                const F8 now = k < 3 ? CutToHalf(Clamp01(color[k < 3 ? k : 0])) : Splat(1.0f);
                old = mask ? now : old;
                __builtin_memcpy(pixels.c[k] + at, &old, sizeof old);
            }
            const F8 done = Splat(TilePixels_st::kNoNormal);
            __builtin_memcpy(pixels.normal[2] + at, &done, sizeof done);
        }
}

/// Before anything else is drawn, and before the tile is handed on.
static void LightWaiting(const TileScene_st& scene, TilePixels_st& pixels, const float* const* ppMaterials) {
    if (pixels.waiting < 0) return;
    const TileLook_st& look = scene.look[pixels.waiting];
    pixels.waiting = -1;
    if (look.bMaterials)
        LightPlainSpheres<true>(scene, pixels, look, ppMaterials);
    else
        LightPlainSpheres<false>(scene, pixels, look, ppMaterials);
}
