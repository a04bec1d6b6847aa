// What lights do to surfaces, by closed forms: every type, fade and cone on ray-cast spheres, on meshes in
// each shader, and on sticks.
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <utility>

#include <epoxy/gl.h>

#include "BOND/clsPovObjectSticks.h"
#include "GL/DRAW/clsGLSticks.h"
#include "LightTest.h"

namespace {

using LightPictures = LightTest;

TEST_F(LightPictures, EachTypeFadeAndConeIsWhatItsFormulaSays) {
    for (int type = 0; type < 4; ++type)
        for (int fade = 0; fade < 3; ++fade) {
            LightSRC_cls& light = SetLight(0, type, fade, 0.6, {0.8, 0.5, 2.2}, {0, 65, 215});
            light.mCFadeDistance.mValue = 2;
            light.mCSpotAngle.mValue = 16;
            ExpectAllSurfaces("type " + std::to_string(type) + " fade " + std::to_string(fade));
        }
    LightSRC_cls& light = SetLight(0, LightSRC_cls::TYPE_SPOT, 0, 0.6, {0.8, 0.5, 1.2}, {0, 65, 215});
    for (const int angle : {0, 1, 45, 90, 120, 180}) {
        light.mCSpotAngle.mValue = angle;
        ExpectAllSurfaces("angle " + std::to_string(angle));
    }
}

// It takes light away from where others shine, and none from where there is none.
TEST_F(LightPictures, NegativeStrengthsTakeLightAway) {
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, 0, 0.9, {0, 0, 0}, {0, 65, 215});
    for (int type = 0; type < 4; ++type) {
        SetLight(1, type, 0, -0.4, {0.8, 0.5, 2.2}, {0, 65, 215}).mCSpotAngle.mValue = 16;
        ExpectAllSurfaces("beside another, type " + std::to_string(type));
    }
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, 0, -1e30, {0, 0, 0}, {0, 65, 215});
    ExpectAllSurfaces("as dark as can be");
}

TEST_F(LightPictures, SevenLightsAddUpOnEverySurface) {
    SetSevenLights();
    ExpectAllSurfaces("seven");
    for (const int off : {0, 4}) {
        mCtrl.GetLight(off).mCVisible.mValue = false;
        ExpectAllSurfaces("without " + std::to_string(off));
    }
    for (int i = 0; i < 7; ++i) {
        mCtrl.GetLight(i).mCVisible.mValue = true;
        SetLight(i, LightSRC_cls::TYPE_PARALLEL, 0, 0.1, {0, 0, 0}, {0, 10.0 * i, 180 + 50.0 * i});
    }
    ExpectAllSurfaces("seven parallel");
}

// Where a sphere is small beside the distance to a light, light is worked out once for all of it; the limit
// lies between these distances.
TEST_F(LightPictures, LightsFarFromASphereAreTheSame) {
    for (const double factor : {5.0, 30.0, 45.0, 70.0, 200.0, 3000.0}) {
        SetSevenLights();
        for (int i = 0; i < 7; ++i) {
            LightSRC_cls& light = mCtrl.GetLight(i);
            std::vector<double> at = GetGroupValue(light.mpCTranslate, 0.0);
            for (double& x : at)
                x *= factor;
            light.mpCTranslate->SetKeyFrame(at.data(), true, ParamGroup_cls::kCurrent);
            light.mCFadeDistance.mValue *= float(factor);
            // At the sphere: the edge of one cone goes through it, another holds it, and one lies beside.
            if (i == 1) light.mCSpotAngle.mValue = 1;
        }
        for (const unsigned shader : {0u, 2u}) {
            SetAll(2, 3, shader);
            Draw({{{0, 0, 0}, kRadius}});
            ExpectLit("factor " + std::to_string(factor) + ", shader " + std::to_string(shader));
        }
    }
}

