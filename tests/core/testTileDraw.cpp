// Particles drawn by the processor against closed forms: what a ray meets, reckoned in double precision.
#include <algorithm>
#include <limits>
#include <random>
#include <utility>

#include "TileDrawTest.h"

namespace {

struct V3 {
    double x, y, z;
};
V3 operator+(V3 a, V3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
V3 operator-(V3 a, V3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
V3 operator*(V3 a, double s) { return {a.x * s, a.y * s, a.z * s}; }
double Dot(V3 a, V3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
V3 Unit(V3 a) { return a * (1.0 / std::sqrt(Dot(a, a))); }
V3 From(const float* p) { return {p[0], p[1], p[2]}; }

/// One channel of a smooth surface, by the rules of OpenGL's lights.
double LightAt(const TileScene_st& scene, int k, V3 place, V3 normal) {
    const TileLook_st& look = scene.look[0];
    double sum = static_cast<double>(scene.around[k] * look.ambient[k]);
    for (const TileLight_st& light : scene.lights) {
        V3 to = Unit(From(light.place));
        double share = 1.0;
        if (light.place[3] != 0.0f) {
            to = From(light.place) - place;
            const double far = std::sqrt(Dot(to, to));
            share = 1.0 /
                    (double(light.fades[0]) + far * (double(light.fades[1]) + far * double(light.fades[2])));
            to = Unit(to);
        }
        if (light.bSpot) {
            const double along = -Dot(to, Unit(From(light.along)));
            share *= along < double(light.cosCutoff) ? 0.0 : std::pow(along, double(light.exponent));
        }
        const double facing = std::max(Dot(normal, to), 0.0);
        const double shine = std::max(Dot(normal, Unit(to + V3{0, 0, 1})), 0.0);
        sum += share *
               (double(light.ambient[k] * look.ambient[k]) +
                facing * double(light.diffuse[k] * look.diffuse[k]) +
                (facing > 0.0 ? std::pow(shine, 20.0) * double(light.specular[k] * look.specular[k]) : 0.0));
    }
    return std::clamp(sum, 0.0, 1.0);
}

class Spheres : public TileDrawTest {
protected:
    Spheres() {
        TileLook_st& look = mScene.look[0];
        look.kind = TileLook_st::SPHERE;
        look.bWrite = true;
        const float ambient[4] = {0.2f, 0.1f, 0.3f, 1}, diffuse[4] = {0.9f, 0.5f, 0.2f, 1};
        const float specular[4] = {0.5f, 0.6f, 0.4f, 1};
        std::copy_n(ambient, 4, look.ambient);
        std::copy_n(diffuse, 4, look.diffuse);
        std::copy_n(specular, 4, look.specular);
        mScene.lights.resize(1);
        const float from[4] = {0.5f, 0.3f, 0.6f, 0};
        std::copy_n(from, 4, mScene.lights[0].place);
    }

    /// Every pixel of the one sphere in the list; `count` how many it must have at least.
    void ExpectSphere(int count) {
        Draw();
        const TileParticle_st& ball = mSource.mList.front();
        const V3 centre = From(ball.pos);
        const double radius = std::fabs(double(ball.radius));
        const TileView_st& view = mScene.view;
        int seen = 0, odd = 0;
        for (int y = 0; y < mSize; ++y)
            for (int x = 0; x < mSize; ++x) {
                const double px = (2.0 * (x + 0.5) / mSize - 1.0) * double(kSlope);
                const double py = (2.0 * (y + 0.5) / mSize - 1.0) * double(kSlope);
                const bool bPerspective = view.bPerspective;
                const V3 origin = bPerspective ? V3{0, 0, 0} : V3{px * 4, py * 4, 0};
                const V3 ray = bPerspective ? Unit({px, py, -1}) : V3{0, 0, -1};
                const double along = Dot(ray, centre - origin);
                const V3 foot = origin + ray * along - centre;
                const double rest = radius * radius - Dot(foot, foot);
                const Pixel_st pixel = At(x, y);
                const V3 place = origin + ray * (along - std::sqrt(std::max(rest, 0.0)));
                const bool bHit = rest > 0.0 && place.z <= -double(kNear) && place.z >= -double(kFar);
                const bool bEdge = std::fabs(rest) < 0.004 * radius * radius;
                if (bHit != (pixel.c[3] > 0.0f)) {
                    odd += !bEdge;
                    continue;
                }
                if (!bHit || bEdge) continue;
                ++seen;
                const V3 normal = (place - centre) * (1.0 / radius);
                for (int k = 0; k < 3; ++k)
                    EXPECT_NEAR(double(pixel.c[k]), LightAt(mScene, k, place, normal), 0.004)
                        << x << ", " << y << " channel " << k;
                const double depth = bPerspective
                                         ? double(view.depthMap[0]) + double(view.depthMap[1]) / place.z
                                         : double(view.depthMap[0]) + double(view.depthMap[1]) * place.z;
                EXPECT_NEAR(pixel.depth, depth, 1e-6) << x << ", " << y;
            }
        EXPECT_GE(seen, count);
        EXPECT_EQ(odd, 0);
    }
};

TEST_F(Spheres, AreWhatTheRaysMeet) {
    for (const bool bPerspective : {true, false}) {
        SCOPED_TRACE(bPerspective);
        SetView(bPerspective);
        mSource.mList = {{{0.3f, -0.2f, -4.0f}, 1.0f}};
        ExpectSphere(1500);
        mSource.mList = {{{1.2f, 1.3f, -4.0f}, -0.35f}}; // at the rim, and a radius below zero
        ExpectSphere(100);
        mSource.mList = {{{0.3f, -0.2f, -4.0f}, 0.01f}}; // small and far: without divisions
        mSource.mList[0].radius = 0.011f;
        ExpectSphere(0);
    }
}

TEST_F(Spheres, AreCutByNearAndFarPlaneAndMayHoldTheEye) {
    mSource.mList = {{{0.1f, 0.0f, -0.8f}, 0.33f}}; // its front lies before the near plane
    ExpectSphere(500);
    mSource.mList = {{{0.0f, 0.0f, -52.0f}, 10.0f}};
    ExpectSphere(500);
    mSource.mList = {{{0.0f, 0.2f, 0.3f}, 2.0f}}; // the inside isn't drawn
    ExpectSphere(0);
    EXPECT_EQ(CountLit(), 0);
}

TEST_F(Spheres, AreLitByNearLightsAndSpots) {
    mSource.mList = {{{0.0f, 0.1f, -4.0f}, 1.2f}};
    TileLight_st& light = mScene.lights[0];
    const float place[4] = {1.5f, 1.0f, -2.0f, 1.0f};
    std::copy_n(place, 4, light.place);
    light.fades[0] = 0.5f, light.fades[1] = 0.2f, light.fades[2] = 0.1f;
    light.ambient[0] = light.ambient[2] = 0.3f;
    ExpectSphere(1500);
    light.bSpot = true;
    const float along[3] = {-0.6f, -0.4f, -0.7f};
    std::copy_n(along, 3, light.along);
    light.cosCutoff = -1.0f; // no edge, which no two ways find at the same pixel
    light.exponent = 3.0f;
    ExpectSphere(1500);
    mScene.lights.resize(7, light); // as many as a scene has
    for (size_t i = 1; i < 7; ++i) {
        mScene.lights[i].place[3] = i % 2 ? 0.0f : 1.0f;
        mScene.lights[i].bSpot = false;
        mScene.lights[i].diffuse[i % 3] = 0.1f;
    }
    ExpectSphere(1500);
}

TEST_F(Spheres, HideWhatIsFartherInAnyOrder) {
    mScene.look[0].bMaterials = true;
    mScene.around[0] = mScene.around[1] = mScene.around[2] = 1.0f;
    mScene.lights.clear();
    mSource.mList = {{{0, 0, -4}, 0.5f, {1, 0, 0, 1}}, {{0.2f, 0, -6}, 2.0f, {0, 1, 0, 1}}};
    for (int order = 0; order < 2; ++order) {
        Draw();
        EXPECT_EQ(At(50, 50).c[0], 1.0f);
        EXPECT_EQ(At(50, 50).c[1], 0.0f);
        EXPECT_EQ(At(75, 50).c[1], 1.0f);
        std::reverse(mSource.mList.begin(), mSource.mList.end());
    }
}

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

// All kinds in one list, with any numbers in it.
class AnyList : public TileDrawTest {
protected:
    AnyList() {
        mSize = 300;
        SetView(true);
        for (int k = 0; k < 4; ++k) {
            TileLook_st& look = mScene.look[k];
            look.kind = k == 0 ? TileLook_st::POINT : k == 3 ? TileLook_st::SPHERE : TileLook_st::SPRITE;
            look.bFacing = k == 2;
            look.blend = k == 1 ? TileLook_st::ADDS : TileLook_st::COVERS;
            look.bWrite = k == 3;
            look.size = 5;
            look.bMaterials = true;
        }
        std::vector<unsigned char> bytes(64 * 64 * 4, 200);
        mScene.texture.Set(bytes.data(), 64, 64);
        mScene.lights.resize(2);
        mScene.lights[0].place[3] = 1.0f;
        mScene.fog.mode = TileFog_st::EXP;
        mScene.fog.density = 0.01f;
    }
    void MakeList(int number, bool bOdd) {
        std::mt19937 random(7);
        std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
        const float inf = std::numeric_limits<float>::infinity();
        const float odd[] = {0.0f, -0.0f, inf, -inf, NAN, 1e38f, -1e38f, 1e-38f, 1e20f, -1.0f, 1e6f, 1e-45f};
        const auto number1 = [&](float plain) {
            return bOdd && random() % 4 == 0 ? odd[random() % std::size(odd)] : plain;
        };
        mSource.mList.clear();
        for (int i = 0; i < number; ++i) {
            TileParticle_st p = {};
            p.pos[0] = number1(2.5f * unit(random)), p.pos[1] = number1(2.5f * unit(random));
            p.pos[2] = number1(-4.0f + 4.5f * unit(random));
            p.radius = number1(0.1f * unit(random));
            for (float& c : p.color)
                c = number1(0.5f + 0.7f * unit(random));
            p.look = static_cast<int>(random() % 4);
            mSource.mList.push_back(p);
        }
    }
};

TEST_F(AnyList, IsTheSamePictureWithAnyThreadsAndRegisters) {
    MakeList(TileDraw_cls::kBatch + 2000, false);
    Draw(1);
    const std::vector<float> one = Colors();
    EXPECT_GT(CountLit(), mSize * mSize / 2);
    for (const int threads : {2, 5}) {
        Draw(threads);
        EXPECT_EQ(Colors(), one) << threads;
    }
    Draw(2, GetPlainTileKernels());
    EXPECT_EQ(Colors(), one);
}

TEST_F(AnyList, MayHoldAnyNumbers) {
    for (const bool bPerspective : {true, false}) {
        SetView(bPerspective);
        MakeList(20000, true);
        Draw(2);
        for (const float v : Colors()) {
            ASSERT_EQ(v - v, 0.0f);
            ASSERT_GE(v, 0.0f);
        }
    }
}

TEST_F(AnyList, LeavesOutWhatIsNoNumber) {
    for (int look = 0; look < 4; ++look)
        for (int which = 0; which < 4; ++which) {
            TileParticle_st p = {{0, 0, -4}, 0.5f, {1, 1, 1, 1}, look};
            if (which == 3 && look == 0) continue; // a point has no radius
            (which < 3 ? p.pos[which] : p.radius) = NAN;
            mSource.mList = {p};
            Draw();
            EXPECT_EQ(CountLit(), 0) << look << ", " << which;
        }
}

// Lists of nothing but points of one pixel take a way of their own; a look that doesn't occur closes it.
TEST_F(AnyList, HasTheSamePointsOfOnePixelOnBothWays) {
    for (int k = 0; k < 3; ++k) {
        mScene.look[k].kind = TileLook_st::POINT;
        mScene.look[k].size = 1;
        mScene.look[k].bWrite = k == 0;
        mScene.look[k].blend = k == 2 ? TileLook_st::OVERWRITES : mScene.look[k].blend;
    }
    for (const bool bOdd : {false, true}) {
        MakeList(TileDraw_cls::kBatch + 2000, bOdd);
        for (TileParticle_st& p : mSource.mList)
            p.look %= 3;
        mScene.look[3].kind = TileLook_st::SPHERE;
        Draw(1);
        const std::vector<float> ordinary = Colors();
        EXPECT_GT(CountLit(), 1000);
        mScene.look[3].kind = TileLook_st::HIDDEN;
        Draw(2);
        EXPECT_EQ(Colors(), ordinary);
        Draw(3, GetPlainTileKernels());
        EXPECT_EQ(Colors(), ordinary);
    }
}

// Depth ends at 1, which most of a wide view is near to.
TEST_F(AnyList, ShowsWhatIsVeryFar) {
    float projection[16] = {};
    projection[0] = projection[5] = 2.0f;
    projection[10] = -1.0f, projection[11] = -1.0f, projection[14] = -0.02f; // to 1e9
    mScene.fog.mode = TileFog_st::NONE;
    ASSERT_TRUE(mScene.view.Set(mScene.view.model, projection, mSize, mSize));
    for (int look = 0; look < 4; ++look)
        for (const float z : {-2e5f, -9e5f, -1e7f}) {
            mSource.mList = {{{0, 0, z}, -0.1f * z, {1, 1, 1, 1}, look}};
            Draw();
            EXPECT_GT(CountLit(), 20) << look << ", " << z;
        }
}

// All that is large lies in all tiles, so each tile is laid down and taken up again.
TEST_F(AnyList, TellsOnTheWayAndEndsWhereItIsTold) {
    MakeList(5000, false);
    for (TileParticle_st& p : mSource.mList)
        p.radius *= 40.0f;
    Draw(2);
    const std::vector<float> whole = Colors();
    struct Told_st {
        std::vector<long long> done;
        size_t limit;
    } told = {{}, 1000000};
    const auto tell = [](void* pWho, long long done) {
        Told_st& to = *static_cast<Told_st*>(pWho);
        to.done.push_back(done);
        return to.done.size() < to.limit;
    };
    TileDraw_cls draw(2);
    mCanvas.Clear(mSize, mSize);
    EXPECT_TRUE(draw.Draw(mScene, mSource, mCanvas, tell, &told));
    EXPECT_EQ(Colors(), whole);
    EXPECT_GE(told.done.size(), 2u);
    EXPECT_TRUE(std::is_sorted(told.done.begin(), told.done.end()));
    EXPECT_LE(told.done.back(), 5000);
    // What is handed over on the way is as it stays.
    struct Goal : TileGoal_cls {
        int end = 0;
        std::vector<uint16_t> color;
        void TakeUpTo(TileCanvas_cls& canvas, int rows) override {
            EXPECT_GT(rows, std::exchange(end, rows));
            const int lines = std::min(rows * TileCanvas_cls::kTileH, canvas.GetHeight());
            for (size_t i = color.size(); i < 4 * size_t(lines * canvas.GetWidth()); ++i)
                color.push_back(canvas.GetColor()[i]);
        }
    };
    for (const int threads : {1, 3}) {
        Goal goal;
        mCanvas.Clear(mSize, mSize);
        EXPECT_TRUE(TileDraw_cls(threads).Draw(mScene, mSource, mCanvas, tell, &told, &goal));
        EXPECT_EQ(Colors(), whole);
        EXPECT_TRUE(std::equal(goal.color.begin(), goal.color.end(), mCanvas.GetColor()));
        if (threads == 1) EXPECT_EQ(goal.end, mCanvas.GetTilesUp());
    }
    told = {{}, 1};
    mCanvas.Clear(mSize, mSize);
    EXPECT_FALSE(draw.Draw(mScene, mSource, mCanvas, tell, &told));
    EXPECT_EQ(told.done.size(), 1u);
}

} // namespace
