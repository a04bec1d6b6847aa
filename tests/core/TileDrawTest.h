// Particles that the processor draws without a window: a scene looked at along -z from the origin, and pixels
// as numbers.
#pragma once

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "GL/DRAW/CPU/clsTileDraw.h"

struct V3 {
    double x, y, z;
};
inline V3 operator+(V3 a, V3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline V3 operator-(V3 a, V3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline V3 operator*(V3 a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline double Dot(V3 a, V3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline V3 Unit(V3 a) { return a * (1.0 / std::sqrt(Dot(a, a))); }
inline V3 From(const float* p) { return {p[0], p[1], p[2]}; }

struct TileParticle_st {
    float pos[3];
    float radius;
    float color[4] = {1, 1, 1, 1};
    int look = 0;
};

class TileList_cls : public TileSource_cls {
public:
    std::vector<TileParticle_st> mList;
    long long GetNumber() const override { return static_cast<long long>(mList.size()); }
    void Fill(long long first, int count, TileRun_st& out) const override {
        for (int i = 0; i < count; ++i) {
            const TileParticle_st& p = mList[static_cast<size_t>(first + i)];
            out.x[i] = p.pos[0], out.y[i] = p.pos[1], out.z[i] = p.pos[2];
            out.radius[i] = p.radius;
            out.look[i] = static_cast<uint8_t>(p.look);
            for (int k = 0; k < 4; ++k)
                out.color[i][k] = p.color[k];
            for (int k = 0; out.pMaterial && k < 12; ++k)
                out.pMaterial[i][k] = p.color[k % 4];
        }
        out.count = count;
    }
};

class TileDrawTest : public ::testing::Test {
protected:
    struct Pixel_st {
        float c[4];
        double depth; ///< 0 to 1
    };

    TileDrawTest() { SetView(true); }

    void SetView(bool bPerspective) {
        const float model[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        const float n = kNear, f = kFar;
        const float zoom = 1.0f / kSlope, flat = 1.0f / (kSlope * kMiddle);
        const float perspective[16] = {
            zoom, 0, 0, 0, 0, zoom, 0, 0, 0, 0, -(f + n) / (f - n), -1, 0, 0, -2 * f * n / (f - n), 0};
        const float parallel[16] = {
            flat, 0, 0, 0, 0, flat, 0, 0, 0, 0, -2 / (f - n), 0, 0, 0, -(f + n) / (f - n), 1};
        ASSERT_TRUE(mScene.view.Set(model, bPerspective ? perspective : parallel, mSize, mSize));
    }
    void Draw(int threads = 1, const TileKernels_st& kernels = GetTileKernels()) {
        TileDraw_cls draw(threads, kernels);
        mCanvas.Clear(mSize, mSize);
        draw.Draw(mScene, mSource, mCanvas);
    }
    static float FromHalf(uint16_t half) {
        const int exponent = (half >> 10) & 31;
        const float rest = static_cast<float>(half & 0x3ff) / 1024.0f;
        if (exponent == 31) return NAN;
        const float size = exponent == 0 ? std::ldexp(rest, -14) : std::ldexp(1.0f + rest, exponent - 15);
        return half & 0x8000 ? -size : size;
    }
    /// Column from the left, row from below; black and far where nothing was drawn.
    Pixel_st At(int x, int y) {
        Pixel_st pixel = {{0, 0, 0, 0}, 1.0};
        const int tile = y / TileCanvas_cls::kTileH * mCanvas.GetTilesAcross() + x / TileCanvas_cls::kTileW;
        if (!mCanvas.IsFilled(tile)) return pixel;
        const size_t at = static_cast<size_t>(y) * static_cast<size_t>(mSize) + static_cast<size_t>(x);
        for (size_t k = 0; k < 4; ++k)
            pixel.c[k] = FromHalf(mCanvas.GetColor()[4 * at + k]);
        pixel.depth = (mCanvas.GetDepth()[at] >> 8) / 16777215.0;
        return pixel;
    }
    int CountLit() {
        int lit = 0;
        for (int y = 0; y < mSize; ++y)
            for (int x = 0; x < mSize; ++x)
                lit += At(x, y).c[3] != 0.0f || At(x, y).c[0] != 0.0f || At(x, y).c[1] != 0.0f;
        return lit;
    }
    /// The colours of a picture, all of them.
    std::vector<float> Colors() {
        std::vector<float> all;
        for (int y = 0; y < mSize; ++y)
            for (int x = 0; x < mSize; ++x) {
                const Pixel_st pixel = At(x, y);
                all.insert(all.end(), pixel.c, pixel.c + 4);
                all.push_back(static_cast<float>(pixel.depth));
            }
        return all;
    }
    /// Length at kMiddle of a pixel.
    double GetPixel() const { return 2.0 * kSlope * kMiddle / mSize; }

    static constexpr float kNear = 0.5f, kFar = 50.0f, kSlope = 0.5f;
    static constexpr float kMiddle = 4.0f; ///< depth at which the picture is as wide in both views
    int mSize = 100;                       // tiles at the edges are cut
    TileScene_st mScene;
    TileList_cls mSource;
    TileCanvas_cls mCanvas;
};
