// Points and billboards. Included into a namespace once for each form of the kernels.

/// The colour of one particle on eight pixels, before its texture.
struct Tint_st {
    float c[4];
    F8 clear; ///< what fog leaves
};

LANES_INLINE Tint_st TintOf(const TileRecord_st& record) {
    return {{Unpack(record.color[0]), Unpack(record.color[0] >> 16), Unpack(record.color[1]), record.alpha},
            Splat(1.0f)};
}

template <TileLook_st::Blend BLEND>
LANES_INLINE void PaintFlat(TilePixels_st& pixels, const TileLook_st& look, int at, I8 mask, I8 z,
                            const Source8& source) {
    if (look.bTest || look.bWrite) {
        const I8 old = LoadDepths(pixels.z + at);
        if (look.bTest) mask = mask & (z <= old);
        if (look.bWrite) StoreDepths(pixels.z + at, mask ? z : old);
        if (!IsAny(mask)) return;
    }
    Blend<BLEND>(pixels, at, mask, source);
}

LANES_INLINE F8 GetBuffered(const TileLook_st& look, F8 alpha) {
    if (!look.bMultiplied) return alpha * alpha;
    return look.blend == TileLook_st::ADDS ? Splat(0.0f) : alpha;
}

/// One pixel.
template <TileLook_st::Blend BLEND>
LANES_INLINE void PaintDot(TilePixels_st& pixels, const TileLook_st& look, int at, int32_t z,
                           const Tint_st& tint) {
    if (look.bTest && z > pixels.z[at]) return;
    if (look.bWrite) pixels.z[at] = z;
    const float alpha = tint.c[3];
    const float buffered = look.bMultiplied ? BLEND == TileLook_st::ADDS ? 0.0f : alpha : alpha * alpha;
    for (int k = 0; k < 4; ++k) {
        float sum;
        if (BLEND == TileLook_st::OVERWRITES)
            sum = tint.c[k];
        else if (BLEND == TileLook_st::ADDS)
            sum = (k < 3 ? tint.c[k] * alpha : buffered) + pixels.c[k][at];
        else
            sum = (k < 3 ? tint.c[k] * alpha : buffered) + pixels.c[k][at] * (1.0f - alpha);
        uint32_t bits;
        __builtin_memcpy(&bits, &sum, sizeof bits);
        bits &= ~0x1fffu;
        __builtin_memcpy(&pixels.c[k][at], &bits, sizeof bits);
    }
}

template <TileLook_st::Blend BLEND>
static void DrawPoint(TilePixels_st& pixels, const TileLook_st& look, const TileRecord_st& record) {
    const Tint_st tint = TintOf(record);
    const int32_t z = ToDepth(Splat(record.z))[0];
    const int left = static_cast<int>(record.x) - pixels.left;
    const int bottom = static_cast<int>(record.y) - pixels.bottom;
    const int edge = static_cast<int>(record.radius);
    if (edge == 1) {
        if (left >= 0 && left < pixels.width && bottom >= 0 && bottom < pixels.height)
            PaintDot<BLEND>(pixels, look, bottom * TilePixels_st::kStride + left, z, tint);
        return;
    }
    const Part_st part = {
        left < 0 ? 0 : left, left + edge > pixels.width ? pixels.width - 1 : left + edge - 1,
        bottom < 0 ? 0 : bottom, bottom + edge > pixels.height ? pixels.height - 1 : bottom + edge - 1};
    const F8 alpha = Splat(tint.c[3]);
    const Source8 source = {
        {Splat(tint.c[0]), Splat(tint.c[1]), Splat(tint.c[2])}, alpha, GetBuffered(look, alpha)};
    for (int row = part.y0; row <= part.y1; row += 2)
        for (int x = part.x0; x <= part.x1; x += 4)
            PaintFlat<BLEND>(pixels, look, row * TilePixels_st::kStride + x, InPart(x, row, part),
                             SplatInt(z), source);
}

