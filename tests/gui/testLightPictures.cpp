// What lights do to surfaces, by closed forms: every type, fade and cone on ray-cast spheres, on meshes in
// each shader, and on sticks.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <utility>

#include <epoxy/gl.h>

#include "BOND/clsPovObjectSticks.h"
#include "DrawTest.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsGLSticks.h"
#include "GroupValue.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

using Vector = std::array<double, 3>;

double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Vector Normalized(const Vector& v) {
    const double length = std::sqrt(Dot(v, v));
    return {v[0] / length, v[1] / length, v[2] / length};
}

constexpr float kRadius = 0.9f;
constexpr Vector kAmbient = {0.2, 0.1, 0.3};
constexpr Vector kDiffuse = {0.9, 0.6, 0.3};
constexpr Vector kSpecular = {0.5, 0.4, 0.6};
constexpr double kSurroundings = 0.2; // OpenGL's own ambient light
constexpr int kShininess = 20;

class LightPictures : public DrawTest {
protected:
    void SetUp() override {
        DrawTest::SetUp();
        mSize = 128;
        mbParallel = true;
        for (auto& a : mAttribute) {
            SetColor(a->mAmbient, float(kAmbient[0]), float(kAmbient[1]), float(kAmbient[2]), 1);
            SetColor(a->mDiffuse, float(kDiffuse[0]), float(kDiffuse[1]), float(kDiffuse[2]), 1);
            SetColor(a->mSpecular, float(kSpecular[0]), float(kSpecular[1]), float(kSpecular[2]), 1);
        }
        mSetLights = [this] {
            mCtrl.UpdateCurrentObj(0.0);
            mCtrl.SetNonShadowLight(0.0);
            mLightNumber = mCtrl.GetLightNumber();
        };
        mCtrl.mCLightNumber.mValue = 1;
        // Steps would find the curves of the program's own lights, which have the same names.
        Parameters_cls::msbUndoCommandMake = false;
    }
    void TearDown() override {
        Parameters_cls::msbUndoCommandMake = true;
        DrawTest::TearDown();
    }
    LightSRC_cls& SetLight(int i, int type, int fade, double strength, Vector place, Vector angles) {
        LightSRC_cls& light = mCtrl.GetLight(i);
        light.mCType.mValue = type;
        light.mCFade.mValue = fade;
        light.mpCTranslate->SetKeyFrame(place.data(), true, ParamGroup_cls::kCurrent);
        light.mpCRotate->SetKeyFrame(angles.data(), true, ParamGroup_cls::kCurrent);
        light.mpCStrength->SetKeyFrame(&strength, true, ParamGroup_cls::kCurrent);
        return light;
    }
    void SetSevenLights() {
        mCtrl.mCLightNumber.mValue = 7;
        SetLight(0, LightSRC_cls::TYPE_PARALLEL, 0, 0.2, {1, 1, 1}, {0, 45, 225});
        SetLight(1, LightSRC_cls::TYPE_SPOT, 1, 0.25, {0.5, 0.3, 3}, {0, 80, 30}).mCSpotAngle.mValue = 14;
        SetLight(2, LightSRC_cls::TYPE_POINT, 2, 0.4, {-1.5, 0.5, 1.5}, {0, 0, 0}).mCFadeDistance.mValue =
            0.7f;
        SetLight(3, LightSRC_cls::TYPE_CYLINDER, 0, 0.1, {0, -2, 2}, {0, 0, 0});
        SetLight(4, LightSRC_cls::TYPE_SPOT, 2, 0.3, {2, 0, 0.5}, {0, 10, 180}).mCSpotAngle.mValue = 60;
        SetLight(5, LightSRC_cls::TYPE_SPOT, 0, 0.1, {0, 2, 2}, {0, 0, 0}).mCSpotAngle.mValue = 180;
        SetLight(6, LightSRC_cls::TYPE_PARALLEL, 1, -0.05, {0, 0, 0}, {0, 20, 200});
    }
    /// A place of the world and its normal, under the lights in use; the viewer is far in front. With
    /// `pSure` false the place lies at the edge of a cone.
    Vector GetLit(const Vector& place, const Vector& normal, bool* pSure) {
        Vector ambient, diffuse = {}, shine = {};
        ambient.fill(kSurroundings);
        *pSure = true;
        const int first = mCtrl.GetFirstValidLight();
        for (int i = 0; i < mCtrl.GetLightNumber(); ++i) {
            LightSRC_cls& light = mCtrl.GetLight(i);
            if (!light.mCVisible.mValue) continue;
            const int type = light.mCType.mValue;
            const int fade = light.mCFade.mValue;
            std::vector<double> at = GetGroupValue(light.mpCTranslate, 0.0);
            const Vector from = light.GetVDirectionVector(0.0);
            double share = 1.0;
            Vector to = Normalized(from);
            if (type != LightSRC_cls::TYPE_PARALLEL) {
                to = {at[0] - place[0], at[1] - place[1], at[2] - place[2]};
                const double far = std::sqrt(Dot(to, to));
                const double d = std::max(double(light.mCFadeDistance.mValue), 1e-6);
                share = 1.0 / (1.0 + (fade == 1 ? far / d : 0.0) + (fade == 2 ? far * far / (d * d) : 0.0));
                to = Normalized(to);
            }
            if (type == LightSRC_cls::TYPE_SPOT && light.mCSpotAngle.mValue < 180) {
                const double inside =
                    Dot(to, from) - std::cos(std::min(light.mCSpotAngle.mValue, 90) * M_PI / 180.0);
                *pSure = *pSure && std::abs(inside) > 0.02;
                if (inside < 0.0) share = 0.0;
            }
            float strength[4];
            light.GetLightColor(0.0, strength);
            const double color = double(strength[0]) * (fade != 0 ? 2.0 : 1.0) * share;
            const double facing = std::max(Dot(normal, to), 0.0);
            *pSure = *pSure && std::abs(Dot(normal, to)) > 0.03;
            const Vector between = Normalized({to[0], to[1], to[2] + 1.0});
            const double gloss =
                facing > 0.0 ? std::pow(std::max(Dot(normal, between), 0.0), kShininess) : 0.0;
            for (size_t c = 0; c < 3; ++c) {
                ambient[c] += i == first ? share : 0.0;
                diffuse[c] += color * facing;
                shine[c] += color * gloss;
            }
        }
        Vector color;
        for (size_t c = 0; c < 3; ++c)
            color[c] = std::clamp(
                ambient[c] * kAmbient[c] + diffuse[c] * kDiffuse[c] + shine[c] * kSpecular[c], 0.0, 1.0);
        return color;
    }
    /// The picture of a sphere around the origin is what the closed form says, to 2 of 255.
    void ExpectLit(const std::string& what) {
        double worst = 0.0;
        int sure = 0;
        for (int row = 4; row < mSize; row += 3)
            for (int column = 3; column < mSize; column += 3) {
                const double x = (column + 0.5 - mSize / 2.0) / PixelsPerUnit();
                const double y = (row + 0.5 - mSize / 2.0) / PixelsPerUnit();
                const double rest = kRadius * kRadius - x * x - y * y;
                if (rest < 0.1) continue; // the rim
                const Vector place = {x, y, std::sqrt(rest)};
                bool bSure = false;
                const Vector lit = GetLit(place, Normalized(place), &bSure);
                if (!bSure) continue;
                ++sure;
                const Pixel_st seen = At(column, row);
                for (const double off :
                     {double(seen.r) - lit[0], double(seen.g) - lit[1], double(seen.b) - lit[2]})
                    if (!(std::abs(off) <= worst)) worst = std::abs(off);
            }
        EXPECT_LE(worst * 255.0, 2.0) << what;
        EXPECT_GT(sure, 60) << what;
    }
    void SetMaterial() {
        const auto set = [](GLenum which, const Vector& color) {
            const float values[4] = {float(color[0]), float(color[1]), float(color[2]), 1};
            glMaterialfv(GL_FRONT_AND_BACK, which, values);
        };
        set(GL_AMBIENT, kAmbient);
        set(GL_DIFFUSE, kDiffuse);
        set(GL_SPECULAR, kSpecular);
        glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, kShininess);
    }
    /// A mesh so fine that its corners are the pixels.
    void DrawFineSphere(unsigned shader) {
        mDrawMore = [this, shader] {
            glEnable(GL_LIGHTING);
            SetMaterial();
            ShaderCtrl_cls& shaders = *GLAttribute_cls::mspCShaderCtrl;
            shaders.BeginShader(shader, mCtrl.GetLightNumber());
            constexpr int kSteps = 200;
            const auto corner = [](int i, int k) {
                const double a = M_PI * i / kSteps, b = M_PI * k / kSteps;
                const double n[3] = {std::cos(b), std::sin(b) * std::cos(a), std::sin(b) * std::sin(a)};
                glNormal3dv(n);
                glVertex3d(double(kRadius) * n[0], double(kRadius) * n[1], double(kRadius) * n[2]);
            };
            glDisable(GL_CULL_FACE);
            for (int i = 0; i < kSteps; ++i) {
                glBegin(GL_QUAD_STRIP);
                for (int k = 0; k <= kSteps; ++k) {
                    corner(i + 1, k);
                    corner(i, k);
                }
                glEnd();
            }
            shaders.EndShader(int(shader));
            glDisable(GL_LIGHTING);
        };
        Draw({{{100, 0, 0}, 0.0f}}); // a particle out of sight
        mDrawMore = nullptr;
    }
    void ExpectAllSurfaces(const std::string& what) {
        for (const unsigned shader : {0u, 1u, 2u}) {
            SetAll(2, 3, shader);
            Draw({{{0, 0, 0}, kRadius}});
            ExpectLit(what + ", ray-cast, shader " + std::to_string(shader));
            DrawFineSphere(shader);
            ExpectLit(what + ", mesh, shader " + std::to_string(shader));
        }
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << what;
    }
    LightSRCCtrl_cls mCtrl;
};

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