// A light that isn't grey is reckoned pixel by pixel: the smallest trace of a colour must change nothing.
TEST_F(LightPictures, LightsAmongSmallSpheresAreTheSame) {
    mSize = 256;
    mbParallel = false;
    std::mt19937 random(3);
    std::uniform_real_distribution<float> side(-1.0f, 1.0f);
    std::vector<Particle_st> spheres;
    for (int i = 0; i < 1500; ++i)
        spheres.push_back(
            {{side(random), side(random), side(random)}, 0.012f + 0.01f * std::abs(side(random))});
    spheres.push_back({{0.2f, 0.1f, 0.4f}, 0.3f});
    SetSevenLights();
    SetLight(2, LightSRC_cls::TYPE_POINT, 2, 0.6, {0.1, 0.2, 0.9}, {0, 0, 0}).mCFadeDistance.mValue = 0.5f;
    SetAll(2, 3, 2);
    for (const bool bFog : {false, true})
        for (const bool bFew : {false, true}) {
            Picture_st pictures[2];
            for (const int tinted : {0, 1}) {
                mSetLights = [&] {
                    mCtrl.UpdateCurrentObj(0.0);
                    mCtrl.SetNonShadowLight(0.0);
                    mLightNumber = mCtrl.GetLightNumber();
                    const float trace[4] = {0, 0, tinted ? 1e-5f : 0.0f, 0};
                    glLightfv(GL_LIGHT5, GL_AMBIENT, trace);
                    const float grey[4] = {0.4f, 0.4f, 0.5f, 1};
                    (bFog ? glEnable : glDisable)(GL_FOG);
                    glFogfv(GL_FOG_COLOR, grey);
                    glFogi(GL_FOG_MODE, GL_EXP2);
                    glFogf(GL_FOG_DENSITY, 0.15f);
                    EXPECT_EQ(ShaderCtrl_cls::IsLitBySphere(2, 7), tinted == 0);
                };
                std::vector<Particle_st> some = spheres;
                if (bFew) some.resize(300);
                Draw(some);
                pictures[tinted] = Picture();
            }
            int different = 0, lit = 0;
            for (size_t i = 0; i < pictures[0].mRGB.size(); ++i) {
                different += std::abs(int(pictures[0].mRGB[i]) - int(pictures[1].mRGB[i])) > 2;
                lit += pictures[0].mRGB[i] > 60;
            }
            EXPECT_GT(lit, 3000);
            EXPECT_LE(different, 3) << "fog " << bFog << " few " << bFew
                                    << ": a highlight's end may go to the next pixel";
            glDisable(GL_FOG);
        }
}

// Tones have no formula with a viewer in it but their own; all surfaces share it.
TEST_F(LightPictures, TonesAreTheSameOnEverySurface) {
    SetSevenLights();
    for (const int spot : {1, 4})
        mCtrl.GetLight(spot).mpCStrength->SetKeyFrame(std::array<double, 1>{0.6}.data(), true, -1.0);
    SetAll(2, 3, ShaderCtrl_cls::TYPE_CARTOON);
    Draw({{{0, 0, 0}, kRadius}});
    const Picture_st ball = Picture();
    DrawFineSphere(ShaderCtrl_cls::TYPE_CARTOON);
    const Picture_st mesh = Picture();
    int different = 0, lit = 0;
    for (size_t i = 0; i < ball.mRGB.size(); ++i) {
        different += std::abs(int(ball.mRGB[i]) - int(mesh.mRGB[i])) > 2;
        lit += ball.mRGB[i] > 0;
    }
    EXPECT_GT(lit, 6000);
    EXPECT_LT(different, lit / 50) << "but for the edges between them";
    // A cone beside the sphere brings it nothing, its darkest tone included.
    mCtrl.mCLightNumber.mValue = 2;
    SetLight(1, LightSRC_cls::TYPE_SPOT, 0, 0.0, {5, 5, 0}, {0, 0, 90});
    Draw({{{0, 0, 0}, kRadius}});
    const Picture_st none = Picture();
    SetAll(2, 3, ShaderCtrl_cls::TYPE_CARTOON);
    SetLight(1, LightSRC_cls::TYPE_SPOT, 0, 1.0, {5, 5, 0}, {0, 0, 90}).mCSpotAngle.mValue = 10;
    Draw({{{0, 0, 0}, kRadius}});
    EXPECT_EQ(Picture().mRGB, none.mRGB);
}