/// A texel of what is drawn; `s` and `t` are coordinates in texels, inside of the picture.
template <TileLook_st::Blend BLEND>
LANES_INLINE void PaintTexels(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                              const Tint_st& tint, int at, I8 mask, I8 z, I8 texel) {
    Source8 source;
    F8 alpha = Splat(tint.c[3]);
    const float perByte = 1.0f / 255.0f;
    for (int k = 0; k < 3; ++k)
        source.c[k] = Splat(tint.c[k]);
    if (scene.texture.width > 0) {
        const I8 bits = Gather(scene.texture.texels.data(), texel);
        alpha = ToFloat((I8)((U8)bits >> 24)) * (tint.c[3] * perByte);
        if (!scene.texture.bWhite)
            for (int k = 0; k < 3; ++k)
                source.c[k] = ToFloat((bits >> (8 * k)) & 0xff) * (tint.c[k] * perByte);
    }
    if (scene.fog.mode != TileFog_st::NONE)
        for (int k = 0; k < 3; ++k)
            source.c[k] = scene.fog.color[k] + (source.c[k] - scene.fog.color[k]) * tint.clear;
    source.alpha = alpha;
    source.buffered = GetBuffered(look, alpha);
    PaintFlat<BLEND>(pixels, look, at, mask, z, source);
}

LANES_INLINE I8 TexelsOf(const TileTexture_st& texture, F8 s, F8 t) {
    const I8 column = ToInt(Min(Max(s, Splat(0.0f)), Splat(static_cast<float>(texture.width - 1))));
    const I8 row = ToInt(Min(Max(t, Splat(0.0f)), Splat(static_cast<float>(texture.height - 1))));
    return row * texture.width + column;
}

// In the plane of the view: an upright square on the screen, at one depth.
template <TileLook_st::Blend BLEND>
static void DrawFlatSprite(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                           const TileRecord_st& record) {
    const TileView_st& view = scene.view;
    const TileTexture_st& texture = scene.texture;
    Tint_st tint = TintOf(record);
    const float per = view.bPerspective ? -1.0f / record.z : 1.0f;
    const float pixelX = 1.0f / view.scale[0], pixelY = 1.0f / view.scale[1];
    const float middleX = (record.x * per - view.offset[0]) * pixelX;
    const float middleY = (record.y * per - view.offset[1]) * pixelY;
    // A negative radius turns the picture by half a turn.
    const float halfX = record.radius * per * pixelX, halfY = record.radius * per * pixelY;
    const float wideX = halfX < 0.0f ? -halfX : halfX, wideY = halfY < 0.0f ? -halfY : halfY;
    const Part_st part = PartOf(pixels, middleX - wideX, middleX + wideX, middleY - wideY, middleY + wideY);
    if (part.IsEmpty()) return;
    const float depth = view.bPerspective ? view.depthMap[0] + view.depthMap[1] / record.z
                                          : view.depthMap[0] + view.depthMap[1] * record.z;
    const I8 z = ToDepth(Splat(depth));
    if (scene.fog.mode != TileFog_st::NONE) tint.clear = GetClear(scene.fog, Splat(-record.z));
    const float w = static_cast<float>(texture.width), h = static_cast<float>(texture.height);
    const float stepS = 0.5f * w / halfX, stepT = 0.5f * h / halfY;
    const float firstS = (static_cast<float>(pixels.left) + 0.5f - middleX) * stepS + 0.5f * w;
    const float firstT = (static_cast<float>(pixels.bottom) + 0.5f - middleY) * stepT + 0.5f * h;
    const F8 zero = Splat(0.0f);
    for (int x = part.x0; x <= part.x1; x += 4) {
        const F8 s = ToFloat(Columns() + x) * stepS + firstS;
        const I8 column = ToInt(Min(Max(s, zero), Splat(w - 1.0f)));
        for (int row = part.y0; row <= part.y1; row += 2) {
            const F8 t = ToFloat(Rows() + row) * stepT + firstT;
            const I8 line = ToInt(Min(Max(t, zero), Splat(h - 1.0f)));
            PaintTexels<BLEND>(scene, pixels, look, tint, row * TilePixels_st::kStride + x,
                               InPart(x, row, part), z, column + line * texture.width);
        }
    }
}

// Faces the eye: its sides are the part of the first axis of the data's coordinates that is at right angles
// to the line of sight, and what is at right angles to both.
struct Facing_st {
    float right[3], up[3];
};

