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

/// Eight upright squares on the screen, each at one depth, and how their texels lie in the tile.
struct Squares8 {
    F8 stepS, stepT, firstS, firstT;
    I8 z;
    Part8 part;
};

LANES_INLINE Squares8 LaySquares(const TileScene_st& scene, const TilePixels_st& pixels,
                                 const TileRecord_st* pFirst, int count) {
    const TileView_st& view = scene.view;
    V8 place;
    F8 radius;
    TakeRecords(pFirst, count, place, radius);
    const F8 per = view.bPerspective ? Splat(-1.0f) / place.z : Splat(1.0f);
    const float pixelX = 1.0f / view.scale[0], pixelY = 1.0f / view.scale[1];
    const F8 middleX = (place.x * per - view.offset[0]) * pixelX;
    const F8 middleY = (place.y * per - view.offset[1]) * pixelY;
    // A negative radius turns the picture by half a turn.
    const F8 halfX = radius * per * pixelX, halfY = radius * per * pixelY;
    const F8 wideX = halfX < 0.0f ? -halfX : halfX, wideY = halfY < 0.0f ? -halfY : halfY;
    Squares8 squares;
    squares.part = PartsOf(pixels, middleX - wideX, middleX + wideX, middleY - wideY, middleY + wideY);
    squares.z = ToDepth(view.bPerspective ? view.depthMap[0] + view.depthMap[1] / place.z
                                          : view.depthMap[0] + view.depthMap[1] * place.z);
    const float w = static_cast<float>(scene.texture.width), h = static_cast<float>(scene.texture.height);
    squares.stepS = 0.5f * w / halfX, squares.stepT = 0.5f * h / halfY;
    squares.firstS = (static_cast<float>(pixels.left) + 0.5f - middleX) * squares.stepS + 0.5f * w;
    squares.firstT = (static_cast<float>(pixels.bottom) + 0.5f - middleY) * squares.stepT + 0.5f * h;
    return squares;
}

/// Which texels a sprite's columns or rows show, `first` to `last` of the tile; `scale` leads from one of
/// them on to the next one's place in memory.
LANES_INLINE void FindTexels(F8 step, F8 start, int texels, int scale, int first, int last, int32_t* pOut) {
    const I8 along = {0, 1, 2, 3, 4, 5, 6, 7};
    const F8 end = Splat(static_cast<float>(texels) - 1.0f);
    for (int k = first; k <= last; k += 8) {
        const F8 place = ToFloat(along + k) * step + start;
        const I8 out = ToInt(Min(Max(place, Splat(0.0f)), end)) * scale;
        __builtin_memcpy(pOut + (k - first), &out, sizeof out);
    }
}

/// Of a picture of which only alpha counts, without fog, and which hides nothing.
template <TileLook_st::Blend BLEND>
LANES_INLINE void DrawPlainSprite(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                                  const TileRecord_st& record, const Squares8& squares, int lane) {
    const TileTexture_st& texture = scene.texture;
    const Part_st part = GetPart(squares.part, lane);
    if (part.IsEmpty()) return;
    const Tint_st tint = TintOf(record);
    const I8 z = SplatInt(squares.z[lane]);
    const bool bTest = look.bTest && squares.z[lane] > pixels.nearest;
    const float perByte = 1.0f / 255.0f;
    Source8 source = {{Splat(tint.c[0]), Splat(tint.c[1]), Splat(tint.c[2])}, Splat(0.0f), Splat(0.0f)};
    const F8 alpha = Splat(tint.c[3] * perByte);
    // With room for the last eight, and for the blocks' ends.
    int32_t columns[TileCanvas_cls::kTileW + 8], lines[TileCanvas_cls::kTileH + 8];
    FindTexels(Splat(squares.stepS[lane]), Splat(squares.firstS[lane]), texture.width, 1, part.x0,
               part.x1 + 3, columns);
    FindTexels(Splat(squares.stepT[lane]), Splat(squares.firstT[lane]), texture.height, texture.width,
               part.y0, part.y1 + 1, lines);
    const uint8_t* const pAlphas = texture.alphas.data();
    for (int x = part.x0; x <= part.x1; x += 4)
        for (int row = part.y0; row <= part.y1; row += 2) {
            const int at = row * TilePixels_st::kStride + x;
            I8 mask = InPart(x, row, part);
            if (bTest) {
                mask = mask & (z <= LoadDepths(pixels.z + at));
                if (!IsAny(mask)) continue;
            }
            const int32_t* const pLine = lines + (row - part.y0);
            source.alpha =
                ToFloat(TakeBytes(pAlphas + pLine[0], pAlphas + pLine[1], columns + (x - part.x0))) * alpha;
            source.buffered = GetBuffered(look, source.alpha);
            Blend<BLEND>(pixels, at, mask, source);
        }
}

template <TileLook_st::Blend BLEND>
LANES_INLINE void DrawFlatSprite(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                                 const TileRecord_st& record, const Squares8& squares, int lane) {
    const TileTexture_st& texture = scene.texture;
    Tint_st tint = TintOf(record);
    if (scene.fog.mode != TileFog_st::NONE) tint.clear = GetClear(scene.fog, Splat(-record.z));
    const Part_st part = GetPart(squares.part, lane);
    const F8 stepS = Splat(squares.stepS[lane]), stepT = Splat(squares.stepT[lane]);
    const F8 firstS = Splat(squares.firstS[lane]), firstT = Splat(squares.firstT[lane]);
    const I8 z = SplatInt(squares.z[lane]);
    const F8 zero = Splat(0.0f);
    const F8 lastS = Splat(static_cast<float>(texture.width) - 1.0f);
    const F8 lastT = Splat(static_cast<float>(texture.height) - 1.0f);
    for (int x = part.x0; x <= part.x1; x += 4) {
        const F8 s = ToFloat(Columns() + x) * stepS + firstS;
        const I8 column = ToInt(Min(Max(s, zero), lastS));
        for (int row = part.y0; row <= part.y1; row += 2) {
            const F8 t = ToFloat(Rows() + row) * stepT + firstT;
            const I8 line = ToInt(Min(Max(t, zero), lastT));
            PaintTexels<BLEND>(scene, pixels, look, tint, row * TilePixels_st::kStride + x,
                               InPart(x, row, part), z, column + line * texture.width);
        }
    }
}

template <TileLook_st::Blend BLEND>
static void DrawFlatSprites(const TileScene_st& scene, TilePixels_st& pixels, const TileLook_st& look,
                            const TileRecord_st* pFirst, const TileRecord_st* pEnd) {
    const bool bPlain =
        scene.fog.mode == TileFog_st::NONE && scene.texture.width > 0 && scene.texture.bWhite && !look.bWrite;
    for (const TileRecord_st* p = pFirst; p < pEnd; p += 8) {
        const int count = pEnd - p < 8 ? static_cast<int>(pEnd - p) : 8;
        const Squares8 squares = LaySquares(scene, pixels, p, count);
        for (int lane = 0; lane < count; ++lane) {
            if (bPlain)
                DrawPlainSprite<BLEND>(scene, pixels, look, p[lane], squares, lane);
            else
                DrawFlatSprite<BLEND>(scene, pixels, look, p[lane], squares, lane);
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