TEST_F(LightPictures, SticksAreLitAsTheFixedPipelineDoes) {
    SetSevenLights();
    const float places[4][3] = {{-1, -0.6f, 0}, {0.9f, 0.8f, 0.2f}, {-0.8f, 0.9f, -0.3f}, {1, -0.7f, 0.4f}};
    PovObjectSticks_cls list;
    for (const unsigned first : {0u, 2u}) {
        list.mvIndexA.push_back(first);
        list.mvIndexB.push_back(first + 1);
        list.mvBit.push_back(0);
        list.mvFactor.push_back(1.0f);
    }
    list.SetPPeriodicBoundary({});
    const int count = 4;
    list.CheckValidity(&count);
    GLSticks_cls drawer;
    mDrawMore = [&] {
        StickParticles_st particles;
        particles.mpPos = places;
        particles.mCount = count;
        particles.mStep = 1;
        StickStyle_st style;
        style.mType = STICK_CYLINDER;
        style.mRadius = 0.2f;
        drawer.Draw(list, particles, style, 0);
    };
    Draw({{{100, 0, 0}, 0.0f}});
    const Picture_st shaders = Picture();
    EXPECT_GT(CountLit(), 1500);
    ShaderCtrl_cls none;
    ShaderCtrl_cls* const pOwn = std::exchange(GLAttribute_cls::mspCShaderCtrl, &none);
    Draw({{{100, 0, 0}, 0.0f}});
    GLAttribute_cls::mspCShaderCtrl = pOwn;
    int different = 0;
    const Picture_st fixed = Picture();
    for (size_t i = 0; i < fixed.mRGB.size(); ++i)
        different += std::abs(int(fixed.mRGB[i]) - int(shaders.mRGB[i])) > 2;
    EXPECT_LE(different, 6) << "pixels at an edge may go either way";
}

TEST_F(LightPictures, LightsWithoutPlaceOrSenseBringNumbers) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    LightSRC_cls& light = SetLight(0, LightSRC_cls::TYPE_PARALLEL, 0, 0.6, {kNaN, 0, 0}, {0, kNaN, kNaN});
    for (int type = 0; type < 4; ++type) {
        light.mCType.mValue = type;
        light.mCFade.mValue = type % 3;
        light.mCFadeDistance.mValue = type % 2 ? 0.0f : std::numeric_limits<float>::quiet_NaN();
        light.mCSpotAngle.mValue = type % 2 ? -300 : 4000;
        for (const unsigned quality : {1u, 3u}) {
            SetAll(2, quality, 2);
            Draw({{{0, 0, 0}, kRadius}});
            EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << type;
            const Pixel_st seen = At(mSize / 2 - 20, mSize / 2 + 10);
            EXPECT_TRUE(std::isfinite(seen.r) && seen.r >= float(kAmbient[0] * kSurroundings) - 0.01f)
                << type;
        }
    }
    // From straight behind, where light and viewer are opposite.
    SetLight(0, LightSRC_cls::TYPE_PARALLEL, 0, 0.6, {0, 0, -5}, {0, -90, 0});
    ExpectAllSurfaces("from behind");
    light.mCType.mValue = LightSRC_cls::TYPE_POINT;
    ExpectAllSurfaces("a lamp behind");
    // No light at all leaves the surroundings.
    mCtrl.mCLightNumber.mValue = 0;
    ExpectAllSurfaces("none");
}

// The passes for lights with shadows: what the one leaves out the others bring.
TEST_F(LightPictures, ThePassesOfLightsAddUp) {
    SetSevenLights();
    for (const int i : {1, 2, 4, 6})
        mCtrl.GetLight(i).mCCastShadow.mValue = false;
    for (int i = 0; i < 7; ++i) { // so that nothing is cut off at full brightness
        const double strength = 0.25 * GetGroupValue(mCtrl.GetLight(i).mpCStrength, 0.0)[0];
        mCtrl.GetLight(i).mpCStrength->SetKeyFrame(&strength, true, ParamGroup_cls::kCurrent);
    }
    SetAll(2, 3, 2);
    const auto draw = [&](const std::function<void()>& set) {
        mSetLights = [&] {
            mCtrl.UpdateCurrentObj(0.0);
            set();
        };
        Draw({{{0, 0, 0}, kRadius}});
        return At(mSize / 2 + 15, mSize / 2 + 12);
    };
    const Pixel_st all = draw([&] { mCtrl.SetNonShadowLight(0.0); });
    mLightNumber = 7;
    Pixel_st sum = draw([&] { mCtrl.SetBasicLight(0.0, true); });
    const double surroundings = kSurroundings * kAmbient[0];
    for (const int i : {0, 3, 5}) {
        mLightNumber = 1;
        const Pixel_st one = draw([&] { mCtrl.GLSetSingleDiffuse(i, 0.0); });
        sum.r += one.r - float(surroundings); // which each picture has
    }
    EXPECT_NEAR(sum.r, all.r, 2.5 / 255.0);
    EXPECT_GT(all.r, 0.2f);
    EXPECT_LT(all.r, 0.95f);
}

} // namespace