LANES_INLINE Facing_st FaceEye(const TileView_st& view, const TileRecord_st& record) {
    const float d[3] = {record.x, record.y, record.z};
    const float square = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
    const float perSquare = square > 0.0f ? 1.0f / square : 0.0f;
    const float per = 1.0f / view.modelScale;
    Facing_st f;
    for (int axis = 0; axis < 2; ++axis) {
        const float* m = view.model + 4 * axis;
        const float along = (m[0] * d[0] + m[1] * d[1] + m[2] * d[2]) * per * perSquare;
        float length = 0.0f;
        for (int k = 0; k < 3; ++k) {
            f.right[k] = m[k] * per - along * d[k];
            length += f.right[k] * f.right[k];
        }
        length = __builtin_sqrtf(length);
        if (length > 1e-6f || axis == 1) {
            for (float& v : f.right)
                v = length > 0.0f ? v / length : 0.0f;
            break;
        }
    }
    const float far = square > 0.0f ? 1.0f / __builtin_sqrtf(square) : 1.0f;
    f.up[0] = (d[2] * f.right[1] - d[1] * f.right[2]) * far;
    f.up[1] = (d[0] * f.right[2] - d[2] * f.right[0]) * far;
    f.up[2] = (d[1] * f.right[0] - d[0] * f.right[1]) * far;
    return f;
}

// With the ray q through a pixel, the quad's plane lies t = far / (q . sight) along it; the place on the quad
// is t * q . right / radius, as the middle itself is at right angles to `right`.
template <TileLook_st::Blend BLEND>
static void DrawFacingSprite(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                             const TileRecord_st& record) {
    const TileView_st& view = scene.view;
    const TileTexture_st& texture = scene.texture;
    Tint_st tint = TintOf(record);
    const Facing_st f = FaceEye(view, record);
    const float square = record.x * record.x + record.y * record.y + record.z * record.z;
    if (!(square > 0.0f)) return;
    const float w = static_cast<float>(texture.width), h = static_cast<float>(texture.height);
    const float perRadius = 1.0f / record.radius;
    const F8 one = Splat(1.0f);
    Part_st part = {0, pixels.width - 1, 0, pixels.height - 1};
    const float wide = (record.radius < 0.0f ? -record.radius : record.radius) * 1.4143f;
    if (!view.bPerspective || -record.z > wide * 1.0001f) {
        Cast8 cast;
        CastSpheres(view, pixels, {Splat(record.x), Splat(record.y), Splat(record.z)}, Splat(wide), cast);
        part = GetPart(cast.part, 0);
    }
    if (part.IsEmpty()) return;
    for (int row = part.y0; row <= part.y1; row += 2)
        for (int x = part.x0; x <= part.x1; x += 4) {
            const F8 px = ToFloat(Columns() + (pixels.left + x)) + 0.5f;
            const F8 py = ToFloat(Rows() + (pixels.bottom + row)) + 0.5f;
            const F8 planeX = px * view.scale[0] + view.offset[0];
            const F8 planeY = py * view.scale[1] + view.offset[1];
            V8 place;
            if (view.bPerspective) {
                const F8 along = square / (planeX * record.x + (planeY * record.y - record.z));
                place = {along * planeX, along * planeY, -along};
            } else {
                const F8 z = (square - planeX * record.x - planeY * record.y) / record.z;
                place = {planeX, planeY, z};
            }
            const F8 a = DotWith(place, f.right) * perRadius;
            const F8 b = DotWith(place, f.up) * perRadius;
            const I8 mask = (a >= -one) & (a <= one) & (b >= -one) & (b <= one) &
                            (place.z <= view.zRange[0]) & (place.z >= view.zRange[1]) & InPart(x, row, part);
            if (!IsAny(mask)) continue;
            const F8 depth = view.bPerspective ? view.depthMap[0] + view.depthMap[1] / place.z
                                               : view.depthMap[0] + view.depthMap[1] * place.z;
            if (scene.fog.mode != TileFog_st::NONE) tint.clear = GetClear(scene.fog, -place.z);
            const I8 texel = texture.width > 0
                                 ? TexelsOf(texture, (a + one) * (0.5f * w), (b + one) * (0.5f * h))
                                 : SplatInt(0);
            PaintTexels<BLEND>(scene, pixels, look, tint, row * TilePixels_st::kStride + x, mask,
                               ToDepth(depth), mask ? texel : SplatInt(0));
        }
}
