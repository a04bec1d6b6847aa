// Sprites and points drawn by the processor against closed forms.
#include <algorithm>

#include "TileDrawTest.h"

namespace {

class Sprites : public TileDrawTest {
protected:
    Sprites() {
        TileLook_st& look = mScene.look[0];
        look.kind = TileLook_st::SPRITE;
        // Each texel another colour.
        std::vector<unsigned char> bytes;
        for (int i = 0; i < 16; ++i)
            for (const int v : {i * 16, 255 - i * 16, 40, 255})
                bytes.push_back(static_cast<unsigned char>(v));
        mScene.texture.Set(bytes.data(), 4, 4);
    }
    double GetPixelOf(int x, int y, bool& bIn, const TileParticle_st& p) const {
        const double middle[2] = {p.pos[0] / GetPixel() + mSize / 2.0, p.pos[1] / GetPixel() + mSize / 2.0};
        const double half = double(p.radius) / GetPixel();
        const double s = 0.5 + 0.5 * (x + 0.5 - middle[0]) / half,
                     t = 0.5 + 0.5 * (y + 0.5 - middle[1]) / half;
        bIn = s > 0 && s < 1 && t > 0 && t < 1;
        return bIn ? 16.0 * (4 * int(t * 4) + int(s * 4)) / 255.0 : 0.0;
    }
};

TEST_F(Sprites, ShowTheirTexelsInThePlaneOfTheView) {
    for (const bool bPerspective : {true, false})
        for (const float radius : {0.63f, -0.63f, 0.07f}) { // below zero: turned by half a turn
            SetView(bPerspective);
            mSource.mList = {{{0.213f, -0.117f, -kMiddle}, radius}};
            Draw();
            for (int y = 0; y < mSize; ++y)
                for (int x = 0; x < mSize; ++x) {
                    bool bIn;
                    const double red = GetPixelOf(x, y, bIn, mSource.mList[0]);
                    const Pixel_st pixel = At(x, y);
                    ASSERT_EQ(pixel.c[3] > 0.0f, bIn) << x << ", " << y << " radius " << radius;
                    ASSERT_NEAR(double(pixel.c[0]), red, 0.002) << x << ", " << y << " radius " << radius;
                }
        }
}

TEST_F(Sprites, FacingTheEyeAreSquaresAtRightAnglesToTheLineOfSight) {
    mScene.look[0].bFacing = true;
    mSource.mList = {{{0.9f, 0.7f, -3.0f}, 0.4f}};
    Draw();
    const V3 centre = From(mSource.mList[0].pos);
    const V3 sight = Unit(centre);
    const V3 right = Unit(V3{1, 0, 0} - sight * sight.x);
    const V3 up = {sight.z * right.y - sight.y * right.z, sight.x * right.z - sight.z * right.x,
                   sight.y * right.x - sight.x * right.y};
    int seen = 0;
    for (int y = 0; y < mSize; ++y)
        for (int x = 0; x < mSize; ++x) {
            const V3 ray = {(2.0 * (x + 0.5) / mSize - 1.0) * double(kSlope),
                            (2.0 * (y + 0.5) / mSize - 1.0) * double(kSlope), -1};
            const V3 place = ray * (Dot(centre, sight) / Dot(ray, sight));
            const double s = 0.5 + Dot(place - centre, right) / 0.8, t = 0.5 + Dot(place - centre, up) / 0.8;
            const double edge = std::min({s, 1 - s, t, 1 - t});
            if (std::fabs(edge) < 1e-4) continue;
            const Pixel_st pixel = At(x, y);
            ASSERT_EQ(pixel.c[3] > 0.0f, edge > 0) << x << ", " << y;
            if (edge < 0) continue;
            ++seen;
            const double off = std::max(std::fabs(s * 4 - std::round(s * 4)) - 1e-3,
                                        std::fabs(t * 4 - std::round(t * 4)) - 1e-3);
            if (off <= 0) continue;
            ASSERT_NEAR(double(pixel.c[0]), 16.0 * (4 * int(t * 4) + int(s * 4)) / 255.0, 0.002)
                << x << ", " << y;
            const TileView_st& view = mScene.view;
            EXPECT_NEAR(pixel.depth, 1.0, 1.0); // writes none
            EXPECT_NEAR(double(view.depthMap[0]), 0.5 + 0.5 * 50.5 / 49.5, 1e-3);
        }
    EXPECT_GT(seen, 400);
}

TEST_F(Sprites, BlendInTheOrderOfTheListAcrossTilesAndBatches) {
    mScene.texture = {};
    mScene.look[1] = mScene.look[0];
    mScene.look[1].blend = TileLook_st::ADDS;
    // A large one, which isn't sorted by tiles, lies between many small ones at one place.
    mSize = 1000;
    SetView(true);
    float expected = 0.0f;
    const auto add = [&](float radius, float shade, int look) {
        mSource.mList.push_back({{0.0004f, 0.0003f, -kMiddle}, radius, {shade, shade, shade, 0.5f}, look});
        expected = look == 0 ? 0.5f * shade + 0.5f * expected : 0.5f * shade + expected;
    };
    add(0.01f, 1.0f, 0);
    add(1.9f, 0.25f, 0);
    add(0.01f, 0.5f, 1);
    Draw(2);
    EXPECT_NEAR(At(500, 500).c[0], expected, 0.001f);
    EXPECT_NEAR(At(100, 100).c[0], 0.125f, 0.001f);
    for (int i = 0; i < TileDraw_cls::kBatch; ++i)
        add(0.01f, 0.0f, 0);
    add(0.01f, 0.75f, 0);
    add(1.9f, 0.5f, 1);
    Draw(2);
    EXPECT_NEAR(At(500, 500).c[0], expected, 0.001f);
}

/// A picture that was there before: a quarter grey, the lower half near, with a stencil.
class GreyOrigin_cls : public TileOrigin_cls {
public:
    static constexpr uint32_t kNear = static_cast<uint32_t>(0.5 * 16777215.0) << 8 | 0x5a;
    static constexpr uint32_t kFar = 0xffffff5au;
    void Read(TileCanvas_cls& canvas, const TileCanvas_cls::Rect_st& part) override {
        for (int y = part.bottom; y < part.bottom + part.height; ++y)
            for (int x = part.left; x < part.left + part.width; ++x) {
                const size_t at =
                    static_cast<size_t>(y) * static_cast<size_t>(canvas.GetWidth()) + static_cast<size_t>(x);
                canvas.GetDepth()[at] = y < canvas.GetHeight() / 2 ? kNear : kFar;
                std::fill_n(canvas.GetColor() + 4 * at, 4, uint16_t{0x3400});
                ++mRead;
            }
    }
    int mRead = 0;
};

TEST_F(Sprites, AreHiddenByWhatThePictureHolds) {
    GreyOrigin_cls origin;
    mSource.mList = {{{0, 0, -kMiddle}, 0.5f}};
    mCanvas.Clear(mSize, mSize, &origin);
    TileDraw_cls(2).Draw(mScene, mSource, mCanvas);
    EXPECT_EQ(At(50, 45).c[2], 0.25f);
    EXPECT_NEAR(At(50, 55).c[2], 40.0f / 255.0f, 0.001f);
    EXPECT_EQ(At(2, 55).c[2], 0.25f);
    EXPECT_EQ(mCanvas.GetDepth()[40 * 100 + 50], GreyOrigin_cls::kNear);
    EXPECT_EQ(mCanvas.GetDepth()[60 * 100 + 50], GreyOrigin_cls::kFar);
}

TEST_F(Sprites, AreDrawnOverWhatThePictureWasClearedWith) {
    const uint16_t grey[4] = {0x3400, 0x3400, 0x3400, 0x3c00};
    mScene.texture = {};
    mSize = 400;
    SetView(true);
    mSource.mList = {{{0, 0, -kMiddle}, float(3 * GetPixel()), {1, 1, 1, 0.5f}}};
    for (const double x : {100.0, 350.0})
        mSource.mList.push_back({{float((x - mSize / 2.0) * GetPixel()), 0, -kMiddle}, float(GetPixel())});
    mCanvas.Clear(mSize, mSize);
    mCanvas.SetBlank(grey, TileCanvas_cls::kFarDepth | 7);
    TileDraw_cls(2).Draw(mScene, mSource, mCanvas);
    mCanvas.FillTaken();
    EXPECT_NEAR(At(200, 200).c[0], 0.625f, 0.001f);
    for (const int x : {70, 150, 210, 290}) { // in tiles with and without particles
        EXPECT_EQ(At(x, 195).c[1], 0.25f) << x;
        EXPECT_EQ(At(x, 195).c[3], 1.0f) << x;
        EXPECT_EQ(mCanvas.GetDepth()[195 * mSize + x], TileCanvas_cls::kFarDepth | 7) << x;
    }
    // What stops early leaves nothing that was never drawn.
    mCanvas.Clear(mSize, mSize);
    mCanvas.SetBlank(grey, TileCanvas_cls::kFarDepth);
    mCanvas.Take({0, 0, 7, 13});
    mCanvas.FillTaken();
    EXPECT_EQ(At(399, 399).c[2], 0.25f);
}

// Of the picture no more is read than the tiles that are touched, each pixel once, and nothing beyond limits.
TEST_F(Sprites, TakeTheTilesThatTheyTouch) {
    mSize = 400;
    SetView(true);
    const auto at = [&](double x, double y) {
        mSource.mList.push_back(
            {{float((x - mSize / 2.0) * GetPixel()), float((y - mSize / 2.0) * GetPixel()), -kMiddle},
             float(3 * GetPixel())});
    };
    at(100, 100);
    GreyOrigin_cls origin;
    mCanvas.Clear(mSize, mSize, &origin);
    TileDraw_cls draw(2);
    draw.Draw(mScene, mSource, mCanvas);
    EXPECT_EQ(origin.mRead, 64 * 32); // rows 97 to 103
    mSource.mList.clear();
    at(170, 170);
    at(20, 20);
    draw.Draw(mScene, mSource, mCanvas);
    EXPECT_EQ(origin.mRead, mCanvas.GetTaken().width * mCanvas.GetTaken().height);
    EXPECT_EQ(mCanvas.GetTaken().left, 0);
    EXPECT_EQ(mCanvas.GetTaken().height, 192);
    origin.mRead = 0;
    mCanvas.Clear(mSize, mSize, &origin);
    mCanvas.SetLimits({64, 0, 200, 400});
    draw.Draw(mScene, mSource, mCanvas);
    EXPECT_EQ(origin.mRead, 64 * 32);
    EXPECT_EQ(mCanvas.GetTaken().left, 128);
}

class Points : public TileDrawTest {
protected:
    Points() {
        mScene.look[0].kind = TileLook_st::POINT;
        mScene.look[0].bWrite = true;
        mScene.look[0].blend = TileLook_st::OVERWRITES;
        SetView(false);
    }
    void Add(double x, double y, float depth, float shade) {
        mSource.mList.push_back(
            {{float((x - mSize / 2.0) * GetPixel()), float((y - mSize / 2.0) * GetPixel()), -depth},
             1.0f,
             {shade, shade, shade, 1}});
    }
};

TEST_F(Points, AreSquaresAroundThePixelOrTheCorner) {
    const struct {
        float size;
        double x, y;
        int left, right, low, high;
    } cases[] = {{1, 20.3, 30.8, 20, 20, 30, 30},
                 {3, 20.3, 30.8, 19, 21, 29, 31},
                 {2, 20.3, 30.8, 19, 20, 30, 31},
                 {4, 64.1, 31.9, 62, 65, 30, 33},
                 {30, 99.5, 2.0, 85, 99, 0, 16}};
    for (const auto& c : cases) {
        mScene.look[0].size = c.size;
        mSource.mList.clear();
        Add(c.x, c.y, 4, 1);
        Draw();
        for (int y = 0; y < mSize; ++y)
            for (int x = 0; x < mSize; ++x)
                ASSERT_EQ(At(x, y).c[0] > 0.0f, x >= c.left && x <= c.right && y >= c.low && y <= c.high)
                    << c.size << ": " << x << ", " << y;
    }
}

TEST_F(Points, TestAndWriteDepthAndVanishWithTheirMiddle) {
    Add(10.5, 10.5, 3, 0.5f);
    Add(10.5, 10.5, 4, 1.0f); // behind
    Add(30.5, 30.5, 0.4f, 1); // before the near plane
    Add(40.5, 40.5, 51, 1);   // behind the far one
    Add(-0.2, 50.5, 4, 1);    // off the screen
    Draw();
    EXPECT_EQ(At(10, 10).c[0], 0.5f);
    EXPECT_NEAR(At(10, 10).depth, (3 - 0.5) / 49.5, 1e-6);
    EXPECT_EQ(CountLit(), 1);
}

TEST_F(Points, FadeInFog) {
    mScene.fog = {TileFog_st::LINEAR, 1.0f, 2.0f, 6.0f, {0.25f, 0.25f, 0.25f}};
    Add(10.5, 10.5, 3, 1.0f);
    Draw();
    EXPECT_NEAR(At(10, 10).c[0], 0.75f + 0.25f * 0.25f, 0.001f);
    mScene.fog.mode = TileFog_st::EXP2;
    mScene.fog.density = 0.3f;
    Draw();
    const float clear = std::exp(-0.81f);
    EXPECT_NEAR(At(10, 10).c[0], clear + 0.25f * (1 - clear), 0.001f);
}

// Of an alpha that 16 bits can't hold.
TEST_F(Points, AddUpHoweverFaint) {
    mScene.look[0].blend = TileLook_st::ADDS;
    for (const float alpha : {2.4e-5f, 1e-4f}) {
        mSource.mList.clear();
        float sum = 0.0f; // a half float has 11 bits
        for (int i = 0; i < 200; ++i) {
            Add(10.5, 10.5, 4, 1.0f);
            mSource.mList.back().color[3] = alpha;
            const float unit = std::ldexp(1.0f, std::max(std::ilogb(sum + alpha), -14) - 10);
            sum = std::floor((sum + alpha) / unit) * unit;
        }
        Draw();
        EXPECT_EQ(At(10, 10).c[0], sum);
    }
}

} // namespace
