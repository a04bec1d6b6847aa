// Spheres drawn by the processor against closed forms: what a ray meets, reckoned in double precision.
#include <algorithm>

#include "TileDrawTest.h"

namespace {

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

} // namespace
